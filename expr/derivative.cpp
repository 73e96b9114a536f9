#include "expr/derivative.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "document/host.h"
#include "document/numtext.h"
#include "expr/eval_ops.h"
#include "expr/expression.h"
#include "expr/functions.h"
#include "expr/text_prep.h"

namespace vt {

namespace {

// Trees deeper than this are refused (the walks below recurse on depth).
constexpr int kMaxTreeDepth = 2000;
// A derivative may not grow beyond this many nodes (products and powers of
// long chains grow with the square of their length).
constexpr std::size_t kMaxDerivedNodes = 200000;

const char* const kIllegal = "Expression is illegal.";

using Node = std::unique_ptr<clsPolish>;

Node Leaf(std::string data) {
  auto n = std::make_unique<clsPolish>();
  n->Push(kRankOperand, std::move(data));
  return n;
}

Node Make(int rank, std::string op, Node a, Node b = nullptr) {
  auto n = std::make_unique<clsPolish>();
  n->Push(rank, std::move(op));
  int ra = a->Rank();
  std::string da = a->Token();
  n->Push(ra, std::move(da), std::move(a));
  if (b) {
    int rb = b->Rank();
    std::string db = b->Token();
    n->Push(rb, std::move(db), std::move(b));
  }
  return n;
}

bool IsNumberText(std::string_view s) { return !s.empty() && evalops::IsNumberStart(s[0]); }
bool IsLeaf(const clsPolish& n) { return n.OperandCount() == 0; }
bool IsLeafText(const clsPolish& n, std::string_view s) { return IsLeaf(n) && n.Token() == s; }

}  // namespace

// ---- clsPolish ----------------------------------------------------------------

clsPolish::~clsPolish() { Kill(); }

void clsPolish::Clear() { Kill(); }

void clsPolish::Kill() {
  // Children are taken out before they die, so no destructor recurses.
  std::vector<std::unique_ptr<clsPolish>> pending;
  for (Element& e : elements_)
    if (e.child) pending.push_back(std::move(e.child));
  elements_.clear();
  while (!pending.empty()) {
    std::unique_ptr<clsPolish> n = std::move(pending.back());
    pending.pop_back();
    for (Element& e : n->elements_)
      if (e.child) pending.push_back(std::move(e.child));
    n->elements_.clear();
  }
}

void clsPolish::Push(int rank, std::string data, std::unique_ptr<clsPolish> child) {
  elements_.push_back(Element{rank, std::move(data), std::move(child)});
}

int clsPolish::GetRank(int index) const {
  if (index < 1 || index > ElementCount()) return 0;
  return elements_[static_cast<std::size_t>(index - 1)].rank;
}

const std::string& clsPolish::GetData(int index) const {
  static const std::string empty;
  if (index < 1 || index > ElementCount()) return empty;
  return elements_[static_cast<std::size_t>(index - 1)].data;
}

const clsPolish* clsPolish::GetChild(int index) const {
  if (index < 1 || index > ElementCount()) return nullptr;
  return elements_[static_cast<std::size_t>(index - 1)].child.get();
}

std::unique_ptr<clsPolish> clsPolish::Clone() const {
  auto n = std::make_unique<clsPolish>();
  for (const Element& e : elements_) n->Push(e.rank, e.data, e.child ? e.child->Clone() : nullptr);
  return n;
}

// ---- parsing ------------------------------------------------------------------

namespace {

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

struct StackOp {
  std::string token;  // "(", "(-)", "+", ..., or an upper-case function name
  int rank;           // as the compiler ranks it on its stack
};

class Parser {
 public:
  Node Run(const std::string& text, std::string& error) {
    const std::string s = UpperText(text) + "#";
    for (std::size_t i = 0; i < s.size(); ++i) {
      const char c = s[i];
      const std::string where = IntToText(static_cast<long long>(i + 1));
      if (c == '#') {
        if (i + 1 != s.size()) return Fail(error, kIllegal);
        if (state_ == 2 || state_ == 3 || state_ == 4) return Fail(error, "Lack of parameter at " + where);
        if (operands_.empty() || depth_ > 0) return Fail(error, kIllegal);
        while (!ops_.empty())
          if (!Reduce()) return Fail(error, kIllegal);
        if (operands_.size() != 1) return Fail(error, kIllegal);
        return std::move(operands_.back().node);
      }
      if (c == '(') {
        if (state_ == 1) {
          if (!ImplicitProduct()) return Fail(error, kIllegal);
        } else if (state_ == 3 || state_ == 4) {
          state_ = 2;
        }
        ops_.push_back({"(", 0});
        ++depth_;
        continue;
      }
      if (c == ')') {
        if (state_ != 1) return Fail(error, "Lack of parameter at " + where);
        if (depth_ == 0) return Fail(error, "Closing parenthesis without matching open parenthesis");
        while (ops_.back().token != "(")
          if (!Reduce()) return Fail(error, kIllegal);
        ops_.pop_back();
        --depth_;
        continue;
      }
      if (c == '+' || c == '-' || c == '*' || c == '/' || c == '^') {
        const std::string op(1, c);
        if (state_ == 1) {
          const int rank = OperatorRank(op);
          while (!ops_.empty() && ops_.back().rank >= rank)
            if (!Reduce()) return Fail(error, kIllegal);
          ops_.push_back({op, rank});
          state_ = (c == '+' || c == '-') ? 3 : 2;
        } else {
          if (state_ == 3) return Fail(error, "Double " + op + " exist.");
          if (c == '-') {
            ops_.push_back({"(-)", 3});
          } else if (c != '+') {
            if (state_ == 2) return Fail(error, "Double " + op + " exist.");
            return Fail(error, "Lack of parameter at " + where);
          }
          state_ = 3;
        }
        continue;
      }
      if (IsDigit(c) || c == '.' || c == ',') {
        if (state_ == 1) return Fail(error, kIllegal);
        const std::size_t start = i;
        int marks = 0;
        while (IsDigit(s[i]) || s[i] == '.' || s[i] == ',') {
          if ((s[i] == '.' || s[i] == ',') && ++marks > 1)
            return Fail(error, "Illegal symbol " + std::string(1, s[i]));
          ++i;
        }
        i += ExponentLength(s, i);
        --i;
        std::string token = s.substr(start, i + 1 - start);
        if (token == "." || token == ",") return Fail(error, "Illegal symbol " + token);
        if (state_ == 4) return Fail(error, kIllegal);
        PushOperand(Leaf(std::move(token)), 1);
        state_ = 1;
        continue;
      }
      if (static_cast<unsigned char>(c) <= ' ') continue;
      if (IsLetter(c) || c == '_') {
        const std::size_t start = i;
        while (IsLetter(s[i]) || IsDigit(s[i]) || s[i] == '_') ++i;
        --i;
        const std::string symbol = s.substr(start, i + 1 - start);
        if (state_ == 1 && !ImplicitProduct()) return Fail(error, kIllegal);
        Fn f;
        if (FindFunction(symbol, f)) {
          ops_.push_back({symbol, OperatorRank(symbol)});
          state_ = 4;
        } else if (symbol == "PI") {
          PushOperand(Leaf(kPiText), 1);
          state_ = 1;
        } else {
          std::string lower = symbol;
          for (char& ch : lower)
            if (ch >= 'A' && ch <= 'Z') ch = static_cast<char>(ch - 'A' + 'a');
          PushOperand(Leaf(std::move(lower)), 1);
          state_ = 1;
        }
        continue;
      }
      return Fail(error, "Illegal symbol " + std::string(1, c));
    }
    return Fail(error, kIllegal);  // not reached: the text ends with "#"
  }

