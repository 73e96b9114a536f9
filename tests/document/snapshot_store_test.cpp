#include "document/snapshot_store.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace vt {
namespace {

std::string Record(int id, double x) {
  return "PT" + std::to_string(10000 + id).substr(1) + " " + std::to_string(x) + " 0 0 1 2 255;;";
}

struct Rec {
  int id;
  double x;
};

std::string Text(const std::vector<Rec>& recs) {
  std::string t = "GL Ver3.00 1 1 1 0 0;;";
  for (const Rec& r : recs) t += Record(r.id, r.x);
  return t;
}

// A long run of edits (moves, insertions, deletions) as a drawing session
// makes them: every slot reads back its own text, overwritten slots give up
// the pieces nobody else holds, and the store stays far below the raw sum.
TEST(SnapshotStore, SharesPiecesAcrossAnEditingSession) {
  std::mt19937 rng(7);
  std::vector<Rec> xs;
  int nextId = 0;
  for (; nextId < 3000; ++nextId) xs.push_back({nextId, static_cast<double>(nextId)});
  const size_t slots = 300;
  SnapshotStore store(slots);
  std::vector<std::string> expected(slots);
  size_t raw = 0;
  for (size_t step = 0; step < 2 * slots; ++step) {
    const size_t k = rng() % xs.size();
    switch (rng() % 3) {
      case 0: xs[k].x += 0.5; break;                                               // a drag
      case 1: xs.insert(xs.begin() + static_cast<long>(k), {nextId++, 1e6}); break;  // new record
      default: xs.erase(xs.begin() + static_cast<long>(k)); break;                 // deletion
    }
    const size_t slot = step % slots;  // the second round overwrites the first
    expected[slot] = Text(xs);
    store.Put(slot, expected[slot]);
  }
  for (size_t i = 0; i < slots; ++i) {
    ASSERT_EQ(store.Get(i), expected[i]) << i;
    raw += expected[i].size();
  }
  const size_t full = store.StoredBytes();
  EXPECT_LT(full, raw / 10);

  // Emptying the slots gives the pieces back.
  for (size_t i = 0; i < slots; ++i) store.Put(i, "");
  store.Put(0, Text(xs));
  EXPECT_LT(store.StoredBytes(), full / 5);
}

}  // namespace
}  // namespace vt
