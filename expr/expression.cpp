// The compiler (infix text to postfix text), the variable table and the plain
// evaluator that reads the postfix text token by token.
#include "expr/expression.h"

#include <atomic>

#include "document/host.h"
#include "document/numtext.h"
#include "expr/eval_ops.h"
#include "expr/functions.h"
#include "expr/stack.h"
#include "expr/text_prep.h"

namespace vt {

bool ReportEvalErrors = false;

void ThrowOverflow() { throw ExprFailure(kErrOverflow, "Overflow"); }

// ---- names ------------------------------------------------------------------

namespace {

char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

std::atomic<std::uint64_t> g_lastStamp{0};

const std::string& EmptyName() {
  static const std::string empty;
  return empty;
}

}  // namespace

bool SameNameNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (Upper(a[i]) != Upper(b[i])) return false;
  return true;
}

std::string UpperText(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = Upper(c);
  return out;
}

// ---- the variable table -------------------------------------------------------

const std::string& VariableTable::Name(int index) const {
  if (index < 1 || index > kLastIndex) return EmptyName();
  return names_[index];
}

int VariableTable::Add(std::string_view name, float value) {
  if (count_ >= kLastIndex) return 0;
  int i = count_ + 1;
  SetName(i, name);
  values[i] = value;
  count_ = static_cast<std::int16_t>(i);
  return i;
}

void VariableTable::SetName(int index, std::string_view name) {
  if (index < 1 || index > kLastIndex) return;
  if (names_[index] == name) return;
  names_[index] = name;
  namesChanged_ = true;
}

void VariableTable::SetCount(int count) {
  if (count < 0) count = 0;
  if (count > kLastIndex) count = kLastIndex;
  count_ = static_cast<std::int16_t>(count);
}

int VariableTable::Find(std::string_view name) const {
  for (int i = 1; i <= count_; ++i)
    if (SameNameNoCase(names_[i], name)) return i;
  return 0;
}

void VariableTable::Restamp() const {
  stamp_ = ++g_lastStamp;
  stampCount_ = count_;
  namesChanged_ = false;
}

// ---- the compiler -------------------------------------------------------------

namespace {

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSymbolStart(char c) { return IsLetter(c) || c == '_'; }
bool IsSymbolChar(char c) { return IsLetter(c) || IsDigit(c) || c == '_'; }
bool IsOperator(char c) { return c == '+' || c == '-' || c == '*' || c == '/' || c == '^'; }
bool IsNumberChar(char c) { return IsDigit(c) || c == '.' || c == ','; }

int ArrivingRank(char op) {
  switch (op) {
    case '+':
    case '-':
      return 1;
    case '*':
    case '/':
      return 2;
    default:
      return 4;  // '^'
  }
}

}  // namespace

