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
// (a variable, a finite constant, the square of a variable, the squares of
// two variables), "^2" is a step of its own (and with a negation after it), and a product or quotient whose r is a sum or difference fused
// so just before it takes that step in. SIN, COS, TAN, EXP, LOG, SQR and ABS have steps of their
// own with the shared function body inlined. Binding a table also writes each
// step's label into it, so that a step jumps straight to the next (labels as
// values, a GCC and Clang extension). A text deeper than the local stack is
// read the plain way.
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "expr/eval_ops.h"
#include "expr/expression.h"
#include "expr/function_body.h"
#include "expr/functions.h"

namespace vt {

namespace {

using evalops::BinOp;

// Operand forms of the fused binary steps: where l and r come from. The
// forms that push keep the old top below the result.
enum Form : std::uint8_t {
  kSS,  // both from the stack (r on top)
  kSC,  // l from the stack, r a constant that was pushed just before
  kSV,  // l from the stack, r a variable pushed just before
  kSQ,  // l from the stack, r the square of a variable (Var, 2, "^") just before
  kVC,  // pushes: l a variable, r a constant
  kCV,  // pushes: l a constant, r a variable
  kQC,  // pushes: l the square of a variable, r a constant
  kQQ,  // pushes: l and r squares of variables, as in x^2+y^2
  kFormCount,
};
constexpr int kOpCount = 5;

// Room of the stack below the top; a deeper text is read the plain way.
constexpr std::size_t kStackRoom = 64;

// The functions with steps of their own, their body inlined.
constexpr Fn kInlineFns[] = {Fn::SIN, Fn::COS, Fn::TAN, Fn::EXP, Fn::LOG, Fn::SQR, Fn::ABS};
constexpr int kInlineCount = sizeof kInlineFns / sizeof kInlineFns[0];

int InlineIndex(Fn f) {
  for (int i = 0; i < kInlineCount; ++i)
    if (kInlineFns[i] == f) return i;
  return -1;
}

enum Op : std::uint8_t {
  kEnd,
  kConst,      // push c
  kVar,        // push variable `slot`
  kNeg,        // pop, push its negation
  kFunc,       // pop x, push f(x)
  kVarFunc,    // Var, Func
  kSquare,     // Const 2, "^" on the top
  kVarSquare,  // Var, Const 2, "^"
  kVarNegSquare,  // Var, Const 2, "^", negation, as in exp(-x^2)
  kBinary,     // + form * kOpCount + operator
  // + 2 * index in kInlineFns: the function on the top; + 1 more: Var, Func.
  kInline = kBinary + kFormCount * kOpCount,
  // "*" or "/" whose r is a "+" or "-" step just before it, (Var, Const, op)
  // or (Var, 2, "^", Const, op), as in (x+1)(x-1)/(x^2+1): + (squared * 2 +
  // inner "-") * 2 + outer "/".
  kRight = kInline + 2 * kInlineCount,
  kCodeCount = kRight + 8,
};

constexpr std::uint8_t BinaryCode(Form form, BinOp op) {
  return static_cast<std::uint8_t>(kBinary + form * kOpCount + static_cast<int>(op));
}

struct Instr {
  std::uint8_t code;
  std::uint16_t slot;   // the variable, as an index into Program::varNames
  float c;
  FnImpl fn;
  std::uint16_t index = 0;        // the variable's table index, set by Bind
  std::uint16_t slot2 = 0, index2 = 0;  // the second variable of kQQ
  const void* step = nullptr;     // the label of `code` in DoEvaluate, set by Bind
};

struct Program {
  std::vector<Instr> code;            // ends with kEnd
  std::vector<std::string> varNames;  // each distinct variable token
  std::uint64_t boundStamp = 0;       // stamps start at 1
  std::uint64_t runStamp = 0;         // boundStamp when runnable, else 0
  bool wellFormed = true;  // no underflow, no function that may push nothing
  bool runnable = false;   // well formed, every variable bound, the stack fits
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
  if (!prog->wellFormed) return prog;

