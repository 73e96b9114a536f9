#include "expr/stack.h"

#include "expr/expression.h"

namespace vt {

void Cls13::Push(StackValue value) {
  ++count_;
  if (count_ > capacity_) capacity_ += 10;
  if (static_cast<std::size_t>(count_) > items_.size())
    items_.push_back(std::move(value));
  else
    items_[static_cast<std::size_t>(count_ - 1)] = std::move(value);
}

StackValue Cls13::Pop() {
  if (count_ <= 0) throw ExprFailure(kErrPopEmpty, "Pop method invoked on empty stack");
  --count_;
  return std::move(items_[static_cast<std::size_t>(count_)]);
}

const StackValue& Cls13::GetPopValue() const {
  if (count_ <= 0) throw ExprFailure(kErrPeekEmpty, "GetPopValue method invoked on empty stack");
  return items_[static_cast<std::size_t>(count_ - 1)];
}

}  // namespace vt
