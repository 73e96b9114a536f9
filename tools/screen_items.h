// Items anchored to the screen: text annotations and control buttons (the
// notes live in note_object.h). Coordinates are in per cent of the canvas, y
// from the bottom; they stay where they are when the view turns.
//
// The world-space Pick of these items (used by the double click) tests the
// mouse of the last press (LastX, LastY) in per cent of the canvas; the
// select tool calls the per-cent tests directly.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "document/objects.h"
#include "tools/note_object.h"

namespace vt {

class RecordReader;

// A free line of text (tools/text_item.cpp).
class CText : public DocObject {
 public:
  std::string FontName = "Arial";
  int FontSize = 12;  // points
  bool FontBold = false, FontItalic = false, FontUnderline = false, FontStrikeOut = false;
  int TType = 0;        // 1 for a text made by the text tool
  std::string Content;  // the text shown
  float Wide = 0, Height = 0;  // measured size
  float PosX = 0, PosY = 0, PosZ = 0;

  std::string Save() const override;
  void Draw() override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  // The fixed hit rectangle: 15 by 3 per cent from the position, bounds
  // included, whatever the length of the text.
  bool PickPct(float pctX, float pctY) const;

  // Reads a "TT" record; throws RecordError on a missing or bad field.
  static std::unique_ptr<CText> Load(RecordReader& r);
};

// A button a reader of the document presses (tools/buttons.cpp).
//   BTType 1 show/hide, 2 link, 3 sample document, 4 scroll, 5 commands.
class CButton : public DocObject {
 public:
  static constexpr int kMaxObjects = 2000;

  std::string Label;
  std::string Para1;                // path, address or nothing, by kind
  std::vector<std::string> ObjIDs;  // ids, or command names for BTType 5
  int ObjNum = 0;                   // how many of ObjIDs count
  bool HideObjs = false;            // state of a show/hide button
  bool Status = false;              // drawn pressed
  float PosX = 0, PosY = 0;
  int BTType = 1;
  int PathType = 1;  // 1 absolute path, else relative to the program's folder
  int ScrollPos = 0;  // objects a scroll button shows; not written

  std::string Save() const override;
  void Draw() override;
  // The grip, 0.8 wide to the left of the face (for selecting and moving).
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool PickGrip(float pctX, float pctY) const;
  // The face, from PosX + 0.8 to PosX + 3 + Int(Len(Label) * 0.6), height 5.
  bool PickMove(float pctX, float pctY) const;
  float FaceRight() const;

  // The button's action, ending with an undo step. The button may be gone
  // afterwards (a command button can delete it): callers hold no pointer to
  // it after the call.
  void Click();

  static std::unique_ptr<CButton> Load(RecordReader& r);
};

}  // namespace vt
