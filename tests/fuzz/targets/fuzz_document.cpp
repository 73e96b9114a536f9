// The document reader: the file frame, then the text readers of every kind
// registered in persist/readers.cpp. Bytes that are no frame are also read as
// a bare document text, so the readers see every input. What was read is
// written again and read back, which runs every writer on odd values.
#include "fuzz_support.h"
#include "persist/docio.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace vt;
  fuzz::FreshDocument();
  std::string bytes = fuzz::AsText(data, size);
  std::string text;
  if (!DecodeDocumentFrame(bytes, text)) text = bytes;
  OpenDocumentText(text);
  std::string again = GetUndoVar();
  OpenDocumentText(again);
  std::string frame = EncodeDocumentFrame(again);
  std::string back;
  if (!DecodeDocumentFrame(frame, back) || back != again) __builtin_trap();
  return 0;
}
