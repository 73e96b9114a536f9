// vantrel-cli render DOC.vtd OUT.png [--size WxH] [--3d]: one frame of the
// document, drawn offscreen as the canvas would draw it at that size.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "render/headless.h"

namespace vt::cli {

namespace {

void RenderUsage() { std::fprintf(stderr, "usage: vantrel-cli render DOC.vtd OUT.png [--size WxH] [--3d]\n"); }


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
  const bool ok = RenderDocumentToPng(request, error, &messages);
  for (const std::string& m : messages) std::fprintf(stderr, "vantrel-cli: note: %s\n", m.c_str());
  if (!ok) {
    std::fprintf(stderr, "vantrel-cli: %s\n", error.c_str());
    return 1;
  }
  return 0;
}

}  // namespace vt::cli
