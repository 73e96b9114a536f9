// Undo and redo by whole-document snapshots, and the clipboard commands.
#pragma once

#include <string>

#include "document/snapshot_store.h"

namespace vt {

constexpr int kUndoDepth = 1000;
// Entries 1..999 hold snapshots; entry UndoCount is the state after the last
// command, entry 1 the empty text of the start.
extern SnapshotStore UndoStack;
extern SnapshotStore RedoStack;
extern int UndoCount;
extern int RedoCount;
// The enabled state of the undo and redo controls (menu, context menu,
// toolbar), as the commands leave it.
extern bool UndoEnabled;
extern bool RedoEnabled;

void ResetUndo();
// Pushes the document text as a new snapshot.
void PushSnapshot();
// Stack entry by index; an index past what is stored gives the empty text.
std::string UndoEntry(int index);
std::string RedoEntry(int index);

void mnuFUndo_Click();
void mnuFRedo_Click();

// The records of the selected points, lines, circles, arcs and regions.
std::string CopySelectionText();
void mnuEditCopy_Click();
void mnuEditCut_Click();
void mnuEditPaste_Click();

}  // namespace vt
