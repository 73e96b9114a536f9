// The built-in functions of formulas: 33 names, all of one argument, stored in
// upper case in postfix text. SQRT, LN and LOG10 stand beside SQR and LOG with
// the domains a calculator has (sqrt(0) is 0, ln takes any positive value).
// One routine computes them for every evaluation path, so the paths cannot
// drift apart.
#pragma once

#include <cstdint>
#include <string_view>

namespace vt {

enum class Fn : std::uint8_t {
  SIN, COS, TAN, SEC, CSEC, CTAN, ATAN, ASIN, ACOS, ASEC, ACSEC, ACTAN,
  SINH, COSH, TANH, CTANH, SECH, CSECH, ASINH, ACOSH, ATANH, ASECH, ACSECH, ACTANH,
  ABS, EXP, INT, LOG, RND, SQR, SQRT, LN, LOG10,
};
inline constexpr int kFunctionCount = 33;

// Upper-case name of a function.
const char* FunctionName(Fn f);
// Exact (case-sensitive) match of an upper-case name.
bool FindFunction(std::string_view upperName, Fn& f);

// Rank of a token on the compiler's operator stack: "+" "-" 1, "*" "/" 2,
// "(-)" 3, "^" 4, a function name 5 except ASECH, which like "(" and anything
// else ranks 0 and so is never pushed out by an arriving operator.
int OperatorRank(std::string_view token);

// The messages of domain errors.
inline constexpr const char* kMsgDivision = "Devision by zero.";
inline constexpr const char* kMsgIllegal = "The expression is illegal.";
inline constexpr const char* kMsgLog = "The parameter of function LOG must be larger than 0.";
inline constexpr const char* kMsgSqr =
    "The parameter of function SQR must be larger than or equal to 0.";
inline constexpr const char* kMsgSqrt =
    "The parameter of function SQRT must be larger than or equal to 0.";
inline constexpr const char* kMsgLn = "The parameter of function LN must be larger than 0.";
inline constexpr const char* kMsgLog10 = "The parameter of function LOG10 must be larger than 0.";
inline constexpr const char* kMsgPower = "A^B, B must be a integer if A is negative.";

// What a function gives: a value to push, nothing to push (ASIN and ACOS near
// the ends of their range, off the ends), or a domain error, with or without
// a message. Two words, so that it comes back in registers.
struct FnResult {
  double value;
  const char* status;  // nullptr for a value, else kFnNoValue, kFnBreak or a message

  bool IsValue() const { return status == nullptr; }
  bool IsNoValue() const;
  // A domain error; Message() is then its message or nullptr.
  bool IsDomainError() const { return status != nullptr && !IsNoValue(); }
  const char* Message() const;
};
extern const char kFnNoValue[];
extern const char kFnBreak[];
inline bool FnResult::IsNoValue() const { return status == kFnNoValue; }
inline const char* FnResult::Message() const { return status == kFnBreak ? nullptr : status; }

// The function at x (the argument as the evaluator read it, a Single). The
// value is computed in Double. A result beyond Double (e^1000) throws the
// overflow failure.
FnResult FunctionValue(Fn f, double x, bool degrees);
// The same routine for one function, for callers that pick it once.
using FnImpl = FnResult (*)(double x, bool degrees);
FnImpl FunctionImpl(Fn f);

// The random sequence of RND: next value in [0, 1), a Single.
float NextRandom();
// Restarts the sequence (tests); the program never calls it.
void SeedRandom(std::uint32_t seed);

}  // namespace vt
