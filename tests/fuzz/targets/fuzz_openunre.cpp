// Undo and redo read a whole document text in place of the open document.
#include "fuzz_support.h"
#include "persist/docio.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace vt;
  fuzz::SmallDocument();
  OpenUnRe(fuzz::AsText(data, size));
  OpenUnRe(GetUndoVar());
  return 0;
}
