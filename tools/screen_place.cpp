#include "tools/screen_place.h"

#include <algorithm>
#include <vector>

#include "animation/player_objects.h"
#include "document/document.h"
#include "tools/screen_items.h"

namespace vt {

namespace {

constexpr float kLeft = 2, kTop = 90, kBottom = 2, kRight = 99;
constexpr float kColumn = 20;              // from one column to the next
constexpr float kGapX = 1, kGapY = 1.5f;   // kept free around every item

struct Rect {
  float x0, y0, x1, y1;
};

// What the items take: the hit rectangle of texts and notes (a text at
// least its drawn size), a button's grip and face, a player's panel with its
// tracks below it.
std::vector<Rect> TakenRects() {
  std::vector<Rect> taken;
  for (CText* t : Doc.Texts)
    if (!t->Hide) taken.push_back({t->PosX, t->PosY, t->PosX + std::max(15.0f, t->Wide), t->PosY + std::max(3.0f, t->Height)});
  for (CNote* n : Doc.Notes)
    if (!n->Hide) taken.push_back({n->PosX, n->PosY, n->PosX + 15, n->PosY + 3});
  for (CButton* b : Doc.Buttons)
    if (!b->Hide) taken.push_back({b->PosX, b->PosY, b->FaceRight(), b->PosY + 5});
  for (CAniControl* c : Doc.AniCtrls)
    if (!c->Hide) taken.push_back({c->PosX, c->PosY - 3.0f * static_cast<float>(c->AniNum()), c->PosX + 15, c->PosY + 3});
  return taken;
}

bool Free(const Rect& r, const std::vector<Rect>& taken) {
  for (const Rect& t : taken)
    if (r.x0 < t.x1 + kGapX && t.x0 < r.x1 + kGapX && r.y0 < t.y1 + kGapY && t.y0 < r.y1 + kGapY) return false;
  return true;
}

}  // namespace

void FreeScreenPlace(float width, float height, float& x, float& y) {
  const std::vector<Rect> taken = TakenRects();
  for (float cx = kLeft; cx + width <= kRight; cx += kColumn)
    for (float cy = kTop; cy >= kBottom; cy -= 1) {
      if (!Free({cx, cy, cx + width, cy + height}, taken)) continue;
      x = cx;
      y = cy;
      return;
    }
  x = kLeft;
  y = kTop;
}

}  // namespace vt
