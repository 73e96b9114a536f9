// Random documents with every kind of object and hostile texts come back as
// the same text through a file, through undo and through the clipboard.
// VT_PROPERTY_SEED and VT_PROPERTY_COUNT choose the documents (by default a
// fixed seed and a few dozen); a long run with random seeds is done by hand:
//   VT_PROPERTY_SEED=$RANDOM VT_PROPERTY_COUNT=2000 ./vt_test_persist --gtest_filter='RoundTrip*'
#include <gtest/gtest.h>

#include <map>
#include <cstdlib>
#include <random>
#include <set>

#include "document/document.h"
#include "document/globals.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using test::TempDir;

long EnvOr(const char* name, long fallback) {
  const char* v = std::getenv(name);
  return v && *v ? std::strtol(v, nullptr, 10) : fallback;
}

class RoundTripTest : public test::DocumentTest {
 protected:
  std::mt19937 rng_;
  int Pick(int n) { return static_cast<int>(rng_() % static_cast<unsigned>(n)); }
  float Coord() { return static_cast<float>(Pick(2001) - 1000) / 64.0f; }

  // Ordinary words, and everything the "@" frame and the record split trip on.
  std::string Text() {
    static const char* const pieces[] = {"word", " ", "  ", "@", ";;", ";", "%", "%20", "\n", "\r\n", "\t",
                                         "a@",   "@b", "x y", "\xc3\xa9", "\xcf\x80", "0", "-1", "PT0001"};
    std::string t;
    switch (Pick(6)) {
      case 0: return t;
      case 1:  // many words, maybe one ending in "@"
        for (int i = 0, n = 25 + Pick(20); i < n; ++i) t += (i ? " w" : "w") + std::string(Pick(8) ? "" : "@");
        return t;
      case 2: return "Plain text " + std::to_string(Pick(100));
      default:
        for (int i = 0, n = 1 + Pick(8); i < n; ++i) t += pieces[Pick(std::size(pieces))];
        return t;
    }
  }

  Position* Point() { return Doc.Points.Item(1 + Pick(Doc.Points.count())); }
  template <class T>
  std::string IdOf(Collection<T>& c) {
    return c.count() ? c.Item(1 + Pick(c.count()))->ID : std::string();
  }
  // A new object of the collection's kind, with a new id, added.
  template <class T>
  T* New(Collection<T>& c, const char* tag) {
    auto o = std::make_unique<T>();
    o->ID = NewObjectId(tag);
    o->Selected = Pick(2);
    o->Hide = Pick(4) == 0;
    return c.Add(std::move(o));
  }
  // Two different points, with links back from them as the tools add.
  std::pair<Position*, Position*> TwoPoints(const std::string& holder = "", short geType = 0) {
    Position* a = Point();
    Position* b = Point();
    while (b == a) b = Point();
    if (holder.empty()) return {a, b};
    a->AddLink(CLinkObj{holder, geType, 1, 0, 0});
    b->AddLink(CLinkObj{holder, geType, 2, 0, 0});
    return {a, b};
  }

