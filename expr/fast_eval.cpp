// DoEvaluate: the postfix text is read once into a list of instructions, kept
// under the whole text, and run for every later call with the same text.
// Variables are bound to table indices once per name stamp of the table.
// Every step goes through the same routines as DoEvaluatePlain, in the same
// order, so both give the same value, the same box and the same failure.
//
// The prepared form serves only texts that cannot go wrong structurally:
// every variable found in the table, no operator short of operands, no
// function that may push nothing (ASIN, ACOS). Any other text is read the
// plain way at every call, which is what defines the result anyway.
//
// The stack holds Singles: every read from the stack rounds to a Single, so a
// Double pushed is rounded at once. A Double beyond the range of a Single
// becomes infinity there, and the read that meets it raises the overflow,
// as the read of the Double would. The top of the stack stays in a register.
//
// Operands pushed just before the operator that reads them are fused into it
// (a variable or a finite constant), and "^2" is a step of its own. The steps
// are dispatched through a table of labels (a GCC and Clang extension).
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "expr/eval_ops.h"
#include "expr/expression.h"
#include "expr/functions.h"

namespace vt {

namespace {

using evalops::BinOp;

// Operand forms of the fused binary steps: where l and r come from.
enum Form : std::uint8_t {
  kSS,  // both from the stack (r on top)
  kSC,  // l from the stack, r a constant that was pushed just before
  kSV,  // l from the stack, r a variable pushed just before
  kVC,  // l a variable, r a constant, both pushed just before
};
constexpr int kOpCount = 5;

enum Op : std::uint8_t {
  kEnd,
  kConst,      // push c
  kVar,        // push variable `slot`
  kNeg,        // pop, push its negation
  kFunc,       // pop x, push f(x)
  kVarFunc,    // Var, Func
  kSquare,     // Const 2, "^" on the top
  kVarSquare,  // Var, Const 2, "^"
  kBinary,     // + form * kOpCount + operator
  kCodeCount = kBinary + 4 * kOpCount,
};

constexpr std::uint8_t BinaryCode(Form form, BinOp op) {
  return static_cast<std::uint8_t>(kBinary + form * kOpCount + static_cast<int>(op));
}

struct Instr {
  std::uint8_t code;
  std::uint16_t slot;
  float c;
  FnImpl fn;
};

struct Program {
  std::vector<Instr> code;            // ends with kEnd
  std::vector<std::string> varNames;  // each distinct variable token
  std::vector<int> varIndex;          // its table index, 0 when it is not there
  std::uint64_t boundStamp = 0;
  bool allBound = false;
  bool wellFormed = true;  // no underflow, no function that may push nothing
  std::size_t maxDepth = 0;
};

bool MayPushNothing(Fn f) { return f == Fn::ASIN || f == Fn::ACOS; }

// A token as read by the plain evaluator, before fusing.
struct RawToken {
  enum Kind { Const, Var, Binary, Neg, Func } kind;
  BinOp bin = BinOp::Add;
  Fn fn = Fn::SIN;
  std::uint16_t slot = 0;
  float c = 0;
};

std::unique_ptr<Program> Build(const std::string& text) {
  auto prog = std::make_unique<Program>();
  std::vector<RawToken> raw;
  std::size_t depth = 0;
  auto need = [&](std::size_t k) {
    if (depth < k) prog->wellFormed = false;
  };
  std::size_t pos = 0;
  for (;;) {
    const std::size_t blank = text.find(' ', pos);
    if (blank == std::string::npos) break;
    std::string_view token(text.data() + pos, blank - pos);
    pos = blank + 1;
    RawToken t{RawToken::Const};
    if (!token.empty() && evalops::IsNumberStart(token[0])) {
      t.kind = RawToken::Const;
      t.c = static_cast<float>(evalops::ReadNumber(token));
      ++depth;
    } else if (evalops::BinOpOf(token, t.bin)) {
      t.kind = RawToken::Binary;
      need(2);
      if (depth >= 2) --depth;
    } else if (FindFunction(token, t.fn)) {
      t.kind = RawToken::Func;
      need(1);
      if (MayPushNothing(t.fn)) prog->wellFormed = false;
    } else if (token == "(-)") {
      t.kind = RawToken::Neg;
      need(1);
    } else {
      std::size_t slot = 0;
      while (slot < prog->varNames.size() && prog->varNames[slot] != token) ++slot;
      if (slot == prog->varNames.size()) prog->varNames.emplace_back(token);
      if (slot > 0xFFFF) prog->wellFormed = false;
      t.kind = RawToken::Var;
      t.slot = static_cast<std::uint16_t>(slot);
      ++depth;
    }
    prog->maxDepth = std::max(prog->maxDepth, depth);
    raw.push_back(t);
  }
  prog->varIndex.assign(prog->varNames.size(), 0);
  if (!prog->wellFormed) return prog;

  // A constant is only fused where it reads as a Single without overflow, so
  // the fused step fails exactly where the separate ones would.
  auto is = [&](std::size_t k, RawToken::Kind kind) { return k < raw.size() && raw[k].kind == kind; };
  auto finiteConst = [&](std::size_t k) { return is(k, RawToken::Const) && !std::isinf(raw[k].c); };
  auto isPow = [&](std::size_t k) { return is(k, RawToken::Binary) && raw[k].bin == BinOp::Pow; };
  auto& code = prog->code;
  for (std::size_t k = 0; k < raw.size(); ++k) {
    const RawToken& a = raw[k];
    if (is(k, RawToken::Var) && finiteConst(k + 1) && is(k + 2, RawToken::Binary)) {
      if (raw[k + 1].c == 2 && isPow(k + 2))
        code.push_back({kVarSquare, a.slot, 0, nullptr});
      else
        code.push_back({BinaryCode(kVC, raw[k + 2].bin), a.slot, raw[k + 1].c, nullptr});
      k += 2;
    } else if (is(k, RawToken::Var) && is(k + 1, RawToken::Func)) {
      code.push_back({kVarFunc, a.slot, 0, FunctionImpl(raw[k + 1].fn)});
      k += 1;
    } else if (is(k, RawToken::Var) && is(k + 1, RawToken::Binary)) {
      code.push_back({BinaryCode(kSV, raw[k + 1].bin), a.slot, 0, nullptr});
      k += 1;
    } else if (finiteConst(k) && is(k + 1, RawToken::Binary)) {
      if (a.c == 2 && isPow(k + 1))
        code.push_back({kSquare, 0, 0, nullptr});
      else
        code.push_back({BinaryCode(kSC, raw[k + 1].bin), 0, a.c, nullptr});
      k += 1;
    } else {
      switch (a.kind) {
        case RawToken::Const: code.push_back({kConst, 0, a.c, nullptr}); break;
        case RawToken::Var: code.push_back({kVar, a.slot, 0, nullptr}); break;
        case RawToken::Binary: code.push_back({BinaryCode(kSS, a.bin), 0, 0, nullptr}); break;
        case RawToken::Neg: code.push_back({kNeg, 0, 0, nullptr}); break;
        case RawToken::Func: code.push_back({kFunc, 0, 0, FunctionImpl(a.fn)}); break;
      }
    }
  }
  code.push_back({kEnd, 0, 0, nullptr});
  return prog;
}

[[gnu::noinline]] void Bind(Program& prog, const VariableTable& vars, std::uint64_t stamp) {
  prog.allBound = true;
  for (std::size_t s = 0; s < prog.varNames.size(); ++s) {
    prog.varIndex[s] = vars.Find(prog.varNames[s]);
    if (prog.varIndex[s] == 0) prog.allBound = false;
  }
  prog.boundStamp = stamp;
}

inline bool SameText(const std::string& a, const std::string& b) {
  std::size_t n = a.size();
  if (n != b.size()) return false;
  const char* p = a.data();
  const char* q = b.data();
  for (; n >= 8; n -= 8, p += 8, q += 8) {
    std::uint64_t x, y;
    std::memcpy(&x, p, 8);
    std::memcpy(&y, q, 8);
    if (x != y) return false;
  }
  for (; n > 0; --n)
    if (*p++ != *q++) return false;
  return true;
}

// The parsed texts: a few most recent ones checked first, then all.
struct Cache {
  static constexpr int kRecent = 4;
  static constexpr std::size_t kMaxTexts = 4096;
  struct Slot {
    std::string text;
    Program* prog = nullptr;
  };
  Slot recent[kRecent];
  int next = 0;
  std::unordered_map<std::string, std::unique_ptr<Program>> all;

