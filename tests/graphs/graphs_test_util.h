// Helpers of the graph tests: curves made as the curve dialog makes them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "document/document.h"
#include "geometry/line.h"
#include "graphs/funcurve.h"
#include "graphs/surface.h"
#include "graphs/swept.h"

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

// A surface (graph type 2) or space curve (1) of the form and system over
// the ranges, steps along both parameters.
inline std::unique_ptr<CSurface> MakeSurface(int graphType, int funForm, int coordType, const std::string& fx,
                                             const std::string& fy, const std::string& fz, int steps,
                                             const std::string& minU, const std::string& maxU,
                                             const std::string& minV, const std::string& maxV) {
  auto s = std::make_unique<CSurface>();
  s->Init(NewObjectId(graphType == 1 ? "C3" : "SF"), "", graphType, funForm, coordType, fx, fy, fz, steps, steps,
          minU, maxU, minV, maxV);
  return s;
}

// The profile turned about the axis (a line or a point) by the angle.
inline CSurRot* AddRotation(const std::string& profile, const std::string& axis, const std::string& angle, int steps) {
  auto s = std::make_unique<CSurRot>();
  s->ID = NewObjectId("SR");
  s->RotObjID = profile, s->RotCenterID = axis, s->RotAngle = angle, s->StepV = steps;
  return Doc.SurRots.Add(std::move(s));
}

// The profile extruded along the vector.
inline CStretch* AddExtrusion(const std::string& profile, const char* dx, const char* dy, const char* dz, int steps) {
  auto s = std::make_unique<CStretch>();
  s->ID = NewObjectId("SS");
  s->ObjID = profile, s->DX = dx, s->DY = dy, s->DZ = dz, s->StepV = steps;
  return Doc.Stretchs.Add(std::move(s));
}

// A dialog's fields changed one step after another; after each step the
// confirmation refuses (keeps the dialog open) and shows the message.
template <class Form>
struct Refusal {
  std::function<void(Form&)> edit;
  std::string message;
};
template <class Form, class Refuses, class Message>
void ExpectRefusals(Form& f, const std::vector<Refusal<Form>>& steps, Refuses refuses, Message message) {
  for (const Refusal<Form>& r : steps) {
    SCOPED_TRACE(r.message);
    r.edit(f);
    EXPECT_TRUE(refuses(f));
    EXPECT_EQ(message(), r.message);
  }
}

}  // namespace vt::test