  void MakeDocument() {
    SceneMode = Pick(2) ? 1 : 3;
    ShowAxis = Pick(2), ShowGrid = Pick(2), SnapToGrid = Pick(2), ShowCoordLines = Pick(2);
    for (int i = 0, n = 3 + Pick(6); i < n; ++i) {
      // Labels differ, so that a paste into an empty document keeps them.
      AddPoint(Coord(), Coord(), SceneMode == 3 ? Coord() : 0, std::to_string(i) + Text())->Selected = Pick(2);
    }
    for (int i = 0, n = 1 + Pick(3); i < n; ++i) {
      CLine* l = New(Doc.Lines, "LN");
      auto [a, b] = TwoPoints(l->ID, 2);
      l->Line1(a->ID, b->ID);
      l->LLabel = Text();
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      CCircle* c = New(Doc.Circles, "CR");
      auto [a, b] = TwoPoints(c->ID, 3);
      c->Circle1(a->ID, b->ID);
      c->CLabel = Text();
    }
    for (int i = 0, n = Pick(2); i < n; ++i) {
      CArc* a = New(Doc.Arcs, "AR");
      auto [p, q] = TwoPoints(a->ID, 5);
      a->Arc1(p->ID, Point()->ID, q->ID);
      a->Label = Text();
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      CRegion* g = New(Doc.Regions, "RG");
      for (int k = 0; k < 3; ++k) {
        Position* p = Point();
        g->Points.emplace_back(p->x, p->y, p->z).ID = p->ID;
      }
      g->Label = Text(), g->Texture = Text();
    }
    if (Pick(2)) {
      CFunCurve* c = New(Doc.FunCurves, "C2");
      c->Init(c->ID, Text(), 1, 1, Text(), Text(), Text(), 20, 1, Text(), Text(), 0, 1, 255, 1);
      c->CurvPosExp = Text(), c->QiePosExp = Text(), c->NmlPosExp = Text();
    }
    if (Pick(2)) {
      CSurface* f = New(Doc.Surfaces, "SF");
      f->Init(f->ID, Text(), 2, 0, 1, Text(), Text(), Text(), 8, 8, Text(), Text(), Text(), Text());
      f->Ramp.ColorName = Text(), f->TexName = Text();
    }
    if (Doc.Lines.count() && Pick(2)) {
      CSurRot* r = New(Doc.SurRots, "SR");
      r->RotObjID = IdOf(Doc.Lines), r->RotCenterID = Point()->ID, r->RotAngle = Text();
      r->NameS = Text(), r->Ramp.ColorName = Text(), r->TexName = Text();
    }
    if (Doc.Lines.count() && Pick(2)) {
      CStretch* e = New(Doc.Stretchs, "SS");
      e->ObjID = IdOf(Doc.Lines), e->DX = Text(), e->DY = Text(), e->DZ = Text();
      e->NameS = Text(), e->Ramp.ColorName = Text(), e->TexName = Text();
    }
    if (Doc.Regions.count() && Pick(2)) {
      CFan* f = New(Doc.Fans, "FA");
      f->LKID = Point()->ID, f->LKID2 = IdOf(Doc.Regions), f->Ramp.ColorName = Text();
    }
    if (Doc.Circles.count() && Pick(2)) {
      CRibbon* b = New(Doc.Ribbons, "RB");
      b->LKID = IdOf(Doc.Circles), b->LKID2 = IdOf(Doc.Circles), b->Ramp.ColorName = Text();
    }
    if (Pick(2)) {
      CSphere* e = New(Doc.Spheres, "SP");
      auto [a, b] = TwoPoints();
      e->LKID = a->ID, e->LKID2 = b->ID, e->Ramp.ColorName = Text();
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      CText* t = New(Doc.Texts, "TT");
      t->PosX = Coord(), t->TType = 1, t->Content = Text(), t->FontName = Text();
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      CNote* t = New(Doc.Notes, "NT");
      t->VarName = Text(), t->Para1 = Text(), t->Para2 = Text(), t->Para3 = Text();
      t->Decim = static_cast<short>(Pick(11));
      if (Pick(2)) t->ForeColor = rng_() & 0xFFFFFF, t->FontSize = Pick(3) * 12;
    }
    if (Pick(2)) {
      CButton* b = New(Doc.Buttons, "BT");
      b->BTType = 5, b->Label = Text(), b->Para1 = Text(), b->Status = false;
      for (int i = 0, n = Pick(4); i < n; ++i) b->ObjIDs.push_back(Pick(2) ? "File-Open" : Text());
      b->ObjNum = static_cast<int>(b->ObjIDs.size());
    }
    if (!Pick(3)) return;
    CAniControl* c = New(Doc.AniCtrls, "AC");
    for (int i = 0, n = 1 + Pick(2); i < n; ++i) {
      auto a = std::make_unique<CAnimation>();
      a->ID = NewObjectId("AN"), a->ACID = c->ID, a->AniType = 1, a->Para2 = {Point()->ID};
      a->Note = Text(), a->Para1 = Text(), a->Para3 = Text(), a->Para4 = Text();
      if (!Pick(3)) a->AniType = 20, a->RangeFrom1 = -2, a->RangeTo1 = 2, a->RangeTo2 = 0.75f, a->Para0 = 0.25f;
      c->anis.push_back(std::move(a));
    }
    if (Doc.Regions.count() >= 2 && Pick(2)) {
      CInterLine* l = New(Doc.InterLines, "IL");
      l->LKID = Doc.Regions.Item(1)->ID, l->LKID2 = Doc.Regions.Item(2)->ID;
    }
    if (Pick(3)) {
      CLocus* l = New(Doc.Locuses, "LO");
      l->ACID = c->ID, l->LKID = Point()->ID, l->ColorName = Text(), l->Created = Pick(2);
      for (int i = 0, n = Pick(5); i < n; ++i) l->Points.emplace_back(Coord(), Coord(), 0);
    }
  }
};

// The records a copy of every point, line, circle, arc and region gives.
std::string CopiedKinds() {
  std::string s;
  for (Kind k : {Kind::PT, Kind::LN, Kind::CR, Kind::AR, Kind::RG})
    for (int i = 1; i <= Doc.Of(k).count(); ++i) s += Doc.Of(k).ItemBase(i)->Save();
  return s;
}

TEST_F(RoundTripTest, EveryDocumentComesBackAsTheSameText) {
  const long seed = EnvOr("VT_PROPERTY_SEED", 20261125);
  const long count = EnvOr("VT_PROPERTY_COUNT", 40);
  TempDir dir;
  const std::string path = dir.path("doc.vtd");
  std::set<Kind> seen;
  for (long n = 0; n < count; ++n) {
    SCOPED_TRACE("VT_PROPERTY_SEED=" + std::to_string(seed) + " document " + std::to_string(n));
    rng_.seed(static_cast<unsigned>(seed + n));
    ResetGlobals();
    host_.messages.clear();
    MakeDocument();
    const std::string text = GetUndoVar();
    const std::string copied = CopiedKinds();
    // Every object is written, one record each.
    std::map<std::string, int> records;
    for (std::string_view r : SplitRecords(text)) ++records[std::string(r.substr(0, 2))];
    for (Kind k : kAllKinds) {
      ASSERT_EQ(records[KindTag(k)], Doc.Of(k).count()) << KindTag(k);
      if (Doc.Of(k).count()) seen.insert(k);
    }

    std::string error;
    ASSERT_TRUE(WriteDocumentFile(path, text, error)) << error;
    ResetGlobals();
    EXPECT_TRUE(OpenFile(path));
    ASSERT_EQ(GetUndoVar(), text);

    OpenUnRe(text);  // undo and redo
    ASSERT_EQ(GetUndoVar(), text);

    ResetGlobals();
    SceneMode = 1;
    PasteRecords(copied);
    ASSERT_EQ(CopiedKinds(), copied);
    EXPECT_EQ(LastReadDamage().records, 0);
  }
  if (count >= 40) {
    EXPECT_EQ(seen.size(), kAllKinds.size());
  }
}

}  // namespace
}  // namespace vt
