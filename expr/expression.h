// The expression engine: user formulas from text to value.
//
// What lives in expr/:
// - expression.h (this file): the variable table, the compiler and evaluator
//   class Cls6, the shared flags and constants, the failures the evaluator
//   leaves to its caller.
// - stack.h: Cls13, the tagged value stack the compiler and the plain
//   evaluator work on.
// - functions.h: the 33 built-in functions of one argument (names, ranks,
//   values and guards), shared by every evaluation path.
// - text_prep.h: the input filters, implicit products and sign folding.
// - derivative.h: the symbolic derivative (clsPolish tree, parse, derive,
//   print).
// - parameters.h: LoadParameterTable, the parameters of the document as the
//   first entries of a variable table.
//
// The engine calls nothing but document/numtext (number text), document/host
// (message boxes) and, for LoadParameterTable only, the document collections.
//
// Two evaluators read the same postfix text and must agree to the bit:
// Cls6::DoEvaluatePlain splits the text at every call and works on a Cls13;
// Cls6::DoEvaluate keeps a parsed form of each text it has seen (keyed by the
// whole text, so a changed text is never served stale) and binds its
// variables to table indices (checked against the table's name stamp).
//
// Single-threaded, as the rest of the program: the cache of parsed texts and
// the random sequence are module state.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vt {

// ---- shared flags and constants -------------------------------------------

// True only while the expression pad works: a domain error in DoEvaluate then
// shows its message. Otherwise such errors are silent breaks.
extern bool ReportEvalErrors;

// The value of "no point here" (bits 0x3DFCD35B). A silent domain error
// evaluates to it, and samplers write it into coordinates without a value.
inline constexpr float BreakValue = 0.12345f;

// What the compiler writes for PI.
inline constexpr const char* kPiText = "3.1415926";
// What the compiler writes for the constant e.
inline constexpr const char* kEText = "2.718281828";

// ---- failures the evaluator does not handle itself --------------------------
//
// These are programmer errors (a broken postfix text, an unbalanced stack) or
// an overflow of a Single. They leave DoEvaluate as an ExprFailure and go to
// the caller's handler; the drawing loop and the canvas handlers ignore them.

// Base of the object-defined failure codes.
inline constexpr std::int32_t kObjectErrorBase = static_cast<std::int32_t>(0x80040000u);
inline constexpr std::int32_t kErrBadToken = kObjectErrorBase + 1002;
inline constexpr std::int32_t kErrPopEmpty = kObjectErrorBase + 1011;
inline constexpr std::int32_t kErrPeekEmpty = kObjectErrorBase + 1012;
// The runtime's own code for an overflow.
inline constexpr std::int32_t kErrOverflow = 6;

class ExprFailure : public std::runtime_error {
 public:
  ExprFailure(std::int32_t code, const std::string& text) : std::runtime_error(text), code_(code) {}
  std::int32_t code() const { return code_; }
  bool IsOverflow() const { return code_ == kErrOverflow; }

 private:
  std::int32_t code_;
};

[[noreturn]] void ThrowOverflow();

// ---- the variable table ---------------------------------------------------
//
// Parallel names and Single values, used from index 1, room for indices 0 to
// 50. Names match without regard to case; a look-up takes the first match.
// Parameters come first (LoadParameterTable), then each caller appends the
// free variables of its formula kind and writes a sample's value into that
// entry before each evaluation.
//
// Values are a plain public array: samplers write them for every sample.
// Names go through methods so that the table knows when they change: Stamp()
// gives the same number as long as count and names stay the same (also across
// a Clear and the same names added again, unless it was asked in between),
// and a different one otherwise.
class VariableTable {
 public:
  static constexpr int kLastIndex = 50;

  VariableTable() = default;
  // A copy has the same names, so it keeps the stamp. There is no move: a
  // moved-from table would keep a stamp that no longer matches its names.
  VariableTable(const VariableTable&) = default;
  VariableTable& operator=(const VariableTable&) = default;

  float values[kLastIndex + 1] = {};

  int Count() const { return count_; }
  // Name at index 1..50 ("" outside).
  const std::string& Name(int index) const;
  // Appends an entry; returns its index, or 0 when the table is full.
  int Add(std::string_view name, float value = 0);
  // Sets the count to 0; stored names stay for the next Add to compare.
  void Clear() { count_ = 0; }
  // Sets a name (index 1..50; others are ignored).
  void SetName(int index, std::string_view name);
  // Sets the count (clamped to 0..50).
  void SetCount(int count);
  // First index 1..count whose name equals `name` without regard to case; 0
  // when there is none.
  int Find(std::string_view name) const;
  // Changes whenever the count or a name changed since it was last asked.
  std::uint64_t Stamp() const {
    if (namesChanged_ || stampCount_ != count_) Restamp();
    return stamp_;
  }

 private:
  void Restamp() const;

  std::string names_[kLastIndex + 1];
  std::int16_t count_ = 0;
  mutable std::int16_t stampCount_ = -1;
  mutable bool namesChanged_ = true;
  mutable std::uint64_t stamp_ = 0;
};

// Both sides folded to upper case (ASCII letters only).
bool SameNameNoCase(std::string_view a, std::string_view b);
// ASCII upper case.
std::string UpperText(std::string_view s);

// ---- the compiler and evaluator -------------------------------------------

class Cls6 {
 public:
  // Turns a formula into postfix text, appended to `postfix` (empty on entry).
  // 0 is success. Otherwise the result is the character position of the error
  // and a box titled "Syntax Error" has shown "Character N:  message". An
  // undefined symbol at the very start reports position 0: its box has been
  // shown all the same and the postfix text stands as far as it got.
  std::int32_t InfixToPostfix(const std::string& infix, const VariableTable& vars,
                              std::string& postfix);

  // Evaluates a postfix text with the table's values. On success ok is true
  // and result the value. An empty stack at the end gives ok false and leaves
  // result alone. A domain error gives ok true and BreakValue, or, with
  // ReportEvalErrors set and a message for the case, a box titled "Error",
  // ok false and result untouched. A broken text or an overflow throws
  // ExprFailure (result and ok untouched).
  //
  // `degrees`: the argument of SIN, COS, TAN, SEC, CSEC, CTAN and ATAN is
  // first taken as degrees (times 3.1416 / 180).
  void DoEvaluate(const std::string& postfix, bool degrees, const VariableTable& vars,
                  float& result, bool& ok);

  // The same evaluation read straight from the text at every call, on a
  // Cls13 stack. DoEvaluate must agree with it in every case.
  void DoEvaluatePlain(const std::string& postfix, bool degrees, const VariableTable& vars,
                       float& result, bool& ok);

  // The message of the last syntax error of this object ("" until one).
  const std::string& GetLastSyntaxError() const { return LastSyntaxError; }

 private:
  std::string LastSyntaxError;
};

// The check of a formula field when its dialog's OK is pressed: compiles
// `text` against `vars`. False on a syntax error, whose "Syntax Error" box
// the compiler has shown; `position` then holds the character it names
// (1-based, 0 when it names none). The one place every formula field checks.
bool FormulaCompiles(const std::string& text, const VariableTable& vars, int* position = nullptr);

// Forgets every parsed postfix text DoEvaluate keeps (memory only; results
// never depend on it).
void ClearEvaluatorCache();

}  // namespace vt
