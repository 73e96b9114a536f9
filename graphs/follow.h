// Objects whose formulas name document values (player parameters, notes:
// measurements and computed values) follow those values.
//
// Each such object records, when it evaluates its formulas, the value of
// every name its texts mention. The last step of the refresh pass (the one a
// drag, a dialog, a player step or a construction runs) measures the notes
// again, then samples again exactly the objects with a recorded value that
// has changed, and rebuilds what rests on those (sectors and ribbons over
// their rims, swept surfaces over them as profile, intersection lines). An
// object whose values stay is not touched, so a step costs what depends on
// the change.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace vt {

// Records what the object `id` read: for every parameter or note name that
// one of the texts mentions (without regard to case), its value now. The
// objects call it with no texts as they start to sample (a formula that does
// not compile follows nothing) and with their texts once they compiled; an
// object that samples as a copy of another is recorded by the refresh step
// the first time it meets it. Installs the refresh step.
void RecordFormulaInputs(const std::string& id, std::initializer_list<std::string_view> texts);

// Whether a value the object read at its last record is now another one (a
// name that is gone does not count: its object fails by its own message).
// False for an object that has recorded nothing.
bool FormulaInputsChanged(const std::string& id);

// The step itself, as the refresh pass runs it at its end.
void FollowFormulaInputs();

}  // namespace vt
