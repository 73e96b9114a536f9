// The common object contract: what every document object offers, the box and
// link records shared by them, and the error that ends a command.
//
// Objects refer to each other only by id text ("PT0012"); the lookups of
// document.h turn an id into the object on each use.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace vt {

class Position;

// A fault that ends the current command (a full array, a bad list index).
// Handlers catch it at their top; the document keeps what was done so far.
class RunTimeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A box of six singles; GetBox of each object widens one.
struct CBox {
  float MinX = 0, MaxX = 0, MinY = 0, MaxY = 0, MinZ = 0, MaxZ = 0;
};

// Back-link from a point to an object that holds a copy of it.
struct CLinkObj {
  std::string ID;     // the holder
  short GEType = 0;   // 2 line, 3 circle, 4 region, 5 arc
  short Pos = 0;      // which defining slot of the holder this point fills
  int CType = 0;      // the holder's CType when it is a circle
  int AType = 0;      // the holder's AType when it is an arc

  // ID, GEType, Pos, CType, AType, each followed by one blank.
  std::string Save() const;
};

// Colours are red + 256 green + 65536 blue.
constexpr std::uint32_t RGB(int r, int g, int b) {
  return static_cast<std::uint32_t>(r) | (static_cast<std::uint32_t>(g) << 8) |
         (static_cast<std::uint32_t>(b) << 16);
}

// Base of every document object. A kind offers the members that apply to it;
// the defaults here do nothing, so a caller may call any of them on any kind.
class DocObject {
 public:
  virtual ~DocObject() = default;

  std::string ID;  // tag + number; fixed once the object is in a collection
  bool Hide = false;
  bool HideLabel = false;
  bool Selected = false;
  int DrawMode = 1;
  std::uint32_t ForeColor = 0;
  int GELineStyle = 1;
  float GELineWidth = 1;
  std::string LKID, LKID2, LKID3, LKID4;
  int TransType = 0;
  int MoveType = 0;

  // The two-letter tag at the head of the id.
  std::string Tag() const { return ID.substr(0, 2); }

  // The object's record, closing ";;" included.
  virtual std::string Save() const { return {}; }
  // Issues the drawing calls; runs while the scene's display list is open.
  virtual void Draw() {}
  // Hit test along the pick ray; true for a hit.
  virtual bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint);
  // Widens the box by the object.
  virtual void GetBox(CBox& box) const {}
  virtual void SetDrawMode(int mode) { DrawMode = mode; }
  // Recomputes the object's structure points.
  virtual void UpdateStru() {}
};

}  // namespace vt
