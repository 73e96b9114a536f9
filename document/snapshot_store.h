// Storage for the undo and redo snapshots.
//
// A snapshot is the whole document text, and a document of thousands of
// objects gives texts of hundreds of kilobytes; a thousand of them would take
// hundreds of megabytes. Consecutive snapshots differ in a few records only,
// so each text is cut into pieces at record boundaries chosen by the records'
// content (an inserted or deleted record moves no boundary elsewhere), and each
// distinct piece is kept once, shared by every snapshot that holds it. What is
// read back is always the exact text that was stored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vt {

class SnapshotStore {
 public:
  explicit SnapshotStore(size_t count = 0) { Assign(count); }

  // Empties every slot and sets their number.
  void Assign(size_t count);
  size_t SlotCount() const { return slots_.size(); }

  // Slots past the end are ignored on writing and read as the empty text.
  void Put(size_t index, std::string_view text);
  std::string Get(size_t index) const;
  size_t TextSize(size_t index) const;
  // Removes slot `index`: the later slots move down by one, and an empty
  // slot is added at the end.
  void Drop(size_t index);

  // Bytes of the distinct pieces plus the per-snapshot piece lists: what the
  // store holds, against the sum of TextSize over the slots.
  size_t StoredBytes() const;

 private:
  using Piece = std::shared_ptr<const std::string>;
  struct Slot {
    std::vector<Piece> pieces;
    size_t size = 0;
  };
  Piece Intern(std::string_view chunk, uint64_t hash);
  void Sweep();

  std::vector<Slot> slots_;
  std::unordered_map<uint64_t, std::vector<std::weak_ptr<const std::string>>> pool_;
  size_t internedSinceSweep_ = 0;
};

}  // namespace vt
