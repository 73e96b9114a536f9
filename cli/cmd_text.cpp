// vantrel-cli text DOC.vtd: reads a document as the program opens it and
// prints its document text.
#include <cstdio>

#include "cli/commands.h"
#include "document/document.h"
#include "persist/docio.h"

namespace vt::cli {

int RunText(const Args& args) {
  if (args.size() != 1) {
    std::fprintf(stderr, "usage: vantrel-cli text DOC.vtd\n");
    return 2;
  }
  const std::string& path = args[0];
  ResetGlobals();
  std::string text;
  if (!ReadDocumentFile(path, text)) {
    std::fprintf(stderr, "vantrel-cli: cannot read %s\n", path.c_str());
    return 1;
  }
  if (!OpenDocumentText(text)) {
    std::fprintf(stderr, "vantrel-cli: %s is damaged\n", path.c_str());
    return 1;
  }
  std::string out = GetUndoVar();
  std::fwrite(out.data(), 1, out.size(), stdout);
  std::fputc('\n', stdout);
  return 0;
}

}  // namespace vt::cli
