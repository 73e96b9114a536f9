// Fields of one record of the document text: reading them in order, and the
// pieces writers use. A record is fields separated by single blanks; a text
// field that may hold blanks is framed by "@".
//
// A text the frame cannot carry (one with ";;", a line break or another
// control character, more than 30 blanks, or a word before its last that ends
// in "@") is written escaped instead: "%" and then the text with every "%",
// ";", blank and control character as "%" and two hex digits ("a@ b" gives
// "%a@%20b"). A framed field always begins with "@" and a bare field never
// begins with "%", so the escaped form is never confused with either; every
// text the frame carries is written framed, byte for byte as before.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vt {

// A record that cannot be read: a missing field, a field that is not a number.
// Readers of whole documents catch it and stop quietly.
class RecordError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class RecordReader {
 public:
  // base: added to the number of every id read through Id()/FramedId().
  explicit RecordReader(std::string_view record, long base = 0);

  long base() const { return base_; }
  // The record's own id (the first field), shifted by base.
  const std::string& OwnId() const { return ownId_; }
  bool AtEnd() const { return next_ >= fields_.size(); }
  size_t FieldCount() const { return fields_.size(); }
  // Field by 0-based index, raw.
  const std::string& Field(size_t i) const;

  // The next field, raw.
  std::string Text();
  // The next field as a text framed by "@": "@a b@" gives "a b". A field
  // that opens with "@" but does not close takes up to 30 following fields,
  // joined by one blank, until one closes. An escaped field ("%...") is
  // decoded; any other field is taken as is.
  std::string FramedText();
  float Single();
  double Double();
  long Long();
  int Int() { return static_cast<int>(Long()); }
  short Short();
  bool Bool();
  // An id field, shifted by base (an empty field stays empty).
  std::string Id();
  std::string FramedId();
  // Moves to field i (0-based) for the next read.
  void Seek(size_t i) { next_ = i; }

 private:
  const std::string& Next();

  std::vector<std::string> fields_;
  size_t next_ = 1;  // field 0 is the id
  long base_;
  std::string ownId_;
};

// Splits the document text into records on ";;"; the piece after the last
// ";;" is dropped when empty.
std::vector<std::string_view> SplitRecords(std::string_view text);

// Writer pieces.
// A text field: "@" + text + "@" when the frame carries the text back, else
// the escaped form.
std::string Framed(const std::string& text);
// True when the bytes are well-formed UTF-8.
bool IsValidUtf8(const std::string& s);
// True when "@" + text + "@" reads back as the text.
bool FrameCarries(const std::string& text);
// The escaped form and its reading ("%" first).
std::string EscapedText(const std::string& text);
std::string UnescapeText(std::string_view field);
// A text field written bare when it is one plain word, else as Framed(); read
// with FramedText().
std::string TextField(const std::string& text);
std::string BoolField(bool b);                 // "1" or "0"
std::string TrueFalseField(bool b);            // "-1" or "0", the plain form of a flag

// Builds a record: fields joined by single blanks, closed by ";;".
class RecordWriter {
 public:
  explicit RecordWriter(const std::string& id) : s_(id) {}
  RecordWriter& Add(const std::string& field);
  RecordWriter& Add(const char* field) { return Add(std::string(field)); }
  RecordWriter& Add(float v);
  RecordWriter& Add(double v) = delete;  // say which: Single or a whole number
  RecordWriter& Add(long v);
  RecordWriter& Add(int v) { return Add(static_cast<long>(v)); }
  RecordWriter& Add(short v) { return Add(static_cast<long>(v)); }
  RecordWriter& Add(unsigned v) { return Add(static_cast<long>(v)); }
  RecordWriter& Add(bool b) { return Add(BoolField(b)); }
  RecordWriter& AddFramed(const std::string& text) { return Add(Framed(text)); }
  // A text that is usually one word (a name, a command): bare when it can be.
  RecordWriter& AddText(const std::string& text) { return Add(TextField(text)); }
  // A flag in its plain form, -1 or 0 (fields not written as "1"/"0").
  RecordWriter& AddFlag(bool b) { return Add(TrueFalseField(b)); }
  // Appends raw text that already carries its own separators.
  RecordWriter& Raw(const std::string& text) {
    s_ += text;
    return *this;
  }
  std::string Close() const { return s_ + ";;"; }

 private:
  std::string s_;
};

}  // namespace vt
