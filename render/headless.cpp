#include "render/headless.h"

#include <fstream>

#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "persist/docio.h"
#include "render/frame.h"
#include "render/offscreen.h"
#include "render/view_state.h"

namespace vt {

namespace {

constexpr int kMaxSide = 16384;

bool StartsWithSceneRecord(const std::string& text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\r' || text[i] == '\n' || text[i] == '\t')) ++i;
  return text.compare(i, 2, "GL") == 0;
}

// Puts the previous host back when the render ends, however it ends.
class HostScope {
 public:
  explicit HostScope(Host* mine) : previous_(&host()) { SetHost(mine); }
  ~HostScope() { SetHost(previous_); }
  HostScope(const HostScope&) = delete;
  HostScope& operator=(const HostScope&) = delete;

 private:
  Host* previous_;
};

}  // namespace

bool RunOnHeadlessDocument(const std::string& path, int width, int height,
                           const std::function<bool(OffscreenContext& context, std::string& error)>& work,
                           std::string& error, std::vector<std::string>* messages) {
  if (!std::ifstream(path, std::ios::binary)) {
    error = "cannot open " + path;
    return false;
  }
  std::string text;
  if (!ReadDocumentFile(path, text) || text.empty()) {
    error = path + " is damaged: it is not a document file";
    return false;
  }
  if (!StartsWithSceneRecord(text)) {
    error = path + " is damaged: it does not begin with a scene record";
    return false;
  }

  OffscreenContext context;
  std::string why;
  if (!context.Create(width, height, why)) {
    error = "no offscreen OpenGL context: " + why;
    return false;
  }

  RecordingHost local;
  local.canvasWidth = width;
  local.canvasHeight = height;
  local.openPaths.push_back(path);
  bool ok = true;
  {
    HostScope scope(&local);
    StartUp("", true);
    View.SetScreen(width, height);
    CanvasWidth = width;
    CanvasHeight = height;
    // A damaged record costs only itself: the work goes on with what was
    // kept, and the open's own message names the damage.
    OpenDocumentText(text);
    MarkDocumentSaved();  // the file as it stands on disk: nothing to save
    ok = work(context, error);
  }
  if (messages) {
    // The read before the work and File-Open in it tell the same damage:
    // say it once.
    for (const auto& m : local.messages)
      if (messages->empty() || messages->back() != m.text) messages->push_back(m.text);
  }
  context.Destroy();
  return ok;
}

bool RenderDocumentToPng(const HeadlessRender& request, std::string& error, std::vector<std::string>* messages) {
  if (request.width <= 0 || request.height <= 0 || request.width > kMaxSide || request.height > kMaxSide) {
    error = "the size must be between 1x1 and 16384x16384";
    return false;
  }
  auto draw = [&request](OffscreenContext& context, std::string& why) {
    mnuFileOpen_Click();  // as File-Open opens it
    if (request.space) mnuFileNew3D_Click();
    DrawScene();
    Display();
    if (!WritePng(request.pngPath, context.ReadPixels())) {
      why = "cannot write " + request.pngPath;
      return false;
    }
    return true;
  };
  return RunOnHeadlessDocument(request.documentPath, request.width, request.height, draw, error, messages);
}

}  // namespace vt
