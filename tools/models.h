// The ready-made figures of the Draw menu: each command merges a document of
// the Models folder into the current one, with new labels, and takes an undo
// step.
#pragma once

#include <string>
#include <vector>

#include "document/objects.h"

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

// The box of the shown points from index `from` to `to` (an empty box,
// MinX above MaxX, when there are none).
CBox PointsBox(int from, int to);
// Places the figure added since the mark a unit apart from what the scene
// held before. In the plane it stays inside the view: where it lies when that
// is free, else the free cell nearest the view's centre of a grid of its size
// (the middle row first); with none free in view, the nearest beyond it, and
// the view fitted. In space (or with the view unknown) it moves along x to
// the right of what is there (its points, surfaces and solids) when the two
// would overlap over the xy plane.
void PlaceApart(const CollectionMark& mark);

void RegisterModelCommands();

}  // namespace vt
