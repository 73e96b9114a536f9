// The generator of the documents that ship beside the program: the twelve
// figures of the Models folder and the start document Tutorials/T000.vtd.
//
// Each figure is built on an empty document with the same routines the
// commands and tools use (free points as the point tool makes them, segments
// by "Connecting Line", images by the transformation run, circles by the
// circle tool, points on objects as the tools put them there), so every link
// is a real one and dragging a free point keeps the figure what its name
// says. The points are written vertices first, in the order of their labels,
// and the helpers (hidden midpoints, far ends of derived lines) behind them.
// Building the same figure twice gives the same text byte for byte. The files
// in data/ are made with
//   vantrel-cli models data/Models data/Tutorials/T000.vtd
#pragma once

#include <string>
#include <vector>

namespace vt {

struct ModelRecipe {
  const char* file;  // "Square.vtd"
  bool space;        // a space document (SceneMode 3)
  void (*build)();   // builds the figure on the current, emptied document
};
// The twelve figures, in the order of the model commands' table.
const std::vector<ModelRecipe>& ModelRecipes();

// Clears the document and builds the figure of the file name; false for a
// name that is not one of the twelve. A step of the construction that is
// refused (its message) throws std::runtime_error with that message.
bool BuildModel(const std::string& file);
// Clears the document and builds the start document.
void BuildStartDocument();

// Writes the twelve files into `dir`, and the start document to `path`. On
// failure `error` says which file and why. The document is left empty.
bool WriteModelFiles(const std::string& dir, std::string& error);
bool WriteStartDocument(const std::string& path, std::string& error);

}  // namespace vt
