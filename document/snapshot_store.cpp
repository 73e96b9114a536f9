#include "document/snapshot_store.h"

#include <functional>

namespace vt {

namespace {

// About sixteen records to a piece on average; a piece never grows past this
// many bytes, so one long record cannot make the rest of a text one piece.
constexpr uint64_t kBoundaryMask = 15;
constexpr size_t kMaxPiece = 8192;

uint64_t Mix(uint64_t h, uint64_t v) {
  return (h ^ v) * 0x100000001B3ull + (h >> 29);
}

}  // namespace

void SnapshotStore::Assign(size_t count) {
  slots_.assign(count, Slot{});
  pool_.clear();
  internedSinceSweep_ = 0;
}

SnapshotStore::Piece SnapshotStore::Intern(std::string_view chunk, uint64_t hash) {
  auto& bucket = pool_[hash];
  for (size_t i = 0; i < bucket.size();) {
    if (Piece p = bucket[i].lock()) {
      if (*p == chunk) return p;
      ++i;
    } else {
      bucket[i] = std::move(bucket.back());
      bucket.pop_back();
    }
  }
  auto p = std::make_shared<const std::string>(chunk);
  bucket.push_back(p);
  ++internedSinceSweep_;
  return p;
}

// Drops pool entries whose pieces no snapshot holds any more.
void SnapshotStore::Sweep() {
  for (auto it = pool_.begin(); it != pool_.end();) {
    auto& bucket = it->second;
    std::erase_if(bucket, [](const std::weak_ptr<const std::string>& w) { return w.expired(); });
    it = bucket.empty() ? pool_.erase(it) : std::next(it);
  }
  internedSinceSweep_ = 0;
}

void SnapshotStore::Put(size_t index, std::string_view text) {
  if (index >= slots_.size()) return;
  Slot fresh;
  fresh.size = text.size();
  const std::hash<std::string_view> hasher;
  size_t start = 0, pos = 0;
  uint64_t chunkHash = 0xCBF29CE484222325ull;
  while (pos < text.size()) {
    size_t end = text.find(";;", pos);
    end = end == std::string_view::npos ? text.size() : end + 2;
    const uint64_t h = hasher(text.substr(pos, end - pos));
    chunkHash = Mix(chunkHash, h);
    pos = end;
    if ((h & kBoundaryMask) == 0 || pos - start >= kMaxPiece || pos == text.size()) {
      fresh.pieces.push_back(Intern(text.substr(start, pos - start), chunkHash));
      start = pos;
      chunkHash = 0xCBF29CE484222325ull;
    }
  }
  slots_[index] = std::move(fresh);
  if (internedSinceSweep_ > 4096 && internedSinceSweep_ * 2 > pool_.size()) Sweep();
}

std::string SnapshotStore::Get(size_t index) const {
  std::string out;
  if (index >= slots_.size()) return out;
  const Slot& s = slots_[index];
  out.reserve(s.size);
  for (const Piece& p : s.pieces) out += *p;
  return out;
}

size_t SnapshotStore::TextSize(size_t index) const {
  return index < slots_.size() ? slots_[index].size : 0;
}

void SnapshotStore::Drop(size_t index) {
  if (index >= slots_.size()) return;
  slots_.erase(slots_.begin() + static_cast<long>(index));
  slots_.emplace_back();
}

size_t SnapshotStore::StoredBytes() const {
  size_t bytes = slots_.capacity() * sizeof(Slot);
  for (const Slot& s : slots_) bytes += s.pieces.capacity() * sizeof(Piece);
  for (const auto& [hash, bucket] : pool_) {
    bytes += sizeof(hash) + bucket.capacity() * sizeof(bucket[0]);
    for (const auto& w : bucket)
      if (Piece p = w.lock()) bytes += sizeof(std::string) + p->capacity() + 32;  // + control block
  }
  return bytes;
}

}  // namespace vt
