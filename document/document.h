// The document: one global collection per object kind, a parallel family of
// selection sets, the shared id counter and the last point label; the lookups
// from id to object, and removal.
//
// C++ cannot give an instance the name of its class, so the collections are
// members of two globals: Doc.Points is the document's CPoints, Sel.Points is
// SelPoints, and so on for every kind.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "animation/player_objects.h"
#include "document/collection.h"
#include "geometry/arc.h"
#include "geometry/circle.h"
#include "geometry/derived.h"
#include "geometry/line.h"
#include "geometry/position.h"
#include "geometry/region.h"
#include "graphs/graph_objects.h"
#include "tools/screen_items.h"

namespace vt {

class CPoints : public Collection<Position> {
 public:
  using Collection<Position>::Add;
  Position* Add(const std::string& ID, float x, float y, float z, int ptype, const std::string& LKID,
                const std::string& LKID2, short Pos, const std::string& key = std::string());
};
class CLines : public Collection<CLine> {};
class CCircles : public Collection<CCircle> {};
class CArcs : public Collection<CArc> {};
class CRegions : public Collection<CRegion> {};
class CFunCurves : public Collection<CFunCurve> {
 public:
  using Collection<CFunCurve>::Add;
  // A copy of the source curve, every property (graphs/funcurve.cpp).
  CFunCurve* Add(const CFunCurve& source, const std::string& key = std::string());
};
class CSurfaces : public Collection<CSurface> {};
class CSurRots : public Collection<CSurRot> {};
class CStretchs : public Collection<CStretch> {};
class CFans : public Collection<CFan> {};
class CRibbons : public Collection<CRibbon> {};
class CSpheres : public Collection<CSphere> {};
class CTexts : public Collection<CText> {};
class CNotes : public Collection<CNote> {};
class CButtons : public Collection<CButton> {};
class CAniCtrls : public Collection<CAniControl> {};
class CInterLines : public Collection<CInterLine> {};
class CLocuses : public Collection<CLocus> {};

// The kinds, in the order in which the writer emits them; the two kinds that
// are read but never written stand last.
enum class Kind {
  PT, LN, CR, AR, RG, C2, SF, SR, SS, FA, RB, SP, TT, NT, BT, AC, IL, LO,
};
constexpr int kKindCount = 18;
constexpr std::array<Kind, kKindCount> kAllKinds = {
    Kind::PT, Kind::LN, Kind::CR, Kind::AR, Kind::RG, Kind::C2, Kind::SF, Kind::SR, Kind::SS,
    Kind::FA, Kind::RB, Kind::SP, Kind::TT, Kind::NT, Kind::BT, Kind::AC, Kind::IL, Kind::LO};

// The tag written for a kind ("SF" for surfaces).
const char* KindTag(Kind k);
// The kind of a tag; "C3" and "SF" are both surfaces. False for "AN", "GL"
// and unknown tags.
bool KindOfTag(const std::string& tag, Kind& k);

struct DocumentSet {
  CPoints Points;
  CLines Lines;
  CCircles Circles;
  CArcs Arcs;
  CRegions Regions;
  CFunCurves FunCurves;
  CSurfaces Surfaces;
  CSurRots SurRots;
  CStretchs Stretchs;
  CFans Fans;
  CRibbons Ribbons;
  CSpheres Spheres;
  CTexts Texts;
  CNotes Notes;
  CButtons Buttons;
  CAniCtrls AniCtrls;
  CInterLines InterLines;
  CLocuses Locuses;

  CollectionBase& Of(Kind k);
  // The collection for the id's tag, or nullptr.
  CollectionBase* OfId(const std::string& id);
};

extern DocumentSet Doc;  // the document proper
extern DocumentSet Sel;  // the selection sets

extern long NextObjectNumber;
extern std::string LastPointLabel;
// 2 while a document text is being read; 1 lets Position.UpdateLinked take its
// branch for lines.
extern short LinkPassMode;

// "PT" + "0012".
std::string ObjectId(const std::string& tag, long number);
// Raises NextObjectNumber and gives the id of the new object.
std::string NewObjectId(const std::string& tag);
// The number after the tag, or -1 when the text is not tag + digits.
long IdNumber(const std::string& id);
// The id with its number raised by base (an empty or malformed id unchanged).
std::string ShiftId(const std::string& id, long base);

// Labels: the label after `last` (A..Z, A1..Z1, A2, ...), and the later of two.
std::string NextPointLabel(const std::string& last);
std::string LaterPointLabel(const std::string& a, const std::string& b);
// Gives the point the next automatic label; LastPointLabel follows.
void AssignNextPointLabel(Position& p);
// LastPointLabel from the labels of all points ("0" when there are none).
void RecomputeLastPointLabel();

// Lookups, first match in the scan order.
bool FindObjectIndex(const std::string& id, int& index, int& aniIndex);
bool FindSelIndex(const std::string& id, int& index);
DocObject* GetObjectById(const std::string& id);
Position* FindPoint(const std::string& id);
int DocumentObjectCount();

// Selection.
bool IsSelected(const std::string& id);
bool IsSelectedPoint(const Position& p);
bool IsSelectedLine(const CLine& l);
bool IsSelectedCircle(const CCircle& c);
bool IsSelectedArc(const CArc& a);
bool IsSelectedRegion(const CRegion& r);
// Marks the object selected and adds its shadow entry to the kind's set.
void SelectObject(DocObject& obj);
// Unmarks the object and removes its entry from the set.
void DeselectObject(DocObject& obj);

// Removal.
constexpr int kMaxDeleteIds = 500;
// Appends the point's id and, for each child that still exists, its tree.
void CollectPointTree(const Position& p, int& count, std::vector<std::string>& ids);
void RemoveSelectedObjects();
// Empties every selection set, then every collection; keeps the counters.
void ClearDocument();
// Deletes the selection with what hangs on it (the Delete command without its
// snapshot and redraw).
void DeleteSelection();

// Puts the document, the counters and the frame's globals back to the state
// of a fresh start.
void ResetGlobals();

}  // namespace vt
