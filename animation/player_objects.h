// Animation players and their tracks, as the document holds them.
//
// A player (CAniControl) is a panel on the canvas, in per cent of the canvas
// with y from the bottom, that owns up to 50 tracks (CAnimation) and a
// repeating timer of the host. Each tick moves the frame counter by the run
// mode and tells every track to show that frame; a track works its state out
// from what it stored at the start, so frames may be shown in any order.
//
// The behaviour lives in animation/player.cpp and animation/track.cpp; the
// commands, the select tool's hooks and the reader in animation/ani_commands.cpp.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "document/objects.h"

namespace vt {

class RecordReader;

// One track of a player; has an id of its own but lives inside its player.
class CAnimation : public DocObject {
 public:
  static constexpr int kMaxPoints = 500;
  static constexpr int kMaxBound = 100;

  // The points driven and where they stood when the track was made.
  std::vector<std::string> IndexP;
  std::vector<float> InitX, InitY, InitZ;
  std::string ACID;
  float PosX = 0, PosY = 0;
  std::string Note;
  // 1 move, 2 rotate, 3 zoom, 4 dynamic point, 5 colour, 20 parameter (a
  // parameter named Para1 with the value RangeTo2), 21 locus.
  int AniType = 0;
  short Steps = 40;
  short Step = 0;
  float TimeFrom = 0, TimeTo = 1;
  float RangeFrom1 = 0, RangeTo1 = 0, RangeFrom2 = 0, RangeTo2 = 0, RangeFrom3 = 0, RangeTo3 = 0;
  // A parameter's step (0 in files made before parameters had one: the
  // frames of its time range then give the step).
  float Para0 = 0;
  std::string Para1;
  std::vector<std::string> Para2;  // the bound objects
  std::string Para3, Para4;
  // The first colours of the bound objects (colour tracks), taken by Init.
  std::vector<std::uint32_t> InitColor;

  int SelNum() const { return static_cast<int>(IndexP.size()); }
  int Para2Num() const { return static_cast<int>(Para2.size()); }
  // Integer parts of Steps x TimeFrom and Steps x TimeTo.
  int StartStep() const;
  int EndStep() const;

  // Collects the points to drive from the bound objects and stores their
  // coordinates (colour tracks store the first colours).
  void Init();
  // Shows the frame in Step. Points are moved with their copies; the caller
  // runs the repropagation afterwards (CAniControl::ShowFrame does).
  void Update();
  // The row text: the kind's description of what the track does.
  void BuildNote();

  // Parameter tracks: the step of the value, the count of steps from the
  // minimum to the maximum, the value the track takes at a frame (always on
  // the grid of the step), and the frame that shows the value it holds now.
  float ParamStep() const;
  int ParamIntervals() const;
  float ParamValueAt(int step) const;
  int ParamFrame() const;

  std::string Save() const override;
  // Reads the fields of a track from inside a player's record.
  static std::unique_ptr<CAnimation> Load(RecordReader& r);
  // The row of text at (PosX, PosY), in the overlay.
  void Draw() override;
  // The rectangle of the row, 15 by 3 per cent, as a note's.
  bool PickRow(float pctX, float pctY) const;
  // Pick by the last mouse position (the double click).
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
};

class CAniControl : public DocObject {
 public:
  static constexpr int kMaxTracks = 50;

  CAniControl() = default;
  CAniControl(const CAniControl&) = delete;
  CAniControl& operator=(const CAniControl&) = delete;
  ~CAniControl() override;

  short RunDirect = 1;
  short Steps = 40;
  int RunTimes = 4000;
  bool JDPicked = false;
  int AniRunMode = 2;  // 1 Normal, 2 Reverse Repeat, 3 Normal Repeat, 4 Reverse
  short Step = 0;
  float PosX = 0, PosY = 0;
  short Status = 1;  // 1 stopped, 2 running
  std::vector<std::unique_ptr<CAnimation>> anis;  // AniNum = anis.size()
  int TimerId = 0;  // the host's timer; 0 while there is none
  float GrabOffset = 0;  // knob drag: the mouse's distance from the knob's centre at the press

  // The first parameter track, whose name and value the knob shows; nullptr
  // when the player drives no parameter.
  CAnimation* LeadingParameter() const;
  // A player that drives parameters alone takes one frame per step of its
  // first parameter and stands at the frame of that parameter's value.
  void FitToParameter();

  int AniNum() const { return static_cast<int>(anis.size()); }
  // Appends a track; nullptr (the track dropped) when 50 are there.
  CAnimation* AddTrack(std::unique_ptr<CAnimation> track);
  // The interval of the timer: RunTimes / Steps, whole milliseconds.
  int Interval() const;

  // The timer with the host: made disabled, with RunDirect 1; removed.
  void CreateTimer();
  void RemoveTimer();
  // One forward step over all tracks, without the timer.
  void Start();
  void Play();
  void Stop();
  // tmTimeControl_Timer: moves Step by the run mode and shows the frame.
  void Tick();
  // Every track shows Step; points carry their change on; curves, surfaces
  // and loci follow.
  void ShowFrame();

  // Picks in per cent of the canvas; y is given from the top, as the mouse
  // has it, and turned into 100 - y first.
  bool PickPanel(float x, float y) const;
  bool PickKnob(float x, float y) const;
  bool PickPlay(float x, float y) const;
  // The centre of the knob, y from the bottom.
  float KnobX() const;
  float KnobY() const { return PosY + 1.5f; }
  // Sets Step from a mouse x (per cent) along the slider.
  void SetStepFromX(float x);

  std::string Save() const override;
  // Reads a whole AC record, tracks included.
  static std::unique_ptr<CAniControl> Load(RecordReader& r);
  void Draw() override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
};

// The kind number of the animation dialog opened last (1 moving, 2 rotating,
// 3 zoom, 4 dynamic point, 5 colour, 20 parameter, 21 locus); written in
// each track's record.
extern short AniDialogKind;

}  // namespace vt
