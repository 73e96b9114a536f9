// vantrel-cli: the system without a window, for scripts and checks.
#include <cstdio>
#include <cstring>
#include <string>

#include "cli/commands.h"

namespace {

void Usage() {
  std::fprintf(stderr,
               "usage: vantrel-cli text DOC.vtd\n"
               "       vantrel-cli calc FORMULA [NAME=VALUE ...] [--deg] [--report] [--derive VAR]\n"
               "       vantrel-cli render DOC.vtd OUT.png [--size WxH] [--3d]\n"
               "       vantrel-cli avi DOC.vtd OUT.avi [--player ID] [--fps N] [--size WxH] [--codec NAME]\n"
               "       vantrel-cli models MODELS_DIR [START.vtd]\n");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    Usage();
    return 2;
  }
  std::string cmd = argv[1];
  vt::cli::Args args(argv + 2, argv + argc);
  if (cmd == "text") return vt::cli::RunText(args);
  if (cmd == "calc") return vt::cli::RunCalc(args);
  if (cmd == "render") return vt::cli::RunRender(args);
  if (cmd == "avi") return vt::cli::RunAvi(args);
  if (cmd == "models") return vt::cli::RunModels(args);
  if (cmd == "--help" || cmd == "-h" || cmd == "help") {
    Usage();
    return 0;
  }
  Usage();
  return 2;
}