  // A constant is only fused where it reads as a Single without overflow, so
  // the fused step fails exactly where the separate ones would.
  auto is = [&](std::size_t k, RawToken::Kind kind) { return k < raw.size() && raw[k].kind == kind; };
  auto finiteConst = [&](std::size_t k) { return is(k, RawToken::Const) && !std::isinf(raw[k].c); };
  auto isPow = [&](std::size_t k) { return is(k, RawToken::Binary) && raw[k].bin == BinOp::Pow; };
  // Var, 2, "^" at k.
  auto varSquare = [&](std::size_t k) {
    return is(k, RawToken::Var) && is(k + 1, RawToken::Const) && raw[k + 1].c == 2 && isPow(k + 2);
  };
  auto& code = prog->code;
  auto emit = [&](int op, std::uint16_t slot = 0, float c = 0, FnImpl fn = nullptr, std::uint16_t slot2 = 0) {
    code.push_back({static_cast<std::uint8_t>(op), slot, c, fn, 0, slot2});
  };
  auto emitFunc = [&](Fn f, bool ofVar, std::uint16_t slot) {
    const int i = InlineIndex(f);
    if (i >= 0)
      emit(kInline + 2 * i + (ofVar ? 1 : 0), slot);
    else
      emit(ofVar ? kVarFunc : kFunc, slot, 0, FunctionImpl(f));
  };
  auto right = [&](std::size_t k) {
    return is(k, RawToken::Binary) && (raw[k].bin == BinOp::Add || raw[k].bin == BinOp::Sub) &&
           is(k + 1, RawToken::Binary) && (raw[k + 1].bin == BinOp::Mul || raw[k + 1].bin == BinOp::Div);
  };
  auto rightCode = [&](bool squared, BinOp inner, BinOp outer) {
    return kRight + ((squared ? 2 : 0) + (inner == BinOp::Sub ? 1 : 0)) * 2 + (outer == BinOp::Div ? 1 : 0);
  };
  for (std::size_t k = 0; k < raw.size(); ++k) {
    const RawToken& a = raw[k];
    if (varSquare(k) && finiteConst(k + 3) && right(k + 4)) {
      emit(rightCode(true, raw[k + 4].bin, raw[k + 5].bin), a.slot, raw[k + 3].c);
      k += 5;
    } else if (is(k, RawToken::Var) && finiteConst(k + 1) && right(k + 2)) {
      emit(rightCode(false, raw[k + 2].bin, raw[k + 3].bin), a.slot, raw[k + 1].c);
      k += 3;
    } else if (varSquare(k) && finiteConst(k + 3) && is(k + 4, RawToken::Binary)) {
      emit(BinaryCode(kQC, raw[k + 4].bin), a.slot, raw[k + 3].c);
      k += 4;
    } else if (varSquare(k) && varSquare(k + 3) && is(k + 6, RawToken::Binary)) {
      emit(BinaryCode(kQQ, raw[k + 6].bin), a.slot, 0, nullptr, raw[k + 3].slot);
      k += 6;
    } else if (varSquare(k) && is(k + 3, RawToken::Binary)) {
      emit(BinaryCode(kSQ, raw[k + 3].bin), a.slot);
      k += 3;
    } else if (varSquare(k) && is(k + 3, RawToken::Neg)) {
      emit(kVarNegSquare, a.slot);
      k += 3;
    } else if (varSquare(k)) {
      emit(kVarSquare, a.slot);
      k += 2;
    } else if (is(k, RawToken::Var) && finiteConst(k + 1) && is(k + 2, RawToken::Binary)) {
      emit(BinaryCode(kVC, raw[k + 2].bin), a.slot, raw[k + 1].c);
      k += 2;
    } else if (finiteConst(k) && is(k + 1, RawToken::Var) && is(k + 2, RawToken::Binary)) {
      emit(BinaryCode(kCV, raw[k + 2].bin), raw[k + 1].slot, a.c);
      k += 2;
    } else if (is(k, RawToken::Var) && is(k + 1, RawToken::Func)) {
      emitFunc(raw[k + 1].fn, true, a.slot);
      k += 1;
    } else if (is(k, RawToken::Var) && is(k + 1, RawToken::Binary)) {
      emit(BinaryCode(kSV, raw[k + 1].bin), a.slot);
      k += 1;
    } else if (finiteConst(k) && is(k + 1, RawToken::Binary)) {
      if (a.c == 2 && isPow(k + 1))
        emit(kSquare);
      else
        emit(BinaryCode(kSC, raw[k + 1].bin), 0, a.c);
      k += 1;
    } else {
      switch (a.kind) {
        case RawToken::Const: emit(kConst, 0, a.c); break;
        case RawToken::Var: emit(kVar, a.slot); break;
        case RawToken::Binary: emit(BinaryCode(kSS, a.bin)); break;
        case RawToken::Neg: emit(kNeg); break;
        case RawToken::Func: emitFunc(a.fn, false, 0); break;
      }
    }
  }
  emit(kEnd);
  return prog;
}

// Binds the variables to table indices and the steps to their labels.
[[gnu::noinline]] void Bind(Program& prog, const VariableTable& vars, std::uint64_t stamp,
                            const void* const* labels) {
  std::vector<int> index(prog.varNames.size());
  bool allBound = true;
  for (std::size_t s = 0; s < prog.varNames.size(); ++s) {
    index[s] = vars.Find(prog.varNames[s]);
    if (index[s] == 0) allBound = false;
  }
  for (Instr& in : prog.code) {
    in.step = labels[in.code];
    in.index = index.empty() ? 0 : static_cast<std::uint16_t>(index[in.slot]);
    in.index2 = index.empty() ? 0 : static_cast<std::uint16_t>(index[in.slot2]);
  }
  prog.runnable = prog.wellFormed && allBound && prog.maxDepth < kStackRoom;
  prog.boundStamp = stamp;
  prog.runStamp = prog.runnable ? stamp : 0;
}

template <class T>
inline T Load(const char* p) {
  T v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

inline bool SameText(const std::string& a, const std::string& b) {
  const std::size_t n = a.size();
  if (n != b.size()) return false;
  const char* p = a.data();
  const char* q = b.data();
  if (n >= 8) {
    // Whole words, the last one overlapping the one before.
    for (std::size_t k = 0; k + 8 < n; k += 8)
      if (Load<std::uint64_t>(p + k) != Load<std::uint64_t>(q + k)) return false;
    return Load<std::uint64_t>(p + n - 8) == Load<std::uint64_t>(q + n - 8);
  }
  if (n >= 4)
    return Load<std::uint32_t>(p) == Load<std::uint32_t>(q) &&
           Load<std::uint32_t>(p + n - 4) == Load<std::uint32_t>(q + n - 4);
  for (std::size_t k = 0; k < n; ++k)
    if (p[k] != q[k]) return false;
  return true;
}

// The parsed texts: the one used last, then a few recent ones, then all.
struct Cache {
  static constexpr int kRecent = 4;
  static constexpr std::size_t kMaxTexts = 4096;
  struct Slot {
    std::string text;
    Program* prog = nullptr;
  };
  Slot recent[kRecent];
  int last = 0;
  int next = 0;
  std::unordered_map<std::string, std::unique_ptr<Program>> all;

  Program* Find(const std::string& text) {
    {
      const Slot& s = recent[last];
      if (s.prog && SameText(s.text, text)) [[likely]]
        return s.prog;
    }
    for (int k = 0; k < kRecent; ++k) {
      const Slot& s = recent[k];
      if (s.prog && SameText(s.text, text)) {
        last = k;
        return s.prog;
      }
    }
    return FindSlow(text);
  }

  [[gnu::noinline]] Program* FindSlow(const std::string& text) {
    auto it = all.find(text);
    if (it == all.end()) {
      if (all.size() >= kMaxTexts) Clear();
      it = all.emplace(text, Build(text)).first;
    }
    last = next;
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

// Runs the prepared program of the text when it is runnable, else the plain
// reading. A domain error sets result and ok as the plain reading does. The
// top of the stack is kept in `top`; st[] holds what lies below it (st[0]
// receives the undefined top of the empty stack and is never read back).
void Cls6::DoEvaluate(const std::string& postfix, bool degrees, const VariableTable& vars,
                      float& result, bool& ok) {
  // In the order of Op: the binary steps by form and operator, then the
  // inline functions, each on the top and on a variable.
  static const void* const kLabels[kCodeCount] = {
      &&End, &&Const, &&Var, &&Neg, &&Func, &&VarFunc, &&Square, &&VarSquare, &&VarNegSquare,
      &&SS_Add, &&SS_Sub, &&SS_Mul, &&SS_Div, &&SS_Pow,
      &&SC_Add, &&SC_Sub, &&SC_Mul, &&SC_Div, &&SC_Pow,
      &&SV_Add, &&SV_Sub, &&SV_Mul, &&SV_Div, &&SV_Pow,
      &&SQ_Add, &&SQ_Sub, &&SQ_Mul, &&SQ_Div, &&SQ_Pow,
      &&VC_Add, &&VC_Sub, &&VC_Mul, &&VC_Div, &&VC_Pow,
      &&CV_Add, &&CV_Sub, &&CV_Mul, &&CV_Div, &&CV_Pow,
      &&QC_Add, &&QC_Sub, &&QC_Mul, &&QC_Div, &&QC_Pow,
      &&QQ_Add, &&QQ_Sub, &&QQ_Mul, &&QQ_Div, &&QQ_Pow,
      &&F_SIN, &&VF_SIN, &&F_COS, &&VF_COS, &&F_TAN, &&VF_TAN, &&F_EXP, &&VF_EXP,
      &&F_LOG, &&VF_LOG, &&F_SQR, &&VF_SQR, &&F_ABS, &&VF_ABS,
      &&RV_Add_Mul, &&RV_Add_Div, &&RV_Sub_Mul, &&RV_Sub_Div,
      &&RQ_Add_Mul, &&RQ_Add_Div, &&RQ_Sub_Mul, &&RQ_Sub_Div,
  };

  Program& prog = *g_cache.Find(postfix);
  const std::uint64_t stamp = vars.Stamp();
  if (prog.runStamp != stamp) [[unlikely]] {
    if (prog.boundStamp != stamp) Bind(prog, vars, stamp, kLabels);
    if (!prog.runnable) {
      EvaluatePlainly(*this, postfix, degrees, vars, result, ok);
      return;
    }
  }
  float st[kStackRoom];
  const float* values = vars.values;

  float* sp = st;  // one past the last value below the top
  float top = 0;
  const char* message = nullptr;
  const Instr* in = prog.code.data();

#define VT_NEXT goto* (++in)->step
#define VT_VAR values[in->index]
#define VT_APPLY(OP, L, R)                \
  top = Apply<BinOp::OP>(L, R, message);  \
  if (message) [[unlikely]]               \
    goto domain;                          \
  VT_NEXT;
#define VT_BINARY_FORMS(OP)                          \
  SS_##OP : {                                        \
    const float r = Read(top);                       \
    const float l = Read(*--sp);                     \
    VT_APPLY(OP, l, r)                               \
  }                                                  \
  SC_##OP : {                                        \
    VT_APPLY(OP, Read(top), in->c)                   \
  }                                                  \
  SV_##OP : {                                        \
    const float r = Read(VT_VAR);                    \
    const float l = Read(top);                       \
    VT_APPLY(OP, l, r)                               \
  }                                                  \
  SQ_##OP : {                                        \
    const float r = Read(SquareOf(Read(VT_VAR)));    \
    const float l = Read(top);                       \
    VT_APPLY(OP, l, r)                               \
  }                                                  \
  VC_##OP : {                                        \
    const float l = Read(VT_VAR);                    \
    *sp++ = top;                                     \
    VT_APPLY(OP, l, in->c)                           \
  }                                                  \
  CV_##OP : {                                        \
    const float r = Read(VT_VAR);                    \
    *sp++ = top;                                     \
    VT_APPLY(OP, in->c, r)                           \
  }                                                  \
  QC_##OP : {                                        \
    const float l = Read(SquareOf(Read(VT_VAR)));    \
    *sp++ = top;                                     \
    VT_APPLY(OP, l, in->c)                           \
  }                                                  \
  QQ_##OP : {                                        \
    const float q = SquareOf(Read(VT_VAR));          \
    *sp++ = top;                                     \
    const float r = Read(SquareOf(Read(values[in->index2]))); \
    VT_APPLY(OP, Read(q), r)                         \
  }
