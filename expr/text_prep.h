// Text preparation between what a user types and the compiler: two input
// filters for dialog fields, the rewriter that makes implicit products
// explicit, and the folding of doubled signs in derivative text. Free
// functions on text, no state, no messages (the dialogs show their own).
#pragma once

#include <string>

namespace vt {

// Filter for formula and range fields: drops blanks, turns "," into ".",
// keeps "-1234567890.+*/^()_" and ASCII letters. Any other character stops it
// with false: `result` holds what was accepted, `source` the rest from that
// character on. On success `source` is empty. A source that is "" or " "
// gives "0" and true.
bool FilterExprText(std::string& source, std::string& result);
// The same for one-number fields, keeping "-1234567890Ee.".
bool FilterNumberText(std::string& source, std::string& result);

// The one reader of a number field in every dialog: the number filter
// (blanks dropped, a decimal comma read as a point, an empty field as 0),
// then one whole number read as a Single. False for a text that is not one
// number; `cleaned`, when given, gets the text as it was read.
bool ReadNumberText(const std::string& text, float& value, std::string* cleaned = nullptr);

// Puts "*" where a product is implied: "2x" -> "2*x", "(x+1)(x-1)" ->
// "(x+1)*(x-1)", "x2" -> "x*2", "2pi" -> "2*pi". A word that is the name of
// a parameter or note ("a1", "t0") stays whole. The empty text gives "*",
// which the compiler refuses as a missing operand.
std::string InsertImplicitProducts(const std::string& text);

// One pass left to right: "+-" -> "-", "--" -> "+"; "---" gives "+-".
std::string FoldSigns(const std::string& text);

}  // namespace vt
