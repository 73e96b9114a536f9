// Text preparation between what a user types and the compiler: two input
// filters for dialog fields, the rewriter that makes implicit products
// explicit, and the folding of doubled signs in derivative text. Free
// functions on text, no state, no messages (the dialogs show their own).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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

// The length of the exponent of a number that ends before `at`: "e5", "E-3",
// "e+12" (an e followed by digits, with or without a sign); 0 when there is
// none, so that "2e" and "2e+x" keep e as a name.
std::size_t ExponentLength(std::string_view text, std::size_t at);

// Puts "*" where a product is implied: "2x" -> "2*x", "(x+1)(x-1)" ->
// "(x+1)*(x-1)", "x2" -> "x*2", "2pi" -> "2*pi", "2e" -> "2*e"; not in a
// number's exponent ("1e-3") nor between log10 and its "(". A word that is the
// name of a parameter or note ("a1", "t0") stays whole. The empty text gives "*",
// which the compiler refuses as a missing operand.
std::string InsertImplicitProducts(const std::string& text);

// One pass left to right: "+-" -> "-", "--" -> "+"; "---" gives "+-".
std::string FoldSigns(const std::string& text);

}  // namespace vt
