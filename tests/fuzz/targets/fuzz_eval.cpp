// Formula text through the compiler, then both evaluators, which must agree
// to the bit (or fail the same way).
#include <cstring>

#include "expr/expression.h"
#include "quiet_host.h"

namespace {

struct Outcome {
  bool threw = false;
  bool ok = false;
  float result = 0;
};

template <class F>
Outcome Run(F&& eval) {
  Outcome o;
  o.result = 1.5f;  // left alone by some outcomes; both start alike
  try {
    eval(o.result, o.ok);
  } catch (const vt::ExprFailure&) {
    o.threw = true;
  }
  return o;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace vt;
  if (size > 4096) return 0;
  fuzz::QuietHostOnly();
  std::string formula = fuzz::AsText(data, size);
  VariableTable vars;
  vars.Add("x", 0.5f);
  vars.Add("y", -2.0f);
  vars.Add("t", 3.0f);
  Cls6 c;
  std::string postfix;
  if (c.InfixToPostfix(formula, vars, postfix) != 0) return 0;
  // RND draws from the random sequence: the two evaluators draw different
  // numbers, so only the absence of faults is checked then.
  const bool random = UpperText(formula).find("RND") != std::string::npos;
  for (bool degrees : {false, true}) {
    Outcome a = Run([&](float& r, bool& ok) { c.DoEvaluate(postfix, degrees, vars, r, ok); });
    Outcome b = Run([&](float& r, bool& ok) { c.DoEvaluatePlain(postfix, degrees, vars, r, ok); });
    if (random) continue;
    if (a.threw != b.threw || a.ok != b.ok) __builtin_trap();
    if (!a.threw && std::memcmp(&a.result, &b.result, sizeof(float)) != 0 &&
        !(a.result != a.result && b.result != b.result))
      __builtin_trap();
  }
  return 0;
}
