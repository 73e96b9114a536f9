// vantrel-cli text DOC.vtd: reads a document as the program opens it and
// prints its document text. Records that cannot be read are left out, as the
// program leaves them out, and named on stderr, one line each.
// Exit code: 0 when the document was read (also with records left out),
// 1 when the file cannot be read or not one of its records could, 2 for a
// wrong call.
#include <cstdio>

#include "cli/commands.h"
#include "document/document.h"
#include "persist/docio.h"
#include "persist/record.h"

namespace vt::cli {

int RunText(const Args& args) {
  if (args.size() != 1) {
    std::fprintf(stderr,
                 "usage: vantrel-cli text DOC.vtd\n"
                 "  prints what the program reads of the document; records it cannot read are\n"
                 "  left out and named on stderr (exit 0); exit 1 when nothing can be read\n");
    return 2;
  }
  const std::string& path = args[0];
  ResetGlobals();
  std::string text;
  if (!ReadDocumentFile(path, text)) {
    std::fprintf(stderr, "vantrel-cli: cannot read %s\n", path.c_str());
    return 1;
  }
  if (text.empty()) {
    std::fprintf(stderr, "vantrel-cli: %s holds no document text\n", path.c_str());
    return 1;
  }
  OpenDocumentText(text);
  const ReadDamage& damage = LastReadDamage();
  if (damage.records > 0) {
    size_t records = 0;
    for (std::string_view rec : SplitRecords(text))
      if (rec.find_first_not_of(" \r\n\t") != std::string_view::npos) ++records;
    std::fprintf(stderr, "vantrel-cli: %s is damaged: %d of %zu records could not be read and were left out\n",
                 path.c_str(), damage.records, records);
    for (const std::string& line : damage.lines) std::fprintf(stderr, "  %s\n", line.c_str());
    if (damage.lines.size() < static_cast<size_t>(damage.records))
      std::fprintf(stderr, "  and %zu more\n", static_cast<size_t>(damage.records) - damage.lines.size());
    if (static_cast<size_t>(damage.records) >= records) return 1;
  }
  std::string out = GetUndoVar();
  std::fwrite(out.data(), 1, out.size(), stdout);
  std::fputc('\n', stdout);
  return 0;
}

}  // namespace vt::cli
