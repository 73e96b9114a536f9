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
      auto d = DerivePartial(*tree, deriveVar, &error);
      if (d) {
        Line("derivative: " + FoldSigns(PolishToText(*d)));
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
