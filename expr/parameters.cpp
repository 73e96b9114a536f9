#include "expr/parameters.h"

#include "document/document.h"

namespace vt {

int LoadParameterTable(VariableTable& vars) {
  vars.Clear();
  for (CAniControl* ctrl : Doc.AniCtrls)
    for (const auto& ani : ctrl->anis)
      if (ani && ani->AniType == 20) vars.Add(ani->Para1, ani->RangeTo2);
  for (CNote* note : Doc.Notes)
    if (note->NoteType != 11) vars.Add(note->VarName, note->Value);
  return vars.Count();
}

}  // namespace vt
