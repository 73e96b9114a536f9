// Notes and measurements: the measurement commands of the Measurement menu,
// the computed note of the "Compute" dialog, the note counter and the place
// of the next note, and the NT record reader.
#pragma once

#include <string>

#include "tools/note_object.h"

namespace vt {

// The shared note counter ("VAR" + two digits); saved with the document as
// the highest number of the notes' VarNames.
extern int NoteCounter;

// The selection messages of the measurement commands.
extern const char* const kMsgLength;
extern const char* const kMsgAngle;
extern const char* const kMsgCircle;
extern const char* const kMsgArea;
extern const char* const kMsgArc;
extern const char* const kMsgCoord;
extern const char* const kMsgCoordXYZ;
extern const char* const kMsgDistance;
extern const char* const kMsgDistanceOne;
extern const char* const kMsgExpressionInvalid;

// The "0." pattern with `decim` zeros.
std::string NoteFormat(int decim);

// Adds a note of the type at the next note place: new id, "VAR" + counter,
// Decim 2; the place then moves 5 down. No undo step.
CNote* AddNote(int noteType, const std::string& para1, const std::string& para2 = std::string(),
               const std::string& para3 = std::string());

// The measurement commands (NoteType 1 to 14).
void mnuDis_Click();
void mnuLength_Click();
void mnuXL_Click();
void mnuAngle_Click();
void mnuRadius_Click();
void mnuZC_Click();
void mnuArea_Click();
void mnuYXJ_Click();
void mnuHC_Click();
void mnuMCoord_Click();
void mnuMX_Click();
void mnuMY_Click();
void mnuMZ_Click();

// The check of the "Compute" formula: it compiles against the parameters and
// notes (the edited note's own name left out) and gives a value. Refused
// with one message; `position` gets the character a syntax error names.
bool ComputeFormulaOK(const std::string& expression, const std::string& editId, int* position = nullptr);

// The OK of the "Compute" dialog: checks the name (its message shown when
// refused, false back), then adds a note of NoteType 0, or, when `editId`
// names a note of type 0, updates that one. One undo step.
bool ComputeNoteOK(std::string name, const std::string& expression, const std::string& describe,
                   const std::string& editId = std::string());

// The dialog the "Compute" command opens; installed by the window. Given the
// note to edit (or nullptr for a new one).
using ComputeDialogFn = void (*)(CNote* edit);
extern ComputeDialogFn ComputeDialog;

void RegisterNoteCommands();
void RegisterNoteReader();

}  // namespace vt
