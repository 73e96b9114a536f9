#include "graphs/follow.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "document/document.h"
#include "expr/parameters.h"
#include "geometry/derived_surfaces.h"
#include "geometry/propagation.h"
#include "tools/note_object.h"

namespace vt {

namespace {

// Per object id: the names its texts mention and the values they had.
using Inputs = std::vector<std::pair<std::string, float>>;

std::unordered_map<std::string, Inputs>& Records() {
  static std::unordered_map<std::string, Inputs> records;
  return records;
}

bool Mentions(std::string_view text, const std::string& name) {
  if (name.empty() || name.size() > text.size()) return false;
  auto same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  return std::search(text.begin(), text.end(), name.begin(), name.end(), same) != text.end();
}

void InstallStep() {
  static bool installed = false;
  if (installed) return;
  installed = true;
  RegisterRefreshHook(RefreshStage::End, "formula inputs", &FollowFormulaInputs);
}

}  // namespace

void RecordFormulaInputs(const std::string& id, std::initializer_list<std::string_view> texts) {
  InstallStep();
  if (texts.size() == 0) {
    Records()[id].clear();
    return;
  }
  VariableTable vars;
  LoadParameterTable(vars);
  Inputs inputs;
  for (int i = 1; i <= vars.Count(); ++i) {
    const std::string& name = vars.Name(i);
    for (std::string_view text : texts)
      if (Mentions(text, name)) {
        inputs.emplace_back(name, vars.values[i]);
        break;
      }
  }
  Records()[id] = std::move(inputs);
}

bool FormulaInputsChanged(const std::string& id) {
  const auto it = Records().find(id);
  if (it == Records().end()) return false;
  VariableTable vars;
  LoadParameterTable(vars);
  for (const auto& [name, value] : it->second) {
    const int i = vars.Find(name);
    if (i && vars.values[i] != value) return true;
  }
  return false;
}

void FollowFormulaInputs() {
  // A copy of a sampled object (made by a dialog, pasted, read back) has not
  // recorded under its own id: it read the values that stand before this pass.
  auto known = [](const std::string& id) { return Records().count(id) > 0; };
  for (CFunCurve* c : Doc.FunCurves)
    if (c->Sampled() && !known(c->ID))
      RecordFormulaInputs(c->ID, {c->ExpressX, c->ExpressY, c->MinU, c->MaxU, c->CurvPosExp, c->QiePosExp, c->NmlPosExp});
  for (CSurface* s : Doc.Surfaces)
    if (s->Sampled() && !known(s->ID))
      RecordFormulaInputs(s->ID, {s->ExpressX, s->ExpressY, s->ExpressZ, s->MinU, s->MaxU, s->MinV, s->MaxV});
  for (CSurRot* s : Doc.SurRots)
    if (s->Sampled() && !known(s->ID)) RecordFormulaInputs(s->ID, {s->RotAngle});
  for (CStretch* s : Doc.Stretchs)
    if (s->Sampled() && !known(s->ID)) RecordFormulaInputs(s->ID, {s->DX, s->DY, s->DZ});
  // Measurements first: they read the figure, not formulas.
  for (CNote* n : Doc.Notes)
    if (n->NoteType != 0) n->Measure();
  // Computed values, which may read one further down the list: a few rounds.
  for (int round = 0; round < 4; ++round) {
    bool any = false;
    for (CNote* n : Doc.Notes)
      if (n->NoteType == 0 && FormulaInputsChanged(n->ID)) {
        n->Measure();
        any = true;
      }
    if (!any) break;
  }
  std::unordered_set<std::string> redone;
  for (CFunCurve* c : Doc.FunCurves)
    if (c->Sampled() && FormulaInputsChanged(c->ID)) {
      c->GetPoints();
      redone.insert(c->ID);
    }
  for (CSurface* s : Doc.Surfaces)
    if (s->Sampled() && FormulaInputsChanged(s->ID)) {
      s->GetPoints();
      redone.insert(s->ID);
    }
  // What rests on a sampled object, in the order the objects build on each
  // other: sectors and ribbons over rims, swept surfaces over profiles, then
  // the intersection lines of faces.
  auto on = [&](const std::string& id) { return !id.empty() && redone.count(id) > 0; };
  for (CFan* f : Doc.Fans)
    if (on(f->LKID) || on(f->LKID2)) {
      f->InitPos();
      redone.insert(f->ID);
    }
  for (CRibbon* b : Doc.Ribbons)
    if (on(b->LKID) || on(b->LKID2)) {
      b->InitPos();
      redone.insert(b->ID);
    }
  for (CSurRot* s : Doc.SurRots)
    if (s->Sampled() && (on(s->RotObjID) || FormulaInputsChanged(s->ID))) {
      s->GetPoints();
      redone.insert(s->ID);
    }
  for (CStretch* s : Doc.Stretchs)
    if (s->Sampled() && (on(s->ObjID) || FormulaInputsChanged(s->ID))) {
      s->GetPoints();
      redone.insert(s->ID);
    }
  if (redone.empty()) return;
  for (CInterLine* l : Doc.InterLines)
    if (on(l->LKID) || on(l->LKID2)) l->InitLines();
}

}  // namespace vt
