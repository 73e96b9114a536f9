// The animation commands, the work of the animation dialogs, the readers of
// players and loci, and the select tool's hooks for the panels.
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "animation/animation.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/undo.h"
#include "geometry/locus.h"
#include "geometry/propagation.h"
#include "graphs/funcurve.h"
#include "graphs/surface.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "tools/canvas_input.h"
#include "tools/name_rules.h"
#include "tools/screen_place.h"
#include "tools/select.h"

namespace vt {

std::function<void(const std::string&)> PlayerPickListener;

namespace {

constexpr const char* kNotExist = "The selected object is not exist.";
constexpr const char* kSelectFirst = "Please select objects first.";

AniDialogOpener& Opener() {
  static AniDialogOpener opener;
  return opener;
}

void Open(int kind) {
  AniDialogKind = static_cast<short>(kind);
  EditMode = false;
  EditObjectId.clear();
  if (Opener()) Opener()(kind, std::string());
}

// ---- readers ------------------------------------------------------------------

void ReadPlayer(RecordReader& r, int pass) {
  if (pass == 1) {
    CAniControl* c = Doc.AniCtrls.Add(CAniControl::Load(r));
    c->CreateTimer();
    return;
  }
  // The second pass starts the players saved while running.
  if (CAniControl* c = Doc.AniCtrls.FindById(r.OwnId()))
    if (c->Status == 2) c->Play();
}

void ReadLocus(RecordReader& r, int) { Doc.Locuses.Add(CLocus::Load(r)); }

// ---- the select tool's hooks ------------------------------------------------------------
// The select tool gives y from the bottom; the picks of a player take it from
// the top.

void PlayerPress(CAniControl& c, float px, float py) {
  if (c.Hide) return;
  const float y = 100 - py;
  if (c.PickPlay(px, y)) {
    if (c.Status == 1) c.Play();
    else c.Stop();
    RedrawScene();
  }
  c.JDPicked = c.PickKnob(px, y);
  if (c.JDPicked) {
    // The knob keeps its place under the mouse: only a move changes the frame.
    c.GrabOffset = px - c.KnobX();
    // The knob is dragged, not the panel.
    DeselectObject(c);
    DragMoved = true;
    DragScreenHit = true;
    DragPrevPctX = px;
    DragPrevPctY = py;
  }
  if (c.PickPanel(px, y) && PlayerPickListener) PlayerPickListener(c.ID);
}

bool PlayerPanel(CAniControl& c, float px, float py) { return c.PickPanel(px, 100 - py); }

bool KnobDrag(float px, float) {
  bool took = false;
  for (CAniControl* c : Doc.AniCtrls) {
    if (!c->JDPicked) continue;
    took = true;
    const short before = c->Step;
    c->SetStepFromX(px - c->GrabOffset);
    if (c->Step != before) c->ShowFrame();
  }
  if (took) RedrawScene();
  return took;
}

bool TrackPick(CAnimation& a, float px, float py) { return a.PickRow(px, py); }

std::string TimeError(float from, float to) {
  if (from < 0 || from > 1 || to < 0 || to > 1 || from > to) return "The time range must lie between 0 and 1.";
  return {};
}

}  // namespace

void SetAniDialogOpener(AniDialogOpener opener) { Opener() = std::move(opener); }

void InstallPlayerHooks() {
  SelectToolHooks.playerPress = PlayerPress;
  SelectToolHooks.playerPanel = PlayerPanel;
  SelectToolHooks.knobDrag = KnobDrag;
  SelectToolHooks.trackPick = TrackPick;
}

void RegisterAnimationReaders() {
  RegisterRecordReader("AC", &ReadPlayer);
  RegisterRecordReader("LO", &ReadLocus);
}

CAniControl* NewPlayer() {
  auto c = std::make_unique<CAniControl>();
  c->ID = NewObjectId("AC");
  c->AniRunMode = 2;
  c->Steps = 40;
  c->RunTimes = 4000;
  c->Status = 1;
  // The panel with room for two tracks below it.
  FreeScreenPlace(15, 9, c->PosX, c->PosY);
  c->PosY += 6;
  CAniControl* p = Doc.AniCtrls.Add(std::move(c));
  p->CreateTimer();
  return p;
}

void mnuAMPlayer_Click() {
  NewPlayer();
  PushSnapshot();
  RedrawScene();
}

bool ApplyAniSetting(const std::string& id, int steps, float seconds, int mode) {
  CAniControl* c = id.compare(0, 2, "AC") == 0 ? Doc.AniCtrls.FindById(id) : nullptr;
  if (!c) {
    host().MsgBox(kNotExist, "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  c->Steps = static_cast<short>(std::clamp(steps, 1, 32767));
  c->RunTimes = static_cast<int>(std::clamp(seconds * 1000.0f, 1.0f, 2.0e9f));
  c->AniRunMode = std::clamp(mode, 1, 4);
  c->Step = 0;
  for (auto& a : c->anis) a->Steps = c->Steps;
  // A parameter's player stays at the parameter's value.
  if (const CAnimation* lead = c->LeadingParameter()) c->Step = static_cast<short>(lead->ParamFrame());
  for (auto& a : c->anis) a->Step = c->Step;
  if (c->TimerId) host().SetTimerInterval(c->TimerId, std::max(1, c->Interval()));
  return true;
}

CAnimation* AddTrackToPlayer(CAniControl& player, std::unique_ptr<CAnimation> track) {
  if (player.AniNum() >= CAniControl::kMaxTracks) return nullptr;
  track->ACID = player.ID;
  track->PosX = player.PosX;
  track->PosY = player.PosY - 3.0f * static_cast<float>(player.AniNum() + 1);
  track->Step = player.Step;
  track->Steps = player.Steps;
  return player.AddTrack(std::move(track));
}

std::string ParameterFieldsError(const ParameterForm& f) {
  if (!(f.min < f.max)) return "The minimum value must be smaller than the maximum one. ";
  if (!(f.step > 0)) return "The step must be larger than 0. ";
  if ((static_cast<double>(f.max) - f.min) / f.step > 10000.0)
    return "The step is too small: the range would take more than 10000 steps. ";
  if (!(f.value >= f.min && f.value <= f.max)) return "The value must lie between the minimum and the maximum. ";
  return TimeError(f.timeFrom, f.timeTo);
}

namespace {

void TakeParameterFields(CAnimation& a, const ParameterForm& f) {
  a.AniType = 20;
  a.Para1 = f.name;
  a.RangeFrom1 = f.min;
  a.RangeTo1 = f.max;
  a.RangeTo2 = f.value;
  a.Para0 = f.step;
  a.RangeFrom2 = static_cast<float>(std::clamp(f.decimals, 0, 15));
  a.TimeFrom = f.timeFrom;
  a.TimeTo = f.timeTo;
  a.BuildNote();
}

// Everything that reads parameters follows a new value or name: curves and
// surfaces sample again, computed notes measure again, as after a frame.
void FollowParameters() {
  RefreshFunCurves();
  RefreshSurfaces();
  std::unique_ptr<PropagationTrace> trace;
  if (!PropagationTrace::Active()) trace = std::make_unique<PropagationTrace>();
  RepropagateAfterMove();
}

bool SayNote(const std::string& text) {
  host().MsgBox(text, "Note", MsgButtons::OK, MsgIcon::Exclamation);
  return false;
}

}  // namespace

CAnimation* CreateParameter(const std::string& playerId, ParameterForm form) {
  if (!CheckParameterName(form.name)) return nullptr;
  const std::string error = ParameterFieldsError(form);
  if (!error.empty()) return SayNote(error), nullptr;
  CAniControl* player = Doc.AniCtrls.FindById(playerId);
  if (!player) return SayNote(kNotExist), nullptr;
  if (player->AniNum() >= CAniControl::kMaxTracks) return nullptr;
  auto a = std::make_unique<CAnimation>();
  a->ID = NewObjectId("AN");
  TakeParameterFields(*a, form);
  CAnimation* t = AddTrackToPlayer(*player, std::move(a));
  player->FitToParameter();
  // Formulas that name the new parameter can be sampled now.
  FollowParameters();
  return t;
}

CAnimation* CreateParameter(const std::string& playerId, std::string name, float min, float max, int decimals,
                            float timeFrom, float timeTo) {
  ParameterForm f;
  f.name = std::move(name);
  f.min = f.value = min;
  f.max = max;
  f.decimals = decimals;
  f.timeFrom = timeFrom;
  f.timeTo = timeTo;
  const CAniControl* player = Doc.AniCtrls.FindById(playerId);
  const float frames = player ? std::max(1.0f, std::floor(player->Steps * timeTo) - std::floor(player->Steps * timeFrom)) : 40.0f;
  f.step = (max - min) / frames;
  return CreateParameter(playerId, std::move(f));
}

bool EditParameter(const std::string& trackId, ParameterForm form) {
  CAniControl* player = nullptr;
  CAnimation* a = FindTrack(trackId, &player);
  if (!a || a->AniType != 20) return SayNote(kNotExist);
  if (!CheckParameterName(form.name, trackId)) return false;
  const std::string error = ParameterFieldsError(form);
  if (!error.empty()) return SayNote(error);
  const float places = static_cast<float>(std::clamp(form.decimals, 0, 15));
  if (form.name == a->Para1 && form.min == a->RangeFrom1 && form.max == a->RangeTo1 && places == a->RangeFrom2 &&
      form.value == a->RangeTo2 && form.step == a->Para0 && form.timeFrom == a->TimeFrom && form.timeTo == a->TimeTo)
    return true;
  TakeParameterFields(*a, form);
  player->FitToParameter();
  FollowParameters();
  PushSnapshot();
  RedrawScene();
  return true;
}

CAnimation* FindTrack(const std::string& id, CAniControl** player) {
  for (CAniControl* c : Doc.AniCtrls)
    for (auto& a : c->anis)
      if (a->ID == id) {
        if (player) *player = c;
        return a.get();
      }
  return nullptr;
}

CAnimation* ConfirmTrackForm(const TrackForm& form, const std::string& editId) {
  auto say = [](const std::string& text) {
    host().MsgBox(text, "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return nullptr;
  };
  if (form.bound.empty()) return say(kSelectFirst);
  const std::string timeError = TimeError(form.timeFrom, form.timeTo);
  if (!timeError.empty()) return say(timeError);
  if ((form.kind == 2 || form.kind == 3 || form.kind == 4) && !GetObjectById(form.para1)) return say(kNotExist);
  CAniControl* player = nullptr;
  CAnimation* track = nullptr;
  std::unique_ptr<CAnimation> made;
  if (!editId.empty()) {
    track = FindTrack(editId, &player);
    if (!track) return say(kNotExist);
  } else {
    player = Doc.AniCtrls.FindById(form.playerId);
    if (!player) return say(kNotExist);
    if (player->AniNum() >= CAniControl::kMaxTracks) return nullptr;
    made = std::make_unique<CAnimation>();
    made->ID = NewObjectId("AN");
    track = made.get();
  }
  // An edit that keeps the bound objects keeps the places and colours they
  // started from; taking them again mid-run would start from where they
  // stand now.
  const bool rebind = made || track->AniType != form.kind || track->Para2 != form.bound;
  track->AniType = form.kind;
  track->Para2 = form.bound;
  if (track->Para2.size() > static_cast<size_t>(CAnimation::kMaxBound)) track->Para2.resize(CAnimation::kMaxBound);
  track->Para1 = form.para1;
  track->TimeFrom = form.timeFrom;
  track->TimeTo = form.timeTo;
  track->RangeFrom1 = track->RangeFrom2 = track->RangeFrom3 = 0;
  switch (form.kind) {
    case 1:
      track->RangeTo1 = form.x;
      track->RangeTo2 = form.y;
      track->RangeTo3 = form.z;
      break;
    case 2:
    case 3: track->RangeTo1 = form.x; break;
    case 5:
      track->RangeFrom1 = static_cast<float>(form.colorFrom & 0xFF);
      track->RangeTo1 = static_cast<float>(form.colorTo & 0xFF);
      track->RangeFrom2 = static_cast<float>((form.colorFrom >> 8) & 0xFF);
      track->RangeTo2 = static_cast<float>((form.colorTo >> 8) & 0xFF);
      track->RangeFrom3 = static_cast<float>((form.colorFrom >> 16) & 0xFF);
      track->RangeTo3 = static_cast<float>((form.colorTo >> 16) & 0xFF);
      break;
    default: break;
  }
  if (made) {
    track = AddTrackToPlayer(*player, std::move(made));
    if (!track) return nullptr;
  }
  track->Steps = player->Steps;
  track->Step = player->Step;
  if (rebind) track->Init();
  track->BuildNote();
  player->ShowFrame();
  PushSnapshot();
  RedrawScene();
  return track;
}

CLocus* AddLocus(const std::string& playerId, const std::string& pointId, std::uint32_t color) {
  if (!Doc.AniCtrls.FindById(playerId)) {
    host().MsgBox(kNotExist, "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return nullptr;
  }
  if (!FindPoint(pointId)) {
    host().MsgBox(kSelectFirst, "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return nullptr;
  }
  auto l = std::make_unique<CLocus>();
  l->ID = NewObjectId("LO");
  l->ACID = playerId;
  l->LKID = pointId;
  l->ForeColor = color;
  return Doc.Locuses.Add(std::move(l));
}

void RegisterAnimationCommands() {
  InstallPlayerHooks();
  RegisterHandler("mnuAMPlayer", mnuAMPlayer_Click);
  RegisterHandler("mnuMove", [] { Open(1); });
  RegisterHandler("mnuAMRotate", [] { Open(2); });
  RegisterHandler("mnuAMZoom", [] { Open(3); });
  RegisterHandler("mnuAMPath", [] { Open(4); });
  RegisterHandler("mnuAMColor", [] { Open(5); });
  RegisterHandler("mnuMVar", [] { Open(20); });
  RegisterHandler("mnuLocus", [] { Open(21); });
  RegisterEditDialog(Kind::AC, [](DocObject& o) {
    if (!Opener()) return;
    // A row of a track opens the track's dialog; the panel the settings.
    auto& c = static_cast<CAniControl&>(o);
    const float w = static_cast<float>(std::max(1, CanvasWidth)), h = static_cast<float>(std::max(1, CanvasHeight));
    const float px = LastX / w * 100.0f, py = 100.0f - LastY / h * 100.0f;
    for (auto& a : c.anis)
      if (a->PickRow(px, py) && ((a->AniType >= 1 && a->AniType <= 5) || a->AniType == 20)) {
        EditObjectId = a->ID;
        AniDialogKind = static_cast<short>(a->AniType);
        Opener()(a->AniType, a->ID);
        return;
      }
    // The panel of a parameter's player opens the parameter; its dialog
    // reaches the player's settings.
    if (CAnimation* lead = c.LeadingParameter()) {
      EditObjectId = lead->ID;
      AniDialogKind = 20;
      Opener()(20, lead->ID);
      return;
    }
    Opener()(13, o.ID);
  });
}

}  // namespace vt