  Program* Find(const std::string& text) {
    for (Slot& s : recent)
      if (s.prog && SameText(s.text, text)) return s.prog;
    return FindSlow(text);
  }

  [[gnu::noinline]] Program* FindSlow(const std::string& text) {
    auto it = all.find(text);
    if (it == all.end()) {
      if (all.size() >= kMaxTexts) Clear();
      it = all.emplace(text, Build(text)).first;
    }
    Slot& s = recent[next];
    next = (next + 1) % kRecent;
    s.text = text;
    s.prog = it->second.get();
    return s.prog;
  }

  void Clear() {
    for (Slot& s : recent) {
      s.text.clear();
      s.prog = nullptr;
    }
    all.clear();
  }
};

Cache g_cache;

// A read from the stack (see the head of the file).
inline float Read(float v) {
  if (std::isinf(v)) [[unlikely]]
    ThrowOverflow();
  return v;
}

// One binary step on two Singles. Sets `message` on a domain error.
template <BinOp B>
[[gnu::always_inline]] inline float Apply(float l, float r, const char*& message) {
  if constexpr (B == BinOp::Add || B == BinOp::Sub || B == BinOp::Mul) {
    const float v = B == BinOp::Add ? l + r : (B == BinOp::Sub ? l - r : l * r);
    if (std::isinf(v)) [[unlikely]]
      ThrowOverflow();
    return v;
  } else if constexpr (B == BinOp::Div) {
    if (std::fabs(static_cast<double>(r)) < 1e-6) [[unlikely]] {
      message = kMsgDivision;
      return 0;
    }
    const float v = l / r;
    if (std::isinf(v)) [[unlikely]]
      ThrowOverflow();
    return v;
  } else {
    double v = 0;
    if (!evalops::Power(l, r, v)) [[unlikely]] {
      message = kMsgPower;
      return 0;
    }
    return static_cast<float>(v);
  }
}

// "^2" as evalops::Power does it. The square of a Single is exact in Double,
// so rounding it to a Single gives the Single product (infinity beyond the
// range, for the read to find). A NaN base is the overflow there too.
inline float SquareOf(float l) {
  const float v = l * l;
  if (v != v) [[unlikely]]
    ThrowOverflow();
  return v;
}

[[gnu::noinline]] void EvaluatePlainly(Cls6& calc, const std::string& postfix, bool degrees,
                                       const VariableTable& vars, float& result, bool& ok) {
  calc.DoEvaluatePlain(postfix, degrees, vars, result, ok);
}

}  // namespace

void ClearEvaluatorCache() { g_cache.Clear(); }

// Runs the prepared program of the text: well-formed and fully bound, else the
// plain reading. A domain error sets result and ok as the plain reading does.
// The top of the stack is kept in `top`; st[] holds what lies below it (st[0]
// receives the undefined top of the empty stack and is never read back).
void Cls6::DoEvaluate(const std::string& postfix, bool degrees, const VariableTable& vars,
                      float& result, bool& ok) {
  Program& prog = *g_cache.Find(postfix);
  const std::uint64_t stamp = vars.Stamp();
  if (prog.boundStamp != stamp) Bind(prog, vars, stamp);
  if (!prog.wellFormed || !prog.allBound) [[unlikely]] {
    EvaluatePlainly(*this, postfix, degrees, vars, result, ok);
    return;
  }
  constexpr std::size_t kLocal = 64;
  float local[kLocal];
  std::unique_ptr<float[]> heap;
  float* st = local;
  if (prog.maxDepth >= kLocal) [[unlikely]] {
    heap.reset(new float[prog.maxDepth + 1]);
    st = heap.get();
  }
  const float* values = vars.values;

  float* sp = st;  // one past the last value below the top
  float top = 0;
  const int* bind = prog.varIndex.data();
  const char* message = nullptr;
  const Instr* in = prog.code.data();

  // In the order of Op, then the binary steps by form and operator.
  static const void* const kLabels[kCodeCount] = {
      &&End, &&Const, &&Var, &&Neg, &&Func, &&VarFunc, &&Square, &&VarSquare,
      &&SS_Add, &&SS_Sub, &&SS_Mul, &&SS_Div, &&SS_Pow,
      &&SC_Add, &&SC_Sub, &&SC_Mul, &&SC_Div, &&SC_Pow,
      &&SV_Add, &&SV_Sub, &&SV_Mul, &&SV_Div, &&SV_Pow,
      &&VC_Add, &&VC_Sub, &&VC_Mul, &&VC_Div, &&VC_Pow,
  };
#define VT_NEXT goto* kLabels[(++in)->code]
#define VT_VAR values[bind[in->slot]]
#define VT_BINARY_FORMS(OP)                                  \
  SS_##OP : {                                                \
    const float r = Read(top);                               \
    const float l = Read(*--sp);                             \
    top = Apply<BinOp::OP>(l, r, message);                   \
    if (message) [[unlikely]]                                \
      goto domain;                                           \
    VT_NEXT;                                                 \
  }                                                          \
  SC_##OP : {                                                \
    top = Apply<BinOp::OP>(Read(top), in->c, message);       \
    if (message) [[unlikely]]                                \
      goto domain;                                           \
    VT_NEXT;                                                 \
  }                                                          \
  SV_##OP : {                                                \
    const float r = Read(VT_VAR);                            \
    const float l = Read(top);                               \
    top = Apply<BinOp::OP>(l, r, message);                   \
    if (message) [[unlikely]]                                \
      goto domain;                                           \
    VT_NEXT;                                                 \
  }                                                          \
  VC_##OP : {                                                \
    const float l = Read(VT_VAR);                            \
    *sp++ = top;                                             \
    top = Apply<BinOp::OP>(l, in->c, message);               \
    if (message) [[unlikely]]                                \
      goto domain;                                           \
    VT_NEXT;                                                 \
  }

  goto* kLabels[in->code];

