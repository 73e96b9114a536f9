// The animation commands and the work behind the animation dialogs: new
// players, the player settings, new and edited tracks of every kind, the
// parameters of frmVar, loci. The dialogs (animation/dialogs/) only gather
// fields and call these, so the rules and messages are the same for the
// window and the tests.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "animation/player_objects.h"

namespace vt {

class CLocus;

// Registers the Animation menu's commands and the select tool's hooks for
// players and tracks (called from RegisterAllCommands).
void RegisterAnimationCommands();
// The readers of AC and LO records.
void RegisterAnimationReaders();
// The select tool's hooks alone (the tests install them without the menu).
void InstallPlayerHooks();

// A player with the defaults of the menu command (mode 2, 40 steps, 4000 ms,
// stopped) at the next free place of the column, with its timer.
CAniControl* NewPlayer();
// mnuAMPlayer: a new player, an undo step, the frame.
void mnuAMPlayer_Click();

// frmAniSetting's OK: the player of `id` takes the steps, the time in
// seconds and the mode, and Step goes back to 0. A player that cannot be
// found says "The selected object is not exist." and gives false.
bool ApplyAniSetting(const std::string& id, int steps, float seconds, int mode);

// Appends a track to a player: AniNum + 1, the row beneath the earlier ones,
// the player's Step and Steps. nullptr when the player holds 50 tracks.
CAnimation* AddTrackToPlayer(CAniControl& player, std::unique_ptr<CAnimation> track);

// The fields of frmVar: a parameter's name, value, range, step, the
// decimals of its readout and the time range of its player.
struct ParameterForm {
  std::string name;
  float value = 0, min = 0, max = 10, step = 0.1f;
  int decimals = 2;
  float timeFrom = 0, timeTo = 1;
};
// The message for fields that cannot make a parameter (the name aside): the
// minimum not below the maximum, a step not above 0 or too small for the
// range, the value outside the range, the time range. "" when they are good.
std::string ParameterFieldsError(const ParameterForm& form);

// frmVar's Create: checks the name and the fields (the message shown) and
// adds a parameter track with the value. A player that drives only
// parameters takes one frame per step and stands at the value. nullptr when
// refused.
CAnimation* CreateParameter(const std::string& playerId, ParameterForm form);
// The same with the value at the minimum and one step per frame of the player.
CAnimation* CreateParameter(const std::string& playerId, std::string name, float min, float max, int decimals,
                            float timeFrom, float timeTo);
// frmVar's OK on a parameter track being edited: the same checks, then the
// track takes the fields in place, everything that reads the parameter
// follows at once, one undo step. False when refused, the message shown.
bool EditParameter(const std::string& trackId, ParameterForm form);

// The fields of the track dialogs (frmMoving, frmRotating, frmZoom,
// frmPathAni, frmColorAni).
struct TrackForm {
  int kind = 1;                  // AniType
  std::string playerId;          // the chosen player
  std::vector<std::string> bound;  // Para2: the bound objects (the dynamic point)
  std::string para1;             // centre, axis or path
  float x = 0, y = 0, z = 0;     // displacement; angle in x; scale in x
  std::uint32_t colorFrom = 0, colorTo = 0;
  float timeFrom = 0, timeTo = 1;
};
// Checks the fields and makes the track, or with editId rewrites that track
// and runs its Init and Update. nullptr with a message when refused.
CAnimation* ConfirmTrackForm(const TrackForm& form, const std::string& editId = std::string());
// The track of an id, with its player.
CAnimation* FindTrack(const std::string& id, CAniControl** player = nullptr);

// frmLocus: a locus of the point recorded while the player runs.
CLocus* AddLocus(const std::string& playerId, const std::string& pointId, std::uint32_t color);

// A track dialog waiting for "Select from the canvas" sets this; a press on
// a player's panel gives it the player's id.
extern std::function<void(const std::string& playerId)> PlayerPickListener;

// What opens the dialogs (set by the window; unset, the commands do
// nothing): the kind (1..5, 20, 21, 13 settings) and the id being edited.
using AniDialogOpener = std::function<void(int kind, const std::string& editId)>;
void SetAniDialogOpener(AniDialogOpener opener);

}  // namespace vt