 private:
  struct Operand {
    Node node;
    int depth;
  };

  Node Fail(std::string& error, const std::string& message) {
    error = message;
    return nullptr;
  }

  void PushOperand(Node n, int depth) { operands_.push_back({std::move(n), depth}); }

  bool ImplicitProduct() {
    while (!ops_.empty() && ops_.back().rank >= 2)
      if (!Reduce()) return false;
    ops_.push_back({"*", 2});
    state_ = 2;
    return true;
  }

  // Builds the node of the operator on top of the stack.
  bool Reduce() {
    StackOp op = std::move(ops_.back());
    ops_.pop_back();
    if (op.token == "(") return false;
    const bool unary = op.token.size() > 1;  // "(-)" or a function
    const std::size_t need = unary ? 1 : 2;
    if (operands_.size() < need) return false;
    Node node;
    int depth = 0;
    if (unary) {
      Operand a = std::move(operands_.back());
      operands_.pop_back();
      depth = a.depth + 1;
      if (op.token == "(-)") {
        node = Make(kRankNegation, "MIN", std::move(a.node));
      } else {
        std::string lower = op.token;
        for (char& ch : lower)
          if (ch >= 'A' && ch <= 'Z') ch = static_cast<char>(ch - 'A' + 'a');
        node = Make(kRankFunction, std::move(lower), std::move(a.node));
      }
    } else {
      Operand b = std::move(operands_.back());
      operands_.pop_back();
      Operand a = std::move(operands_.back());
      operands_.pop_back();
      depth = std::max(a.depth, b.depth) + 1;
      const int rank = op.token == "^" ? kRankPower : OperatorRank(op.token);
      node = Make(rank, op.token, std::move(a.node), std::move(b.node));
    }
    if (depth > kMaxTreeDepth) return false;
    PushOperand(std::move(node), depth);
    return true;
  }

