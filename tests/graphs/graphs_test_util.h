// Helpers of the graph tests: curves made as the curve dialog makes them.
#pragma once

#include <memory>
#include <string>

#include "document/document.h"
#include "graphs/funcurve.h"

namespace vt::test {

inline std::unique_ptr<CFunCurve> MakeCurve(int funForm, int coordType, const std::string& fx, const std::string& fy,
                                            int steps, const std::string& minU, const std::string& maxU,
                                            float minV = -5, float maxV = 5) {
  auto c = std::make_unique<CFunCurve>();
  c->Init(NewObjectId("C2"), "", 0, coordType, fx, fy, "", steps, steps, minU, maxU, minV, maxV, RGB(0, 0, 255), 2);
  c->FunForm = funForm;
  return c;
}

// y = f(x) on the range.
inline std::unique_ptr<CFunCurve> MakeGraph(const std::string& fy, int steps, const std::string& minU,
                                            const std::string& maxU) {
  return MakeCurve(2, 1, "", fy, steps, minU, maxU);
}

// A parameter as the document keeps one: a note with a name and a value.
inline CNote* AddParameter(const std::string& name, float value) {
  auto n = std::make_unique<CNote>();
  n->ID = NewObjectId("NT");
  n->VarName = name;
  n->Value = value;
  return Doc.Notes.Add(std::move(n));
}

}  // namespace vt::test
