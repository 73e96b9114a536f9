// Items anchored to the screen: text annotations, measurement and parameter
// notes, control buttons. Coordinates are in per cent of the canvas, y from
// the bottom.
#pragma once

#include <string>

#include "document/objects.h"
#include "tools/note_object.h"

namespace vt {

class CText : public DocObject {
 public:
  float PosX = 0, PosY = 0;
  std::string Content;  // the text shown
  int TType = 0;        // 1 for a text made by the text tool
};

class CButton : public DocObject {
 public:
  float PosX = 0, PosY = 0;
};

}  // namespace vt
