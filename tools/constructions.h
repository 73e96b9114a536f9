// The construction commands of the Draw menu: each reads the selection sets in
// selection order, checks them, and adds the derived object with its
// construction kind, its parents and its links, then takes one undo step. A
// selection that does not fit gives the command's message and changes
// nothing.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "document/document.h"

namespace vt {

// The real objects behind a selection set, in selection order (a selection
// set holds copies; what has gone from the document is passed by).
template <class T, class C>
std::vector<T*> SelectedObjects(C& selSet, C& docSet) {
  std::vector<T*> out;
  for (T* s : selSet)
    if (T* real = docSet.FindById(s->ID)) out.push_back(real);
  return out;
}
std::vector<Position*> SelPts();

// A constructed point: a new id and label, its kind, parents and place, not
// draggable.
Position* NewPoint(const Position& at, int ptype, const std::string& lk1, const std::string& lk2, short pos);
// The same, hidden and without a label: the helper points of constructions
// (far ends of rays and extensions) take no letter from the visible ones.
Position* NewHiddenPoint(const Position& at, int ptype, const std::string& lk1, const std::string& lk2, short pos);
// Registers the point as a child of each parent point, so that deleting a
// parent takes it along.
void ChildOf(Position& child, std::initializer_list<Position*> parents);

// The messages, as the commands show them.
extern const char* const kMsgMiddle;
extern const char* const kMsgTwoPoints;
extern const char* const kMsgPointSegment;
extern const char* const kMsgBisector;
extern const char* const kMsgPointCircle;
extern const char* const kMsgOnePointOneSegment;
extern const char* const kMsgOnePointOnePolygon;
extern const char* const kMsgRegionExtension;
extern const char* const kMsgIntersection;
extern const char* const kMsgInterLine;
extern const char* const kMsgNotCollinear;
extern const char* const kMsgArcCentre;
extern const char* const kMsgThreePoints;
extern const char* const kMsgArcOnCircle;
extern const char* const kMsgCornerMark;
extern const char* const kMsgPolygon;
extern const char* const kMsgSector;
extern const char* const kMsgRibbon;

void mnuMiddleP_Click();
void mnuLinkLine_Click();
void mnuParaLine_Click();
void mnuAngleEL_Click();
void mnuQX_Click();
void mnuCX1_Click();
void mnuCX2_Click();
void mnuDraw2RegSSD_Click();
void mnuInterP_Click();
void mnuDraw2IntLine_Click();
void mnuDraw3PC_Click();
void mnuDraw2NQC_Click();
void mnuDrawArc1_Click();
void mnuDrawArc3P_Click();
void mnuDraw2ArcOnCir_Click();
void mnuAngleLabel_Click();
void mnuRegion_Click();
void mnuDraw2Fan_Click();
void mnuDraw2Ribbon_Click();
// The triangle centres, ptype 21 (circumcentre) to 25 (Fermat point).
void TriangleCentre_Click(int ptype);

// Shows a command's message in a box titled "Note".
void ShowNote(const std::string& text);

// Registers the construction, measurement, transformation and model
// commands. Called by RegisterAllCommands.
void RegisterConstructionCommands();

}  // namespace vt
