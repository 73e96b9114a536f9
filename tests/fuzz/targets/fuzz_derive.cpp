// Formula text to the derivative tree, derived for a curve and partially by x,
// printed again; the printed text must parse.
#include "expr/derivative.h"
#include "expr/text_prep.h"
#include "quiet_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace vt;
  if (size > 4096) return 0;
  fuzz::QuietHostOnly();
  std::string error;
  bool ok = false;
  std::unique_ptr<clsPolish> tree = ParseToPolish(fuzz::AsText(data, size), error, ok);
  if (!ok || !tree) return 0;
  std::string printed = PolishToText(*tree);
  bool ok2 = false;
  if (!ParseToPolish(printed, error, ok2) || !ok2) __builtin_trap();
  if (std::unique_ptr<clsPolish> d = Derive(*tree)) FoldSigns(PolishToText(*d));
  if (std::unique_ptr<clsPolish> d = DerivePartial(*tree, "x")) FoldSigns(PolishToText(*d));
  return 0;
}
