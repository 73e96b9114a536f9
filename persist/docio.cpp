#include "persist/docio.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>
#include <unistd.h>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "persist/record.h"
#include "render/view_state.h"

namespace vt {

void RegisterBuiltInReaders();  // readers.cpp
// The view and axis settings at the end of the GL record (render/settings_record.cpp).
std::string SceneSettingsFields();
void ReadSceneSettings(RecordReader& r);

namespace {

std::map<std::string, RecordReaderFn>& Registry() {
  static std::map<std::string, RecordReaderFn> r;
  return r;
}

void EnsureReaders() {
  static bool done = false;
  if (!done) {
    done = true;
    RegisterBuiltInReaders();
  }
}

// ---- text encoding ---------------------------------------------------------
// Documents hold the program's own text (UTF-8). Older documents in a one-byte
// code page are taken as Windows-1252 and turned into UTF-8 on reading.

std::string Cp1252ToUtf8(const std::string& s) {
  static const unsigned short high[32] = {
      0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
  std::string out;
  out.reserve(s.size());
  for (unsigned char c : s) {
    unsigned cp = c;
    if (c >= 0x80 && c < 0xA0) cp = high[c - 0x80];
    if (cp < 0x80) {
      out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
  }
  return out;
}

// Text from outside the program (the clipboard, a text handed to the undo or
// model readers) may be no UTF-8; it is taken as Windows-1252 like an old file,
// so that the document only ever holds UTF-8 and writes back what it read.
const std::string& AsDocumentText(const std::string& text, std::string& converted) {
  if (IsValidUtf8(text)) return text;
  converted = Cp1252ToUtf8(text);
  return converted;
}

// ---- the passes ----------------------------------------------------------------

enum class ReadMode { File, Undo, Model };

void ReadPointRecord(RecordReader& r, int) {
  std::unique_ptr<Position> p = Position::Load(r);
  std::string key = p->ID;
  Doc.Points.Add(std::move(p), key);
}

std::string TagOf(const RecordReader& r) { return r.Field(0).substr(0, 2); }

// The GL record: the scene and the four toggles. A record one field short
// (written for a document with no scene yet) has no scene field and reads as
// a plane scene.
void ReadSceneRecord(RecordReader& r, ReadMode mode) {
  r.Text();  // the version, kept and never tested
  double scene = 1;
  if (r.FieldCount() != 6) {
    if (!TextToDouble(r.Field(2), scene)) throw RecordError("bad number");
    r.Seek(3);
  }
  // Undo and redo leave the scene as it is shown: its mode and its view.
  if (mode != ReadMode::Undo) {
    if (scene == 1) mnuFileNew2D_Click();
    else mnuFileNew3D_Click();
  }
  bool flags[4];
  for (bool& f : flags) {
    double v;
    if (!TextToDouble(r.Text(), v)) throw RecordError("bad number");
    f = v == 1;  // only exactly 1 counts as set
  }
  SetViewToggles(flags[0], flags[1], flags[2], flags[3]);
  ReadSceneSettings(r);
}

ReadDamage g_damage;

bool IsBlankRecord(std::string_view rec) {
  return rec.find_first_not_of(" \r\n\t") == std::string_view::npos;
}

// Notes a record that is left out: its place (1 for the first record), its id
// and why.
void LeaveOut(size_t index, std::string_view rec, const std::string& why) {
  ++g_damage.records;
  if (g_damage.lines.size() >= ReadDamage::kMaxLines) return;
  std::string id(rec.substr(0, std::min(rec.find(' '), size_t(16))));
  g_damage.lines.push_back("record " + std::to_string(index + 1) + " (" + id + "): " + why);
}

std::string Why(const std::exception& e) {
  const std::string what = e.what();
  if (what == "missing field") return "the record is cut short";
  if (what == "bad number") return "a field is not a number";
  return what;
}

// Reads a document text into the document. A record that cannot be read is
// left out and the read goes on with the next one; references to it stay
// empty, as any failed lookup. Blank records are passed over. The result
// tells whether every record was read; LastReadDamage() says which were not.
bool ReadDocumentText(const std::string& raw, ReadMode mode) {
  g_damage = {};
  std::string converted;
  const std::string& text = AsDocumentText(raw, converted);
  EnsureReaders();
  LinkPassMode = 2;
  const long base = mode == ReadMode::Model ? NextObjectNumber : 0;
  if (mode != ReadMode::Model) ClearDocument();

  std::vector<std::string_view> records = SplitRecords(text);
  std::vector<char> skip(records.size(), 0);  // blank, or left out
  long highest = 0;

  auto leaveOut = [&](size_t i, const std::string& why) {
    skip[i] = 1;
    LeaveOut(i, records[i], why);
  };

  // Pass 1: the highest number, and the points.
  for (size_t i = 0; i < records.size(); ++i) {
    if (IsBlankRecord(records[i])) {
      skip[i] = 1;
      continue;
    }
    try {
      RecordReader r(records[i], base);
      std::string tag = TagOf(r);
      if (tag == "GL") continue;
      long n = IdNumber(r.Field(0));
      if (n < 0) {
        leaveOut(i, "the id is not a tag and a number");
        continue;
      }
      if (n > highest) highest = n;
      if (tag == "PT") ReadPointRecord(r, 1);
      else if (!FindRecordReader(tag)) leaveOut(i, "no object of this kind is known");
    } catch (const std::exception& e) {
      leaveOut(i, Why(e));
    }
  }
  if (mode != ReadMode::Undo) RecomputeLastPointLabel();
  NextObjectNumber = base + highest;

  // Pass 2: everything in file order; notes and players create here.
  for (size_t i = 0; i < records.size(); ++i) {
    if (skip[i]) continue;
    try {
      RecordReader r(records[i], base);
      std::string tag = TagOf(r);
      if (tag == "GL") {
        if (mode != ReadMode::Model) ReadSceneRecord(r, mode);
      } else if (tag != "PT") {
        FindRecordReader(tag)(r, 1);
      }
    } catch (const std::exception& e) {
      leaveOut(i, Why(e));
    }
  }
  // Passes 3 and 4: notes, then players, complete what names later objects.
  for (const char* late : {"NT", "AC"}) {
    RecordReaderFn fn = FindRecordReader(late);
    for (size_t i = 0; fn && i < records.size(); ++i) {
      if (skip[i]) continue;
      try {
        RecordReader r(records[i], base);
        if (TagOf(r) == late) fn(r, 2);
      } catch (const std::exception& e) {
        leaveOut(i, Why(e));
      }
    }
  }
  return g_damage.records == 0;
}

// Tells the user once how many records of a read were left out.
void TellDamage(const char* what) {
  if (g_damage.records == 0) return;
  const int n = g_damage.records;
  std::string text = std::to_string(n) + (n == 1 ? " record of the " : " records of the ") + what +
                     (n == 1 ? " could not be read and was left out." : " could not be read and were left out.");
  host().MsgBox(text, "Note", MsgButtons::OK, MsgIcon::Exclamation);
}

// After a read: one message at most. Left-out records come first; else the
// first thing the readers had to say.
void TellAfterReading(MessageHold& held, const char* what) {
  if (g_damage.records > 0) {
    held.Release();
    TellDamage(what);
  } else {
    held.ShowFirst();
  }
}

}  // namespace

void RegisterRecordReader(const std::string& tag, RecordReaderFn fn) { Registry()[tag] = fn; }

RecordReaderFn FindRecordReader(const std::string& tag) {
  EnsureReaders();
  auto it = Registry().find(tag);
  return it == Registry().end() ? nullptr : it->second;
}

void RegisterPointReader() { RegisterRecordReader("PT", &ReadPointRecord); }

const ReadDamage& LastReadDamage() { return g_damage; }

// ---- writer ---------------------------------------------------------------------

std::string GetUndoVar() {
  std::string s = "GL Ver3.00 ";
  // A document with no scene yet is written as the plane scene it opens as.
  s += SceneMode == 3 ? "2 " : "1 ";
  s += BoolField(ShowAxis) + " " + BoolField(ShowGrid) + " " + BoolField(SnapToGrid) + " " +
       BoolField(ShowCoordLines) + SceneSettingsFields() + ";;";
  // Intersection lines and loci come last: they name surfaces, regions,
  // points and players, which the reader then has made.
  for (Kind k : kAllKinds) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) s += c.ItemBase(i)->Save();
  }
  return s;
}

void OpenUnRe(const std::string& text) {
  MessageHold quiet;  // undo and redo bring back what was shown before
  ReadDocumentText(text, ReadMode::Undo);
  RedrawScene();
}

// ---- files -----------------------------------------------------------------------

std::string EncodeDocumentFrame(const std::string& text) {
  std::string out;
  auto put16 = [&](unsigned v) {
    out.push_back(static_cast<char>(v & 0xFF));
    out.push_back(static_cast<char>((v >> 8) & 0xFF));
  };
  put16(8);
  if (text.size() < 0xFFFF) {
    put16(static_cast<unsigned>(text.size()));
  } else {
    put16(0xFFFF);
    uint32_t n = static_cast<uint32_t>(text.size());
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<char>((n >> (8 * i)) & 0xFF));
  }
  out += text;
  return out;
}

