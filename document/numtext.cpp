#include "document/numtext.h"

#include <algorithm>
#include <cctype>
#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <system_error>

namespace vt {

namespace {

// Text of a float/double in the general form with `digits` significant
// digits, trailing zeros dropped, exponent written as E+07.
template <class T>
std::string GeneralText(T v, int digits) {
  if (v == 0) return "0";  // also -0
  if (std::isnan(v)) return "NaN";
  if (std::isinf(v)) return v > 0 ? "Infinity" : "-Infinity";
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, digits);
  std::string s(buf, res.ptr);
  // to_chars writes "e+07": the document form is "E+07".
  for (char& c : s)
    if (c == 'e') c = 'E';
  return s;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view Trim(std::string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

// Checks the shape [sign] digits [. digits] [E|D [sign] digits] and gives a
// copy that strtod/from_chars understand.
bool NormalizeNumber(std::string_view s, std::string& out) {
  s = Trim(s);
  out.clear();
  size_t i = 0;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
    if (s[i] == '-') out.push_back('-');
    ++i;
  }
  size_t digits = 0;
  while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
    out.push_back(s[i++]);
    ++digits;
  }
  if (i < s.size() && s[i] == '.') {
    out.push_back('.');
    ++i;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
      out.push_back(s[i++]);
      ++digits;
    }
  }
  if (digits == 0) return false;
  if (i < s.size() && (s[i] == 'E' || s[i] == 'e' || s[i] == 'D' || s[i] == 'd')) {
    out.push_back('e');
    ++i;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) out.push_back(s[i++]);
    size_t expDigits = 0;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
      out.push_back(s[i++]);
      ++expDigits;
    }
    if (expDigits == 0) return false;
  }
  return i == s.size();
}

bool ParseDouble(std::string_view text, double& out) {
  std::string norm;
  if (!NormalizeNumber(text, norm)) return false;
  const char* first = norm.data();
  if (*first == '-') ++first;  // from_chars takes no '+', and we handle '-' ourselves
  double v = 0;
  auto res = std::from_chars(first, norm.data() + norm.size(), v);
  if (res.ec == std::errc::result_out_of_range) {
    // Underflow reads as 0; overflow is an error. The decimal exponent of
    // the first significant digit tells which.
    long exp10 = 0;
    bool seenDot = false, seenDigit = false;
    long intDigits = 0, leadingFracZeros = 0;
    const char* p = first;
    for (; *p && *p != 'e'; ++p) {
      if (*p == '.') {
        seenDot = true;
      } else if (!seenDigit && *p == '0') {
        if (seenDot) ++leadingFracZeros;
      } else {
        if (!seenDot) ++intDigits;
        seenDigit = true;
      }
    }
    // An exponent past any digit count only tells the direction; keep it
    // small enough that the sum below cannot overflow.
    if (*p == 'e') exp10 = std::clamp(std::strtol(p + 1, nullptr, 10), -100000000L, 100000000L);
    long magnitude = (intDigits > 0 ? intDigits - 1 : -(leadingFracZeros + 1)) + exp10;
    if (magnitude >= 0) return false;
    v = 0;
  } else if (res.ec != std::errc() || res.ptr != norm.data() + norm.size()) {
    return false;
  }
  out = norm[0] == '-' ? -v : v;
  return std::isfinite(out);
}

}  // namespace

std::string SingleToText(float v) { return GeneralText(v, 7); }
std::string DoubleToText(double v) { return GeneralText(v, 15); }

std::string IntToText(long long v) { return std::to_string(v); }

std::string ZeroPad(long long v, int width) {
  std::string digits = std::to_string(v < 0 ? -v : v);
  if (static_cast<int>(digits.size()) < width)
    digits.insert(0, static_cast<size_t>(width) - digits.size(), '0');
  return v < 0 ? "-" + digits : digits;
}

std::string HexText(unsigned long long v, int width) {
  char buf[32];
  auto res = std::to_chars(buf, buf + sizeof buf, v, 16);
  std::string digits(buf, res.ptr);
  for (char& c : digits)
    if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
  if (static_cast<int>(digits.size()) < width)
    digits.insert(0, static_cast<size_t>(width) - digits.size(), '0');
  return digits;
}

bool TextToDouble(std::string_view text, double& out) { return ParseDouble(text, out); }

bool TextToSingle(std::string_view text, float& out) {
  double d;
  if (!ParseDouble(text, d)) return false;
  if (std::fabs(d) > std::numeric_limits<float>::max()) return false;
  out = static_cast<float>(d);
  return true;
}

