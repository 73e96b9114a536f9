#include "tools/transform.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/undo.h"
#include "geometry/propagation.h"
#include "render/frame.h"

namespace vt {

TransformDialogFn MoveDialog = nullptr, RotateDialog = nullptr, ZoomDialog = nullptr, MirrorDialog = nullptr;

namespace {

std::string Head(const std::string& id) { return id.substr(0, 2); }

// One run of a transformation: the pairs of source and image points made so
// far, so that objects sharing a point share its image.
class Run {
 public:
  explicit Run(const TransformParams& s) : s_(s) {}

  Position Mapped(const Position& p) const {
    switch (s_.op) {
      case TransformOp::Move: return p.Move(s_.moveType, s_.a, s_.b, s_.c, s_.id3, s_.id4);
      case TransformOp::Rotate:
        return Head(s_.centre) == "LN" ? p.RotL3D(s_.centre, s_.a) : p.RotateP(s_.centre, s_.a);
      case TransformOp::Zoom: return ZoomAbout(p, s_.centre, s_.a);
      case TransformOp::Mirror: {
        const std::string h = Head(s_.centre);
        if (h == "LN") return p.MirrorL(s_.centre);
        if (h == "RG") return p.MirrorR(s_.centre);
        return p.MirrorP(s_.centre);
      }
    }
    return Position(p.x, p.y, p.z);
  }

  // The image of a real point: the one made earlier in this run, else a new
  // point of ptype 10 that records the transformation.
  Position* ImageOf(Position& src) {
    auto it = pairs_.find(src.ID);
    if (it != pairs_.end())
      if (Position* p = FindPoint(it->second)) return p;
    Position* img = nullptr;
    switch (s_.op) {
      case TransformOp::Move: img = src.Move0(0, s_.moveType, s_.a, s_.b, s_.c, s_.id3, s_.id4); break;
      case TransformOp::Rotate:
        img = Head(s_.centre) == "LN" ? src.RotL3D0(0, s_.centre, s_.a) : src.RotateP0(0, s_.centre, s_.a);
        break;
      case TransformOp::Zoom:
        // Zoom0 scales about the origin; the image records its centre and
        // stands where the scaling about that centre puts it.
        img = src.Zoom0(0, s_.a);
        if (img) {
          img->LKID2 = s_.centre;
          const Position at = Mapped(src);
          img->Set(at.x, at.y, at.z);
        }
        break;
      case TransformOp::Mirror: {
        const std::string h = Head(s_.centre);
        img = h == "LN" ? src.MirrorL0(0, s_.centre) : h == "RG" ? src.MirrorR0(0, s_.centre) : src.MirrorP0(0, s_.centre);
        break;
      }
    }
    if (!img) return nullptr;
    AssignNextPointLabel(*img);
    pairs_[src.ID] = img->ID;
    return img;
  }

  // The image of a defining place that has no real point of its own (the
  // centre of a three-point circle): a point of ptype 10 without a source,
  // placed by the refresh of its holder.
  Position* LooseImage(const Position& place) {
    const Position at = Mapped(place);
    const std::string id = NewObjectId("PT");
    Position* img = Doc.Points.Add(id, at.x, at.y, at.z, 10, "", "", 0, id);
    AssignNextPointLabel(*img);
    img->SetDrawMode(1);
    return img;
  }

  Position* ImageOfSlot(const Position& copy) {
    if (Position* real = FindPoint(copy.ID)) return ImageOf(*real);
    return LooseImage(copy);
  }

  // The image object made by the kind's own transform (flag 0); a scaled
  // image records its centre as the points do.
  template <class T>
  T* MakeImage(T& src) {
    switch (s_.op) {
      case TransformOp::Move: return src.Move(s_.moveType, s_.a, s_.b, s_.c, s_.id3, s_.id4, 0);
      case TransformOp::Rotate:
        return Head(s_.centre) == "LN" ? src.RotL3D(s_.centre, s_.a, 0) : src.RotateP(s_.centre, s_.a, 0);
      case TransformOp::Zoom: {
        T* img = src.Zoom(s_.a, 0);
        if (img) img->LKID2 = s_.centre;
        return img;
      }
      case TransformOp::Mirror: {
        const std::string h = Head(s_.centre);
        if (h == "LN") return src.MirrorL(s_.centre, 0);
        if (h == "RG") return src.MirrorR(s_.centre, 0);
        return src.MirrorP(s_.centre, 0);
      }
    }
    return nullptr;
  }

