// Numbers as text: the one place where the program turns numbers into text
// and back. Everything here is independent of the process locale: the decimal
// mark is always the period.
//
// - SingleToText / DoubleToText: the form the document writer uses, shortest
//   text of up to 7 (15) significant digits, exponent form "1E+07" and
//   "1.234568E-05" outside 1E-4 .. 1E7, never "-0".
// - TextToSingle / TextToDouble / TextToLong / TextToBool: strict readers of a
//   whole field, as the record readers read it; false on anything else.
// - Val: the lenient reader that takes the leading number of a text.
// - FormatDecimals / FormatPattern: the "0.00" and "0." patterns (rounding half
//   away from zero on the exact value, as a decimal display does).
// - RoundHalfEven, IntPart (floor), FixPart (truncation).
#pragma once

#include <string>
#include <string_view>

namespace vt {

std::string SingleToText(float v);
std::string DoubleToText(double v);
// Integer to text, no grouping.
std::string IntToText(long long v);
// Number formatted with at least `width` digits, zero-padded ("0000").
std::string ZeroPad(long long v, int width);
// Upper-case hexadecimal digits, zero-padded to at least `width` ("3DFCD35B").
std::string HexText(unsigned long long v, int width);

bool TextToSingle(std::string_view text, float& out);
bool TextToDouble(std::string_view text, double& out);
// A whole number field; a fractional value is rounded half to even, as an
// integer conversion of the number does.
bool TextToLong(std::string_view text, long& out);
// "1", "-1", any non-zero number, "True" are true; "0", "False" false.
bool TextToBool(std::string_view text, bool& out);

// The number at the start of a text (blanks skipped), 0 when there is none.
double Val(std::string_view text);

// Fixed-point text with `decimals` digits after the period. With 0 decimals
// the period stays: FormatDecimals(5, 0) is "5.". A value that shows as zero
// carries no minus sign.
std::string FormatDecimals(double v, int decimals);
// A pattern of the form "0", "0.", "0.0", "0.00", ...
std::string FormatPattern(double v, std::string_view pattern);

double RoundHalfEven(double v);
long RoundToLong(double v);  // half to even
double IntPart(double v);    // largest whole number not above v
double FixPart(double v);    // whole part towards zero

// Single rounding of an intermediate value.
inline float Sng(double v) { return static_cast<float>(v); }

}  // namespace vt
