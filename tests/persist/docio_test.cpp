#include <gtest/gtest.h>

#include <fstream>

#include "document/document.h"
#include "document/globals.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "render/view_state.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using test::DocumentTest;
using test::TempDir;

std::string PointRecord(const std::string& id, float x, float y, const std::string& label) {
  Position p(x, y, 0);
  p.ID = id;
  p.PLabel = label;
  p.ptype = 1;
  return p.Save();
}

std::string WriteRaw(const TempDir& dir, const std::string& name, const std::string& bytes) {
  std::string path = dir.path(name);
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

// ---- reading -------------------------------------------------------------------------

TEST_F(DocumentTest, NextNumberFollowsTheHighestRecord) {
  std::string text = "GL Ver3.00 1 0 0 0 0;;" + PointRecord("PT0003", 1, 1, "A") + "XX0042 future;;" +
                     PointRecord("PT0007", 2, 2, "B");
  EXPECT_FALSE(OpenDocumentText(text));  // the unknown record is left out
  EXPECT_EQ(Doc.Points.count(), 2);
  EXPECT_EQ(NewObjectId("PT"), "PT0043");  // but its number counts
  EXPECT_EQ(LastPointLabel, "B");
}

// A damaged record in the middle costs only itself: what stands after it is
// read, a reference to it stays empty, and the user is told once (undo stays
// quiet).
TEST_F(DocumentTest, ADamagedRecordCostsOnlyItself) {
  const std::string head = "GL Ver3.00 2 1 0 0 0;;" + PointRecord("PT0001", 1, 1, "A");
  const std::string tail = PointRecord("PT0003", 2, 2, "B") +
                           "TT0004 10 20 0 1 @after it@ 0 @Arial@ 12 0;;NT0005 0 5 5 2 VAR01 @2@ @1@ @k@ 0 0;;";
  const struct {
    const char* what;
    std::string record;
    int lost;
  } cases[] = {
      {"blank record", " ;;", 0},
      {"bad id", "ZZ12AB 1 2 3;;", 1},
      {"unknown tag", "XX0002 from a later version;;", 1},
      {"short point", "PT0002 1 2;;", 1},
      {"short line", "LN0002 PT0001;;", 1},
      {"short text", "TT0002 1 2 0 1 @a@ 0 @Arial@;;", 1},
      {"non-number field", PointRecord("PT0002", 1, 1, "C").replace(7, 1, "zz"), 1},
      {"label never closes", "PT0002 1 2 3 1 2 255 0 1 1 @A 0 0 0 99;;", 1},
      {"scene", "GL Ver3.00 x;;", 1},
  };
  for (const auto& c : cases) {
    for (bool undo : {false, true}) {
      ResetGlobals();
      host_.messages.clear();
      const std::string text = head + c.record + tail;
      if (undo) OpenUnRe(text);
      else EXPECT_EQ(OpenDocumentText(text), c.lost == 0) << c.what;
      EXPECT_EQ(LastReadDamage().records, c.lost) << c.what;
      EXPECT_TRUE(Doc.Points.count() == 2 && Doc.Notes.count() == 1 && SceneMode == (undo ? 0 : 3)) << c.what;
      ASSERT_EQ(Doc.Texts.count(), 1) << c.what;
      EXPECT_EQ(Doc.Texts.Item(1)->Content, "after it");
      // One message when opened (undo stays quiet).
      EXPECT_EQ(host_.LastMessage(), !undo && c.lost ? "1 record of the document could not be read and was left out." : "")
          << c.what;
      EXPECT_LE(host_.messages.size(), 1u);
    }
  }
  ResetGlobals();
  OpenDocumentText(head + "PT0002 1;;ZZ;;" + tail);
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].text, "2 records of the document could not be read and were left out.");
  ASSERT_EQ(LastReadDamage().lines.size(), 2u);
  EXPECT_EQ(LastReadDamage().lines[0], "record 3 (PT0002): the record is cut short");

  // Paste: the damaged point is left out, the rest pasted, the user told.
  ResetGlobals();
  host_.messages.clear();
  PasteRecords(PointRecord("PT0001", 1, 1, "A") + "PT0002 x;;" + PointRecord("PT0003", 2, 2, "B") +
               "LN0004 PT0001;;");
  EXPECT_EQ(Doc.Points.count(), 2);
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].text, "2 records of the clipboard text could not be read and were left out.");
}