  bool Moved(const std::string& id) const {
    return !id.empty() && std::find(moved_.begin(), moved_.end(), id) != moved_.end();
  }

  // In place: a free point moves with its copies.
  void MoveFree(const std::string& id) {
    Position* p = FindPoint(id);
    if (!p || (p->ptype != 1 && p->ptype != 0)) return;
    if (std::find(moved_.begin(), moved_.end(), id) != moved_.end()) return;
    moved_.push_back(id);
    const Position at = Mapped(*p);
    MovePointTo(*p, at.x, at.y, at.z);
  }

  void Point(Position& p, bool generate) {
    if (generate) {
      ImageOf(p);
    } else {
      const Position at = Mapped(p);
      MovePointTo(p, at.x, at.y, at.z);
      moved_.push_back(p.ID);
    }
  }

  void Line(CLine& l, bool generate) {
    if (!generate) {
      for (const std::string& id : {l.pBegin.ID, l.pEnd.ID}) MoveFree(id);
      return;
    }
    Position* b = ImageOfSlot(l.pBegin);
    Position* e = ImageOfSlot(l.pEnd);
    CLine* img = MakeImage(l);
    if (!img) return;
    img->LType = 10;
    img->lt = l.lt;
    img->pBegin = HolderCopy(*b);
    img->pEnd = HolderCopy(*e);
    img->LLabel = b->PLabel + e->PLabel;
    b->AddLink(CLinkObj{img->ID, 2, 1, 0, 0});
    e->AddLink(CLinkObj{img->ID, 2, 2, 0, 0});
  }

  void Circle(CCircle& c, bool generate) {
    const bool byPoints = c.CType == 1 || c.CType == 10;
    if (!generate) {
      for (const Position* s : {&c.PCenter, &c.PCircleR, &c.PCircleR2, &c.PCircleR3}) MoveFree(s->ID);
      // A circle of a given radius has no rim point to carry its size.
      if (c.CType == 3 && s_.op == TransformOp::Zoom) c.R *= std::fabs(s_.a);
      c.Rim.clear();
      return;
    }
    Position* centre = byPoints ? ImageOfSlot(c.PCenter) : LooseImage(c.Centre());
    Position rimPlace = c.Centre();
    rimPlace.x += c.Radius();
    Position* rim = byPoints ? ImageOfSlot(c.PCircleR) : LooseImage(rimPlace);
    CCircle* img = MakeImage(c);
    if (!img) return;
    if (img->CType != 5) img->CType = 10;
    img->PCenter = HolderCopy(*centre);
    img->PCircleR = HolderCopy(*rim);
    img->R = c.Radius() * (s_.op == TransformOp::Zoom ? std::fabs(s_.a) : 1.0f);
    img->CLabel = centre->PLabel + rim->PLabel;
    centre->AddLink(CLinkObj{img->ID, 3, 2, img->CType, 0});
    rim->AddLink(CLinkObj{img->ID, 3, 1, img->CType, 0});
  }

  void Arc(CArc& a, bool generate) {
    // A reflection turns the sense round: the arc then runs from the image of
    // its end to the image of its begin (a three-point arc keeps its sense by
    // its middle point).
    const bool reversed =
        a.AType != 2 && ReversesTurn([this](const Position& p) { return Mapped(p); }, a.Centre());
    if (!generate) {
      for (const Position* s : {&a.pBegin, &a.PCenter, &a.pMid, &a.pEnd}) MoveFree(s->ID);
      // Its copies follow the points; when its ends and centre all moved,
      // the ends change places as well.
      if (reversed && Moved(a.pBegin.ID) && Moved(a.PCenter.ID) && Moved(a.pEnd.ID)) std::swap(a.pBegin, a.pEnd);
      return;
    }
    Position* b = ImageOfSlot(a.pBegin);
    Position* m = a.AType == 2 ? ImageOfSlot(a.pMid) : (a.AType == 4 ? LooseImage(a.Centre()) : ImageOfSlot(a.PCenter));
    Position* e = ImageOfSlot(a.pEnd);
    CArc* img = MakeImage(a);
    if (!img) return;
    if (reversed) std::swap(b, e);
    img->pBegin = HolderCopy(*b);
    img->pEnd = HolderCopy(*e);
    if (a.AType == 2) {
      img->pMid = HolderCopy(*m);
    } else {
      img->PCenter = HolderCopy(*m);
      img->AType = 10;
    }
    img->R = img->Radius();
    img->Label = b->PLabel + m->PLabel + e->PLabel;
    b->AddLink(CLinkObj{img->ID, 5, 1, 0, img->AType});
    m->AddLink(CLinkObj{img->ID, 5, 2, 0, img->AType});
    e->AddLink(CLinkObj{img->ID, 5, 3, 0, img->AType});
  }

