// vantrel-cli render DOC.vtd OUT.png|OUT.svg|OUT.pdf [--size WxH] [--3d]: one
// frame of the document, drawn offscreen as the canvas would draw it at that
// size. PNG is the frame's pixels; SVG and PDF are the captured picture, with
// shapes as paths and texts as text.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "document/frame_commands.h"
#include "render/headless.h"
#include "render/picture.h"
#ifdef VANTREL_HAVE_PICTURE_FILE
#include "app/picture_file.h"
#endif

namespace vt::cli {

namespace {

void RenderUsage() { std::fprintf(stderr, "usage: vantrel-cli render DOC.vtd OUT.png|OUT.svg|OUT.pdf [--size WxH] [--3d]\n"); }


}  // namespace

int RunRender(const Args& args) {
  HeadlessRender request;
  std::vector<std::string> positional;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--size") {
      if (i + 1 >= args.size() || !ParseSize(args[i + 1], request.width, request.height, 1, 16384)) {
        std::fprintf(stderr, "vantrel-cli: --size wants WxH, as 800x600\n");
        return 2;
      }
      ++i;
    } else if (a == "--3d") {
      request.space = true;
    } else if (a.size() > 1 && a[0] == '-' && a[1] == '-') {
      std::fprintf(stderr, "vantrel-cli: unknown option %s\n", a.c_str());
      RenderUsage();
      return 2;
    } else {
      positional.push_back(a);
    }
  }
  if (positional.size() != 2) {
    RenderUsage();
    return 2;
  }
  request.documentPath = positional[0];
  request.pngPath = positional[1];
  std::string error;
  std::vector<std::string> messages;
  bool ok = false;
  const std::string ext = positional[1].size() > 4 ? positional[1].substr(positional[1].size() - 4) : "";
  if (ext == ".svg" || ext == ".SVG" || ext == ".pdf" || ext == ".PDF") {
#ifdef VANTREL_HAVE_PICTURE_FILE
    auto draw = [&request](OffscreenContext&, std::string& why) {
      mnuFileOpen_Click();  // as File-Open opens it
      if (request.space) mnuFileNew3D_Click();
      Picture picture;  // the capture compiles the scene itself
      return CapturePicture(picture, why) && WritePictureFile(picture, request.pngPath, 1.0, why);
    };
    ok = RunOnHeadlessDocument(request.documentPath, request.width, request.height, draw, error, &messages);
#else
    error = "this build writes PNG only";
#endif
  } else {
    ok = RenderDocumentToPng(request, error, &messages);
  }
  for (const std::string& m : messages) std::fprintf(stderr, "vantrel-cli: note: %s\n", m.c_str());
  if (!ok) {
    std::fprintf(stderr, "vantrel-cli: %s\n", error.c_str());
    return 1;
  }
  return 0;
}

}  // namespace vt::cli
