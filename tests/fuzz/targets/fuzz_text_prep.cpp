// The input filters of dialog fields and the text rewriters in front of the
// compiler.
#include "expr/text_prep.h"
#include "quiet_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace vt;
  std::string text = fuzz::AsText(data, size);
  std::string source = text, result;
  bool ok = FilterExprText(source, result);
  if (ok && !source.empty()) __builtin_trap();
  if (!ok && result.size() + source.size() > text.size()) __builtin_trap();
  source = text;
  result.clear();
  FilterNumberText(source, result);
  InsertImplicitProducts(text);
  InsertImplicitProducts(result);
  FoldSigns(text);
  return 0;
}
