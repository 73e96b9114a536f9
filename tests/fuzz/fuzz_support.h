// What the document targets share: the quiet host, a fresh document per
// input, and a small open document for the targets that add to one.
#pragma once

#include "quiet_host.h"

namespace vt::fuzz {

// Installs the quiet host and resets the document and the globals.
void FreshDocument();

// Three labelled points, read through the document reader.
void SmallDocument();

}  // namespace vt::fuzz