// None of the inline functions pushes nothing. VT_FN_TO_TOP puts F(x) on the
// top, or leaves for the domain error.
#define VT_FN_TO_TOP(F, x)                                          \
  {                                                                 \
    const FnResult fr = fnbody::Compute(Fn::F, x, degrees);         \
    if (!fr.IsValue()) [[unlikely]] {                               \
      message = fr.Message();                                       \
      goto domain;                                                  \
    }                                                               \
    top = static_cast<float>(fr.value);                             \
    VT_NEXT;                                                        \
  }
#define VT_FUNCTION_FORMS(F)        \
  F_##F : VT_FN_TO_TOP(F, Read(top)) \
  VF_##F : {                        \
    const float x = Read(VT_VAR);   \
    *sp++ = top;                    \
    VT_FN_TO_TOP(F, x)              \
  }

  goto* in->step;

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
VarNegSquare: {
  const float l = Read(VT_VAR);
  *sp++ = top;
  top = -Read(SquareOf(l));
  VT_NEXT;
}
Func: {
  const FnResult fr = in->fn(Read(top), degrees);
  if (!fr.IsValue()) [[unlikely]] {
    // Runnable programs hold no function that pushes nothing.
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
  VT_FUNCTION_FORMS(SIN)
  VT_FUNCTION_FORMS(COS)
  VT_FUNCTION_FORMS(TAN)
  VT_FUNCTION_FORMS(EXP)
  VT_FUNCTION_FORMS(LOG)
  VT_FUNCTION_FORMS(SQR)
  VT_FUNCTION_FORMS(ABS)
// r is computed as the pushing step would and read back; then l is read.
#define VT_RIGHT_STEP(F, LOAD, IN, OUT)               \
  F##_##IN##_##OUT : {                                \
    const float x = LOAD;                             \
    float r = Apply<BinOp::IN>(x, in->c, message);    \
    if (message) [[unlikely]]                         \
      goto domain;                                    \
    r = Read(r);                                      \
    const float l = Read(top);                        \
    VT_APPLY(OUT, l, r)                               \
  }
#define VT_RIGHT_FORMS(F, LOAD)       \
  VT_RIGHT_STEP(F, LOAD, Add, Mul)    \
  VT_RIGHT_STEP(F, LOAD, Add, Div)    \
  VT_RIGHT_STEP(F, LOAD, Sub, Mul)    \
  VT_RIGHT_STEP(F, LOAD, Sub, Div)
  VT_RIGHT_FORMS(RV, Read(VT_VAR))
  VT_RIGHT_FORMS(RQ, Read(SquareOf(Read(VT_VAR))))
#undef VT_RIGHT_FORMS
#undef VT_RIGHT_STEP
#undef VT_FUNCTION_FORMS
#undef VT_FN_TO_TOP
#undef VT_BINARY_FORMS
#undef VT_APPLY
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