bool TextToLong(std::string_view text, long& out) {
  double d;
  if (!ParseDouble(text, d)) return false;
  d = RoundHalfEven(d);
  if (d < -2147483648.0 || d > 2147483647.0) return false;
  out = static_cast<long>(d);
  return true;
}

bool TextToBool(std::string_view text, bool& out) {
  std::string_view t = Trim(text);
  auto ieq = [](std::string_view a, const char* b) {
    size_t n = std::strlen(b);
    if (a.size() != n) return false;
    for (size_t i = 0; i < n; ++i)
      if (std::tolower(static_cast<unsigned char>(a[i])) != b[i]) return false;
    return true;
  };
  if (ieq(t, "true")) {
    out = true;
    return true;
  }
  if (ieq(t, "false")) {
    out = false;
    return true;
  }
  double d;
  if (!ParseDouble(t, d)) return false;
  out = d != 0;
  return true;
}

double Val(std::string_view text) {
  // Blanks are skipped anywhere in the number, as the classic Val does.
  std::string s;
  for (char c : text)
    if (!IsBlank(c)) s.push_back(c);
  size_t i = 0;
  std::string num;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) num.push_back(s[i++]);
  bool any = false;
  while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
    num.push_back(s[i++]);
    any = true;
  }
  if (i < s.size() && s[i] == '.') {
    num.push_back(s[i++]);
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
      num.push_back(s[i++]);
      any = true;
    }
  }
  if (!any) return 0;
  if (i < s.size() && (s[i] == 'E' || s[i] == 'e' || s[i] == 'D' || s[i] == 'd')) {
    std::string ex = "E";
    size_t j = i + 1;
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) ex.push_back(s[j++]);
    bool expDigits = false;
    while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) {
      ex.push_back(s[j++]);
      expDigits = true;
    }
    if (expDigits) num += ex;
  }
  if (num == "+" || num == "-") return 0;
  double d = 0;
  if (!ParseDouble(num, d)) {
    // Only overflow gets here: the shape was checked above.
    return num[0] == '-' ? -std::numeric_limits<double>::max() : std::numeric_limits<double>::max();
  }
  return d;
}

std::string FormatDecimals(double v, int decimals) {
  if (decimals < 0) decimals = 0;
  if (decimals > 30) decimals = 30;
  if (!std::isfinite(v)) return GeneralText(v, 15);
  bool neg = std::signbit(v);
  double a = std::fabs(v);
  // The exact decimal expansion of the binary value; then round half away
  // from zero by hand, so exact ties (0.125 -> 0.13) go up as a display does.
  static thread_local char buf[1200];
  std::snprintf(buf, sizeof buf, "%.400f", a);
  std::string s(buf);
  size_t dot = s.find('.');
  std::string intPart = s.substr(0, dot);
  std::string frac = s.substr(dot + 1);
  std::string kept = intPart + frac.substr(0, static_cast<size_t>(decimals));
  bool roundUp = frac[static_cast<size_t>(decimals)] >= '5';
  if (roundUp) {
    int k = static_cast<int>(kept.size()) - 1;
    while (k >= 0) {
      if (kept[static_cast<size_t>(k)] == '9') {
        kept[static_cast<size_t>(k)] = '0';
        --k;
      } else {
        ++kept[static_cast<size_t>(k)];
        break;
      }
    }
    if (k < 0) kept.insert(kept.begin(), '1');
  }
  std::string ip = kept.substr(0, kept.size() - static_cast<size_t>(decimals));
  std::string fp = kept.substr(kept.size() - static_cast<size_t>(decimals));
  // Drop leading zeros of the whole part but keep one.
  size_t nz = ip.find_first_not_of('0');
  ip = nz == std::string::npos ? "0" : ip.substr(nz);
  bool allZero = ip == "0" && fp.find_first_not_of('0') == std::string::npos;
  std::string out = (neg && !allZero) ? "-" : "";
  out += ip;
  out += '.';
  out += fp;
  return out;
}

std::string FormatPattern(double v, std::string_view pattern) {
  size_t dot = pattern.find('.');
  if (dot == std::string_view::npos) {
    std::string s = FormatDecimals(v, 0);
    s.pop_back();  // no period in the pattern, none in the text
    return s;
  }
  int decimals = static_cast<int>(pattern.size() - dot - 1);
  return FormatDecimals(v, decimals);
}

double RoundHalfEven(double v) {
  // nearbyint follows the current rounding mode, which is to-nearest-even.
  return std::nearbyint(v);
}

long RoundToLong(double v) { return static_cast<long>(RoundHalfEven(v)); }

double IntPart(double v) { return std::floor(v); }
double FixPart(double v) { return std::trunc(v); }

}  // namespace vt