  void Region(CRegion& g, bool generate) {
    if (!generate) {
      for (const Position& c : g.Points) MoveFree(c.ID);
      return;
    }
    std::vector<Position*> corners;
    for (const Position& c : g.Points) corners.push_back(ImageOfSlot(c));
    CRegion* img = MakeImage(g);
    if (!img) return;
    img->RType = 2;
    img->Points.clear();
    img->Label.clear();
    short pos = 1;
    for (Position* c : corners) {
      img->Points.push_back(HolderCopy(*c));
      img->Label += c->PLabel;
      c->AddLink(CLinkObj{img->ID, 4, pos++, 0, 0});
    }
  }

 private:
  const TransformParams& s_;
  std::map<std::string, std::string> pairs_;
  std::vector<std::string> moved_;
};

}  // namespace

void AddSelectionToList(std::vector<std::string>& list) {
  auto add = [&](const std::string& id) {
    if (std::find(list.begin(), list.end(), id) == list.end()) list.push_back(id);
  };
  for (Position* p : Sel.Points) add(p->ID);
  for (CLine* l : Sel.Lines) add(l->ID);
  for (CCircle* c : Sel.Circles) add(c->ID);
  for (CArc* a : Sel.Arcs) add(a->ID);
  for (CRegion* g : Sel.Regions) add(g->ID);
}

const char* const kMsgRotateAboutPointInPlane =
    "In a plane scene a figure turns about a point. Please select a point as the center. ";
const char* const kMsgPointCannotMoveItself =
    "A point that lies on an object or is built from other points cannot be moved by itself. Please choose "
    "\"Generate a new object\" to make its image. ";

bool ApplyTransform(const std::vector<std::string>& ids, const TransformParams& spec, bool generate) {
  // What cannot be done is said before anything moves.
  const char* refusal = nullptr;
  if (spec.op == TransformOp::Rotate && SceneMode == 1 && Head(spec.centre) == "LN") {
    // Turning about a line would take the points out of the plane.
    refusal = kMsgRotateAboutPointInPlane;
  } else if (!generate) {
    for (const std::string& id : ids)
      if (const Position* p = Head(id) == "PT" ? FindPoint(id) : nullptr; p && p->ptype != 0 && p->ptype != 1)
        refusal = kMsgPointCannotMoveItself;
  }
  if (refusal) {
    host().MsgBox(refusal, "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  RunGuarded([&] {
    Run run(spec);
    for (const std::string& id : ids) {
      const std::string h = Head(id);
      if (h == "PT") {
        if (Position* p = FindPoint(id)) run.Point(*p, generate);
      } else if (h == "LN") {
        if (CLine* l = Doc.Lines.FindById(id)) run.Line(*l, generate);
      } else if (h == "CR") {
        if (CCircle* c = Doc.Circles.FindById(id)) run.Circle(*c, generate);
      } else if (h == "AR") {
        if (CArc* a = Doc.Arcs.FindById(id)) run.Arc(*a, generate);
      } else if (h == "RG") {
        if (CRegion* g = Doc.Regions.FindById(id)) run.Region(*g, generate);
      }
    }
    // Constructions resting on moved points come along.
    if (!generate) RepropagateAfterMove();
  });
  PushSnapshot();
  RedrawScene();
  return true;
}

void RegisterTransformCommands() {
  RegisterHandler("mnuTMoving", [] {
    if (MoveDialog) MoveDialog();
  });
  RegisterHandler("mnuTRotate", [] {
    if (RotateDialog) RotateDialog();
  });
  RegisterHandler("mnuTZoom", [] {
    if (ZoomDialog) ZoomDialog();
  });
  RegisterHandler("mnuMirrorP", [] {
    if (MirrorDialog) MirrorDialog();
  });
}

}  // namespace vt
