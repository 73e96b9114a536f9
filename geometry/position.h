// Position: the point of the document, and the plain triple of singles used
// for temporary points, ray ends and samples. Also the carrier base shared by
// the objects that hold structure points.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "document/objects.h"

namespace vt {

class RecordReader;

class Position : public DocObject {
 public:
  static constexpr int kMaxLinks = 20;
  static constexpr int kMaxChildren = 30;
  static constexpr int kMaxParents = 30;

  Position();
  Position(float x_, float y_, float z_);

  float x = 0, y = 0, z = 0;
  int ptype = 0;
  short Size = 2;
  int PointAuxWord = 0;  // written and read back, used by nothing
  int Symbol = 1;
  std::string PLabel;
  std::vector<CLinkObj> LinkObjs;  // LinkNum = LinkObjs.size(), at most 20
  short Pos = 0;
  std::vector<std::string> Child;   // at most 30
  std::vector<std::string> Parent;  // at most 30
  float Para1 = 0, Para2 = 0, Para3 = 0;
  int name = 0;  // number in a selection pass; not saved

  int LinkNum() const { return static_cast<int>(LinkObjs.size()); }
  int ChildNum() const { return static_cast<int>(Child.size()); }
  int ParentNum() const { return static_cast<int>(Parent.size()); }
  // Bounded appends: past the bound they throw RunTimeError.
  void AddLink(const CLinkObj& link);
  void AddChild(const std::string& id);
  void AddParent(const std::string& id);

  // Coordinates only, for temporaries.
  void Set(float x_, float y_, float z_) {
    x = x_;
    y = y_;
    z = z_;
  }

  std::string Save() const override;
  // Reads a PT record (the reader stands at the first field); ids are shifted
  // by the reader's base.
  static std::unique_ptr<Position> Load(RecordReader& r);

  void GetBox(CBox& box) const override;
  void Draw() override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  // Ray form of Pick: the ray through the two given points.
  bool Pick(const Position& rayStart, const Position& rayEnd) const;
  // True when the point's screen position lies in the rectangle between the
  // two corners (any order), mapped with the current GL matrices.
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  // True when `name` is the name picked by the last selection pass.
  bool Pick3() const;

  // Images: a new unattached point, this point unchanged.
  Position Move(int moveType, float a, float b, float c, const std::string& id3,
                const std::string& id4) const;
  Position Zoom(float factor) const;
  Position RotateP(const std::string& centreId, float angle) const;
  Position MirrorP(const std::string& pointId) const;
  Position MirrorL(const std::string& lineId) const;
  Position MirrorR(const std::string& regionId) const;
  Position RotL3D(const std::string& lineId, float angle) const;

  // Update propagation (geometry/propagation.cpp), applied to the real point
  // after it has moved. UpdateLinked adds the change to every copy that the
  // holders in LinkObjs keep (a perpendicular's begin at half the change);
  // unless flag is 2 the holders then recompute their structure points and
  // hand each one on (one level); then the dependents without copies are
  // re-initialised. UpdateLinked1 does the same with absolute coordinates.
  // UpdateLinked2 writes x0 + dx, ... and StruUpdateLinked x, y, z into the
  // copies and stop there. UpdateStru writes the place into every copy of the
  // point `id` in this point's holders and calls nothing further. DrawLinked
  // sets the draw mode of the holders (arcs are passed over).
  void UpdateLinked(float dx, float dy, float dz, int flag);
  void UpdateLinked1(float x_, float y_, float z_, int flag);
  void UpdateLinked2(float x0, float y0, float z0, float dx, float dy, float dz);
  void StruUpdateLinked(float x_, float y_, float z_);
  using DocObject::UpdateStru;
  void UpdateStru(const std::string& id, float x_, float y_, float z_);
  void DrawLinked(int mode);

  // Image objects: with flag 1 this point moves in place and nullptr comes
  // back; otherwise a new point of ptype 10 is added to the document as the
  // image, registered as this point's child, and returned.
  Position* Move0(int flag, int moveType, float a, float b, float c, const std::string& id3,
                  const std::string& id4);
  Position* Zoom0(int flag, float factor);
  Position* RotateP0(int flag, const std::string& centreId, float angle);
  Position* RotL3D0(int flag, const std::string& lineId, float angle);
  Position* MirrorP0(int flag, const std::string& pointId);
  Position* MirrorL0(int flag, const std::string& lineId);
  Position* MirrorR0(int flag, const std::string& regionId);

 private:
  // Makes the image point (or moves this one) and fills the fields of the
  // transformation.
  Position* MakeImage(int flag, const Position& image, int transType, int moveType, float p1,
                      float p2, float p3, const std::string& lk2, const std::string& lk3,
                      const std::string& lk4);
};

// An object that carries structure points: lines, circles, arcs, regions,
// function curves.
class CCarrier : public DocObject {
 public:
  static constexpr int kMaxStru = 30;
  std::vector<Position> StruP;  // private copies, same ids as the real points
  int StruPNum() const { return static_cast<int>(StruP.size()); }
  // Appends a copy; past 30 it throws RunTimeError.
  Position& AddStruP(const Position& p);
};

}  // namespace vt
