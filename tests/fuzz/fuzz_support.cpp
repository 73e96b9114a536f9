#include "fuzz_support.h"

#include "document/document.h"
#include "document/globals.h"
#include "persist/docio.h"

namespace vt::fuzz {

void FreshDocument() {
  SetHost(&Quiet());
  ResetGlobals();
  Quiet().clipboardText.clear();
  Quiet().timers.clear();
}

void SmallDocument() {
  // Built through the writer once; later inputs start from its text.
  static std::string text;
  if (text.empty()) {
    FreshDocument();
    for (int i = 0; i < 3; ++i) {
      std::string id = NewObjectId("PT");
      Position* p = Doc.Points.Add(id, static_cast<float>(i), static_cast<float>(i * i), 0, 1,
                                   "", "", 0, id);
      p->PLabel = std::string(1, static_cast<char>('A' + i));
    }
    text = GetUndoVar();
  }
  FreshDocument();
  OpenDocumentText(text);
}

}  // namespace vt::fuzz