TEST_F(DocumentTest, AFailedOpenKeepsTheOldDocument) {
  AddPoint(1, 1, 0, "A");
  TempDir dir;
  const std::string before = GetUndoVar();
  std::string cut = EncodeDocumentFrame("GL Ver3.00 1 0 0 0 0;;" + PointRecord("PT0001", 1, 1, "A") +
                                        PointRecord("PT0002", 2, 2, "B"));
  cut.resize(cut.size() - 10);  // the file ends before its frame does
  std::string got;
  EXPECT_FALSE(DecodeDocumentFrame(cut, got));
  EXPECT_FALSE(OpenFile(dir.path("missing.vtd")));
  EXPECT_FALSE(OpenFile(""));
  EXPECT_FALSE(OpenFile(WriteRaw(dir, "junk.vtd", "not a document")));
  EXPECT_FALSE(OpenFile(WriteRaw(dir, "short.vtd", std::string("\x08", 1))));
  EXPECT_FALSE(OpenFile(WriteRaw(dir, "cut.vtd", cut)));
  EXPECT_EQ(GetUndoVar(), before);
}

TEST_F(DocumentTest, UndoTextKeepsTheViewAndTheLabel) {
  SceneMode = 1;
  View.VolWidth = 77;
  LastPointLabel = "Q";
  OpenUnRe("GL Ver3.00 1 1 0 0 0;;" + PointRecord("PT0001", 1, 1, "A"));
  EXPECT_TRUE(LastPointLabel == "Q" && SceneMode == 1 && View.VolWidth == 77 && ShowAxis);
  EXPECT_EQ(Doc.Points.count(), 1);
  // Whatever was selected before is gone.
  SelectObject(*Doc.Points.Item(1));
  OpenUnRe(GetUndoVar());
  EXPECT_EQ(Sel.Points.count(), 0);
}

// ---- files ----------------------------------------------------------------------------

TEST(DocumentFrame, ShortTextsKeepThePlainFrameLongOnesTheExtendedLength) {
  EXPECT_EQ(EncodeDocumentFrame("GL;;"), std::string("\x08\x00\x04\x00GL;;", 8));
  std::string text;
  EXPECT_FALSE(DecodeDocumentFrame(std::string("\x09\x00\x04\x00GL;;", 8), text));
  for (size_t n : {size_t(4), size_t(65534), size_t(65535), size_t(200000)}) {
    const std::string bytes = EncodeDocumentFrame(std::string(n, 'x'));
    EXPECT_EQ(bytes.size(), n + (n < 65535 ? 4 : 8)) << n;
    ASSERT_TRUE(DecodeDocumentFrame(bytes, text));
    EXPECT_EQ(text, std::string(n, 'x'));
  }
  // Old one-byte texts become UTF-8; UTF-8 stays untouched.
  ASSERT_TRUE(DecodeDocumentFrame(EncodeDocumentFrame(std::string("@Caf\xe9@", 6)), text));
  EXPECT_EQ(text, "@Caf\xc3\xa9@");
  ASSERT_TRUE(DecodeDocumentFrame(EncodeDocumentFrame("\xc3\xa9t\xc3\xa9"), text));
  EXPECT_EQ(text, "\xc3\xa9t\xc3\xa9");
}

// A text that is no UTF-8 (pasted from another program, or handed to the undo
// reader) is read as Windows-1252 like an old file, so that what the document
// holds survives a save and an open unchanged. A byte of 0xDB in a label once
// came back as two bytes after the save.
TEST_F(DocumentTest, TextThatIsNoUtf8IsReadAsTheOldCodePage) {
  // The writer escapes bytes that are no UTF-8, so the raw byte is put in by hand.
  auto raw = [](std::string record, const std::string& label) {
    return record.replace(record.find("@#@"), 3, "@" + label + "@");
  };
  const std::string text = "GL Ver3.00 1 1 1 0 0;;" + raw(PointRecord("PT0001", 1, 2, "#"), "K\xdb");
  OpenUnRe(text);
  ASSERT_EQ(Doc.Points.count(), 1);
  EXPECT_EQ(Doc.Points.Item(1)->PLabel, "K\xc3\x9b");
  const std::string written = GetUndoVar();
  std::string back;
  ASSERT_TRUE(DecodeDocumentFrame(EncodeDocumentFrame(written), back));
  EXPECT_EQ(back, written);

  ResetGlobals();
  SceneMode = 1;
  PasteRecords(raw(PointRecord("PT0001", 3, 4, "#"), "M\x80"));
  ASSERT_EQ(Doc.Points.count(), 1);
  EXPECT_EQ(Doc.Points.Item(1)->PLabel, "M\xe2\x82\xac");  // the euro sign
}

}  // namespace
}  // namespace vt
