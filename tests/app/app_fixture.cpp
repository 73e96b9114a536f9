#include "app_fixture.h"

#include <GL/glu.h>

#include "document/command_table.h"
#include "document/frame_commands.h"
#include "render/frame.h"
#include "render/view_state.h"
#include "render/canvas_input.h"

namespace vt::test {

void RecordingTool::Record(const char* op, Position& v, Position& s, float X, float Y, Position& f, Position& n) {
  ToolCall c;
  c.tool = name_;
  c.op = op;
  c.X = X;
  c.Y = Y;
  c.viewPoint = v;
  c.scenePoint = s;
  c.farPoint = f;
  c.nearPoint = n;
  if (HaveContext()) {
    glGetDoublev(GL_MODELVIEW_MATRIX, c.model);
    glGetDoublev(GL_PROJECTION_MATRIX, c.proj);
    glGetIntegerv(GL_VIEWPORT, c.viewport);
  }
  log_->push_back(c);
}

void RegisterRecordingTools(std::vector<ToolCall>* log) {
  auto factory = [log](const char* name) {
    return [log, name] { return std::make_unique<RecordingTool>(name, log); };
  };
  RegisterTool(ToolSlot::Point, factory("point"));
  RegisterTool(ToolSlot::Line, factory("line"));
  RegisterTool(ToolSlot::Circle, factory("circle"));
  RegisterTool(ToolSlot::Text, factory("text"));
  RegisterTool(ToolSlot::Select, factory("select"));
}

void UnregisterTools() {
  for (ToolSlot s : {ToolSlot::Point, ToolSlot::Line, ToolSlot::Circle, ToolSlot::Text, ToolSlot::Select})
    RegisterTool(s, {});
  MakeTools();
}

void CanvasTest::SetUp() {
  DocumentTest::SetUp();
  std::string error;
  if (!context_.Create(kWidth, kHeight, error)) GTEST_SKIP() << "no offscreen context: " << error;
  ASSERT_TRUE(Initialize());
  host_.canvasWidth = kWidth;
  host_.canvasHeight = kHeight;
  View.SetScreen(kWidth, kHeight);
  RegisterRecordingTools(&log_);
  MakeTools();
  Hooks.syntheticMouseMove = SyntheticMouseMove;
  mnuFileNew2D_Click();
}

void CanvasTest::TearDown() {
  UnregisterTools();
  CanvasWindow = CanvasHooks{};
  Hooks = FrameHooks{};
  for (Kind k : kAllKinds) RegisterEditDialog(k, {});
  if (context_.valid()) {
    ReleaseContext();
    context_.Destroy();
  }
  DocumentTest::TearDown();
}

}  // namespace vt::test
