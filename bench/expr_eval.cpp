// Evaluation speed of compiled formulas, a fresh X for every call, side by
// side with muparser evaluating the same formulas. Also the plain reading of
// the postfix text, for comparison.
//
//   build/bin/bench_expr_eval --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "expr/expression.h"

#ifdef VANTREL_HAVE_MUPARSER
#include <muParser.h>
#endif

namespace {

struct Formula {
  const char* ours;
  const char* reference;  // the same formula in muparser's notation
};

const Formula kFormulas[] = {
    {"sin(x)*x^2+1", "sin(x)*x^2+1"},
    {"sqr(x^2+y^2)-2", "sqrt(x^2+y^2)-2"},
    {"exp(-x^2)*cos(3x)", "exp(-(x^2))*cos(3*x)"},
    {"(x+1)(x-1)/(x^2+1)", "(x+1)*(x-1)/(x^2+1)"},
    {"abs(tan(x))+log(x+2)", "abs(tan(x))+ln(x+2)"},
    // Not a target: the cost of one call around the smallest formula.
    {"x", "x"},
};

constexpr float kY = 0.7f;

const std::vector<float>& Xs() {
  static const std::vector<float> xs = [] {
    std::vector<float> v(1024);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = -1.4f + 2.8f * static_cast<float>(i) / 1023.0f;
    return v;
  }();
  return xs;
}

struct Compiled {
  vt::VariableTable vars;
  int ix = 0;
  std::string postfix;
  bool ok = false;
};

Compiled Compile(const char* formula) {
  Compiled c;
  c.ix = c.vars.Add("X");
  c.vars.Add("Y", kY);
  vt::Cls6 calc;
  c.ok = calc.InfixToPostfix(formula, c.vars, c.postfix) == 0;
  return c;
}

template <bool kPlain>
void BM_Vantrel(benchmark::State& state, int which) {
  Compiled c = Compile(kFormulas[which].ours);
  if (!c.ok) {
    state.SkipWithError("formula does not compile");
    return;
  }
  vt::Cls6 calc;
  const std::vector<float>& xs = Xs();
  std::size_t i = 0;
  float r = 0;
  bool ok = false;
  for (auto _ : state) {
    c.vars.values[c.ix] = xs[i++ & 1023];
    if constexpr (kPlain)
      calc.DoEvaluatePlain(c.postfix, false, c.vars, r, ok);
    else
      calc.DoEvaluate(c.postfix, false, c.vars, r, ok);
    benchmark::DoNotOptimize(r);
    benchmark::DoNotOptimize(ok);
  }
  state.SetLabel(kFormulas[which].ours);
}

#ifdef VANTREL_HAVE_MUPARSER
void BM_Muparser(benchmark::State& state, int which) {
  double x = 0, y = kY;
  mu::Parser p;
  try {
    p.DefineVar("x", &x);
    p.DefineVar("y", &y);
    p.SetExpr(kFormulas[which].reference);
    // Both must compute the same thing.
    Compiled c = Compile(kFormulas[which].ours);
    vt::Cls6 calc;
    for (float xv : {-1.2f, 0.3f, 1.1f}) {
      x = xv;
      c.vars.values[c.ix] = xv;
      float ours = 0;
      bool ok = false;
      calc.DoEvaluate(c.postfix, false, c.vars, ours, ok);
      double ref = p.Eval();
      if (!ok || std::fabs(ours - ref) > 1e-4 * std::max(1.0, std::fabs(ref))) {
        state.SkipWithError("muparser and Vantrel disagree");
        return;
      }
    }
  } catch (const mu::Parser::exception_type& e) {
    state.SkipWithError(e.GetMsg().c_str());
    return;
  }
  const std::vector<float>& xs = Xs();
  std::size_t i = 0;
  for (auto _ : state) {
    x = xs[i++ & 1023];
    double r = p.Eval();
    benchmark::DoNotOptimize(r);
  }
  state.SetLabel(kFormulas[which].reference);
}
#endif

void Register() {
  for (int k = 0; k < static_cast<int>(sizeof kFormulas / sizeof kFormulas[0]); ++k) {
    const std::string n = std::to_string(k);
    benchmark::RegisterBenchmark(("Vantrel/" + n).c_str(), BM_Vantrel<false>, k);
#ifdef VANTREL_HAVE_MUPARSER
    benchmark::RegisterBenchmark(("Muparser/" + n).c_str(), BM_Muparser, k);
#endif
    benchmark::RegisterBenchmark(("VantrelPlainText/" + n).c_str(), BM_Vantrel<true>, k);
  }
}

const int kRegistered = (Register(), 0);

}  // namespace