std::int32_t Cls6::InfixToPostfix(const std::string& infix, const VariableTable& vars,
                                  std::string& postfix) {
  // States: 0 start, 1 an operand has ended, 2 after "*" "/" "^" or a "("
  // that followed a sign or a function, 3 after a sign, 4 after a function.
  Cls13 ops;
  int state = 0;
  std::int32_t depth = 0;
  std::int32_t pos = 1;  // the running error position (1-based)
  const std::size_t n = infix.size();

  auto fail = [&](const std::string& message) -> std::int32_t {
    LastSyntaxError = message;
    host().MsgBox("Character " + IntToText(pos) + ":  " + message, "Syntax Error", MsgButtons::OK,
                  MsgIcon::Critical);
    return pos;
  };
  auto emit = [&](std::string_view token) {
    postfix.append(token);
    postfix.push_back(' ');
  };
  auto popWhileRankAtLeast = [&](int rank) {
    while (ops.StackSize() > 0 && OperatorRank(ops.GetPopValue().text) >= rank) emit(ops.Pop().text);
  };
  auto implicitProduct = [&] {
    popWhileRankAtLeast(2);
    ops.Push("*");
    state = 2;
  };

  std::size_t i = 0;
  while (i < n) {
    const char c = infix[i];
    const auto index1 = static_cast<std::int32_t>(i + 1);

    if (c == '(') {
      if (state == 1)
        implicitProduct();
      else if (state == 3 || state == 4)
        state = 2;
      pos = index1;
      ops.Push("(");
      ++depth;
      ++i;
      continue;
    }

    if (c == ')') {
      if (state != 1) return fail("Operand expected");
      if (depth == 0) return fail("Closing parenthesis without matching open parenthesis");
      pos = index1;
      for (;;) {
        StackValue top = ops.Pop();
        if (top.text == "(") break;
        emit(top.text);
      }
      --depth;
      ++i;
      continue;
    }

    if (IsOperator(c)) {
      if (state == 1) {
        popWhileRankAtLeast(ArrivingRank(c));
        ops.Push(std::string(1, c));
        state = (c == '+' || c == '-') ? 3 : 2;
      } else {
        if (state == 3) return fail("Operand expected");
        if (c == '-')
          ops.Push("(-)");
        else if (c != '+')
          return fail("Operand expected");
        state = 3;
      }
      pos = index1;
      ++i;
      continue;
    }

    if (IsNumberChar(c)) {
      if (state == 1) return fail("Operator expected");
      const std::size_t start = i;
      int marks = 0;
      while (i < n && IsNumberChar(infix[i])) {
        if (infix[i] == '.' || infix[i] == ',') {
          if (++marks > 1) return fail("Operand contains multiple decimal points");
        }
        ++i;
      }
      // "1e-3", "2E5": the exponent belongs to the number.
      i += ExponentLength(infix, i);
      // The index before the number's last digit.
      pos = static_cast<std::int32_t>(i) - 1;
      std::string_view token(infix.data() + start, i - start);
      if (token == "." || token == ",") return fail("Invalid operand");
      if (state == 4) return fail("Open parenthesis expected");
      emit(token);
      state = 1;
      continue;
    }

    if (static_cast<unsigned char>(c) <= ' ') {
      ++i;
      continue;
    }

    if (!IsSymbolStart(c)) return fail("Unexpected character encountered");

    const std::size_t start = i;
    while (i < n && IsSymbolChar(infix[i])) ++i;
    std::string_view symbol(infix.data() + start, i - start);
    // The index before the symbol's first character.
    pos = static_cast<std::int32_t>(start);
    if (state == 1) implicitProduct();
    std::string upper = UpperText(symbol);
    Fn f;
    if (FindFunction(upper, f)) {
      ops.Push(std::move(upper));
      state = 4;
    } else if (upper == "PI") {
      emit(kPiText);
      state = 1;
    } else if (vars.Find(upper) != 0) {
      emit(upper);
      state = 1;
    } else if (upper == "E") {
      // Euler's number, where no variable or parameter is called e.
      emit(kEText);
      state = 1;
    } else {
      return fail("Undefined symbol : '" + std::string(symbol) + "'");
    }
  }

  pos = static_cast<std::int32_t>(n);
  if (state == 2 || state == 3 || state == 4) return fail("Operand expected");
  if (depth > 0) return fail("Closing parenthesis expected");
  while (ops.StackSize() > 0) emit(ops.Pop().text);
  return 0;
}

// ---- the plain evaluator ------------------------------------------------------

void Cls6::DoEvaluatePlain(const std::string& postfix, bool degrees, const VariableTable& vars,
                           float& result, bool& ok) {
  using namespace evalops;
  Cls13 stack;
  auto popSingle = [&] { return ToSingle(stack.Pop().number); };

  std::size_t pos = 0;
  for (;;) {
    const std::size_t blank = postfix.find(' ', pos);
    if (blank == std::string::npos) break;
    std::string_view token(postfix.data() + pos, blank - pos);
    pos = blank + 1;

    if (!token.empty() && IsNumberStart(token[0])) {
      stack.Push(ReadNumber(token));
      continue;
    }
    BinOp op;
    if (BinOpOf(token, op)) {
      float r = popSingle();
      float l = popSingle();
      double v = 0;
      if (const char* message = Binary(op, l, r, v)) {
        DomainError(message, result, ok);
        return;
      }
      stack.Push(v);
      continue;
    }
    Fn f;
    if (FindFunction(token, f)) {
      float x = popSingle();
      FnResult fr = FunctionValue(f, x, degrees);
      if (fr.IsDomainError()) {
        DomainError(fr.Message(), result, ok);
        return;
      }
      if (fr.IsValue()) stack.Push(fr.value);
      continue;
    }
    if (token == "(-)") {
      float v = popSingle();
      stack.Push(static_cast<double>(-v));
      continue;
    }
    int index = vars.Find(token);
    if (index == 0) throw ExprFailure(kErrBadToken, "Bad token in Evaluate: " + std::string(token));
    stack.Push(static_cast<double>(vars.values[index]));
  }

  if (stack.StackSize() > 0) {
    result = ToSingle(stack.GetPopValue().number);
    ok = true;
  } else {
    ok = false;
  }
}

bool FormulaCompiles(const std::string& text, const VariableTable& vars, int* position) {
  Cls6 compiler;
  std::string postfix;
  const std::int32_t pos = compiler.InfixToPostfix(text, vars, postfix);
  if (position) *position = static_cast<int>(pos);
  return pos == 0 && compiler.GetLastSyntaxError().empty();
}

}  // namespace vt
