#include "document/undo.h"

#include <algorithm>
#include <vector>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/host.h"
#include "persist/docio.h"

namespace vt {

SnapshotStore UndoStack(kUndoDepth + 1);
SnapshotStore RedoStack(kUndoDepth + 1);
int UndoCount = 1;
int RedoCount = 0;
bool UndoEnabled = false;
bool RedoEnabled = false;

namespace {

// The numbers of the states in the stacks, by entry, and of the document on
// screen; the last number handed out.
std::vector<uint64_t> g_undoStates(kUndoDepth + 1), g_redoStates(kUndoDepth + 1);
uint64_t g_current = 1;
uint64_t g_lastNumber = 1;

std::string Entry(const SnapshotStore& stack, int index) {
  if (index < 1) return {};
  return stack.Get(static_cast<size_t>(index));
}

// Stores a state at `index` of a stack. An index at the depth makes room
// first by dropping entry 1, the oldest state; the index the state went to
// is returned.
int Store(SnapshotStore& stack, std::vector<uint64_t>& numbers, int index, const std::string& text,
          uint64_t number) {
  if (index < 1) return index;
  if (index >= kUndoDepth) {
    stack.Drop(1);
    numbers.erase(numbers.begin() + 1);
    numbers.push_back(0);
    index = kUndoDepth - 1;
  }
  stack.Put(static_cast<size_t>(index), text);
  numbers[static_cast<size_t>(index)] = number;
  return index;
}

void StartHistory(const std::string& first) {
  UndoStack.Assign(kUndoDepth + 1);
  RedoStack.Assign(kUndoDepth + 1);
  std::fill(g_undoStates.begin(), g_undoStates.end(), 0);
  std::fill(g_redoStates.begin(), g_redoStates.end(), 0);
  UndoCount = 1;
  RedoCount = 0;
  g_current = ++g_lastNumber;
  Store(UndoStack, g_undoStates, 1, first, g_current);
  UndoEnabled = false;
  RedoEnabled = false;
}

}  // namespace

std::string UndoEntry(int index) { return Entry(UndoStack, index); }
std::string RedoEntry(int index) { return Entry(RedoStack, index); }

uint64_t CurrentStateNumber() { return g_current; }

void NoteUnrecordedChange() { g_current = ++g_lastNumber; }

bool UnrecordedChanges() {
  return UndoCount < 1 || UndoCount >= kUndoDepth || g_undoStates[static_cast<size_t>(UndoCount)] != g_current;
}

void ResetUndo() { StartHistory(std::string()); }

void BeginHistory() {
  StartHistory(GetUndoVar());
  RefreshControls();
}

void PushSnapshot() {
  g_current = ++g_lastNumber;
  UndoCount = Store(UndoStack, g_undoStates, UndoCount + 1, GetUndoVar(), g_current);
  if (UndoCount > 1) UndoEnabled = true;
  RefreshControls();
}

void mnuFUndo_Click() {
  if (UndoCount <= 1) return;
  const size_t top = static_cast<size_t>(UndoCount);
  RedoCount = Store(RedoStack, g_redoStates, RedoCount + 1, UndoEntry(UndoCount), g_undoStates[top]);
  --UndoCount;
  OpenUnRe(UndoEntry(UndoCount));
  g_current = g_undoStates[static_cast<size_t>(UndoCount)];
  if (Hooks.syntheticMouseMove) Hooks.syntheticMouseMove();
  // The labels of the points undone are free again.
  RecomputeLastPointLabel();
  if (UndoCount == 1) UndoEnabled = false;
  if (RedoCount >= 1) RedoEnabled = true;
  RefreshControls();
}

void mnuFRedo_Click() {
  if (RedoCount <= 0) return;
  const std::string text = RedoEntry(RedoCount);
  const uint64_t number = g_redoStates[static_cast<size_t>(RedoCount)];
  UndoCount = Store(UndoStack, g_undoStates, UndoCount + 1, text, number);
  OpenUnRe(text);
  g_current = number;
  --RedoCount;
  if (Hooks.syntheticMouseMove) Hooks.syntheticMouseMove();
  RecomputeLastPointLabel();
  if (RedoCount == 0) RedoEnabled = false;
  if (UndoCount > 0) UndoEnabled = true;
  RefreshControls();
}

std::string CopySelectionText() {
  std::string text;
  auto copy = [&](CollectionBase& set, CollectionBase& doc) {
    for (int i = 1; i <= set.count(); ++i)
      if (int j = doc.FindId(set.ItemBase(i)->ID)) text += doc.ItemBase(j)->Save();
  };
  copy(Sel.Points, Doc.Points);
  copy(Sel.Lines, Doc.Lines);
  copy(Sel.Circles, Doc.Circles);
  copy(Sel.Arcs, Doc.Arcs);
  copy(Sel.Regions, Doc.Regions);
  return text;
}

void mnuEditCopy_Click() { host().SetClipboardText(CopySelectionText()); }

void mnuEditCut_Click() {
  mnuEditCopy_Click();
  mnuEditDelete_Click();
}

void mnuEditPaste_Click() {
  RunGuarded([] { PasteRecords(host().ClipboardText()); });
  PushSnapshot();
  RedrawScene();
}

}  // namespace vt
