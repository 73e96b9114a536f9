// Test fixtures: a fresh document and a recording host for every test.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "document/document.h"
#include "document/host.h"

namespace vt::test {

class DocumentTest : public ::testing::Test {
 public:
  void SetUp() override;
  void TearDown() override;

  // A free point with a new id, keyed by its id, optionally labelled.
  Position* AddPoint(float x, float y, float z = 0, const std::string& label = std::string());
  // A segment (lt 2: a line) between two points, linked to them as the
  // segment tool links it; or between two new points.
  CLine* Segment(Position* a, Position* b, int lt = 1, int ltype = 0);
  CLine* Segment(float x1, float y1, float z1, float x2, float y2, float z2, int lt = 1) {
    return Segment(AddPoint(x1, y1, z1), AddPoint(x2, y2, z2), lt);
  }
  // A polygon on the points, linked to them.
  CRegion* Region(const std::vector<Position*>& corners);

  RecordingHost host_;
};

// A temporary folder removed at the end of the test.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  std::string path(const std::string& name) const { return dir_ + "/" + name; }
  const std::string& dir() const { return dir_; }

 private:
  std::string dir_;
};

}  // namespace vt::test
