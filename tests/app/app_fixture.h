// Fixtures of the main window's core tests: tools that record every call,
// and a document test with an offscreen GL context of 400 x 300 pixels in
// which the canvas handlers run as they do in the window.
#pragma once

#include <GL/gl.h>

#include <memory>
#include <string>
#include <vector>

#include "render/offscreen.h"
#include "support/fixtures.h"
#include "tools/canvas_input.h"

namespace vt::test {

struct ToolCall {
  std::string tool;  // "point", "line", "circle", "text", "select"
  std::string op;    // "L" LButtonDown, "M" MouseMove, "R" RButtonDown
  float X = 0, Y = 0;
  Position viewPoint, scenePoint, farPoint, nearPoint;
  // The GL matrices at the time of the call.
  GLdouble model[16] = {}, proj[16] = {};
  GLint viewport[4] = {};
};

class RecordingTool : public CCommand {
 public:
  RecordingTool(std::string name, std::vector<ToolCall>* log) : name_(std::move(name)), log_(log) {}
  void RButtonDown(Position& v, Position& s, float& X, float& Y, Position& f, Position& n) override {
    Record("R", v, s, X, Y, f, n);
  }
  void MouseMove(Position& v, Position& s, float& X, float& Y, Position& f, Position& n) override {
    Record("M", v, s, X, Y, f, n);
  }
  void LButtonDown(Position& v, Position& s, float& X, float& Y, Position& f, Position& n) override {
    Record("L", v, s, X, Y, f, n);
  }

 private:
  void Record(const char* op, Position& v, Position& s, float X, float Y, Position& f, Position& n);
  std::string name_;
  std::vector<ToolCall>* log_;
};

// Registers recording tools in all five slots.
void RegisterRecordingTools(std::vector<ToolCall>* log);
void UnregisterTools();

class CanvasTest : public DocumentTest {
 protected:
  static constexpr int kWidth = 400;
  static constexpr int kHeight = 300;
  void SetUp() override;
  void TearDown() override;

  OffscreenContext context_;
  std::vector<ToolCall> log_;
};

}  // namespace vt::test
