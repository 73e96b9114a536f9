// Items anchored to the screen: text annotations, measurement and parameter
// notes, control buttons. Coordinates are in per cent of the canvas, y from
// the bottom.
#pragma once

#include <string>

#include "document/objects.h"

namespace vt {

class CText : public DocObject {
 public:
  float PosX = 0, PosY = 0;
  std::string Content;  // the text shown
  int TType = 0;        // 1 for a text made by the text tool
};

class CNote : public DocObject {
 public:
  short Decim = 2;
  std::string Note;
  int NoteType = 0;
  std::string VarName;
  float Value = 0;
  float PosX = 0, PosY = 0;
  std::string Para1, Para2, Para3;
};

class CButton : public DocObject {
 public:
  float PosX = 0, PosY = 0;
};

}  // namespace vt
