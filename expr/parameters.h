// The parameters of the document as the first entries of a variable table.
#pragma once

#include "expr/expression.h"

namespace vt {

// Sets the count to 0, then adds, in this order: every animation track of
// AniType 20 of every controller (name Para1, value RangeTo2), then every note
// whose NoteType is not 11 (name VarName, value Value). Returns the count.
// Callers append their free variables behind these. Entries past the table's
// room (50) are left out.
int LoadParameterTable(VariableTable& vars);

}  // namespace vt
