// Test fixtures: a fresh document and a recording host for every test.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "document/document.h"
#include "document/host.h"

namespace vt::test {

class DocumentTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // A free point with a new id, keyed by its id, optionally labelled.
  Position* AddPoint(float x, float y, float z = 0, const std::string& label = std::string());

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
