// The shape of every collection of the document: an ordered list of objects
// of one class, each optionally under a text key, with Add, Item, count,
// Remove and iteration in list order. Indices are 1-based.
//
// Lookups by id are indexed: FindId gives the first object in list order whose
// ID is the given text, as a linear scan would, in constant time.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "document/objects.h"

namespace vt {

// Kind-independent view of a collection, used where code walks all kinds.
class CollectionBase {
 public:
  virtual ~CollectionBase() = default;
  virtual int count() const = 0;
  // 1-based; a bad index throws RunTimeError.
  virtual DocObject* ItemBase(int index) const = 0;
  virtual void Remove(int index) = 0;
  // 1-based index of the first object with this ID, 0 when there is none.
  virtual int FindId(const std::string& id) const = 0;
  // Removes every entry, from the last to the first.
  virtual void Clear() = 0;
};

template <class T>
class Collection : public CollectionBase {
 public:
  Collection() = default;
  Collection(const Collection&) = delete;
  Collection& operator=(const Collection&) = delete;

  // Appends an object (constructed by the caller) under an optional key; an
  // empty key is no key. A key already in use is an error of the list.
  T* Add(std::unique_ptr<T> obj, const std::string& key = std::string()) {
    if (!key.empty() && keys_.count(key)) throw RunTimeError("key is already associated with an element");
    T* p = obj.get();
    items_.push_back(std::move(obj));
    itemKeys_.push_back(key);
    if (!key.empty()) keys_[key] = p;
    if (indexValid_) ids_.emplace(p->ID, static_cast<int>(items_.size()));  // keeps an earlier match
    return p;
  }

  int count() const override { return static_cast<int>(items_.size()); }

  T* Item(int index) const {
    if (index < 1 || index > count()) throw RunTimeError("subscript out of range");
    return items_[static_cast<size_t>(index - 1)].get();
  }
  T* Item(const std::string& key) const {
    auto it = keys_.find(key);
    if (it == keys_.end()) throw RunTimeError("invalid key");
    return it->second;
  }
  DocObject* ItemBase(int index) const override { return Item(index); }

  void Remove(int index) override {
    if (index < 1 || index > count()) throw RunTimeError("subscript out of range");
    size_t i = static_cast<size_t>(index - 1);
    if (!itemKeys_[i].empty()) keys_.erase(itemKeys_[i]);
    if (indexValid_ && i + 1 == items_.size()) {
      // Removing the last entry: the index stays valid. If this entry is the
      // first match of its id there is no earlier one.
      auto it = ids_.find(items_[i]->ID);
      if (it != ids_.end() && it->second == index) ids_.erase(it);
      items_.pop_back();
      itemKeys_.pop_back();
      return;
    }
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(i));
    itemKeys_.erase(itemKeys_.begin() + static_cast<std::ptrdiff_t>(i));
    indexValid_ = false;
  }
  void Remove(const std::string& key) {
    for (size_t i = 0; i < itemKeys_.size(); ++i)
      if (itemKeys_[i] == key) {
        Remove(static_cast<int>(i + 1));
        return;
      }
    throw RunTimeError("invalid key");
  }

  int FindId(const std::string& id) const override {
    if (!indexValid_) Reindex();
    auto it = ids_.find(id);
    if (it == ids_.end()) return 0;
    if (items_[static_cast<size_t>(it->second - 1)]->ID != id) {
      // An id was changed behind the index's back: rebuild once.
      Reindex();
      it = ids_.find(id);
      if (it == ids_.end()) return 0;
    }
    return it->second;
  }
  // The object with this ID, or nullptr.
  T* FindById(const std::string& id) const {
    int i = FindId(id);
    return i ? items_[static_cast<size_t>(i - 1)].get() : nullptr;
  }

  void Clear() override {
    while (!items_.empty()) Remove(count());
  }

  // Iteration in list order, giving T*. Removing during iteration is not
  // allowed; walk indices from the end for that.
  class iterator {
   public:
    using Inner = typename std::vector<std::unique_ptr<T>>::const_iterator;
    explicit iterator(Inner it) : it_(it) {}
    T* operator*() const { return it_->get(); }
    iterator& operator++() {
      ++it_;
      return *this;
    }
    bool operator!=(const iterator& o) const { return it_ != o.it_; }
    bool operator==(const iterator& o) const { return it_ == o.it_; }

   private:
    Inner it_;
  };
  iterator begin() const { return iterator(items_.begin()); }
  iterator end() const { return iterator(items_.end()); }

 private:
  void Reindex() const {
    ids_.clear();
    for (size_t i = 0; i < items_.size(); ++i) ids_.emplace(items_[i]->ID, static_cast<int>(i + 1));
    indexValid_ = true;
  }

  std::vector<std::unique_ptr<T>> items_;
  std::vector<std::string> itemKeys_;
  std::unordered_map<std::string, T*> keys_;
  mutable std::unordered_map<std::string, int> ids_;
  mutable bool indexValid_ = true;
};

}  // namespace vt
