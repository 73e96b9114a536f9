// A live line of text on the canvas: a measurement of the figure or the value
// of an expression, and at the same time a named value expressions can read.
#pragma once

#include <string>

#include "document/objects.h"

namespace vt {

class CNote : public DocObject {
 public:
  short Decim = 2;
  std::string Note;
  int NoteType = 0;
  std::string VarName;
  float Value = 0;
  float PosX = 0, PosY = 0;
  std::string Para1, Para2, Para3;
  // The look a measurement dialog gave it: colour 0 and size 0 are the
  // canvas's own small black text (tools/note_properties.cpp).
  int FontSize = 0;  // points
  // An angle of three points draws an arc at its vertex between the two arms
  // (new angle measurements have it; the file keeps it after the look).
  bool AngleMark = false;
  bool CanMarkAngle() const { return NoteType == 4 && Para1.compare(0, 2, "PT") == 0; }

  // Brings Value and Note up to date from the measured objects (or the
  // expression); false when the objects are gone or the expression failed,
  // and then Value and Note keep their last contents (tools/notes.cpp).
  bool Measure();
  // What Draw writes: Measure's text, or for a formula that cannot be worked
  // out the note's name followed by "= ?" and a short hint.
  std::string ShownText();
  void Draw() override;
  std::string Save() const override;
};

}  // namespace vt
