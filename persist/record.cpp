#include "persist/record.h"

#include "document/document.h"
#include "document/numtext.h"

namespace vt {

RecordReader::RecordReader(std::string_view record, long base) : base_(base) {
  size_t start = 0;
  while (true) {
    size_t blank = record.find(' ', start);
    if (blank == std::string_view::npos) {
      fields_.emplace_back(record.substr(start));
      break;
    }
    fields_.emplace_back(record.substr(start, blank - start));
    start = blank + 1;
  }
  ownId_ = ShiftId(fields_[0], base_);
}

const std::string& RecordReader::Field(size_t i) const {
  if (i >= fields_.size()) throw RecordError("missing field");
  return fields_[i];
}

const std::string& RecordReader::Next() {
  if (next_ >= fields_.size()) throw RecordError("missing field");
  return fields_[next_++];
}

std::string RecordReader::Text() { return Next(); }

std::string RecordReader::FramedText() {
  std::string f = Next();
  if (!f.empty() && f[0] == '%') return UnescapeText(f);
  if (f.empty() || f[0] != '@') return f;
  if (f.size() >= 2 && f.back() == '@') return f.substr(1, f.size() - 2);
  // Opened but not closed: the text held blanks.
  for (int k = 0; k < 30 && next_ < fields_.size(); ++k) {
    const std::string& more = fields_[next_++];
    f += ' ';
    f += more;
    if (!more.empty() && more.back() == '@') break;
  }
  if (f.size() >= 2 && f.back() == '@') return f.substr(1, f.size() - 2);
  return f.substr(1);
}

float RecordReader::Single() {
  float v;
  if (!TextToSingle(Next(), v)) throw RecordError("bad number");
  return v;
}

double RecordReader::Double() {
  double v;
  if (!TextToDouble(Next(), v)) throw RecordError("bad number");
  return v;
}

long RecordReader::Long() {
  long v;
  if (!TextToLong(Next(), v)) throw RecordError("bad number");
  return v;
}

short RecordReader::Short() {
  long v = Long();
  if (v < -32768 || v > 32767) throw RecordError("overflow");
  return static_cast<short>(v);
}

bool RecordReader::Bool() {
  bool v;
  if (!TextToBool(Next(), v)) throw RecordError("bad boolean");
  return v;
}

std::string RecordReader::Id() { return ShiftId(Next(), base_); }
std::string RecordReader::FramedId() { return ShiftId(FramedText(), base_); }

namespace {
// Line ends between records (a document edited by hand) are not part of them.
std::string_view TrimLineEnds(std::string_view s) {
  auto isEnd = [](char c) { return c == '\r' || c == '\n' || c == '\t'; };
  while (!s.empty() && isEnd(s.front())) s.remove_prefix(1);
  while (!s.empty() && isEnd(s.back())) s.remove_suffix(1);
  return s;
}
}  // namespace

std::vector<std::string_view> SplitRecords(std::string_view text) {
  std::vector<std::string_view> out;
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find(";;", start);
    if (end == std::string_view::npos) {
      std::string_view last = TrimLineEnds(text.substr(start));
      if (!last.empty()) out.push_back(last);
      break;
    }
    out.push_back(TrimLineEnds(text.substr(start, end - start)));
    start = end + 2;
  }
  return out;
}

namespace {
constexpr int kMaxFramedBlanks = 30;

bool IsControl(unsigned char c) { return c < 0x20 || c == 0x7F; }

// Characters the escaped form writes as "%" and two hex digits.
bool MustEscape(unsigned char c) { return c == '%' || c == ';' || c == ' ' || IsControl(c); }

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}
}  // namespace

bool IsValidUtf8(const std::string& s) {
  size_t i = 0, n = s.size();
  while (i < n) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    size_t extra;
    if (c < 0x80) extra = 0;
    else if ((c & 0xE0) == 0xC0 && c >= 0xC2) extra = 1;
    else if ((c & 0xF0) == 0xE0) extra = 2;
    else if ((c & 0xF8) == 0xF0 && c <= 0xF4) extra = 3;
    else return false;
    if (i + extra >= n && extra > 0) return false;
    for (size_t k = 1; k <= extra; ++k)
      if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return false;
    i += extra + 1;
  }
  return true;
}

bool FrameCarries(const std::string& text) {
  if (text.find(";;") != std::string::npos || !IsValidUtf8(text)) return false;
  for (unsigned char c : text)
    if (IsControl(c)) return false;
  // Read back as FramedText reads "@" + text + "@": every word but the last
  // must leave the frame open, and at most 30 blanks may follow the first.
  int blanks = 0;
  size_t start = 0;
  while (true) {
    size_t blank = text.find(' ', start);
    if (blank == std::string::npos) break;
    if (++blanks > kMaxFramedBlanks) return false;
    if (blank > start && text[blank - 1] == '@') return false;  // closes too early
    start = blank + 1;
  }
  return true;
}

std::string EscapedText(const std::string& text) {
  static const char kHex[] = "0123456789ABCDEF";
  // Bytes that are no UTF-8 (an escaped byte of a hand-made file) are
  // escaped too, so the document text stays UTF-8 and a file read takes it
  // as it was written, not as an old one-byte code page.
  const bool high = !IsValidUtf8(text);
  std::string out = "%";
  for (unsigned char c : text) {
    if (MustEscape(c) || (high && c >= 0x80)) {
      out += '%';
      out += kHex[c >> 4];
      out += kHex[c & 0xF];
    } else {
      out += static_cast<char>(c);
    }
  }
  return out;
}

std::string UnescapeText(std::string_view field) {
  std::string out;
  if (!field.empty() && field[0] == '%') field.remove_prefix(1);
  for (size_t i = 0; i < field.size(); ++i) {
    int hi, lo;
    if (field[i] == '%' && i + 2 < field.size() &&
        (hi = HexValue(field[i + 1])) >= 0 && (lo = HexValue(field[i + 2])) >= 0) {
      out += static_cast<char>(hi * 16 + lo);
      i += 2;
    } else {
      out += field[i];  // a stray "%" of a hand-made file stays as it is
    }
  }
  return out;
}

std::string Framed(const std::string& text) {
  return FrameCarries(text) ? "@" + text + "@" : EscapedText(text);
}

std::string TextField(const std::string& text) {
  bool bare = !text.empty() && text[0] != '@' && text[0] != '%' && IsValidUtf8(text);
  for (unsigned char c : text)
    if (c == ' ' || c == ';' || IsControl(c)) bare = false;
  return bare ? text : Framed(text);
}
std::string BoolField(bool b) { return b ? "1" : "0"; }
std::string TrueFalseField(bool b) { return b ? "-1" : "0"; }

RecordWriter& RecordWriter::Add(const std::string& field) {
  s_ += ' ';
  s_ += field;
  return *this;
}

RecordWriter& RecordWriter::Add(float v) { return Add(SingleToText(v)); }
RecordWriter& RecordWriter::Add(long v) { return Add(IntToText(v)); }

}  // namespace vt
