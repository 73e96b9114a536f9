#include "expr/functions.h"

#include <array>
#include <cmath>
#include <random>
#include <utility>

#include "expr/expression.h"
#include "expr/function_body.h"

namespace vt {

namespace {

constexpr const char* kNames[kFunctionCount] = {
    "SIN",   "COS",   "TAN",   "SEC",   "CSEC",   "CTAN",   "ATAN",  "ASIN",  "ACOS", "ASEC",
    "ACSEC", "ACTAN", "SINH",  "COSH",  "TANH",   "CTANH",  "SECH",  "CSECH", "ASINH", "ACOSH",
    "ATANH", "ASECH", "ACSECH", "ACTANH", "ABS",  "EXP",    "INT",   "LOG",   "RND",  "SQR",
    "SQRT",  "LN",    "LOG10",
};

std::mt19937& Random() {
  static std::mt19937 gen;
  return gen;
}

}  // namespace

const char kFnNoValue[] = "(no value)";
const char kFnBreak[] = "(break)";

const char* FunctionName(Fn f) { return kNames[static_cast<int>(f)]; }

bool FindFunction(std::string_view upperName, Fn& f) {
  if (upperName.size() < 2 || upperName.size() > 6) return false;
  for (int i = 0; i < kFunctionCount; ++i)
    if (upperName == kNames[i]) {
      f = static_cast<Fn>(i);
      return true;
    }
  return false;
}

int OperatorRank(std::string_view token) {
  if (token == "+" || token == "-") return 1;
  if (token == "*" || token == "/") return 2;
  if (token == "(-)") return 3;
  if (token == "^") return 4;
  Fn f;
  if (FindFunction(token, f) && f != Fn::ASECH) return 5;
  return 0;
}

namespace {

template <Fn F>
FnResult ComputeOne(double x, bool degrees) {
  return fnbody::Compute(F, x, degrees);
}

template <int... I>
constexpr std::array<FnImpl, kFunctionCount> MakeTable(std::integer_sequence<int, I...>) {
  return {&ComputeOne<static_cast<Fn>(I)>...};
}

constexpr std::array<FnImpl, kFunctionCount> kImpl = MakeTable(std::make_integer_sequence<int, kFunctionCount>());

}  // namespace

FnImpl FunctionImpl(Fn f) { return kImpl[static_cast<std::size_t>(f)]; }

FnResult FunctionValue(Fn f, double x, bool degrees) { return kImpl[static_cast<std::size_t>(f)](x, degrees); }

float NextRandom() {
  // 24 random bits: every value is a Single in [0, 1).
  return static_cast<float>(Random()() >> 8) * (1.0f / 16777216.0f);
}

void SeedRandom(std::uint32_t seed) { Random().seed(seed); }

}  // namespace vt
