// The compiler: postfix text, ranks and grouping, states, and the exact
// positions and messages of syntax errors.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "expr/expression.h"
#include "expr_test_util.h"

namespace vt {
namespace {

using exprtest::HostScope;

struct Compiled {
  std::int32_t result;
  std::string postfix;
  std::string message;  // LastSyntaxError, "" when no box showed
  std::size_t boxes;
};

Compiled Compile(HostScope& scope, const std::string& formula, const VariableTable& vars) {
  Cls6 calc;
  Compiled c{};
  const std::size_t before = scope.host.messages.size();
  c.result = calc.InfixToPostfix(formula, vars, c.postfix);
  c.boxes = scope.host.messages.size() - before;
  if (c.boxes) c.message = calc.GetLastSyntaxError();
  return c;
}

VariableTable Vars(std::initializer_list<const char*> names) {
  VariableTable t;
  for (const char* n : names) t.Add(n, 0);
  return t;
}

TEST(Compiler, ErrorPositionsAndMessages) {
  HostScope scope;
  VariableTable vars = Vars({"x", "y"});
  struct Case {
    const char* formula;
    std::int32_t position;
    const char* message;
  };
  const Case cases[] = {
      // Operators and ")" report the token before them.
      {")(", 1, "Operand expected"}, {"x)(", 0, "Closing parenthesis without matching open parenthesis"},
      {"(x))", 3, "Closing parenthesis without matching open parenthesis"}, {"1+*2", 2, "Operand expected"},
      {"2+-3", 2, "Operand expected"}, {"--x", 1, "Operand expected"},
      {"*2", 1, "Operand expected"}, {"(*2)", 1, "Operand expected"},
      {"2*/3", 2, "Operand expected"}, {"sin*2", 0, "Operand expected"},
      {"()", 1, "Operand expected"},
      // Numbers: the index before their last digit, or the value before them.
      {"2 3", 0, "Operator expected"}, {"x+12 34", 3, "Operator expected"},
      {"1..2", 1, "Operand contains multiple decimal points"},
      {"x+1,2.5", 2, "Operand contains multiple decimal points"},
      {".", 0, "Invalid operand"}, {"x+,", 2, "Invalid operand"},
      {"sin 2", 4, "Open parenthesis expected"}, {"sin 123", 6, "Open parenthesis expected"},
      // Symbols: the index before their first character.
      {"q", 0, "Undefined symbol : 'q'"}, {"x+Qq", 2, "Undefined symbol : 'Qq'"},
      {"x+sin2x", 2, "Undefined symbol : 'sin2x'"}, {"_", 0, "Undefined symbol : '_'"},
      // Other characters: the value before them.
      {"#", 1, "Unexpected character encountered"}, {"x+#", 2, "Unexpected character encountered"},
      {"12#", 1, "Unexpected character encountered"}, {"x\xC3\xA9", 0, "Unexpected character encountered"},
      // The end of the text: its length.
      {"1+", 2, "Operand expected"}, {"2*(", 3, "Operand expected"},
      {"sin", 3, "Operand expected"}, {"(1+2", 4, "Closing parenthesis expected"},
      {"((x)", 4, "Closing parenthesis expected"}, {"(", 1, "Closing parenthesis expected"},
  };
  for (const Case& k : cases) {
    Compiled c = Compile(scope, k.formula, vars);
    EXPECT_TRUE(c.result == k.position && c.message == k.message) << k.formula << ": " << c.result << " " << c.message;
    ASSERT_EQ(c.boxes, 1u) << k.formula;
    const RecordingHost::Message& box = scope.host.messages.back();
    EXPECT_EQ(box.title + ": " + box.text, "Syntax Error: Character " + std::to_string(k.position) + ":  " + k.message);
  }
}

TEST(Compiler, NamesAreLookedUpInTheTableOnly) {
  HostScope scope;
  // e is the constant unless the table has an E; functions win over table names.
  EXPECT_EQ(Compile(scope, "2e-e1", Vars({"E1"})).postfix, "2 2.718281828 * E1 - ");
  EXPECT_EQ(Compile(scope, "e", Vars({"E"})).postfix, "E ");
  EXPECT_EQ(Compile(scope, "1.5e-3+2E5", Vars({})).postfix, "1.5e-3 2E5 + ");
  EXPECT_EQ(Compile(scope, "sin(1)", Vars({"SIN"})).postfix, "1 SIN ");
  // Only entries 1..count are searched.
  VariableTable t = Vars({"a", "b"});
  t.SetCount(1);
  EXPECT_EQ(Compile(scope, "b", t).message, "Undefined symbol : 'b'");
  // The output uses the symbol folded to upper case.
  EXPECT_EQ(Compile(scope, "Alpha_1", Vars({"ALPHA_1"})).postfix, "ALPHA_1 ");
}

}  // namespace
}  // namespace vt
