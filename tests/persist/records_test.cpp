#include <gtest/gtest.h>

#include "persist/record.h"
#include "support/fixtures.h"

namespace vt {
namespace {

TEST(RecordReader, FramedTextsKeepBlanksButNotAWordEndingInAt) {
  RecordReader r("NT0001 @a b@ 5");
  EXPECT_EQ(r.FramedText(), "a b");
  EXPECT_EQ(r.Int(), 5);

  // "a@ b" closes after its first word: the rest is read as the next field.
  RecordReader bad("NT0001 @a@ b@ 5");
  EXPECT_EQ(bad.FramedText(), "a");
  EXPECT_THROW(bad.Int(), RecordError);

  RecordReader empty("PT0001 @@ 1");
  EXPECT_EQ(empty.FramedText(), "");
  EXPECT_EQ(empty.Int(), 1);

  RecordReader lead("PT0001 @ x@ 1");  // a text starting with a blank
  EXPECT_EQ(lead.FramedText(), " x");
  EXPECT_EQ(lead.Int(), 1);

  RecordReader plain("PT0001 word 1");  // a field without the frame is taken as is
  EXPECT_EQ(plain.FramedText(), "word");
}

TEST(RecordReader, AFramedTextTakesAtMostThirtyBlanks) {
  std::string thirty = "@w";
  for (int i = 0; i < 30; ++i) thirty += " w";
  thirty += "@";
  RecordReader ok("TT0001 " + thirty + " 7");
  EXPECT_EQ(ok.FramedText(), thirty.substr(1, thirty.size() - 2));
  EXPECT_EQ(ok.Int(), 7);

  std::string tooMany = "@w";
  for (int i = 0; i < 31; ++i) tooMany += " w";
  tooMany += "@";
  RecordReader cut("TT0001 " + tooMany + " 7");
  std::string got = cut.FramedText();
  EXPECT_NE(got, tooMany.substr(1, tooMany.size() - 2));
  EXPECT_EQ(cut.Text(), "w@");  // the reader goes on after the 30th blank
}

TEST(RecordReader, NumbersIdsAndMissingFields) {
  RecordReader r("LN0003 PT0001 @PT0002@ 1.5 -1 0 x", 40);
  EXPECT_EQ(r.OwnId(), "LN0043");
  EXPECT_EQ(r.Id(), "PT0041");
  EXPECT_EQ(r.FramedId(), "PT0042");
  EXPECT_FLOAT_EQ(r.Single(), 1.5f);
  EXPECT_TRUE(r.Bool());
  EXPECT_FALSE(r.Bool());
  EXPECT_THROW(r.Single(), RecordError);  // "x"
  EXPECT_THROW(r.Text(), RecordError);    // nothing left
  RecordReader big("PT0001 70000");
  EXPECT_THROW(big.Short(), RecordError);
}

TEST(RecordSplit, RecordsEndInDoubleSemicolons) {
  auto recs = SplitRecords("GL Ver3.00 1 0 0 0 0;;PT0001 a;;\r\nPT0002 b;;");
  ASSERT_EQ(recs.size(), 3u);
  EXPECT_EQ(recs[0], "GL Ver3.00 1 0 0 0 0");
  EXPECT_EQ(recs[2], "PT0002 b");  // line ends between records are dropped
  EXPECT_TRUE(SplitRecords("").empty());
  EXPECT_EQ(SplitRecords("PT0001 cut").size(), 1u);  // an unclosed last record is still given
}

TEST(RecordWriter, FieldsJoinedByOneBlank) {
  RecordWriter w("PT0001");
  w.Add(1.5f).Add(3).AddFramed("a b").Add(true).Add("");
  EXPECT_EQ(w.Close(), "PT0001 1.5 3 @a b@ 1 ;;");
}

}  // namespace
}  // namespace vt
