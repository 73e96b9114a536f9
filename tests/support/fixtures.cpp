#include "support/fixtures.h"

#include <cstdlib>
#include <filesystem>

#include "geometry/line.h"

namespace vt::test {

void DocumentTest::SetUp() {
  ResetGlobals();
  SetHost(&host_);
}

void DocumentTest::TearDown() {
  SetHost(nullptr);
  ResetGlobals();
}

Position* DocumentTest::AddPoint(float x, float y, float z, const std::string& label) {
  std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, x, y, z, 1, "", "", 0, id);
  p->PLabel = label;
  return p;
}

CLine* DocumentTest::Segment(Position* a, Position* b, int lt, int ltype) {
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->lt = lt;
  l->LType = ltype;
  l->Line1(a->ID, b->ID);
  a->AddLink(CLinkObj{l->ID, 2, 1, 0, 0});
  b->AddLink(CLinkObj{l->ID, 2, 2, 0, 0});
  return Doc.Lines.Add(std::move(l));
}

CRegion* DocumentTest::Region(const std::vector<Position*>& corners) {
  auto g = std::make_unique<CRegion>();
  g->ID = NewObjectId("RG");
  g->Alpha = 0.5f;
  for (Position* c : corners) {
    g->Points.push_back(HolderCopy(*c));
    c->AddLink(CLinkObj{g->ID, 4, static_cast<short>(g->Points.size()), 0, 0});
  }
  return Doc.Regions.Add(std::move(g));
}

TempDir::TempDir() {
  std::string tmpl = (std::filesystem::temp_directory_path() / "vantrel-test-XXXXXX").string();
  char* made = mkdtemp(tmpl.data());
  dir_ = made ? made : tmpl;
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::permissions(dir_, std::filesystem::perms::owner_all, ec);
  std::filesystem::remove_all(dir_, ec);
}

}  // namespace vt::test
