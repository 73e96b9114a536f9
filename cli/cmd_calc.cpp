// calc FORMULA [NAME=VALUE ...] [--deg] [--report] [--derive VAR]
//
// Compiles the formula as given against the variables of the command line
// (in the order given), evaluates it once and prints, one per line:
//   prepared: <the formula with implicit products made explicit>
//   postfix: <the postfix text as the compiler left it>
//   compile: <0, or the position, a blank and the message of a syntax error>
//   ok: <1 or 0>                       (not after a failed compile)
//   value: <the value> 0x<its bits>    (only when ok is 1)
//   error: <the box an evaluation showed (--report), a failure, or overflow>
//   derivative: <text>  or  derivative-error: <message>   (--derive VAR)
//   derivative-value: <the derivative's value> 0x<its bits>
//                                      (when the derivative evaluates)
// With --derive, every variable of the command line but VAR is a constant
// to the derivative, as a parameter of the document is.
// No box is shown: a recording host takes them and they become these lines.
#include <bit>
#include <cstdint>
#include <cstdio>
#include <string>

#include "cli/commands.h"
#include "document/host.h"
#include "document/numtext.h"
#include "expr/derivative.h"
#include "expr/expression.h"
#include "expr/text_prep.h"

namespace vt::cli {

namespace {

int CalcUsage(const std::string& why) {
  std::fprintf(stderr, "vantrel-cli calc: %s\n", why.c_str());
  std::fprintf(stderr,
               "usage: vantrel-cli calc FORMULA [NAME=VALUE ...] [--deg] [--report] [--derive VAR]\n");
  return 2;
}

void Line(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fputc('\n', stdout);
}

// Installs a recording host and the report flag for the length of the command.
class Session {
 public:
  explicit Session(bool report) : savedReport_(ReportEvalErrors) {
    SetHost(&host_);
    ReportEvalErrors = report;
  }
  ~Session() {
    ReportEvalErrors = savedReport_;
    SetHost(nullptr);
  }
  RecordingHost& Host() { return host_; }

 private:
  RecordingHost host_;
  bool savedReport_;
};

// The derivative evaluated with the variables of the command line; nothing
// when it does not compile or evaluate there.
void PrintDerivativeValue(const std::string& text, const VariableTable& vars) {
  RecordingHost quiet;
  Host* const outer = &host();
  SetHost(&quiet);
  Cls6 calc;
  std::string postfix;
  float value = 0;
  bool ok = false;
  if (calc.InfixToPostfix(text, vars, postfix) == 0 && quiet.messages.empty()) {
    try {
      calc.DoEvaluate(postfix, false, vars, value, ok);
    } catch (const ExprFailure&) {
      ok = false;
    }
  }
  SetHost(outer);
  if (ok) Line("derivative-value: " + SingleToText(value) + " 0x" + HexText(std::bit_cast<std::uint32_t>(value), 8));
}

}  // namespace

int RunCalc(const Args& args) {
  std::string formula;
  bool haveFormula = false;
  bool degrees = false;
  bool report = false;
  bool derive = false;
  std::string deriveVar;
  VariableTable vars;
  bool optionsEnded = false;

  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (!optionsEnded && a.size() >= 2 && a.compare(0, 2, "--") == 0) {
      if (a == "--") {
        optionsEnded = true;
      } else if (a == "--deg") {
        degrees = true;
      } else if (a == "--report") {
        report = true;
      } else if (a == "--derive") {
        if (i + 1 >= args.size()) return CalcUsage("--derive needs a variable");
        derive = true;
        deriveVar = args[++i];
      } else {
        return CalcUsage("unknown option " + a);
      }
      continue;
    }
    if (!haveFormula) {
      formula = a;
      haveFormula = true;
      continue;
    }
    const std::size_t eq = a.find('=');
    if (eq == std::string::npos || eq == 0) return CalcUsage("expected NAME=VALUE, got " + a);
    float value = 0;
    if (!TextToSingle(std::string_view(a).substr(eq + 1), value))
      return CalcUsage("not a number: " + a.substr(eq + 1));
    if (vars.Add(std::string_view(a).substr(0, eq), value) == 0)
      return CalcUsage("more than " + IntToText(VariableTable::kLastIndex) + " variables");
  }
  if (!haveFormula) return CalcUsage("no formula");

  Session session(report);
  RecordingHost& h = session.Host();

  Line("prepared: " + InsertImplicitProducts(formula));

  Cls6 calc;
  std::string postfix;
  const std::int32_t compiled = calc.InfixToPostfix(formula, vars, postfix);
  const bool syntaxBox = !h.messages.empty();
  Line("postfix: " + postfix);
  if (syntaxBox)
    Line("compile: " + IntToText(compiled) + " " + calc.GetLastSyntaxError());
  else
    Line("compile: " + IntToText(compiled));

  if (compiled == 0) {
    float result = 0;
    bool ok = false;
    std::string error;
    const std::size_t before = h.messages.size();
    try {
      calc.DoEvaluate(postfix, degrees, vars, result, ok);
    } catch (const ExprFailure& f) {
      ok = false;
      error = f.IsOverflow() ? std::string("overflow") : std::string(f.what());
    }
    if (error.empty() && h.messages.size() > before) error = h.messages.back().text;
    Line(std::string("ok: ") + (ok ? "1" : "0"));
    if (ok)
      Line("value: " + SingleToText(result) + " 0x" + HexText(std::bit_cast<std::uint32_t>(result), 8));
    if (!error.empty()) Line("error: " + error);
  }

  if (derive) {
    std::string error;
    bool parsed = false;
    auto tree = ParseToPolish(formula, error, parsed);
    if (parsed) {
      VariableTable constants;
      for (int k = 1; k <= vars.Count(); ++k)
        if (!SameNameNoCase(vars.Name(k), deriveVar)) constants.Add(vars.Name(k), vars.values[k]);
      auto d = DerivePartial(*tree, deriveVar, &error, &constants);
      if (d) {
        const std::string text = FoldSigns(PolishToText(*d));
        Line("derivative: " + text);
        PrintDerivativeValue(text, vars);
      } else {
        Line("derivative-error: " + error);
      }
    } else {
      Line("derivative-error: " + error);
    }
  }
  std::fflush(stdout);
  return 0;
}

}  // namespace vt::cli
