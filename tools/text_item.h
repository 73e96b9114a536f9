// Text annotations (CText of screen_items.h): the drawing in the text's own
// colour and font, the record, the reader, and the style the text dialog
// hands to the text tool.
#pragma once

#include <cstdint>
#include <string>

#include "tools/screen_items.h"

namespace vt {

// The font and colour the text dialog chose for the next text of the text
// tool; frmText writes it before the tool makes the text.
struct TextStyle {
  std::string FontName = "Arial";
  int FontSize = 12;
  std::uint32_t ForeColor = 0;
};
extern TextStyle TextToolStyle;
void ApplyTextToolStyle(CText& text);

// The font sizes the dialog offers.
extern const int kTextFontSizes[];
extern const int kTextFontSizeCount;

// The mouse of the last press in per cent of the canvas, y from the bottom.
float LastPressPctX();
float LastPressPctY();

// Registers the readers of "TT" and "BT".
void RegisterScreenItemReaders();

}  // namespace vt
