#include <cstdio>

#include "cli/commands.h"

namespace vt::cli {

int RunRender(const Args&) {
  std::fprintf(stderr, "vantrel-cli: render is not available in this build\n");
  return 2;
}

}  // namespace vt::cli
