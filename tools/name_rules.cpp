#include "tools/name_rules.h"

#include "document/document.h"
#include "document/host.h"
#include "expr/expression.h"
#include "expr/functions.h"

namespace vt {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The name another parameter or note already has, matched as the formulas
// match names; "" when none has it.
std::string TakenBy(const std::string& name, const std::string& ownId) {
  for (CAniControl* ctrl : Doc.AniCtrls)
    for (const auto& ani : ctrl->anis)
      if (ani && ani->AniType == 20 && ani->ID != ownId && SameNameNoCase(ani->Para1, name)) return ani->Para1;
  for (CNote* note : Doc.Notes)
    if (note->NoteType != 11 && note->ID != ownId && SameNameNoCase(note->VarName, name)) return note->VarName;
  return {};
}
}  // namespace

std::string ParameterNameError(std::string& name, const std::string& ownId) {
  std::size_t a = 0, b = name.size();
  while (a < b && IsBlank(name[a])) ++a;
  while (b > a && IsBlank(name[b - 1])) --b;
  name = name.substr(a, b - a);
  if (name.empty()) return "Please input the name. ";
  if (!IsLetter(name[0])) return "The name is invalid, the first character must be a letter. ";
  for (std::size_t i = 1; i < name.size(); ++i)
    if (!IsLetter(name[i]) && !IsDigit(name[i]) && name[i] != '_')
      return "The name is invalid, invalid character exists. The name must be composed of letters, digits "
             "and \"_\", and start with a letter. ";
  // A formula reads a word as a function or constant before it looks at the
  // parameters, and a curve's own variable would hide behind a parameter.
  const std::string upper = UpperText(name);
  Fn f;
  if (FindFunction(upper, f) || upper == "SQRT" || upper == "LN" || upper == "LOG10")
    return "The name " + name + " is a function of the formulas; please choose another name. ";
  if (upper == "PI" || upper == "E") return "The name " + name + " is a constant of the formulas; please choose another name. ";
  if (upper.size() == 1 && std::string("XYZTUVW").find(upper[0]) != std::string::npos)
    return "The name " + name + " is a variable of curves and surfaces; please choose another name. ";
  const std::string other = TakenBy(name, ownId);
  if (!other.empty()) return "The name " + name + " is taken by " + other + " already; please choose another name. ";
  return {};
}

bool CheckParameterName(std::string& name, const std::string& ownId) {
  const std::string error = ParameterNameError(name, ownId);
  if (error.empty()) return true;
  host().MsgBox(error, "Note", MsgButtons::OK, MsgIcon::Exclamation);
  return false;
}

}  // namespace vt
