// The steps of an evaluation that both evaluators share, so that the plain
// reading of the text and the prepared form give the same bits. Internal to
// expr/.
#pragma once

#include <cmath>
#include <string_view>

#include "document/host.h"
#include "document/numtext.h"
#include "expr/expression.h"
#include "expr/functions.h"
#include "expr/text_prep.h"

namespace vt::evalops {

// A read from the stack: the value as a Single. A value beyond the range of
// a Single is the overflow failure.
inline float ToSingle(double v) {
  float f = static_cast<float>(v);
  if (std::isinf(f)) ThrowOverflow();
  return f;
}

inline bool IsNumberStart(char c) {
  return (c >= '0' && c <= '9') || c == '.' || c == ',';
}

// A number token as the evaluator reads it: digits with one point and an
// exponent ("1e-3"), stopping at anything else ("3,5" reads as 3).
inline double ReadNumber(std::string_view token) {
  std::size_t k = 0;
  bool point = false;
  while (k < token.size()) {
    char c = token[k];
    if (c >= '0' && c <= '9') {
      ++k;
    } else if (c == '.' && !point) {
      point = true;
      ++k;
    } else {
      break;
    }
  }
  k += ExponentLength(token, k);
  return Val(token.substr(0, k));
}

enum class BinOp : unsigned char { Add, Sub, Mul, Div, Pow };

inline bool BinOpOf(std::string_view token, BinOp& op) {
  if (token.size() != 1) return false;
  switch (token[0]) {
    case '+': op = BinOp::Add; return true;
    case '-': op = BinOp::Sub; return true;
    case '*': op = BinOp::Mul; return true;
    case '/': op = BinOp::Div; return true;
    case '^': op = BinOp::Pow; return true;
    default: return false;
  }
}

inline double CheckedSingle(float v) {
  if (std::isinf(v)) ThrowOverflow();
  return v;
}

// "^" on two Singles, computed in Double. Returns false on the domain error
// of a negative base with a fractional exponent.
inline bool Power(float l, float r, double& out) {
  if (std::fabs(static_cast<double>(r)) < 1e-6) {
    out = 1;
    return true;
  }
  if (!(l >= 0) && r != std::floor(r)) return false;
  if (r == 2) {
    // Exact in Double for a Single base, as pow gives it.
    out = static_cast<double>(l) * l;
  } else {
    out = std::pow(static_cast<double>(l), static_cast<double>(r));
  }
  if (!std::isfinite(out)) ThrowOverflow();
  return true;
}

// A binary operator on two Singles. Returns the message of a domain error, or
// nullptr with the value in `out`.
inline const char* Binary(BinOp op, float l, float r, double& out) {
  switch (op) {
    case BinOp::Add: out = CheckedSingle(l + r); return nullptr;
    case BinOp::Sub: out = CheckedSingle(l - r); return nullptr;
    case BinOp::Mul: out = CheckedSingle(l * r); return nullptr;
    case BinOp::Div:
      if (std::fabs(static_cast<double>(r)) < 1e-6) return kMsgDivision;
      out = CheckedSingle(l / r);
      return nullptr;
    case BinOp::Pow:
      if (!Power(l, r, out)) return kMsgPower;
      return nullptr;
  }
  return nullptr;
}

// A domain error ends the evaluation: with ReportEvalErrors and a message, a
// box and ok false; otherwise a silent break.
inline void DomainError(const char* message, float& result, bool& ok) {
  if (ReportEvalErrors && message) {
    host().MsgBox(message, "Error", MsgButtons::OK, MsgIcon::Critical);
    ok = false;
    return;
  }
  ok = true;
  result = BreakValue;
}

}  // namespace vt::evalops
