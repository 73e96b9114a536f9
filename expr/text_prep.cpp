#include "expr/text_prep.h"

#include <string_view>

#include "document/numtext.h"
#include "expr/expression.h"
#include "expr/functions.h"
#include "expr/parameters.h"

namespace vt {

namespace {

constexpr std::string_view kExprChars =
    "-1234567890.+*/^()_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kNumberChars = "-1234567890Ee.";

bool FilterText(std::string& source, std::string& result, std::string_view accepted) {
  const std::string copy = source;
  result.clear();
  bool outcome = false;
  const std::size_t rounds = source.size();
  for (std::size_t k = 0; k < rounds; ++k) {
    const char c = source.front();
    if (accepted.find(c) != std::string_view::npos) {
      result.push_back(c);
    } else if (c == ' ') {
      // dropped
    } else if (c == ',') {
      result.push_back('.');
    } else {
      return false;
    }
    source.erase(0, 1);
    outcome = true;
  }
  if (copy.empty() || copy == " ") {
    result = "0";
    outcome = true;
  }
  return outcome;
}

bool In(std::string_view set, char c) { return set.find(c) != std::string_view::npos; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsWordChar(char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '_'; }

constexpr std::string_view kVarLetters = "abnrtxyziABNRTXYZI";
constexpr std::string_view kLeadSet = "1234567890+-*/^()pP";
constexpr std::string_view kDigitsRightParen = "1234567890)";
constexpr std::string_view kNumberOrOpen = "1234567890.,(";
constexpr std::string_view kNumberChars2 = "1234567890.,";

}  // namespace

bool FilterExprText(std::string& source, std::string& result) {
  return FilterText(source, result, kExprChars);
}

bool FilterNumberText(std::string& source, std::string& result) {
  return FilterText(source, result, kNumberChars);
}

bool ReadNumberText(const std::string& text, float& value, std::string* cleaned) {
  std::string source = text, result;
  float v = 0;
  if (!FilterNumberText(source, result) || !TextToSingle(result, v)) return false;
  value = v;
  if (cleaned) *cleaned = result;
  return true;
}

std::size_t ExponentLength(std::string_view text, std::size_t at) {
  if (at >= text.size() || (text[at] != 'e' && text[at] != 'E')) return 0;
  std::size_t k = at + 1;
  if (k < text.size() && (text[k] == '+' || text[k] == '-')) ++k;
  const std::size_t digits = k;
  while (k < text.size() && text[k] >= '0' && text[k] <= '9') ++k;
  return k > digits ? k - at : 0;
}

std::string InsertImplicitProducts(const std::string& text) {
  if (text.empty()) return "*";
  std::string out;
  out.reserve(text.size() + text.size() / 2);
  const std::size_t n = text.size();
  // The names of the parameters and notes, read once a word needs them: a
  // name such as "a1" or "t0" stays one word rather than "a*1".
  VariableTable names;
  bool namesRead = false;
  auto isName = [&](std::string_view word) {
    if (!namesRead) {
      LoadParameterTable(names);
      namesRead = true;
    }
    return names.Find(word) != 0;
  };
  // Where the digits before i start, and whether they end a name ("log10").
  auto digitsStart = [&](std::size_t i) {
    while (i > 0 && (In(kNumberChars2, text[i - 1]))) --i;
    return i;
  };
  auto endsName = [&](std::size_t i) {
    const std::size_t d = digitsStart(i);
    return d > 0 && (IsLetter(text[d - 1]) || text[d - 1] == '_');
  };
  for (std::size_t i = 0; i + 1 < n; ++i) {
    const char c = text[i];
    const char next = text[i + 1];
    if (In(kVarLetters, c) && In(kNumberOrOpen, next) && IsWordChar(next) &&
        (i == 0 || In(kLeadSet, text[i - 1]))) {
      std::size_t end = i + 1;
      while (end < n && IsWordChar(text[end])) ++end;
      if (isName(std::string_view(text).substr(i, end - i))) {
        // The whole name, then what follows it as any word's end.
        out.append(text, i, end - i - 1);
        i = end - 2;
        continue;
      }
    }
    out.push_back(c);
    const bool digit = c >= '0' && c <= '9';
    if (digit && !endsName(i)) {
      // A number's exponent is copied whole.
      if (const std::size_t e = ExponentLength(text, i + 1)) {
        // The loop goes on at the exponent's last digit.
        out.append(text, i + 1, e - 1);
        i += e - 1;
        continue;
      }
    }
    bool product = false;
    if (In(kDigitsRightParen, c) && (IsLetter(next) || next == '(')) product = true;  // 1
    if (digit && next == '(' && endsName(i)) {
      std::size_t s = digitsStart(i);
      while (s > 0 && (IsLetter(text[s - 1]) || text[s - 1] == '_')) --s;
      Fn f;
      if (FindFunction(UpperText(std::string_view(text).substr(s, i + 1 - s)), f)) product = false;
    }
    if (In(kVarLetters, c) && In(kNumberOrOpen, next)) {
      if (i == 0) product = true;                     // 2
      else if (In(kLeadSet, text[i - 1])) product = true;  // 3
    }
    if (c == ')' && In(kNumberChars2, next)) product = true;  // 4
    if (product) out.push_back('*');
  }
  out.push_back(text[n - 1]);
  return out;
}

std::string FoldSigns(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    if (i + 1 < text.size() && text[i + 1] == '-' && (text[i] == '+' || text[i] == '-')) {
      out.push_back(text[i] == '+' ? '-' : '+');
      i += 2;
    } else {
      out.push_back(text[i]);
      ++i;
    }
  }
  return out;
}

}  // namespace vt
