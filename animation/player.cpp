// CAniControl: the frame counter and its run modes, the host's timer, the
// panel with its picks and drawing, the record.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "animation/player_objects.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "geometry/locus.h"
#include "geometry/propagation.h"
#include "graphs/funcurve.h"
#include "graphs/surface.h"
#include "persist/record.h"
#include "render/text.h"
#include "render/strokes.h"

namespace vt {

namespace {

// The timers made for players, with the host they were made in. A player
// that goes away (deletion, undo, a new document) leaves its timer behind;
// the next timer made sweeps those up, and an orphan that ticks removes
// itself.
std::set<std::pair<Host*, int>>& PlayerTimers() {
  static std::set<std::pair<Host*, int>> timers;
  return timers;
}

CAniControl* PlayerOfTimer(int timerId) {
  for (CAniControl* c : Doc.AniCtrls)
    if (c->TimerId == timerId) return c;
  return nullptr;
}

void SweepTimers() {
  Host* h = &host();
  auto& timers = PlayerTimers();
  for (auto it = timers.begin(); it != timers.end();) {
    if (it->first == h && !PlayerOfTimer(it->second)) {
      h->RemoveTimer(it->second);
      it = timers.erase(it);
    } else {
      ++it;
    }
  }
}

}  // namespace

CAniControl::~CAniControl() = default;

CAnimation* CAniControl::AddTrack(std::unique_ptr<CAnimation> track) {
  if (!track || AniNum() >= kMaxTracks) return nullptr;
  anis.push_back(std::move(track));
  return anis.back().get();
}

int CAniControl::Interval() const { return Steps > 0 ? RunTimes / Steps : RunTimes; }

void CAniControl::CreateTimer() {
  SweepTimers();
  if (TimerId) RemoveTimer();
  Host* h = &host();
  // The id is only known after CreateTimer, so the tick reads it from a
  // shared cell; it looks its player up by that id, so a player that is gone
  // is never called.
  auto cell = std::make_shared<int>(0);
  *cell = h->CreateTimer(std::max(1, Interval()), [cell, h]() {
    if (CAniControl* c = PlayerOfTimer(*cell)) {
      c->Tick();
    } else {
      PlayerTimers().erase({h, *cell});
      if (&host() == h) h->RemoveTimer(*cell);
    }
  });
  TimerId = *cell;
  PlayerTimers().insert({h, TimerId});
  h->EnableTimer(TimerId, false);
  RunDirect = 1;
}

void CAniControl::RemoveTimer() {
  if (!TimerId) return;
  host().RemoveTimer(TimerId);
  PlayerTimers().erase({&host(), TimerId});
  TimerId = 0;
}

void CAniControl::Start() {
  for (auto& a : anis) {
    if (a->Step == a->StartStep()) a->Init();
    ++a->Step;
    a->Update();
  }
}

void CAniControl::Play() {
  if (AniRunMode == 3) Step = -1;
  else if (AniRunMode == 4) Step = static_cast<short>(Steps + 1);
  if (!TimerId) CreateTimer();
  host().EnableTimer(TimerId, true);
  Status = 2;
}

void CAniControl::Stop() {
  if (TimerId) host().EnableTimer(TimerId, false);
  Status = 1;
}

void CAniControl::Tick() {
  if (TimerId) host().SetTimerInterval(TimerId, std::max(1, Interval()));
  bool ended = false;
  switch (AniRunMode) {
    case 1:
      RunDirect = 1;
      if (Step < Steps) ++Step;
      if (Step >= Steps) {
        Stop();
        ended = true;
      }
      break;
    case 4:
      RunDirect = -1;
      if (Step > 0) --Step;
      if (Step <= 0) {
        Stop();
        ended = true;
      }
      break;
    case 3:
      RunDirect = 1;
      ++Step;
      if (Step > Steps) Step = 0;
      ended = Step == Steps;
      break;
    default:  // 2: back and forth
      if (RunDirect >= 0 && Step >= Steps) RunDirect = -1;
      else if (RunDirect < 0 && Step <= 0) RunDirect = 1;
      Step = static_cast<short>(std::clamp(Step + RunDirect, 0, static_cast<int>(Steps)));
      ended = Step == Steps;
      break;
  }
  ShowFrame();
  RecordLoci(ID, ended);
  RedrawScene();
}

void CAniControl::ShowFrame() {
  {
    // One drag-like step for all tracks: the moved points' copies, the
    // carriers they touch and the refresh pass.
    std::unique_ptr<PropagationTrace> trace;
    if (!PropagationTrace::Active()) trace = std::make_unique<PropagationTrace>();
    for (auto& a : anis) {
      a->Steps = Steps;
      a->Step = Step;
      a->Update();
    }
    // The pass ends with the objects whose formulas read a parameter or a
    // note that changed: they sample again (graphs/follow.h).
    RepropagateAfterMove();
  }
}

CAnimation* CAniControl::LeadingParameter() const {
  for (const auto& a : anis)
    if (a->AniType == 20) return a.get();
  return nullptr;
}

void CAniControl::FitToParameter() {
  CAnimation* lead = LeadingParameter();
  if (!lead || lead->Para0 <= 0) return;
  for (const auto& a : anis)
    if (a->AniType != 20) return;
  const float span = lead->TimeTo - lead->TimeFrom;
  if (span > 0) {
    const double steps = std::round(lead->ParamIntervals() / static_cast<double>(span));
    Steps = static_cast<short>(std::clamp(steps, 1.0, 32767.0));
  }
  for (auto& a : anis) a->Steps = Steps;
  Step = static_cast<short>(lead->ParamFrame());
  for (auto& a : anis) a->Step = Step;
  if (TimerId) host().SetTimerInterval(TimerId, std::max(1, Interval()));
}

// ---- the panel ----------------------------------------------------------------

float CAniControl::KnobX() const {
  return PosX + 2.3f + (Steps > 0 ? 12.0f / static_cast<float>(Steps) * static_cast<float>(Step) : 0.0f);
}

bool CAniControl::PickKnob(float x, float y) const {
  y = 100 - y;
  const float dx = x - KnobX(), dy = y - KnobY();
  return std::sqrt(dx * dx + dy * dy) <= 1.0f;
}

bool CAniControl::PickPlay(float x, float y) const {
  y = 100 - y;
  return x >= PosX + 0.5f && x <= PosX + 1.6f && y >= PosY && y <= PosY + 3;
}

bool CAniControl::PickPanel(float x, float y) const {
  const float yb = 100 - y;
  if (!(x >= PosX && x <= PosX + 15 && yb >= PosY && yb <= PosY + 3)) return false;
  return !PickKnob(x, y) && !PickPlay(x, y);
}

void CAniControl::SetStepFromX(float x) {
  if (Steps <= 0) return;
  const float f = (x - (PosX + 2.3f)) / 12.0f;
  Step = static_cast<short>(std::clamp(std::lround(f * Steps), 0L, static_cast<long>(Steps)));
}

void CAniControl::Draw() {
  if (Hide) return;
  // The panel. A player whose first track is a parameter takes that
  // parameter's row ("a = 1.00") into the panel, under the slider, in place
  // of the frame number.
  const bool readout = !anis.empty() && anis.front()->AniType == 20 && !anis.front()->Hide;
  const float bottom = readout ? PosY - 3 : PosY;
  glColor3f(0.85f, 0.85f, 0.85f);
  DrawOverlayRect(GL_QUADS, PosX, bottom, PosX + 15, PosY + 3, 0);
  glColor3f(0, 0, 0);
  glLineWidth(Selected ? 2.0f : 1.0f);
  DrawOverlayRect(GL_LINE_LOOP, PosX, bottom, PosX + 15, PosY + 3, 0);
  glLineWidth(1.0f);
  // Play: a triangle while stopped, two bars while running.
  glColor3f(0, 0.5f, 0);
  if (Status == 2) {
    glBegin(GL_QUADS);
    for (float x0 : {PosX + 0.5f, PosX + 1.2f}) {
      glVertex3f(x0, PosY + 0.6f, 0);
      glVertex3f(x0 + 0.4f, PosY + 0.6f, 0);
      glVertex3f(x0 + 0.4f, PosY + 2.4f, 0);
      glVertex3f(x0, PosY + 2.4f, 0);
    }
    glEnd();
  } else {
    glBegin(GL_TRIANGLES);
    glVertex3f(PosX + 0.5f, PosY + 0.6f, 0);
    glVertex3f(PosX + 1.6f, PosY + 1.5f, 0);
    glVertex3f(PosX + 0.5f, PosY + 2.4f, 0);
    glEnd();
  }
  // The slider and its knob with the frame number.
  glColor3f(0, 0, 0);
  glBegin(GL_LINES);
  glVertex3f(PosX + 2.3f, PosY + 1.5f, 0);
  glVertex3f(PosX + 14.3f, PosY + 1.5f, 0);
  glEnd();
  const float kx = KnobX(), ky = KnobY();
  glColor3f(0, 0, 1);
  glBegin(GL_POLYGON);
  for (int i = 0; i < 100; ++i) {
    const float a = 0.06283f * static_cast<float>(i);
    glVertex3f(kx + 0.4f * std::cos(a), ky + 0.6f * std::sin(a), 0);
  }
  glEnd();
  glColor3f(0, 0, 0);
  if (!readout) DrawTextAt(kx + 0.6f, PosY + 1.8f, 0, IntToText(Step));
  // The tracks' rows beneath the panel.
  float y = PosY;
  for (auto& a : anis) {
    y -= 3;
    a->PosX = PosX;
    a->PosY = y;
    a->Draw();
  }
}

bool CAniControl::Pick(const Position&, const Position&, const Position&) {
  const float w = static_cast<float>(std::max(1, CanvasWidth)), h = static_cast<float>(std::max(1, CanvasHeight));
  const float x = LastX / w * 100.0f, y = LastY / h * 100.0f;
  const float yb = 100 - y;
  if (Hide) return false;
  if (x >= PosX && x <= PosX + 15 && yb >= PosY && yb <= PosY + 3) return true;
  // The rows of the tracks belong to the player too (a double click on a
  // row opens the track's dialog).
  for (const auto& a : anis)
    if (a->PickRow(x, yb)) return true;
  return false;
}

// ---- the record -------------------------------------------------------------------

std::string CAniControl::Save() const {
  std::string s = ID + " " + SingleToText(PosX) + " " + SingleToText(PosY) + " " + IntToText(Status) + " " +
                  IntToText(Step) + " " + IntToText(Steps) + " " + IntToText(RunTimes) + " " + IntToText(AniRunMode) +
                  " " + IntToText(AniNum());
  for (const auto& a : anis) s += " " + a->Save();
  s += " " + BoolField(Selected) + " " + BoolField(Hide) + ";;";
  return s;
}

std::unique_ptr<CAniControl> CAniControl::Load(RecordReader& r) {
  auto c = std::make_unique<CAniControl>();
  c->ID = r.OwnId();
  c->PosX = r.Single();
  c->PosY = r.Single();
  c->Status = r.Short();
  c->Step = r.Short();
  c->Steps = r.Short();
  c->RunTimes = r.Int();
  c->AniRunMode = r.Int();
  if (c->AniRunMode < 1 || c->AniRunMode > 4) c->AniRunMode = 2;
  const long n = r.Long();
  if (n < 0 || n > kMaxTracks) throw RecordError("bad track count");
  for (long i = 0; i < n; ++i) c->anis.push_back(CAnimation::Load(r));
  c->Selected = r.Bool();
  c->Hide = r.Bool();
  return c;
}

}  // namespace vt
