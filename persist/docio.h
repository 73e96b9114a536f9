// The document text and its file: the writer (GetUndoVar), the readers
// (OpenFile, OpenUnRe, OpenModel), the paste reader, and the byte frame of a
// file on disk.
//
// File frame: a 16-bit type mark 8, a 16-bit length, then the text bytes.
// Texts of 65535 bytes and more write 0xFFFF as the length and the real
// length as a 32-bit little-endian number after it; shorter texts keep the
// plain frame byte for byte.
#pragma once

#include <string>
#include <vector>

namespace vt {

class RecordReader;

// ---- the record readers, by tag -----------------------------------------------
// A reader builds its object from the record and adds it to the document. It
// throws RecordError on a damaged record. pass is 1 or 2 for the kinds read
// twice (notes and players), else 1.
using RecordReaderFn = void (*)(RecordReader& r, int pass);
void RegisterRecordReader(const std::string& tag, RecordReaderFn fn);
RecordReaderFn FindRecordReader(const std::string& tag);

// ---- text ----------------------------------------------------------------------
std::string GetUndoVar();
// Reads a whole document text in place of the current document (undo, redo).
void OpenUnRe(const std::string& text);

// ---- files ---------------------------------------------------------------------
// Reads the file frame; false (and an empty text) when the file cannot be
// read or its frame is damaged.
bool ReadDocumentFile(const std::string& path, std::string& text);
// Writes the frame beside the target and renames it into place, so a failed
// write leaves the old file as it was. On failure `error` says why.
bool WriteDocumentFile(const std::string& path, const std::string& text, std::string& error);
// Encodes/decodes the frame in memory.
std::string EncodeDocumentFrame(const std::string& text);
bool DecodeDocumentFrame(const std::string& bytes, std::string& text);

// What the last read of a document text (file, model, undo or paste) left
// out: the number of records that could not be read, and a line on each of
// the first ones ("record 5 (ZZ12AB): the id is not a tag and a number").
struct ReadDamage {
  static constexpr size_t kMaxLines = 20;
  int records = 0;
  std::vector<std::string> lines;
};
const ReadDamage& LastReadDamage();

// Reads a file and replaces the document; a file that cannot be read keeps the
// old document. A record that cannot be read is left out and the read goes on;
// afterwards the user is told once how many records were left out (undo and
// redo stay quiet). The result tells whether every record was read.
bool OpenFile(const std::string& path);
// Reads the same from a text already in memory (OpenFile after the frame).
bool OpenDocumentText(const std::string& text);
// Adds a file's objects to the document under new numbers.
bool OpenModel(const std::string& path);
bool OpenModelText(const std::string& text);
// Adds clipboard records (points, lines, circles, arcs, regions) under new
// numbers; records that cannot be read are left out, and the user is told.
void PasteRecords(const std::string& text);

}  // namespace vt
