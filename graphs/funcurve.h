// CFunCurve: a plane curve given by formula text, in four forms and two
// coordinate systems, with the analysis overlays (derived curve, inverse,
// integral, roots, extrema, inflexions, parity, arc length, tangents,
// normals, curvature circles).
//
//   FunForm  Cartesian (CoordType 1)  polar (CoordType 2)  drawn as
//   1        f(x,y)=0                 f(a,r)=0             level line of a 91 x 91 grid (contour.h)
//   2        y=f(x)                   r=f(a)               polyline of the samples
//   3        x=f1(u),y=f2(u)          a=f1(u),r=f2(u)      polyline of the samples
//   4        f(x,y)<=0                f(a,r)<=0            field of points
//
// The object keeps its formula text and compiles it whenever it samples.
// GetPoints fills the samples (forms 2 and 3) and everything the overlays
// draw; Draw works from those for forms 2 and 3, and evaluates the implicit
// grid and the point field anew at every call (forms 1 and 4).
//
// A coordinate equal to BreakValue is a hole; a chord with a hole at either
// end is not drawn.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "geometry/position.h"
#include "graphs/contour.h"

namespace vt {

class RecordReader;
class CLine;
struct CurveTable;

class CFunCurve : public CCarrier {
 public:
  // How an overlay's positions are given.
  static constexpr int kPosByList = 1;     // the numbers of the list (CurvX, QieX, NmlX)
  static constexpr int kPosByFormula = 2;  // the value of a formula text (CurvPosExp, ...)
  // Safety bounds of damaged records.
  static constexpr int kMaxSteps = 100000;
  static constexpr int kMaxPositions = 1000;

  CFunCurve();

  std::string NameS;
  int GraphType = 0;
  int FunForm = 2;
  int CoordType = 1;
  std::string ExpressX, ExpressY, ExpressZ;
  int StepU = 100, StepV = 100;
  std::string MinU = "-5", MaxU = "5";
  float MinV = -5, MaxV = 5;
  int LineWidth = 1;
  std::uint32_t LineColor = 0;
  int LineStyle = 1;

  // Samples, index 0 to StepU: the curve, its first and second derivative,
  // and the parity curve f(-x) (only while ShowJO is set).
  std::vector<Position> Vert3D;
  std::vector<Position> DevVert;
  std::vector<Position> Dev2Vert;
  std::vector<Position> JOVert;
  // MinU and MaxU as evaluated by the last GetPoints (or Draw).
  float StartValue = 0, EndValue = 0;
  // The box of GetBox.
  float MinX = 0, MaxX = 0, MinY = 0, MaxY = 0, MinZ = 0, MaxZ = 0;

  // ---- overlays ----
  bool Show2DCurve = true;
  bool ShowInverse = false;
  std::uint32_t InvColor = RGB(0, 128, 0);
  int InvWidth = 1;
  bool ShowDev = false;
  std::uint32_t DevColor = RGB(255, 0, 255);
  int DevWidth = 1;
  bool ShowInt = false;
  std::uint32_t IntColor = RGB(160, 160, 255);
  float IntFrom = 0, IntTo = 1;
  bool ShowMax = false;
  std::uint32_t MaxColor = RGB(255, 0, 0);
  int MaxSize = 3, MaxSymbol = 1;
  bool ShowMin = false;
  std::uint32_t MinColor = RGB(0, 0, 255);
  int MinSize = 3, MinSymbol = 1;
  bool ShowGuai = false;
  std::uint32_t GuaiColor = RGB(0, 128, 0);
  int GuaiSize = 3, GuaiSymbol = 1;
  bool ShowJO = false;
  std::uint32_t JOColor = RGB(128, 128, 128);
  int JOWidth = 1;
  bool ShowRoot = false;
  std::uint32_t RootColor = RGB(255, 0, 0);
  int RootSize = 3, RootSymbol = 1;
  bool ShowCurv = false;
  int CurvPosType = kPosByList;
  std::string CurvPosExp;
  std::vector<float> CurvX;
  std::uint32_t CurvColor = RGB(0, 128, 128);
  int CurvWidth = 1;
  bool ShowLen = false;
  float LenFrom = 0, LenTo = 1;
  bool ShowQie = false;
  int QiePosType = kPosByList;
  std::string QiePosExp;
  std::vector<float> QieX;
  std::uint32_t QieColor = RGB(128, 0, 128);
  int QieWidth = 1;
  bool ShowNml = false;
  int NmlPosType = kPosByList;
  std::string NmlPosExp;
  std::vector<float> NmlX;
  std::uint32_t NmlColor = RGB(128, 128, 0);
  int NmlWidth = 1;

  int CurvNum() const { return static_cast<int>(CurvX.size()); }
  int QieNum() const { return static_cast<int>(QieX.size()); }
  int NmlNum() const { return static_cast<int>(NmlX.size()); }

  void Init(const std::string& id, const std::string& name, int graphType, int coordType, const std::string& expressX,
            const std::string& expressY, const std::string& expressZ, int stepU, int stepV, const std::string& minU,
            const std::string& maxU, float minV, float maxV, std::uint32_t lineColor, int lineWidth);

  // Recomputes every sample and the overlays' results. False when a formula
  // did not compile or a value failed; the samples then stand as far as they
  // got.
  bool GetPoints();
  // Whether GetPoints has run since the object was made or read.
  bool Sampled() const { return sampled_; }

