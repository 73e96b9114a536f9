// The creation tools: CCreatePoint (tool 1), CCreateLine (tool 2),
// CCreateCircle (tool 4) and CCreateText (tool 6), made once at start-up and
// keeping their gesture between events; the shared search for what a click
// lands on (ResolveClick); the snap marker; the point label reset.
//
// A creation ends with one undo snapshot; the canvas handler then redraws.
// A bound met on the way (20 holders of a point, 30 points on an object or
// hanging on a point) ends the click with a message, and the document keeps
// what it had before the click.
#pragma once

#include <functional>
#include <string>

#include "tools/ccommand.h"

namespace vt {

class CLine;

// Where a creation tool's cursor snaps to: x and y of the mouse rounded half
// to even, z 0. The frame draws it while snapping is on.
extern Position SnapMarker;

// What a click of the line and circle tools stands for.
enum class ClickKind { ExistingPoint, PointOnObject, FreePoint };
struct ClickTarget {
  ClickKind kind = ClickKind::FreePoint;
  Position* point = nullptr;      // the existing point
  DocObject* carrier = nullptr;   // the object a new point goes on
  Position at;                    // the click (z 0; rounded when snapping)
};
// The search, without changing anything: existing points in collection order
// (a hit of their Pick, or closer than 0.01 to the click), leaving out the
// last point when the document has more than `pointsAtStart` (-1: none left
// out); then the carriers under the ray (`making`, the object being made, is
// passed over); else a free point.
ClickTarget ResolveClick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint,
                         const DocObject* making, int pointsAtStart);
// The point of a resolved click: the existing one, or a new point on the
// object, or a new free point (ptype 1, next label).
Position* TakeClickPoint(const ClickTarget& target);

class CCreatePoint : public CCommand {
 public:
  void RButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
  void MouseMove(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                 Position& nearPoint) override;
  void LButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;

  Position CurPos;
};

// The line and circle tools: two clicks, the record in the document from the
// first one on.
class CTwoClickTool : public CCommand {
 public:
  void RButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
  void MouseMove(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                 Position& nearPoint) override;
  void LButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
  // The right button and a change of tool drop the record in the making (its
  // first point stays); at rest they do nothing.
  void Cancel() override;

  short Clicks = 0;
  Position FirstEnd;
  Position CurPos;
  short PointsAtStart = 0;
  short FirstPointIndex = 0;
  std::string FirstPointID;
  bool FirstPointExisted = false;

 protected:
  explicit CTwoClickTool(int tool) : tool_(tool) {}
  // The record in the making, or nullptr when it has gone.
  virtual DocObject* Making() const = 0;
  // Adds the record at the first click, with both points at `at`.
  virtual DocObject* AddRecord(const Position& at) = 0;
  // The first end as given by the first click.
  virtual void SetFirst(DocObject& record, const Position& point) = 0;
  // Between the clicks: the second end follows the mouse.
  virtual void Follow(DocObject& record, const Position& at) = 0;
  // The second click: ends, links, label.
  virtual void Finish(DocObject& record, Position& first, Position& second) = 0;
  // The first end's point as the record keeps it.
  virtual const Position& FirstCopy(DocObject& record) const = 0;
  // Removes the record in the making (makingId_), with its back-links.
  virtual void RemoveMaking() = 0;

  std::string makingId_;

 private:
  void FirstClick(Position& scenePoint, Position& farPoint, Position& nearPoint);
  void SecondClick(Position& scenePoint, Position& farPoint, Position& nearPoint);
  int tool_;
};

// A new segment-like line record (kind `lt`, the tools' width and style) from
// `from` to `to`, added to the document.
CLine& AddLineRecord(int lt, const Position& from, const Position& to);

class CCreateLine : public CTwoClickTool {
 public:
  CCreateLine() : CTwoClickTool(2) {}

 protected:
  DocObject* Making() const override;
  DocObject* AddRecord(const Position& at) override;
  void SetFirst(DocObject& record, const Position& point) override;
  void Follow(DocObject& record, const Position& at) override;
  void Finish(DocObject& record, Position& first, Position& second) override;
  const Position& FirstCopy(DocObject& record) const override;
  void RemoveMaking() override;
};

class CCreateCircle : public CTwoClickTool {
 public:
  CCreateCircle() : CTwoClickTool(4) {}

 protected:
  DocObject* Making() const override;
  DocObject* AddRecord(const Position& at) override;
  void SetFirst(DocObject& record, const Position& point) override;
  void Follow(DocObject& record, const Position& at) override;
  void Finish(DocObject& record, Position& first, Position& second) override;
  const Position& FirstCopy(DocObject& record) const override;
  void RemoveMaking() override;
};

// The text dialog of the text tool: shows itself modally and gives the text
// (true) or is cancelled (false). Until the window installs one, the tool
// makes nothing.
using TextDialogFn = std::function<bool(std::string& text)>;
extern TextDialogFn TextToolDialog;

class CCreateText : public CCommand {
 public:
  void RButtonDown(Position&, Position&, float&, float&, Position&, Position&) override {}
  void MouseMove(Position&, Position&, float&, float&, Position&, Position&) override {}
  void LButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
};

// Labels start again from "A"; existing labels stay.
void mnuDrawPtReset_Click();

// Installs the tools in their slots, the select tool's box tests, and the
// handlers of the selection commands and the label reset. Called by
// RegisterAllCommands.
void RegisterToolCommands();

}  // namespace vt
