#include <cstdio>

#include "cli/commands.h"

namespace vt::cli {

int RunCalc(const Args&) {
  std::fprintf(stderr, "vantrel-cli: calc is not available in this build\n");
  return 2;
}

}  // namespace vt::cli
