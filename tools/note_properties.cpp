#include "tools/note_properties.h"

#include <GL/gl.h>

#include <algorithm>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "geometry/properties.h"
#include "persist/record.h"
#include "render/text.h"
#include "tools/screen_items.h"
#include "tools/text_item.h"

namespace vt {

const int kNoteFontSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48};
const int kNoteFontSizeCount = static_cast<int>(sizeof(kNoteFontSizes) / sizeof(kNoteFontSizes[0]));

bool LoadNoteProps(const std::string& id, NoteProps& p) {
  const CNote* n = Doc.Notes.FindById(id);
  if (!n || n->NoteType == 0) return false;
  p.decimals = n->Decim;
  p.color = n->ForeColor;
  p.fontSize = n->FontSize;
  p.visible = !n->Hide;
  p.text = n->Note;
  return true;
}

std::string ApplyNoteProps(const std::string& id, NoteProps& p) {
  CNote* n = Doc.Notes.FindById(id);
  if (!n || n->NoteType == 0) return kObjectNotExist;
  if (p.decimals < 0 || p.decimals > 10 || p.fontSize < 0 || p.fontSize > 400) return kIllegalData;
  if (p.decimals == n->Decim && p.color == n->ForeColor && p.fontSize == n->FontSize && p.visible == !n->Hide)
    return {};
  n->Decim = static_cast<short>(p.decimals);
  n->ForeColor = p.color & 0xFFFFFFu;
  n->FontSize = p.fontSize;
  n->Hide = !p.visible;
  n->Measure();
  PushSnapshot();
  RedrawScene();
  return {};
}

bool NoteUnderPress(const CNote& note) {
  const float px = LastPressPctX(), py = LastPressPctY();
  return !note.Hide && px >= note.PosX && px <= note.PosX + 15 && py >= note.PosY && py <= note.PosY + 3;
}

void DrawNoteText(const CNote& note, const std::string& text) {
  if (note.ForeColor == 0 && note.FontSize == 0) {
    DrawTextAt(note.PosX, note.PosY, 0, text);
    return;
  }
  // The text tool's renderer draws in any colour and size; 9 points is the
  // height of the canvas's own font.
  CText t;
  t.Content = text;
  t.FontSize = note.FontSize > 0 ? note.FontSize : 9;
  t.ForeColor = note.ForeColor;
  t.PosX = note.PosX;
  t.PosY = note.PosY;
  glPushAttrib(GL_ENABLE_BIT);
  glDisable(GL_LIGHTING);
  t.Draw();
  glPopAttrib();
}

void ReadNoteLook(RecordReader& r, CNote& note) {
  if (r.AtEnd()) return;
  const std::string color = r.Text();
  if (color.empty() || r.AtEnd()) return;
  const double c = Val(color), size = Val(r.Text());
  note.ForeColor = c >= 0 && c <= 0xFFFFFF ? static_cast<std::uint32_t>(c) : 0;
  note.FontSize = size >= 0 && size <= 400 ? static_cast<int>(size) : 0;
}

}  // namespace vt
