// Random documents with every kind of object and hostile texts come back as
// the same text through a file, through undo and through the clipboard.
// VT_PROPERTY_SEED and VT_PROPERTY_COUNT choose the documents (by default a
// fixed seed and a few dozen); a long run with random seeds is done by hand:
//   VT_PROPERTY_SEED=$RANDOM VT_PROPERTY_COUNT=2000 ./vt_test_persist --gtest_filter='RoundTrip*'
#include <gtest/gtest.h>

#include <csignal>
#include <map>
#include <cstdlib>
#include <random>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

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
  template <class T, class C>
  T* Add(C& c, std::unique_ptr<T> o, const char* tag) {
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
    SetFlags();
    for (int i = 0, n = 3 + Pick(6); i < n; ++i) {
      // Labels differ, so that a paste into an empty document keeps them.
      Position* p = AddPoint(Coord(), Coord(), SceneMode == 3 ? Coord() : 0, std::to_string(i) + Text());
      p->Selected = Pick(2);
    }
    for (int i = 0, n = 1 + Pick(3); i < n; ++i) {
      auto l = std::make_unique<CLine>();
      l->ID = NewObjectId("LN");
      auto [a, b] = TwoPoints(l->ID, 2);
      l->Line1(a->ID, b->ID);
      l->LLabel = Text();
      Doc.Lines.Add(std::move(l));
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      auto c = std::make_unique<CCircle>();
      c->ID = NewObjectId("CR");
      auto [a, b] = TwoPoints(c->ID, 3);
      c->Circle1(a->ID, b->ID);
      c->CLabel = Text();
      Doc.Circles.Add(std::move(c));
    }
    for (int i = 0, n = Pick(2); i < n; ++i) {
      auto a = std::make_unique<CArc>();
      a->ID = NewObjectId("AR");
      auto [p, q] = TwoPoints(a->ID, 5);
      Position* c = Point();
      a->Arc1(p->ID, c->ID, q->ID);
      a->Label = Text();
      Doc.Arcs.Add(std::move(a));
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      auto g = std::make_unique<CRegion>();
      g->ID = NewObjectId("RG");
      for (int k = 0; k < 3; ++k) {
        Position* p = Point();
        Position copy(p->x, p->y, p->z);
        copy.ID = p->ID;
        g->Points.push_back(copy);
      }
      g->Label = Text();
      g->Texture = Text();
      Doc.Regions.Add(std::move(g));
    }
    if (Pick(2)) {
      auto c = std::make_unique<CFunCurve>();
      c->Init(NewObjectId("C2"), Text(), 1, 1, Text(), Text(), Text(), 20, 1, Text(), Text(), 0, 1, 255, 1);
      c->CurvPosExp = Text();
      c->QiePosExp = Text();
      c->NmlPosExp = Text();
      Doc.FunCurves.Add(std::move(c));
    }
    if (Pick(2)) {
      auto s = std::make_unique<CSurface>();
      s->Init(NewObjectId("SF"), Text(), 2, 0, 1, Text(), Text(), Text(), 8, 8, Text(), Text(), Text(), Text());
      s->Ramp.ColorName = Text();
      s->TexName = Text();
      Doc.Surfaces.Add(std::move(s));
    }
    if (Doc.Lines.count() && Pick(2)) {
      auto r = std::make_unique<CSurRot>();
      r->RotObjID = IdOf(Doc.Lines);
      r->RotCenterID = Point()->ID;
      r->RotAngle = Text();
      Swept(Add(Doc.SurRots, std::move(r), "SR"));
    }
    if (Doc.Lines.count() && Pick(2)) {
      auto s = std::make_unique<CStretch>();
      s->ObjID = IdOf(Doc.Lines);
      s->DX = Text();
      s->DY = Text();
      s->DZ = Text();
      Swept(Add(Doc.Stretchs, std::move(s), "SS"));
    }
    if (Doc.Regions.count() && Pick(2)) {
      auto f = std::make_unique<CFan>();
      f->LKID = Point()->ID;
      f->LKID2 = IdOf(Doc.Regions);
      Add(Doc.Fans, std::move(f), "FA")->Ramp.ColorName = Text();
    }
    if (Doc.Circles.count() && Pick(2)) {
      auto b = std::make_unique<CRibbon>();
      b->LKID = IdOf(Doc.Circles);
      b->LKID2 = IdOf(Doc.Circles);
      Add(Doc.Ribbons, std::move(b), "RB")->Ramp.ColorName = Text();
    }
    if (Pick(2)) {
      auto s = std::make_unique<CSphere>();
      auto [a, b] = TwoPoints();
      s->LKID = a->ID;
      s->LKID2 = b->ID;
      Add(Doc.Spheres, std::move(s), "SP")->Ramp.ColorName = Text();
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      auto t = std::make_unique<CText>();
      t->PosX = Coord();
      t->TType = 1;
      t->Content = Text();
      t->FontName = Text();
      Add(Doc.Texts, std::move(t), "TT");
    }
    for (int i = 0, n = Pick(3); i < n; ++i) {
      auto t = std::make_unique<CNote>();
      t->VarName = Text();
      t->Para1 = Text();
      t->Para2 = Text();
      t->Para3 = Text();
      Add(Doc.Notes, std::move(t), "NT");
    }
    if (Pick(2)) {
      auto b = std::make_unique<CButton>();
      b->BTType = 5;
      b->Label = Text();
      b->Para1 = Text();
      for (int i = 0, n = Pick(4); i < n; ++i) b->ObjIDs.push_back(Pick(2) ? "File-Open" : Text());
      b->ObjNum = static_cast<int>(b->ObjIDs.size());
      b->Selected = Pick(2);
      Add(Doc.Buttons, std::move(b), "BT")->Status = false;
    }
    std::string player;
    if (Pick(3)) {
      auto c = std::make_unique<CAniControl>();
      c->ID = player = NewObjectId("AC");
      for (int i = 0, n = 1 + Pick(2); i < n; ++i) {
        auto a = std::make_unique<CAnimation>();
        a->ID = NewObjectId("AN");
        a->ACID = c->ID;
        a->AniType = 1;
        a->Note = Text();
        a->Para1 = Text();
        a->Para2 = {Point()->ID};
        a->Para3 = Text();
        a->Para4 = Text();
        c->anis.push_back(std::move(a));
      }
      Doc.AniCtrls.Add(std::move(c));
    }
    if (Doc.Regions.count() >= 2 && Pick(2)) {
      auto l = std::make_unique<CInterLine>();
      l->LKID = Doc.Regions.Item(1)->ID;
      l->LKID2 = Doc.Regions.Item(2)->ID;
      Add(Doc.InterLines, std::move(l), "IL");
    }
    if (!player.empty() && Pick(3)) {
      auto l = std::make_unique<CLocus>();
      l->ACID = player;
      l->LKID = Point()->ID;
      l->ColorName = Text();
      for (int i = 0, n = Pick(5); i < n; ++i) l->Points.emplace_back(Coord(), Coord(), 0);
      l->Created = Pick(2);
      Add(Doc.Locuses, std::move(l), "LO");
    }
  }
  void SetFlags() {
    ShowAxis = Pick(2);
    ShowGrid = Pick(2);
    SnapToGrid = Pick(2);
    ShowCoordLines = Pick(2);
  }
  void Swept(CSweptSurface* s) {
    s->NameS = Text();
    s->Ramp.ColorName = Text();
    s->TexName = Text();
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

// A save killed part way leaves the old file whole: the text goes to a file
// beside it, which only a finished write renames into place.
TEST(SaveKilled, TheOldFileStaysWhole) {
  TempDir dir;
  const std::string path = dir.path("doc.vtd");
  const std::string old = "GL Ver3.00 1 0 0 0 0;;PT0001 1 2 0 1 2 255 0 1 1 @A@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;";
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(path, old, error)) << error;
  std::string big = "GL Ver3.00 1 0 0 0 0;;";
  while (big.size() < (32u << 20)) big += std::string(4096, 'x') + ";;";
  for (int delayUs : {0, 2000, 20000}) {
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) {
        std::string e;
        WriteDocumentFile(path, big, e);
      }
    }
    usleep(static_cast<useconds_t>(delayUs) + 5000);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    std::string back;
    ASSERT_TRUE(ReadDocumentFile(path, back)) << delayUs;
    EXPECT_TRUE(back == old || back == big) << "a torn file of " << back.size() << " bytes";
    if (back != old) {
      ASSERT_TRUE(WriteDocumentFile(path, old, error));
    }
  }
}

}  // namespace
}  // namespace vt
