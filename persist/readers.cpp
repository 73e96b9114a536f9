// The table of record readers: one line per kind whose record the program
// reads.
#include "persist/docio.h"

namespace vt {

void RegisterPointReader();

void RegisterBuiltInReaders() {
  RegisterPointReader();
}

}  // namespace vt