  void Draw() override;
  void SetDrawMode(int mode) override { DrawMode = mode; }
  // Recomputes the curve's own box (MinX..MaxZ).
  void GetBox();
  // Fills the box with the curve's own box as it stands.
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  // The ray form: true when a chord of the samples (the traced lines of an
  // implicit curve) passes within 0.12 of the ray; for a point field, when
  // the scene point satisfies the inequality within the ranges.
  bool PickRay(const Position& scenePoint, const Position& rayStart, const Position& rayEnd);
  // True as soon as one sample lies in the rectangle (window pixels, any
  // corner order) by the point test.
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  // 51 samples (50 steps) of the curve for dependent objects; the curve's
  // own samples stay as they are.
  std::vector<Position> Points() const;
  std::vector<Position> GetRotPoints() const { return Points(); }
  std::vector<Position> GetPathAniPoints() const { return Points(); }
  // Index of the sample nearest to (x, y) in the plane; -1 when there is
  // none (no samples, or all holes).
  int NearestSample(float x, float y) const;
  // The crossings of the sampled polyline with the line (limited by its
  // shape lt), in chord order.
  std::vector<Position> LineInters(const CLine& line) const;
  // The pos-th crossing (1-based): 1 and the result, or 0 with the result
  // untouched when there are fewer.
  int LineInter(const CLine& line, int pos, Position& result) const;
  // Follows the structure points: each copy takes its real point's place.
  void UpdateStru() override;

  std::string Save() const override;
  static std::unique_ptr<CFunCurve> Load(RecordReader& r);

  // What Draw writes to the results panel for this curve (as computed by the
  // last GetPoints).
  const std::vector<std::string>& ResultLines() const { return resultLines_; }
  // Overlay markers and shapes of the last GetPoints, for tests and callers.
  const std::vector<Position>& RootMarks() const { return rootMarks_; }
  const std::vector<Position>& MaxMarks() const { return maxMarks_; }
  const std::vector<Position>& MinMarks() const { return minMarks_; }
  const std::vector<Position>& InflexionMarks() const { return guaiMarks_; }
  float IntegralValue() const { return integral_; }
  float LengthValue() const { return length_; }
  // What Draw computes anew at every call, without drawing. An implicit
  // curve: StepU and StepV become 90, the 91 x 91 grid is evaluated (not
  // with graph kind 9, which keeps the last grid) and traced; the segments
  // are x1 y1 x2 y2 in the plane. A point field: the density, the points
  // (x, y pairs) and the box they span. False when a formula or a range
  // failed.
  bool TraceImplicit();
  const std::vector<float>& TracedSegments() const { return traced_; }
  bool ComputeField();
  const std::vector<float>& FieldPoints() const { return field_; }
  // 20 or 3, by the area of the ranges (0 before the first field).
  int FieldDensity() const { return fieldDensity_; }

 private:
  struct Stroke {  // a drawn segment of an overlay: tangent, normal
    float x1, y1, x2, y2;
  };
  struct Circle {
    float cx, cy, r;
  };
  bool PrepareTexts(std::string& fx, std::string& fy) const;
  // MinU and MaxU as they evaluate now (parameters never hidden there).
  bool EvaluateRange(float& start, float& end) const;
  // The own names of the form (CurveTable): a of r = f(a), a and r of the
  // implicit polar forms.
  int OwnNames() const;
  bool Sample(const std::string& px, const std::string& py, int steps, float start, float end, bool derivative,
              std::vector<Position>& out) const;
  void ClipSamples(std::vector<Position>& samples) const;
  void ComputeOverlays(const std::string& fx, const std::string& fy);
  // kind: 0 root, 1 maximum, 2 minimum, 3 inflexion; a marker and its line
  // with the coordinates as given.
  void AddMark(int kind, float x, float y, const std::string& xText, const std::string& yText);
  void ComputeLength(bool form3, bool polar, const std::string& fy, const std::string& dx, const std::string& dy);
  void ComputeLinePositions(int posType, const std::string& posExp, const std::vector<float>& list,
                            std::vector<float>& out) const;
  void BoxFromSamples();

  void DrawPolylineForm();
  void DrawImplicit();
  void DrawField();
  // Compiles the formula and the ranges for Draw (forms 1 and 4) against the
  // table, reusing the last compile while text and names stay the same.
  bool DrawTable(CurveTable& table, float& start, float& end);

  bool sampled_ = false;
  std::vector<std::string> resultLines_;
  std::vector<Position> rootMarks_, maxMarks_, minMarks_, guaiMarks_;
  std::vector<Stroke> tangents_, normals_;
  std::vector<Circle> circles_;
  float integral_ = 0, length_ = 0;
  bool devOk_ = false, dev2Ok_ = false;
  // The compiled text of the last Draw of forms 1 and 4, kept while the text
  // and the table's names stay the same; a text that failed is not compiled
  // (nor its message shown) again until one of them changes.
  std::string drawKey_, drawPostfix_, rangeMinPostfix_, rangeMaxPostfix_;
  bool drawCompiled_ = false;
  ContourGrid grid_;
  ContourFrame gridFrame_;
  std::vector<float> traced_;
  std::vector<float> field_;
  // Unbroken runs of field points along a column (indices into the points).
  struct FieldRun {
    size_t first, last;
  };
  std::vector<FieldRun> fieldRuns_;
  int fieldDensity_ = 0;
};

// Every curve of the document samples again (after a parameter changed, or
// after a document was read).
void RefreshFunCurves();

}  // namespace vt
