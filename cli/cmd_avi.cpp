// vantrel-cli avi DOC.vtd OUT.avi [--player ID] [--fps N] [--size WxH]
// [--codec NAME]: a player's whole run, drawn offscreen, as a film.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "animation/export.h"
#include "cli/commands.h"

namespace vt::cli {

namespace {

void AviUsage() {
  std::fprintf(stderr, "usage: vantrel-cli avi DOC.vtd OUT.avi [--player ID] [--fps N] [--size WxH] [--codec NAME]\n");
}


}  // namespace

int RunAvi(const Args& args) {
  HeadlessFilm request;
  std::vector<std::string> positional;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if (a == "--size") {
      if (!hasValue || !ParseSize(args[i + 1], request.width, request.height, 2, 8192)) {
        std::fprintf(stderr, "vantrel-cli: --size wants WxH, as 800x600\n");
        return 2;
      }
      ++i;
    } else if (a == "--fps") {
      char* end = nullptr;
      const long v = hasValue ? std::strtol(args[i + 1].c_str(), &end, 10) : 0;
      if (!hasValue || *end != '\0' || v < 1 || v > 1000) {
        std::fprintf(stderr, "vantrel-cli: --fps wants a whole number from 1 to 1000\n");
        return 2;
      }
      request.fps = static_cast<int>(v);
      ++i;
    } else if (a == "--player" || a == "--codec") {
      if (!hasValue) {
        AviUsage();
        return 2;
      }
      (a == "--player" ? request.playerId : request.codec) = args[i + 1];
      ++i;
    } else if (a.size() > 1 && a[0] == '-' && a[1] == '-') {
      std::fprintf(stderr, "vantrel-cli: unknown option %s\n", a.c_str());
      AviUsage();
      return 2;
    } else {
      positional.push_back(a);
    }
  }
  if (positional.size() != 2) {
    AviUsage();
    return 2;
  }
  request.documentPath = positional[0];
  request.aviPath = positional[1];
  std::string error;
  if (!RenderDocumentToAvi(request, error)) {
    std::fprintf(stderr, "vantrel-cli: %s\n", error.c_str());
    return 1;
  }
  return 0;
}

}  // namespace vt::cli
