// The film encoder's interface: FFmpeg (libavformat, libavcodec, libswscale
// and the dozens of codec libraries they pull in) lives in the library
// libvantrel_film.so, loaded on the first film or codec list, so that a
// program that never writes a film neither loads nor relocates any of it.
// Plain C types only: the library shares no code with the program.
#pragma once

extern "C" {

struct VtFilmEncoderApi {
  int version;  // kVtFilmEncoderVersion
  // 1 when libavcodec has an encoder of that name.
  int (*has_encoder)(const char* name);
  // A writer of width x height frames at fps into the AVI file, or null with
  // the reason in error (a NUL-terminated text of at most errorSize bytes).
  void* (*open)(const char* path, int width, int height, int fps, const char* codec, char* error, int errorSize);
  // Appends a frame of RGB rows top-down; 0 once anything failed.
  int (*write)(void* writer, const unsigned char* rgb, int width, int height);
  // Flushes the encoder, writes the index and frees the writer; 1 when the
  // whole film was written.
  int (*close)(void* writer);
  // Frees the writer without finishing the file.
  void (*discard)(void* writer);
};

// The one symbol the library exports.
const VtFilmEncoderApi* vt_film_encoder_api();
}

inline constexpr int kVtFilmEncoderVersion = 1;
inline constexpr const char* kVtFilmEncoderLibrary = "libvantrel_film.so";
inline constexpr const char* kVtFilmEncoderSymbol = "vt_film_encoder_api";