Const:
  *sp++ = top;
  top = in->c;
  VT_NEXT;
Var:
  *sp++ = top;
  top = VT_VAR;
  VT_NEXT;
Neg:
  top = -Read(top);
  VT_NEXT;
Square:
  top = SquareOf(Read(top));
  VT_NEXT;
VarSquare: {
  const float l = Read(VT_VAR);
  *sp++ = top;
  top = SquareOf(l);
  VT_NEXT;
}
Func: {
  const FnResult fr = in->fn(Read(top), degrees);
  if (!fr.IsValue()) [[unlikely]] {
    // Well-formed programs hold no function that pushes nothing.
    message = fr.Message();
    goto domain;
  }
  top = static_cast<float>(fr.value);
  VT_NEXT;
}
VarFunc: {
  const float x = Read(VT_VAR);
  *sp++ = top;
  const FnResult fr = in->fn(x, degrees);
  if (!fr.IsValue()) [[unlikely]] {
    message = fr.Message();
    goto domain;
  }
  top = static_cast<float>(fr.value);
  VT_NEXT;
}
  VT_BINARY_FORMS(Add)
  VT_BINARY_FORMS(Sub)
  VT_BINARY_FORMS(Mul)
  VT_BINARY_FORMS(Div)
  VT_BINARY_FORMS(Pow)
#undef VT_BINARY_FORMS
#undef VT_VAR
#undef VT_NEXT

End:
  if (sp == st) {
    ok = false;
  } else {
    result = Read(top);
    ok = true;
  }
  return;

domain:
  evalops::DomainError(message, result, ok);
}

}  // namespace vt