bool DecodeDocumentFrame(const std::string& bytes, std::string& text) {
  text.clear();
  if (bytes.size() < 4) return false;
  auto u8 = [&](size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[i])); };
  if ((u8(0) | (u8(1) << 8)) != 8) return false;
  size_t len = u8(2) | (u8(3) << 8);
  size_t start = 4;
  if (len == 0xFFFF) {
    if (bytes.size() < 8) return false;
    len = u8(4) | (u8(5) << 8) | (u8(6) << 16) | (static_cast<size_t>(u8(7)) << 24);
    start = 8;
  }
  // A file shorter than its frame says is a failed read: no text, so the
  // document that was open stays.
  if (bytes.size() - start < len) return false;
  text = bytes.substr(start, len);
  if (!IsValidUtf8(text)) text = Cp1252ToUtf8(text);
  return true;
}

bool ReadDocumentFile(const std::string& path, std::string& text) {
  text.clear();
  if (path.empty()) return false;
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) return false;
  return DecodeDocumentFrame(bytes, text);
}

bool WriteDocumentFile(const std::string& path, const std::string& text, std::string& error) {
  namespace fs = std::filesystem;
  std::string bytes = EncodeDocumentFrame(text);
  fs::path target(path);
  fs::path tmp = target;
  tmp += ".saving";
  {
    FILE* f = std::fopen(tmp.c_str(), "wb");
    if (!f) {
      error = std::strerror(errno);
      return false;
    }
    // The first failure says why: a short write (disk full, file size
    // limit), the flush, the sync, or the close that writes what is left.
    int err = 0;
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), f) != bytes.size()) err = errno ? errno : EIO;
    if (std::fflush(f) != 0 && !err) err = errno ? errno : EIO;
    if (!err && fsync(fileno(f)) != 0) err = errno ? errno : EIO;
    if (std::fclose(f) != 0 && !err) err = errno ? errno : EIO;
    if (err) {
      error = std::strerror(err);
      std::error_code ec;
      fs::remove(tmp, ec);
      return false;
    }
  }
  std::error_code ec;
  // The new file takes the old one's permissions.
  fs::file_status old = fs::status(target, ec);
  if (!ec && fs::is_regular_file(old))
    fs::permissions(tmp, old.permissions(), fs::perm_options::replace, ec);
  ec.clear();
  fs::rename(tmp, target, ec);
  if (ec) {
    error = ec.message();
    fs::remove(tmp, ec);
    return false;
  }
  return true;
}