  int state_ = 0;
  int depth_ = 0;
  std::vector<StackOp> ops_;
  std::vector<Operand> operands_;
};

}  // namespace

std::unique_ptr<clsPolish> ParseToPolish(const std::string& text, std::string& error, bool& ok) {
  ok = false;
  error.clear();
  if (text.find("--") != std::string::npos) {
    error = "Double - exist.";
    return nullptr;
  }
  Parser parser;
  Node tree = parser.Run(text, error);
  ok = tree != nullptr;
  return tree;
}

// ---- deriving -----------------------------------------------------------------

namespace {

class Deriver {
 public:
  Deriver(bool partial, std::string variable, const VariableTable* constants)
      : partial_(partial), variable_(std::move(variable)), constants_(constants) {}

  Node Run(const clsPolish& tree, std::string* error) {
    Node d = D(tree);
    if (!failed_) return d;
    host().MsgBox(message_, "Error", MsgButtons::OK, MsgIcon::Critical);
    if (error) *error = message_;
    return nullptr;
  }

 private:
  Node Fail(const std::string& message) {
    if (!failed_) {
      failed_ = true;
      message_ = message;
    }
    return Leaf("0");
  }

  Node Count(Node n) {
    if (++made_ > kMaxDerivedNodes) return Fail(kIllegal);
    return n;
  }

  // Copies of operands count towards the size limit too.
  Node C(const clsPolish& n) {
    made_ += Size(n);
    if (made_ > kMaxDerivedNodes) return Fail(kIllegal);
    return n.Clone();
  }
  static std::size_t Size(const clsPolish& n) {
    std::size_t s = 1;
    for (int k = 1; k <= n.OperandCount(); ++k) s += Size(n.Operand(k));
    return s;
  }

  Node Num(const char* s) { return Count(Leaf(s)); }

  // Builders with the plain simplifications of 0 and 1.
  Node Add(Node a, Node b) {
    if (IsLeafText(*a, "0")) return b;
    if (IsLeafText(*b, "0")) return a;
    return Count(Make(kRankSum, "+", std::move(a), std::move(b)));
  }
  Node Sub(Node a, Node b) {
    if (IsLeafText(*b, "0")) return a;
    if (IsLeafText(*a, "0")) return Neg(std::move(b));
    return Count(Make(kRankSum, "-", std::move(a), std::move(b)));
  }
  Node Mul(Node a, Node b) {
    if (IsLeafText(*a, "0") || IsLeafText(*b, "0")) return Num("0");
    if (IsLeafText(*a, "1")) return b;
    if (IsLeafText(*b, "1")) return a;
    return Count(Make(kRankProduct, "*", std::move(a), std::move(b)));
  }
  Node Div(Node a, Node b) {
    if (IsLeafText(*a, "0")) return Num("0");
    if (IsLeafText(*b, "1")) return a;
    return Count(Make(kRankProduct, "/", std::move(a), std::move(b)));
  }
  Node Pow(Node a, Node b) {
    if (IsLeafText(*b, "1")) return a;
    if (IsLeafText(*b, "0")) return Num("1");
    return Count(Make(kRankPower, "^", std::move(a), std::move(b)));
  }
  Node Neg(Node a) {
    if (IsLeafText(*a, "0")) return a;
    if (a->Token() == "MIN" && a->OperandCount() == 1) return a->Operand(1).Clone();
    return Count(Make(kRankNegation, "MIN", std::move(a)));
  }
  Node Fn1(const char* name, const clsPolish& u) { return Count(Make(kRankFunction, name, C(u))); }
  Node Square(const clsPolish& u) { return Pow(C(u), Num("2")); }

