#include "support/fixtures.h"

#include <cstdlib>
#include <filesystem>

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