bool OpenDocumentText(const std::string& text) {
  if (text.empty()) return false;  // a failed open keeps the old document
  MessageHold held;
  bool whole = ReadDocumentText(text, ReadMode::File);
  TellAfterReading(held, "document");
  return whole;
}

bool OpenFile(const std::string& path) {
  std::string text;
  ReadDocumentFile(path, text);
  return OpenDocumentText(text);
}

bool OpenModelText(const std::string& text) {
  MessageHold held;
  bool whole = ReadDocumentText(text, ReadMode::Model);
  TellAfterReading(held, "model");
  return whole;
}

bool OpenModel(const std::string& path) {
  std::string text;
  ReadDocumentFile(path, text);
  return OpenModelText(text);
}

// ---- paste -------------------------------------------------------------------------

void PasteRecords(const std::string& raw) {
  std::string converted;
  const std::string& text = AsDocumentText(raw, converted);
  EnsureReaders();
  LinkPassMode = 2;
  if (text.empty()) return;
  GraphList.FunList.clear();
  ViewGraph.FunList.clear();

  g_damage = {};
  MessageHold held;
  const long base = NextObjectNumber;
  long highest = base;
  constexpr int kMaxMapped = 2000;
  std::vector<std::pair<std::string, std::string>> idMap;  // old id, new id
  std::vector<std::string> pasted;

  // What is pasted becomes the selection.
  for (Kind k : kAllKinds) {
    CollectionBase& set = Sel.Of(k);
    for (int i = set.count(); i >= 1; --i) {
      if (DocObject* o = GetObjectById(set.ItemBase(i)->ID)) o->Selected = false;
      set.Remove(i);
    }
  }

  // Only points, lines, circles, arcs and regions are pasted; a record of
  // these kinds that cannot be read is left out and the paste goes on.
  std::vector<std::string_view> records = SplitRecords(text);
  auto pastedKind = [](const std::string& tag) {
    return tag == "PT" || tag == "LN" || tag == "CR" || tag == "AR" || tag == "RG";
  };
  std::vector<char> skip(records.size(), 0);
  for (int pass = 1; pass <= 2; ++pass) {
    for (size_t i = 0; i < records.size(); ++i) {
      if (skip[i] || IsBlankRecord(records[i])) continue;
      try {
        RecordReader r(records[i], base);
        const std::string tag = TagOf(r);
        if (!pastedKind(tag) || (tag == "PT") != (pass == 1)) continue;
        if (IdNumber(r.Field(0)) < 0) {
          skip[i] = 1;
          LeaveOut(i, records[i], "the id is not a tag and a number");
          continue;
        }
        if (pass == 2) {
          FindRecordReader(tag)(r, 1);
          highest = std::max(highest, IdNumber(r.OwnId()));
          pasted.push_back(r.OwnId());
          continue;
        }
        std::unique_ptr<Position> p = Position::Load(r);
        if (static_cast<int>(idMap.size()) >= kMaxMapped) throw RunTimeError("too many points");
        idMap.emplace_back(r.Field(0), p->ID);
        // A label the document already shows goes to the next free one.
        if (!p->PLabel.empty()) {
          for (Position* q : Doc.Points)
            if (q->PLabel == p->PLabel) {
              AssignNextPointLabel(*p);
              break;
            }
        }
        highest = std::max(highest, IdNumber(p->ID));
        std::string key = p->ID;
        pasted.push_back(key);
        Doc.Points.Add(std::move(p), key);
      } catch (const std::exception& e) {
        skip[i] = 1;
        LeaveOut(i, records[i], Why(e));
      }
    }
  }
  NextObjectNumber = highest;
  for (const std::string& id : pasted)
    if (DocObject* o = GetObjectById(id))
      if (o->Selected) SelectObject(*o);
  TellAfterReading(held, "clipboard text");
}

}  // namespace vt