  static bool HasSymbol(const clsPolish& n) {
    if (IsLeaf(n)) return !IsNumberText(n.Token());
    for (int k = 1; k <= n.OperandCount(); ++k)
      if (HasSymbol(n.Operand(k))) return true;
    return false;
  }

  // v - 1 for the power rule: worked out when v is a plain number.
  Node MinusOne(const clsPolish& v) {
    if (IsLeaf(v) && IsNumberText(v.Token())) {
      double c = evalops::ReadNumber(v.Token()) - 1;
      std::string t = DoubleToText(std::fabs(c));
      if (std::isfinite(c) && t.find_first_not_of("0123456789.") == std::string::npos) {
        Node n = Count(Leaf(t));
        return c < 0 ? Neg(std::move(n)) : std::move(n);
      }
    }
    return Sub(C(v), Num("1"));
  }

  Node Symbol(const std::string& name) {
    if (constants_ && constants_->Find(name) != 0) return Num("0");
    if (!partial_) {
      if (name == "x" || name == "y" || name == "a" || name == "r" || name == "u") return Num("1");
      if (name == "e") return Num("0");
      return Fail("Can not find derivative of " + name);
    }
    if (SameNameNoCase(name, variable_)) return Num("1");
    if (name == "x" || name == "y" || name == "e") return Num("0");
    return Fail(kIllegal);
  }

  Node D(const clsPolish& t) {
    if (failed_) return Leaf("0");
    const std::string& op = t.Token();
    const int k = t.OperandCount();
    if (k == 0) {
      if (IsNumberText(op)) return Num("0");
      return Symbol(op);
    }
    if (k == 2) {
      const clsPolish& u = t.Operand(1);
      const clsPolish& v = t.Operand(2);
      if (op == "+") return Add(D(u), D(v));
      if (op == "-") return Sub(D(u), D(v));
      if (op == "*") return Add(Mul(D(u), C(v)), Mul(C(u), D(v)));
      if (op == "/") return Div(Sub(Mul(D(u), C(v)), Mul(C(u), D(v))), Square(v));
      if (op == "^") {
        // e^v, where e is the constant: e^v v'.
        if (IsLeafText(u, "e") && !(constants_ && constants_->Find("e") != 0)) return Mul(Pow(C(u), C(v)), D(v));
        if (!HasSymbol(v)) return Mul(Mul(C(v), Pow(C(u), MinusOne(v))), D(u));
        // u^v = exp(v log u): u^v (v' log u + v u' / u)
        Node inner = Add(Mul(D(v), Fn1("log", u)), Div(Mul(C(v), D(u)), C(u)));
        return Mul(Pow(C(u), C(v)), std::move(inner));
      }
      return Fail(kIllegal);
    }
    const clsPolish& u = t.Operand(1);
    if (op == "MIN") return Neg(D(u));
    Node outer = Outer(op, u);
    if (failed_) return Leaf("0");
    return Mul(std::move(outer), D(u));
  }

