// A host that answers every box like the default one but keeps nothing, so
// that millions of inputs do not pile up a record of messages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "document/host.h"

namespace vt::fuzz {

class QuietHost : public RecordingHost {
 public:
  MsgResult MsgBox(const std::string&, const std::string&, MsgButtons buttons,
                   MsgIcon) override {
    return buttons == MsgButtons::OK ? MsgResult::OK
           : buttons == MsgButtons::OKCancel ? MsgResult::Cancel
                                             : MsgResult::No;
  }
};

inline QuietHost& Quiet() {
  static QuietHost h;
  return h;
}

// Installs the quiet host (the expression targets need nothing more).
inline void QuietHostOnly() { SetHost(&Quiet()); }

// The input as text.
inline std::string AsText(const uint8_t* data, size_t size) {
  return std::string(reinterpret_cast<const char*>(data), size);
}

}  // namespace vt::fuzz
