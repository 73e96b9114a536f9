#include <cstdio>

#include "cli/commands.h"

namespace vt::cli {

int RunText(const Args&) {
  std::fprintf(stderr, "vantrel-cli: text is not available in this build\n");
  return 2;
}

}  // namespace vt::cli
