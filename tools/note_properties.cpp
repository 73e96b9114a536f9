#include "tools/note_properties.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "geometry/properties.h"
#include "persist/record.h"
#include "render/frame.h"
#include "render/strokes.h"
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
  p.angleMark = n->AngleMark;
  p.canMark = n->CanMarkAngle();
  p.text = n->Note;
  return true;
}

std::string ApplyNoteProps(const std::string& id, NoteProps& p) {
  CNote* n = Doc.Notes.FindById(id);
  if (!n || n->NoteType == 0) return kObjectNotExist;
  if (p.decimals < 0 || p.decimals > 10 || p.fontSize < 0 || p.fontSize > 400) return kIllegalData;
  const bool mark = p.angleMark && n->CanMarkAngle();
  if (p.decimals == n->Decim && p.color == n->ForeColor && p.fontSize == n->FontSize && p.visible == !n->Hide &&
      mark == n->AngleMark)
    return {};
  n->Decim = static_cast<short>(p.decimals);
  n->ForeColor = p.color & 0xFFFFFFu;
  n->FontSize = p.fontSize;
  n->Hide = !p.visible;
  n->AngleMark = mark;
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
  if (!r.AtEnd()) note.AngleMark = Val(r.Text()) == 1;
}

void DrawAngleMark(const CNote& note) {
  constexpr double kHalfTurn = 3.14159265358979323846;
  const Position* a = FindPoint(note.Para1);
  const Position* b = FindPoint(note.Para2);
  const Position* c = FindPoint(note.Para3);
  const WindowProjection& m = CompiledProjection();
  if (!a || !b || !c || !m.valid || m.viewport[2] <= 0 || m.viewport[3] <= 0) return;
  double w[3][2], depth = 0;
  const Position* p[3] = {a, b, c};
  for (int i = 0; i < 3; ++i)
    if (!ProjectToWindow(m, p[i]->x, p[i]->y, p[i]->z, w[i][0], w[i][1], depth)) return;
  const double ax = w[0][0] - w[1][0], ay = w[0][1] - w[1][1];
  const double cx = w[2][0] - w[1][0], cy = w[2][1] - w[1][1];
  const double shorter = std::min(std::hypot(ax, ay), std::hypot(cx, cy));
  if (shorter < 2) return;
  const double r = std::min(24.0, 0.4 * shorter);
  const double from = std::atan2(ay, ax);
  double sweep = std::atan2(cy, cx) - from;
  // The arc spans the angle between the arms, never its outside.
  while (sweep > kHalfTurn) sweep -= 2 * kHalfTurn;
  while (sweep < -kHalfTurn) sweep += 2 * kHalfTurn;
  const int steps = std::max(4, static_cast<int>(std::fabs(sweep) * 12));
  SetColor(note.ForeColor);
  glLineWidth(1.5f);
  glBegin(GL_LINE_STRIP);
  for (int i = 0; i <= steps; ++i) {
    const double t = from + sweep * i / steps;
    const double x = w[1][0] + r * std::cos(t) - m.viewport[0], y = w[1][1] + r * std::sin(t) - m.viewport[1];
    glVertex3d(x / m.viewport[2] * 100, y / m.viewport[3] * 100, 1);
  }
  glEnd();
  glLineWidth(1.0f);
}

}  // namespace vt
