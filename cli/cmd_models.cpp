// vantrel-cli models MODELS_DIR [START.vtd]: builds the twelve figures of the
// Models folder with the core's own constructions and writes them into the
// folder; with a second path, also the start document.
#include <cstdio>

#include "cli/commands.h"
#include "tools/model_gen.h"

namespace vt::cli {

int RunModels(const Args& args) {
  if (args.empty() || args.size() > 2) {
    std::fprintf(stderr, "usage: vantrel-cli models MODELS_DIR [START.vtd]\n");
    return 2;
  }
  std::string error;
  if (!WriteModelFiles(args[0], error)) {
    std::fprintf(stderr, "vantrel-cli: %s\n", error.c_str());
    return 1;
  }
  if (args.size() == 2 && !WriteStartDocument(args[1], error)) {
    std::fprintf(stderr, "vantrel-cli: %s\n", error.c_str());
    return 1;
  }
  return 0;
}

}  // namespace vt::cli
