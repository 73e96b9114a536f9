// The look of a measurement note and its dialog without the window: the
// decimals of the value, the colour and the font size. Computed notes
// (NoteType 0) keep their own dialog, frmComp.
#pragma once

#include <cstdint>
#include <string>

#include "tools/note_object.h"

namespace vt {

class RecordReader;

struct NoteProps {
  int decimals = 2;  // 0..10
  std::uint32_t color = 0;
  int fontSize = 0;  // points; 0 the canvas's own small font
  bool visible = true;
  bool angleMark = false;  // the arc at the vertex
  bool canMark = false;    // an angle of three points: the dialog offers the arc
  std::string text;        // shown only
};
// False for a missing note or a computed one.
bool LoadNoteProps(const std::string& id, NoteProps& p);
// "" on success (one undo step and a redraw when something changed), or the
// message the dialog shows.
std::string ApplyNoteProps(const std::string& id, NoteProps& p);

// The font sizes offered besides the standard one.
extern const int kNoteFontSizes[];
extern const int kNoteFontSizeCount;

// Draws the note's text at its place: the canvas's own bitmap font in black,
// or the note's colour and size.
void DrawNoteText(const CNote& note, const std::string& text);
// The arc of an angle of three points at its vertex, between the arms as
// the view shows them, 24 pixels out (less on short arms); called inside the
// overlay, whose units are per cent of the canvas.
void DrawAngleMark(const CNote& note);
// The double click's hit of a note: the mouse of the last press inside the
// 15 by 3 per cent from its position.
bool NoteUnderPress(const CNote& note);
// The optional colour and font size after Selected in an NT record, and
// after them the optional angle mark.
void ReadNoteLook(RecordReader& r, CNote& note);

}  // namespace vt
