// The ready-made figures of the Draw menu: each command merges a document of
// the Models folder into the current one, with new labels, and takes an undo
// step.
#pragma once

#include <string>
#include <vector>

namespace vt {

struct ModelEntry {
  const char* command;  // "mnuDraw2Tri"
  const char* file;     // "Triangle.vtd"
};
// The twelve model commands and their files.
const std::vector<ModelEntry>& ModelTable();

// Merges the model file (a missing file merges nothing) and gives its points
// new labels in file order, rewriting the labels of the objects made from
// them; one undo step.
void OpenModelCommand(const std::string& file);

// How many objects each labelled collection held at some moment.
struct CollectionMark {
  int points = 0, lines = 0, circles = 0, arcs = 0, regions = 0;
};
CollectionMark MarkCollections();
// Gives the points added since the mark new labels in collection order, going
// on from LastPointLabel, and rewrites the labels the lines, circles, arcs
// and regions added since then keep of them.
void RelabelSince(const CollectionMark& mark);

void RegisterModelCommands();

}  // namespace vt
