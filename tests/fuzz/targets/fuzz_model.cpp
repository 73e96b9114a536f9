// A model added to an open document under new numbers.
#include "fuzz_support.h"
#include "persist/docio.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace vt;
  fuzz::SmallDocument();
  std::string bytes = fuzz::AsText(data, size);
  std::string text;
  if (!DecodeDocumentFrame(bytes, text)) text = bytes;
  OpenModelText(text);
  OpenUnRe(GetUndoVar());
  return 0;
}
