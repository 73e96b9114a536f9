// The body of the built-in functions, for the evaluation paths that inline
// it with a fixed function (functions.cpp makes one routine of it per
// function; fast_eval.cpp inlines the common ones into its steps). Internal to
// expr/.
#pragma once

#include <cmath>

#include "expr/expression.h"
#include "expr/functions.h"

namespace vt::fnbody {

inline double Sgn(double v) { return v > 0 ? 1.0 : (v < 0 ? -1.0 : 0.0); }

// e^x; beyond Double it is the runtime's overflow.
inline double Exp(double x) {
  double e = std::exp(x);
  if (!std::isfinite(e)) ThrowOverflow();
  return e;
}

inline FnResult Value(double v) {
  if (!std::isfinite(v)) ThrowOverflow();
  return {v, nullptr};
}
inline FnResult Domain(const char* message) { return {0, message}; }
inline FnResult Break() { return {0, kFnBreak}; }

// The body of every function, to be inlined with a fixed `f`.
[[gnu::always_inline]] inline FnResult Compute(Fn f, double x, bool degrees) {
  const double halfPi = 2 * std::atan(1.0);
  switch (f) {
    case Fn::SIN:
    case Fn::COS:
    case Fn::TAN:
    case Fn::SEC:
    case Fn::CSEC:
    case Fn::CTAN:
    case Fn::ATAN:
      if (degrees) x = x * 3.1416 / 180;
      break;
    default:
      break;
  }
  switch (f) {
    case Fn::SIN:
      return Value(std::sin(x));
    case Fn::COS:
      return Value(std::cos(x));
    case Fn::TAN:
      return Value(std::tan(x));
    case Fn::SEC: {
      double c = std::cos(x);
      if (std::fabs(c) < 1e-7) return Domain(kMsgDivision);
      return Value(1 / c);
    }
    case Fn::CSEC: {
      double s = std::sin(x);
      if (std::fabs(s) < 1e-7) return Domain(kMsgDivision);
      return Value(1 / s);
    }
    case Fn::CTAN: {
      double t = std::tan(x);
      if (std::fabs(t) < 1e-7) return Domain(kMsgDivision);
      return Value(1 / t);
    }
    case Fn::ATAN:
      return Value(std::atan(x));
    case Fn::ASIN:
    case Fn::ACOS: {
      double d = 1 - x * x;
      if (std::fabs(d) < 1e-7) {
        // The ends of the range. Anything else in this narrow band pushes
        // nothing; the next token works on what is left of the stack.
        if (x == -1) return Value(f == Fn::ASIN ? -3.1416 / 2 : 3.1416);
        if (x == 1) return Value(f == Fn::ASIN ? 3.1416 / 2 : 0.0);
        return {0, kFnNoValue};
      }
      if (d < 0) return Domain(kMsgIllegal);
      if (f == Fn::ASIN) return Value(std::atan(x / std::sqrt(d)));
      return Value(std::atan(-x / std::sqrt(d)) + halfPi);
    }
    case Fn::ASEC:
    case Fn::ACSEC: {
      double d = x * x - 1;
      if (std::fabs(d) < 1e-7 || d < 0) return Domain(kMsgIllegal);
      double a = std::atan(x / std::sqrt(d));
      if (f == Fn::ASEC) return Value(a + Sgn(x - 1) * halfPi);
      return Value(a + (Sgn(x) - 1) * halfPi);
    }
    case Fn::ACTAN:
      return Value(std::atan(-x) + halfPi);
    case Fn::SINH:
      return Value((Exp(x) - Exp(-x)) / 2);
    case Fn::COSH:
      return Value((Exp(x) + Exp(-x)) / 2);
    case Fn::TANH: {
      double a = Exp(x), b = Exp(-x);
      return Value((a - b) / (a + b));
    }
    case Fn::CTANH: {
      double a = Exp(x), b = Exp(-x);
      if (std::fabs(a - b) < 1e-7) return Break();
      return Value((a + b) / (a - b));
    }
    case Fn::SECH:
      return Value(2 / (Exp(x) + Exp(-x)));
    case Fn::CSECH: {
      double d = Exp(x) - Exp(-x);
      if (std::fabs(d) < 1e-7) return Break();
      return Value(2 / d);
    }
    case Fn::ASINH: {
      double d = x * x + 1;
      if (d < 0) return Break();
      double s = x + std::sqrt(d);
      if (s <= 1e-5) return Break();
      return Value(std::log(s));
    }
    case Fn::ACOSH: {
      double d = x * x - 1;
      if (d < 0) return Break();
      double s = x + std::sqrt(d);
      if (s <= 1e-5) return Break();
      return Value(std::log(s));
    }
    case Fn::ATANH: {
      if (x == 1) return Break();
      double q = (x + 1) / (1 - x);
      if (q <= 1e-5) return Break();
      return Value(std::log(q) / 2);
    }
    case Fn::ASECH: {
      if (x == 0) return Break();
      double d = 1 - x * x;
      if (d < 0) return Break();
      double q = (std::sqrt(d) + 1) / x;
      if (q <= 1e-5) return Break();
      return Value(std::log(q));
    }
    case Fn::ACSECH: {
      if (x == 0) return Break();
      double q = (Sgn(x) * std::sqrt(x * x + 1) + 1) / x;
      if (q <= 1e-5) return Break();
      return Value(std::log(q));
    }
    case Fn::ACTANH: {
      if (x == 1) return Break();
      double q = (x + 1) / (x - 1);
      if (q <= 1e-5) return Break();
      return Value(std::log(q) / 2);
    }
    case Fn::ABS:
      return Value(static_cast<float>(std::fabs(x)));
    case Fn::EXP:
      return Value(Exp(x));
    case Fn::INT:
      return Value(static_cast<float>(std::floor(x)));
    case Fn::LOG:
      if (x <= 1e-5) return Domain(kMsgLog);
      return Value(std::log(x));
    case Fn::RND:
      return Value(NextRandom());
    case Fn::SQR:
      if (x < 1e-7) return Domain(kMsgSqr);
      return Value(std::sqrt(x));
    case Fn::SQRT:
      if (x < 0) return Domain(kMsgSqrt);
      return Value(std::sqrt(x));
    case Fn::LN:
      if (x <= 0) return Domain(kMsgLn);
      return Value(std::log(x));
    case Fn::LOG10:
      if (x <= 0) return Domain(kMsgLog10);
      return Value(std::log10(x));
  }
  return Break();
}

}  // namespace vt::fnbody
