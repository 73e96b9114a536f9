#include "document/document.h"

#include <cctype>

#include "document/globals.h"
#include "document/numtext.h"

namespace vt {

DocumentSet Doc;
DocumentSet Sel;
long NextObjectNumber = 0;
std::string LastPointLabel = "0";
short LinkPassMode = 2;

Position* CPoints::Add(const std::string& ID, float x, float y, float z, int ptype,
                       const std::string& LKID, const std::string& LKID2, short Pos,
                       const std::string& key) {
  auto p = std::make_unique<Position>(x, y, z);
  p->ID = ID;
  p->ptype = ptype;
  p->LKID = LKID;
  p->LKID2 = LKID2;
  p->Pos = Pos;
  return Collection<Position>::Add(std::move(p), key);
}

const char* KindTag(Kind k) {
  static const char* const tags[kKindCount] = {"PT", "LN", "CR", "AR", "RG", "C2", "SF", "SR", "SS",
                                               "FA", "RB", "SP", "TT", "NT", "BT", "AC", "IL", "LO"};
  return tags[static_cast<int>(k)];
}

bool KindOfTag(const std::string& tag, Kind& k) {
  if (tag == "C3") {
    k = Kind::SF;
    return true;
  }
  for (Kind kind : kAllKinds)
    if (tag == KindTag(kind)) {
      k = kind;
      return true;
    }
  return false;
}

CollectionBase& DocumentSet::Of(Kind k) {
  switch (k) {
    case Kind::PT: return Points;
    case Kind::LN: return Lines;
    case Kind::CR: return Circles;
    case Kind::AR: return Arcs;
    case Kind::RG: return Regions;
    case Kind::C2: return FunCurves;
    case Kind::SF: return Surfaces;
    case Kind::SR: return SurRots;
    case Kind::SS: return Stretchs;
    case Kind::FA: return Fans;
    case Kind::RB: return Ribbons;
    case Kind::SP: return Spheres;
    case Kind::TT: return Texts;
    case Kind::NT: return Notes;
    case Kind::BT: return Buttons;
    case Kind::AC: return AniCtrls;
    case Kind::IL: return InterLines;
    case Kind::LO: return Locuses;
  }
  return Points;
}

CollectionBase* DocumentSet::OfId(const std::string& id) {
  Kind k;
  if (!KindOfTag(id.substr(0, 2), k)) return nullptr;
  return &Of(k);
}

// ---- ids --------------------------------------------------------------------

std::string ObjectId(const std::string& tag, long number) { return tag + ZeroPad(number, 4); }

std::string NewObjectId(const std::string& tag) {
  ++NextObjectNumber;
  return ObjectId(tag, NextObjectNumber);
}

long IdNumber(const std::string& id) {
  if (id.size() < 3) return -1;
  long n = 0;
  for (size_t i = 2; i < id.size(); ++i) {
    if (!std::isdigit(static_cast<unsigned char>(id[i]))) return -1;
    if (n > 100000000) return -1;  // far beyond any document
    n = n * 10 + (id[i] - '0');
  }
  return n;
}

std::string ShiftId(const std::string& id, long base) {
  long n = IdNumber(id);
  if (n < 0 || base == 0) return id;
  return ObjectId(id.substr(0, 2), n + base);
}

// ---- labels -------------------------------------------------------------------

namespace {

// A label is a first letter and a numeric suffix ("B12").
long LabelSuffix(const std::string& label) {
  return label.size() > 1 ? static_cast<long>(Val(label.substr(1))) : 0;
}

bool CountsAsLabel(const std::string& label) {
  return !label.empty() && label.find('\'') == std::string::npos;
}

}  // namespace

std::string NextPointLabel(const std::string& last) {
  if (last.empty()) return "A";
  char first = static_cast<char>(std::toupper(static_cast<unsigned char>(last[0])));
  if (first < 'A' || first > 'Z') return "A";
  long suffix = LabelSuffix(last);
  if (first == 'Z') return "A" + IntToText(suffix + 1);
  std::string next(1, static_cast<char>(first + 1));
  return suffix == 0 ? next : next + IntToText(suffix);
}

std::string LaterPointLabel(const std::string& a, const std::string& b) {
  bool la = CountsAsLabel(a), lb = CountsAsLabel(b);
  if (!la) return lb ? b : std::string();
  if (!lb) return a;
  if (a.size() != b.size()) return a.size() > b.size() ? a : b;
  long sa = LabelSuffix(a), sb = LabelSuffix(b);
  if (sa != sb) return sa > sb ? a : b;
  int fa = std::toupper(static_cast<unsigned char>(a[0]));
  int fb = std::toupper(static_cast<unsigned char>(b[0]));
  return fb > fa ? b : a;
}

void AssignNextPointLabel(Position& p) {
  p.PLabel = NextPointLabel(LastPointLabel);
  LastPointLabel = p.PLabel;
}

void RecomputeLastPointLabel() {
  std::string best;
  for (Position* p : Doc.Points) best = LaterPointLabel(best, p->PLabel);
  LastPointLabel = best.empty() ? "0" : best;
}

// ---- lookups ------------------------------------------------------------------

namespace {

// The scan order of the id lookup; tracks of the players come after all.
constexpr Kind kScanOrder[] = {Kind::PT, Kind::LN, Kind::RG, Kind::CR, Kind::AR, Kind::TT,
                               Kind::NT, Kind::C2, Kind::SF, Kind::SR, Kind::SS, Kind::FA,
                               Kind::RB, Kind::SP, Kind::IL, Kind::LO, Kind::BT, Kind::AC};

bool FindIn(DocumentSet& set, const std::string& id, int& index, int& aniIndex) {
  aniIndex = 0;
  for (Kind k : kScanOrder) {
    int i = set.Of(k).FindId(id);
    if (i) {
      index = i;
      return true;
    }
  }
  if (id.compare(0, 2, "AN") == 0) {
    int ci = 0;
    for (CAniControl* c : set.AniCtrls) {
      ++ci;
      for (int t = 0; t < c->AniNum(); ++t)
        if (c->anis[static_cast<size_t>(t)]->ID == id) {
          index = ci;
          aniIndex = t + 1;
          return true;
        }
    }
  }
  return false;
}

}  // namespace

bool FindObjectIndex(const std::string& id, int& index, int& aniIndex) {
  return FindIn(Doc, id, index, aniIndex);
}

bool FindSelIndex(const std::string& id, int& index) {
  int ani;
  return FindIn(Sel, id, index, ani);
}

DocObject* GetObjectById(const std::string& id) {
  int index = 0, ani = 0;
  if (!FindObjectIndex(id, index, ani)) return nullptr;
  if (id.compare(0, 2, "AN") == 0) {
    if (ani == 0) return nullptr;
    CAniControl* c = Doc.AniCtrls.Item(index);
    return c->anis[static_cast<size_t>(ani - 1)].get();
  }
  CollectionBase* coll = Doc.OfId(id);
  if (!coll || index > coll->count()) return nullptr;
  DocObject* obj = coll->ItemBase(index);
  // The index came from the first collection holding the id; a damaged
  // document can hold it under another tag.
  return obj->ID == id ? obj : nullptr;
}

Position* FindPoint(const std::string& id) { return Doc.Points.FindById(id); }

int DocumentObjectCount() {
  int n = 0;
  for (Kind k : kAllKinds) n += Doc.Of(k).count();
  for (CAniControl* c : Doc.AniCtrls) n += c->AniNum();
  return n;
}

// ---- selection ----------------------------------------------------------------

bool IsSelected(const std::string& id) {
  CollectionBase* set = Sel.OfId(id);
  return set && set->FindId(id) != 0;
}
bool IsSelectedPoint(const Position& p) { return Sel.Points.FindId(p.ID) != 0; }
bool IsSelectedLine(const CLine& l) { return Sel.Lines.FindId(l.ID) != 0; }
bool IsSelectedCircle(const CCircle& c) { return Sel.Circles.FindId(c.ID) != 0; }
bool IsSelectedArc(const CArc& a) { return Sel.Arcs.FindId(a.ID) != 0; }
bool IsSelectedRegion(const CRegion& r) { return Sel.Regions.FindId(r.ID) != 0; }

namespace {

template <class T>
void AddShadow(Collection<T>& set, const std::string& id) {
  auto s = std::make_unique<T>();
  s->ID = id;
  set.Add(std::move(s));
}

}  // namespace

void SelectObject(DocObject& obj) {
  obj.Selected = true;
  if (IsSelected(obj.ID)) return;
  Kind k;
  if (!KindOfTag(obj.Tag(), k)) return;
  switch (k) {
    case Kind::PT: {
      // Points and lines carry a copy of their creation fields.
      auto& p = static_cast<Position&>(obj);
      Sel.Points.Add(p.ID, p.x, p.y, p.z, p.ptype, p.LKID, p.LKID2, p.Pos);
      break;
    }
    case Kind::LN: {
      auto& l = static_cast<CLine&>(obj);
      auto s = std::make_unique<CLine>();
      s->ID = l.ID;
      s->lt = l.lt;
      s->GELineWidth = l.GELineWidth;
      s->GELineStyle = l.GELineStyle;
      s->ForeColor = l.ForeColor;
      s->pBegin = l.pBegin;
      s->pEnd = l.pEnd;
      s->LType = l.LType;
      s->LKID = l.LKID;
      s->LKID2 = l.LKID2;
      Sel.Lines.Add(std::move(s));
      break;
    }
    case Kind::CR: AddShadow(Sel.Circles, obj.ID); break;
    case Kind::AR: AddShadow(Sel.Arcs, obj.ID); break;
    case Kind::RG: AddShadow(Sel.Regions, obj.ID); break;
    case Kind::C2: AddShadow(Sel.FunCurves, obj.ID); break;
    case Kind::SF: AddShadow(Sel.Surfaces, obj.ID); break;
    case Kind::SR: AddShadow(Sel.SurRots, obj.ID); break;
    case Kind::SS: AddShadow(Sel.Stretchs, obj.ID); break;
    case Kind::FA: AddShadow(Sel.Fans, obj.ID); break;
    case Kind::RB: AddShadow(Sel.Ribbons, obj.ID); break;
    case Kind::SP: AddShadow(Sel.Spheres, obj.ID); break;
    case Kind::TT: AddShadow(Sel.Texts, obj.ID); break;
    case Kind::NT: AddShadow(Sel.Notes, obj.ID); break;
    case Kind::BT: AddShadow(Sel.Buttons, obj.ID); break;
    case Kind::AC: AddShadow(Sel.AniCtrls, obj.ID); break;
    case Kind::IL: AddShadow(Sel.InterLines, obj.ID); break;
    case Kind::LO: AddShadow(Sel.Locuses, obj.ID); break;
  }
}

void DeselectObject(DocObject& obj) {
  obj.Selected = false;
  CollectionBase* set = Sel.OfId(obj.ID);
  if (!set) return;
  while (int i = set->FindId(obj.ID)) set->Remove(i);
}

// ---- removal ------------------------------------------------------------------

void CollectPointTree(const Position& p, int& count, std::vector<std::string>& ids) {
  if (count >= kMaxDeleteIds) throw RunTimeError("subscript out of range");
  ++count;
  ids.push_back(p.ID);
  for (const std::string& child : p.Child) {
    Position* c = FindPoint(child);
    // A child already collected (a damaged document can hold a cycle) ends
    // the walk there; every other child contributes its own tree.
    if (!c) continue;
    bool seen = false;
    for (const std::string& id : ids)
      if (id == child) {
        seen = true;
        break;
      }
    if (!seen) CollectPointTree(*c, count, ids);
  }
}

void RemoveSelectedObjects() {
  for (Kind k : kAllKinds) {
    CollectionBase& set = Sel.Of(k);
    CollectionBase& doc = Doc.Of(k);
    for (int i = set.count(); i >= 1; --i) {
      std::string id = set.ItemBase(i)->ID;
      if (int j = doc.FindId(id)) doc.Remove(j);
      set.Remove(i);
    }
  }
}

void ClearDocument() {
  for (Kind k : kAllKinds) Sel.Of(k).Clear();
  for (Kind k : kAllKinds) Doc.Of(k).Clear();
}

void DeleteSelection() {
  int count = 0;
  std::vector<std::string> ids;

  // 1. The trees of the selected points.
  for (Position* s : Sel.Points)
    if (Position* p = FindPoint(s->ID)) CollectPointTree(*p, count, ids);

  // 2. The structure points of the selected carriers, with their trees.
  auto collectStru = [&](CollectionBase& set, CollectionBase& doc) {
    for (int i = 1; i <= set.count(); ++i) {
      int j = doc.FindId(set.ItemBase(i)->ID);
      if (!j) continue;
      auto* carrier = dynamic_cast<CCarrier*>(doc.ItemBase(j));
      if (!carrier) continue;
      for (const Position& sp : carrier->StruP)
        if (Position* p = FindPoint(sp.ID)) CollectPointTree(*p, count, ids);
    }
  };
  collectStru(Sel.Lines, Doc.Lines);
  collectStru(Sel.Circles, Doc.Circles);
  collectStru(Sel.Regions, Doc.Regions);
  collectStru(Sel.FunCurves, Doc.FunCurves);

  // 3./4. The holders of every collected point.
  std::vector<std::string> linked;
  for (const std::string& id : ids) {
    Position* p = FindPoint(id);
    if (!p) continue;
    for (const CLinkObj& link : p->LinkObjs) {
      if (static_cast<int>(linked.size()) >= kMaxDeleteIds) throw RunTimeError("subscript out of range");
      linked.push_back(link.ID);
    }
  }

  // 5. Remove the holders of the kinds handled here.
  for (const std::string& id : linked) {
    std::string tag = id.substr(0, 2);
    if (tag != "LN" && tag != "CR" && tag != "AR" && tag != "RG" && tag != "C2") continue;
    CollectionBase* set = Sel.OfId(id);
    CollectionBase* doc = Doc.OfId(id);
    if (int i = set->FindId(id)) set->Remove(i);
    if (int i = doc->FindId(id)) doc->Remove(i);
  }

  // 6. The points themselves.
  for (const std::string& id : ids) {
    if (int i = Sel.Points.FindId(id)) Sel.Points.Remove(i);
    if (int i = Doc.Points.FindId(id)) Doc.Points.Remove(i);
  }

  // 7. Whatever else is still selected.
  RemoveSelectedObjects();
}

}  // namespace vt

// ---- reset --------------------------------------------------------------------

#include "animation/player_objects.h"
#include "document/frame_commands.h"
#include "document/undo.h"
#include "render/view_state.h"
#include "tools/notes.h"

namespace vt {

void ResetGlobals() {
  ClearDocument();
  NextObjectNumber = 0;
  LastPointLabel = "0";
  LinkPassMode = 2;
  ResetFrameGlobals();
  NoteCounter = 0;
  AniDialogKind = 0;
  ResetUndo();
  ResetViewState();
  CurrentFilePath.clear();
}

}  // namespace vt
