// Undo and redo by whole-document snapshots, and the clipboard commands.
#pragma once

#include <cstdint>
#include <string>

#include "document/snapshot_store.h"

namespace vt {

constexpr int kUndoDepth = 1000;
// Entries 1..kUndoDepth-1 hold snapshots; entry UndoCount is the state after
// the last command, entry 1 the document the history began with (what was
// opened, or the empty text before any). A push onto a full stack drops the
// oldest entry, so the newest states are always kept.
extern SnapshotStore UndoStack;
extern SnapshotStore RedoStack;
extern int UndoCount;
extern int RedoCount;
// The enabled state of the undo and redo controls (menu, context menu,
// toolbar), as the commands leave it.
extern bool UndoEnabled;
extern bool RedoEnabled;

// Empty stacks with the empty text as entry 1.
void ResetUndo();
// A fresh history whose entry 1 is the document as it stands (after Open,
// New, start-up): Undo never goes past it.
void BeginHistory();
// Pushes the document text as a new snapshot.
void PushSnapshot();
// Stack entry by index; an index past what is stored gives the empty text.
std::string UndoEntry(int index);
std::string RedoEntry(int index);

// Each state the stacks hold has a number of its own, never reused; a
// state undone and redone keeps its number. CurrentStateNumber is the number
// of entry UndoCount: equal numbers mean equal documents.
uint64_t CurrentStateNumber();
// A change the stacks do not record (a view toggle, labels shown or hidden):
// the document on screen becomes a state of its own.
void NoteUnrecordedChange();
// True when the document on screen is not the text of entry UndoCount.
bool UnrecordedChanges();

void mnuFUndo_Click();
void mnuFRedo_Click();

// The records of the selected points, lines, circles, arcs and regions.
std::string CopySelectionText();
void mnuEditCopy_Click();
void mnuEditCut_Click();
void mnuEditPaste_Click();

}  // namespace vt
