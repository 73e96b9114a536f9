// The property dialogs of points, lines, circles, arcs and regions, without
// their windows: what a dialog shows is loaded into a plain struct, and its
// OK validates the fields and applies them. The Qt dialogs and the tests call
// the same functions.
//
// Apply returns the empty text on success, or the message the dialog shows
// (title "Error") and keeps it open. A change pushes one undo snapshot and
// redraws; an OK that changes nothing pushes none. A number field whose text
// is still the one Load wrote keeps the object's exact value (the text shows
// at most 7 digits, so reading it back could move the value by a hair).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vt {

extern const char* const kIllegalData;      // "Illegal data exist."
extern const char* const kObjectNotExist;   // "The selected object is not exist."

// The names offered for a point's symbol (1..6) and a line's style (1..4).
const std::vector<std::string>& SymbolNames();
const std::vector<std::string>& LineStyleNames();
const std::vector<std::string>& LineKindNames();  // lt 1..4
const std::vector<std::string>& ArcShowNames();   // AT 1..3

// A number field as the dialogs read it: filtered (blanks dropped, a decimal
// comma read as a point), then read; false for a text that is not one
// number (an overflowing one included). On success the text is the cleaned one.
bool ReadNumberField(std::string& text, float& value);

// A label as the dialogs take it: the document frames labels by "@" and ends
// records with ";;", so neither "@" nor ";" (nor a line break) may stand in one.
bool LabelAcceptable(const std::string& label);

struct PointProps {
  std::string label;
  std::string x, y, z;  // text fields
  // Free and following points only. Apply decides by the point's kind, not
  // by this flag: a constructed point never moves through the dialog.
  bool coordsEditable = false;
  std::uint32_t color = 0;
  int size = 2;    // 1..9
  int symbol = 1;  // 1..6
  bool hideLabel = false;
};
bool LoadPointProps(const std::string& id, PointProps& p);
std::string ApplyPointProps(const std::string& id, PointProps& p);

// The point style dialog: applies to every selected point.
struct PointStyle {
  std::uint32_t color = 0xFF;
  int size = 2;
  int symbol = 1;
};
// The style of the first selected point that still exists; false when no
// point is selected.
bool LoadPointStyleFromSelection(PointStyle& s);
std::string ApplyPointStyleToSelection(const PointStyle& s);

struct LineProps {
  std::string label;
  int lt = 1;
  int style = 1;
  std::string width;
  std::uint32_t color = 0;
  bool hideLabel = false;
};
bool LoadLineProps(const std::string& id, LineProps& p);
std::string ApplyLineProps(const std::string& id, LineProps& p);

struct CircleProps {
  std::string label;
  std::string radius;           // a text field
  bool radiusEditable = false;  // circles of a given radius (CType 3 and 5)
  int style = 1;
  std::string width;
  std::uint32_t color = 0;
  bool filled = false;
  bool hideLabel = false;
};
bool LoadCircleProps(const std::string& id, CircleProps& p);
std::string ApplyCircleProps(const std::string& id, CircleProps& p);

struct ArcProps {
  std::string label;
  int show = 1;  // AT
  int style = 1;
  std::string width;
  std::uint32_t color = 0;
  bool hideLabel = false;
};
bool LoadArcProps(const std::string& id, ArcProps& p);
std::string ApplyArcProps(const std::string& id, ArcProps& p);

struct RegionProps {
  std::string label;
  std::uint32_t color = 0;
  std::string alpha;  // opacity 0..1
  bool hideLabel = false;
};
bool LoadRegionProps(const std::string& id, RegionProps& p);
std::string ApplyRegionProps(const std::string& id, RegionProps& p);

// Sectors, ribbons and spheres: colour, second colour, colouring (FillStyle
// 1..5 as the surfaces' list), ramp, opacity and visibility; a sphere also
// its angle ranges (radians) and, for information, its radius.
struct MeshSurfaceProps {
  std::uint32_t color = 0, color2 = 0;
  int fillStyle = 4;
  int ramp = 0;            // index into kRampNames; past them the object's own ramp name
  std::string customRamp;  // the object's ramp name when it is none of the five
  std::string alpha;       // opacity 0..1
  bool visible = true;
  bool sphere = false;
  std::string radius;  // shown only
  std::string aFrom, aTo, bFrom, bTo;
};
bool LoadMeshSurfaceProps(const std::string& id, MeshSurfaceProps& p);
std::string ApplyMeshSurfaceProps(const std::string& id, MeshSurfaceProps& p);

// Intersection lines and loci: colour and visibility; a locus shows its
// sample count and player.
struct TraceProps {
  std::uint32_t color = 0;
  bool visible = true;
  std::string info;  // "between RG0001 and FA0002", "120 samples, player AC0003"
};
bool LoadTraceProps(const std::string& id, TraceProps& p);
std::string ApplyTraceProps(const std::string& id, TraceProps& p);

// Writes a real point's place into the copies its holders keep.
void WriteThroughCopies(const class Position& real);

}  // namespace vt
