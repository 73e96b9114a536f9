// Cls13: a growing stack of tagged values (a number or a text), used from
// index 1. The compiler keeps its operators on one, the plain evaluator its
// operands.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vt {

struct StackValue {
  bool isText = false;
  double number = 0;
  std::string text;

  static StackValue Number(double v) { return StackValue{false, v, {}}; }
  static StackValue Text(std::string s) { return StackValue{true, 0, std::move(s)}; }
};

class Cls13 {
 public:
  std::int32_t StackSize() const { return count_; }
  // Places the array has; grows by 10 whenever a push passes it.
  std::int32_t Capacity() const { return capacity_; }

  void Push(StackValue value);
  void Push(double v) { Push(StackValue::Number(v)); }
  void Push(std::string s) { Push(StackValue::Text(std::move(s))); }
  void Push(const char* s) { Push(StackValue::Text(s)); }

  // Top value, removed. On an empty stack throws ExprFailure 1011.
  StackValue Pop();
  // Top value, left in place. On an empty stack throws ExprFailure 1012.
  const StackValue& GetPopValue() const;

 private:
  std::vector<StackValue> items_;  // items_[0] is index 1
  std::int32_t count_ = 0;
  std::int32_t capacity_ = 0;
};

}  // namespace vt
