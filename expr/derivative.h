// The symbolic derivative: formula text to a tree of its own, the tree
// derived by the ordinary rules, the result printed as text again. The caller
// runs the text through FoldSigns and compiles it like any formula.
//
//   auto tree = ParseToPolish(text, error, ok);   // ok false: error says why
//   auto d = Derive(*tree);                      // nullptr: a box has said why
//   std::string t = FoldSigns(PolishToText(*d));
//
// DerivativeText does the whole chain and shows every message itself.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace vt {

class VariableTable;

// Ranks kept in the tree; PolishToText puts parentheses by them.
inline constexpr int kRankSum = 1;       // "+", "-"
inline constexpr int kRankProduct = 2;   // "*", "/"
inline constexpr int kRankNegation = 3;  // "MIN"
inline constexpr int kRankPower = 4;     // "^"
inline constexpr int kRankFunction = 5;  // "sin", ...
inline constexpr int kRankOperand = 6;   // a number or a symbol

// One node of the tree, seen as a list of elements in prefix order: element 1
// is the node's own token (an operator "+" "-" "*" "/" "^", "MIN" for the
// unary minus, a function name, a symbol or a number, all in lower case but
// "MIN"), elements 2.. are its operands, each carrying its own node as child
// (and that node's rank and token as its rank and data). Children are owned.
class clsPolish {
 public:
  struct Element {
    int rank = 0;
    std::string data;
    std::unique_ptr<clsPolish> child;
  };

  clsPolish() = default;
  ~clsPolish();
  clsPolish(const clsPolish&) = delete;
  clsPolish& operator=(const clsPolish&) = delete;

  int ElementCount() const { return static_cast<int>(elements_.size()); }
  // Removes every element (and the children with them).
  void Clear();
  // Appends an element. For an operand pass its node as child.
  void Push(int rank, std::string data, std::unique_ptr<clsPolish> child = nullptr);
  // Destroys the whole subtree, without recursion however deep it is.
  void Kill();
  // 1-based; 0 and "" outside.
  int GetRank(int index) const;
  const std::string& GetData(int index) const;
  const clsPolish* GetChild(int index) const;

  // The node's own rank and token (element 1), and its operands.
  int Rank() const { return GetRank(1); }
  const std::string& Token() const { return GetData(1); }
  int OperandCount() const { return elements_.empty() ? 0 : ElementCount() - 1; }
  const clsPolish& Operand(int k) const { return *elements_[static_cast<std::size_t>(k)].child; }

  std::unique_ptr<clsPolish> Clone() const;

 private:
  std::vector<Element> elements_;
};

// Text to tree. On failure ok is false, `error` holds one of "Illegal symbol
// c", "Expression is illegal.", "Lack of parameter at N", "Double t exist.",
// "Closing parenthesis without matching open parenthesis", and the result is
// nullptr. Nothing is shown; the caller shows the error titled "Error".
std::unique_ptr<clsPolish> ParseToPolish(const std::string& text, std::string& error, bool& ok);

// `constants`, when given, names symbols that are constants (the document's
// parameters): each derives to 0, before every other rule, as the evaluator
// finds a parameter before a free variable of the same name.
//
// The derivative for a curve: x, y, a, r and u each derive to 1, the
// constant e (where no parameter is called so) to 0. Any other
// symbol, and the functions without a rule (abs, int, rnd, asec, acsec, sech,
// csech, asech, acsech), show "Can not find derivative of NAME" titled
// "Error" and give nullptr. `error`, when given, receives the message.
std::unique_ptr<clsPolish> Derive(const clsPolish& tree, std::string* error = nullptr,
                                  const VariableTable* constants = nullptr);

// The partial derivative by `variable` (any case): it derives to 1, the other
// of x and y and the constant e to 0, any other symbol shows "Expression is
// illegal.".
std::unique_ptr<clsPolish> DerivePartial(const clsPolish& tree, const std::string& variable,
                                         std::string* error = nullptr, const VariableTable* constants = nullptr);

// Infix text with parentheses where ranks need them, "MIN" as "-", function
// arguments in parentheses.
std::string PolishToText(const clsPolish& tree);

// The whole chain: parse, derive (by `variable`, or for a curve when it is
// empty) with `constants` (the document's parameters, LoadParameterTable) as
// constants, print, fold signs. Every failure shows its message titled
// "Error" and gives false.
bool DerivativeText(const std::string& formula, const std::string& variable, std::string& text,
                    const VariableTable* constants = nullptr);

}  // namespace vt
