// The four transformations of the Transform menu, as the dialogs run them:
// each id of the list is moved in place ("Transform Itself") or given a
// linked image ("Generate a new object") that follows its source.
#pragma once

#include <string>
#include <vector>

namespace vt {

enum class TransformOp { Move, Rotate, Zoom, Mirror };

struct TransformParams {
  TransformOp op = TransformOp::Move;
  // Move: 1 polar (a the angle in radians, b the distance), 2 by components
  // (a, b, c), 3 by the vector from the point id3 to the point id4.
  int moveType = 2;
  float a = 0, b = 0, c = 0;
  std::string id3, id4;
  // Rotate: the angle in radians about the point or (in space) the line
  // `centre`. Zoom: the factor `a` about the point `centre` (the origin when
  // it is empty): P goes to centre + a (P - centre). Mirror: the point, line
  // or region `centre`.
  std::string centre;
};

// The ids a transformation dialog lists when it opens or when "Select" is
// pressed: the selected points, lines, circles, arcs and regions, each once,
// appended to `list` behind what it holds.
void AddSelectionToList(std::vector<std::string>& list);

// Runs the transformation over the ids in order (ids that no longer exist
// are passed over), then takes one undo step. With `generate` the images
// are made; points already imaged in this run are shared. Refused with one
// message and nothing changed (false back): a rotation about a line in a
// plane scene, and moving in place a point that is not free.
bool ApplyTransform(const std::vector<std::string>& ids, const TransformParams& spec, bool generate);

// The dialogs the four commands open; installed by the window.
using TransformDialogFn = void (*)();
extern TransformDialogFn MoveDialog, RotateDialog, ZoomDialog, MirrorDialog;

void RegisterTransformCommands();

}  // namespace vt
