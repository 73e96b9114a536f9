// Films of a player's run: frames captured as bitmaps "Graph" + n + ".bmp",
// and an AVI written from them with FFmpeg (libavformat, libavcodec,
// libswscale) in the compressor chosen. FFmpeg is loaded with the library
// libvantrel_film.so (film_plugin/film_encoder.h) on the first film.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "document/host.h"

namespace vt {

class CAniControl;

// A compressor offered for films: the encoder's name and the text shown.
struct FilmCodec {
  std::string name;     // "mjpeg", "mpeg4", "rawvideo", "libx264"
  std::string caption;  // "Motion JPEG", ...
};
// MJPEG, MPEG-4 and uncompressed always; H.264 where libavcodec has it.
std::vector<FilmCodec> FilmCodecs();

// Writes frames of one size into an AVI file.
class AviWriter {
 public:
  AviWriter();
  ~AviWriter();
  AviWriter(const AviWriter&) = delete;
  AviWriter& operator=(const AviWriter&) = delete;

  // Opens the file for frames of the size at fps frames a second. False (and
  // `error`) when the codec is unknown, the file cannot be made or the
  // encoder library is missing.
  bool Open(const std::string& path, int width, int height, int fps, const std::string& codec, std::string& error);
  // Appends a frame (RGB rows top-down, the size given to Open).
  bool Write(const Image& frame);
  // Flushes the encoder and writes the index; false when anything failed.
  bool Close();
  int frames() const { return frames_; }

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
  int frames_ = 0;
};

// The bitmap of frame n in the folder: folder + "/Graph" + n + ".bmp".
std::string FramePath(const std::string& folder, int n);
// Writes a bitmap; on failure `error` (when given) says why.
bool WriteBmp(const std::string& path, const Image& image, std::string* error = nullptr);
bool ReadBmp(const std::string& path, Image& image);

// Where frames go unless the user picks another folder: the document's
// folder, or the home folder for a document never saved.
std::string DefaultFrameFolder();

// Generate Frames: from Step 0, `count` frames of the player, each shown and
// captured by `capture`, written as bitmaps 1..count in the folder. Returns the
// paths; `progress(i, count)` returning false stops early. A frame that cannot
// be written ends the run with one message naming its path and the reason.
std::vector<std::string> GenerateFrames(CAniControl& player, int count, const std::string& folder,
                                        const std::function<Image()>& capture,
                                        const std::function<bool(int, int)>& progress = {});

// frmF19's checks: the speed and the number of frames. False with the
// message shown.
bool CheckFrameRequest(int fps, int frames);

// Save Animation: the selected frames in order into the file. Shows
// "Generate animation frames first." (no frames listed), "Select some frames
// first." (none selected) and "There was an error writing the file.".
// An empty path (the save dialog cancelled) ends quietly.
bool SaveAnimation(const std::vector<std::string>& listed, const std::vector<std::string>& selected,
                   const std::string& path, int fps, const std::string& codec,
                   const std::function<bool(int, int)>& progress = {});

// The save dialog of films: its title, filter and default name.
extern const char* const kFilmSaveTitle;   // "Choose a filename to save AVI to..."
extern const char* const kFilmSaveFilter;  // "AVI Files|*.avi"

// A film of a player's whole run: the file, its compressor, frames a second
// and size.
struct FilmRequest {
  std::string path, codec = "mjpeg";
  int fps = 10, width = 800, height = 600;
};
enum class FilmEnd { Written, Cancelled, Failed };

// Writes the player's whole run, frame 0 to Steps: each frame is shown (loci
// recorded as a run records them) and `draw` gives its picture at the film's
// size. The film is written beside its path and takes the name only when
// complete, so a cancelled or failed film leaves no file behind and an older
// file of that name as it was. `progress(i, n)` false cancels. The player is
// stopped for the run and afterwards back at its step (running again if it
// ran). On Failed `error` says why.
FilmEnd WriteFilm(CAniControl& player, const FilmRequest& request, const std::function<Image()>& draw,
                  const std::function<bool(int, int)>& progress, std::string& error);

// vantrel-cli avi: opens the document offscreen, runs the player's whole run
// (Steps + 1 frames from 0) and writes the film. The player is the first one
// unless an id is given.
struct HeadlessFilm {
  std::string documentPath, aviPath, playerId, codec = "mjpeg";
  int fps = 10, width = 800, height = 600;
};
bool RenderDocumentToAvi(const HeadlessFilm& request, std::string& error);

}  // namespace vt
