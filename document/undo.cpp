#include "document/undo.h"

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
std::string Entry(const SnapshotStore& stack, int index) {
  if (index < 1) return {};
  return stack.Get(static_cast<size_t>(index));
}
void Store(SnapshotStore& stack, int index, const std::string& text) {
  if (index >= 1 && index < kUndoDepth) stack.Put(static_cast<size_t>(index), text);
}
}  // namespace

std::string UndoEntry(int index) { return Entry(UndoStack, index); }
std::string RedoEntry(int index) { return Entry(RedoStack, index); }

void ResetUndo() {
  UndoStack.Assign(kUndoDepth + 1);
  RedoStack.Assign(kUndoDepth + 1);
  UndoCount = 1;
  RedoCount = 0;
  UndoEnabled = false;
  RedoEnabled = false;
}

void PushSnapshot() {
  ++UndoCount;
  // Past the depth the counter goes on rising and nothing is stored.
  if (UndoCount < kUndoDepth) Store(UndoStack, UndoCount, GetUndoVar());
  if (UndoCount > 1) UndoEnabled = true;
  RefreshControls();
}

void mnuFUndo_Click() {
  if (UndoCount <= 1) return;
  ++RedoCount;
  if (RedoCount < kUndoDepth) Store(RedoStack, RedoCount, UndoEntry(UndoCount));
  --UndoCount;
  OpenUnRe(UndoEntry(UndoCount));
  if (Hooks.syntheticMouseMove) Hooks.syntheticMouseMove();
  if (UndoCount == 1) UndoEnabled = false;
  if (RedoCount >= 1) RedoEnabled = true;
  RefreshControls();
}

void mnuFRedo_Click() {
  if (RedoCount <= 0) return;
  ++UndoCount;
  if (UndoCount < kUndoDepth) Store(UndoStack, UndoCount, RedoEntry(RedoCount));
  OpenUnRe(RedoEntry(RedoCount));
  --RedoCount;
  if (Hooks.syntheticMouseMove) Hooks.syntheticMouseMove();
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