  // The derivative of the function at its argument u.
  Node Outer(const std::string& f, const clsPolish& u) {
    auto one = [&] { return Num("1"); };
    auto root = [&](Node x) { return Pow(std::move(x), Num("0.5")); };
    if (f == "sqr") return Div(one(), Mul(Num("2"), Fn1("sqr", u)));
    if (f == "sqrt") return Div(one(), Mul(Num("2"), Fn1("sqrt", u)));
    if (f == "exp") return Fn1("exp", u);
    if (f == "log" || f == "ln") return Div(one(), C(u));
    if (f == "log10") return Div(one(), Mul(C(u), Num("2.302585093")));
    if (f == "sin") return Fn1("cos", u);
    if (f == "cos") return Neg(Fn1("sin", u));
    if (f == "tan") return Div(one(), Pow(Fn1("cos", u), Num("2")));
    if (f == "ctan") return Neg(Div(one(), Pow(Fn1("sin", u), Num("2"))));
    if (f == "sec") return Mul(Fn1("sec", u), Fn1("tan", u));
    if (f == "csec") return Neg(Mul(Fn1("csec", u), Fn1("ctan", u)));
    if (f == "asin") return Div(one(), root(Sub(one(), Square(u))));
    if (f == "acos") return Neg(Div(one(), root(Sub(one(), Square(u)))));
    if (f == "atan") return Div(one(), Add(one(), Square(u)));
    if (f == "actan") return Neg(Div(one(), Add(one(), Square(u))));
    if (f == "sinh") return Fn1("cosh", u);
    if (f == "cosh") return Fn1("sinh", u);
    if (f == "tanh") return Div(one(), Pow(Fn1("cosh", u), Num("2")));
    if (f == "ctanh") return Neg(Div(one(), Pow(Fn1("sinh", u), Num("2"))));
    if (f == "asinh") return Div(one(), root(Add(Square(u), one())));
    if (f == "acosh") return Div(one(), root(Sub(Square(u), one())));
    if (f == "atanh" || f == "actanh") return Div(one(), Sub(one(), Square(u)));
    return Fail("Can not find derivative of " + f);
  }

  bool partial_;
  std::string variable_;
  const VariableTable* constants_;
  bool failed_ = false;
  std::string message_;
  std::size_t made_ = 0;
};

// Whether the printed text of a node begins with a minus sign.
bool StartsWithMinus(const clsPolish* n) {
  while (n->OperandCount() == 2) {
    const clsPolish& left = n->Operand(1);
    if (left.Rank() < n->Rank()) return false;  // printed in parentheses
    n = &left;
  }
  return n->OperandCount() == 1 && n->Token() == "MIN";
}

void Print(const clsPolish& t, std::string& out) {
  const int k = t.OperandCount();
  const std::string& op = t.Token();
  if (k == 0) {
    out += op;
    return;
  }
  auto wrapped = [&out](const clsPolish& n, bool paren) {
    if (paren) out += '(';
    Print(n, out);
    if (paren) out += ')';
  };
  // An asech call keeps what follows it at its level as its own argument when
  // compiled (its rank on the stack is that of "("), so as an operand it is
  // always written in parentheses.
  auto isAsech = [](const clsPolish& n) { return n.OperandCount() == 1 && n.Token() == "asech"; };
  if (k == 1) {
    if (op == "MIN") {
      out += '-';
      const clsPolish& a = t.Operand(1);
      wrapped(a, a.Rank() <= kRankNegation || isAsech(a));
    } else {
      out += op;
      wrapped(t.Operand(1), true);
    }
    return;
  }
  const clsPolish& l = t.Operand(1);
  const clsPolish& r = t.Operand(2);
  // Operators group to the left: a right operand of the same rank needs
  // parentheses, a left one does not. A right operand that begins with a
  // minus gets them too, so that no sign pair is written.
  wrapped(l, l.Rank() < t.Rank() || isAsech(l));
  out += op;
  wrapped(r, r.Rank() <= t.Rank() || StartsWithMinus(&r) || isAsech(r));
}

}  // namespace

std::unique_ptr<clsPolish> Derive(const clsPolish& tree, std::string* error, const VariableTable* constants) {
  return Deriver(false, std::string(), constants).Run(tree, error);
}

std::unique_ptr<clsPolish> DerivePartial(const clsPolish& tree, const std::string& variable, std::string* error,
                                         const VariableTable* constants) {
  return Deriver(true, variable, constants).Run(tree, error);
}

std::string PolishToText(const clsPolish& tree) {
  std::string out;
  if (tree.ElementCount() > 0) Print(tree, out);
  return out;
}

bool DerivativeText(const std::string& formula, const std::string& variable, std::string& text,
                    const VariableTable* constants) {
  std::string error;
  bool ok = false;
  Node tree = ParseToPolish(formula, error, ok);
  if (!ok) {
    host().MsgBox(error, "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
  Node d = variable.empty() ? Derive(*tree, nullptr, constants) : DerivePartial(*tree, variable, nullptr, constants);
  if (!d) return false;
  text = FoldSigns(PolishToText(*d));
  return true;
}

}  // namespace vt
