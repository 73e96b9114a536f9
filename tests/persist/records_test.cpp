#include <gtest/gtest.h>

#include "persist/record.h"
#include "support/fixtures.h"

namespace vt {
namespace {

// Texts the "@" frame carries are written as before, byte for byte; every
// other text is escaped; both read back exactly, and the field after them too.
TEST(RecordText, EveryTextReadsBackAndOrdinaryOnesKeepTheFrame) {
  std::string thirty = "w", words31 = "w";
  for (int i = 0; i < 30; ++i) thirty += " w";
  for (int i = 0; i < 31; ++i) words31 += " w";
  const struct {
    std::string text;
    std::string written;  // "" when escaped
  } cases[] = {
      {"a b", "@a b@"},         {"", "@@"},         {" x", "@ x@"},      {"x ", "@x @"},
      {"a  b", "@a  b@"},       {"@", "@@@"},       {"a b@", "@a b@@"},  {"x;", "@x;@"},
      {"caf\xc3\xa9", "@caf\xc3\xa9@"}, {"50%", "@50%@"}, {thirty, "@" + thirty + "@"},
      {words31, ""},            {"a@ b", ""},       {"@ b", ""},          {"a @ b", ""},
      {"a;;b", ""},             {";;", ""},         {"two\nlines", ""},   {"cr\r\nlf\t", ""},
      {"% 20", "@% 20@"},       {"a@  ;; %41 @", ""},
  };
  for (const auto& c : cases) {
    RecordWriter w("TT0001");
    w.AddFramed(c.text).Add(7).AddText(c.text);
    const std::string rec = w.Close();
    if (!c.written.empty()) EXPECT_EQ(Framed(c.text), c.written);
    else EXPECT_EQ(Framed(c.text)[0], '%') << c.text;
    std::vector<std::string_view> recs = SplitRecords(rec);
    ASSERT_EQ(recs.size(), 1u) << c.text;
    RecordReader r(recs[0]);
    EXPECT_EQ(r.FramedText(), c.text);
    EXPECT_EQ(r.Int(), 7) << c.text;
    EXPECT_EQ(r.FramedText(), c.text);
    EXPECT_TRUE(r.AtEnd()) << c.text;
  }
  // One plain word is written bare; a stray "%" of a hand-made file stays.
  EXPECT_EQ(TextField("File-Open"), "File-Open");
  EXPECT_EQ(UnescapeText("%50%%2x%2"), "50%%2x%2");
  // An old file's word ending in "@" still closes the frame where it did.
  RecordReader old("NT0001 @a@ b@ 5");
  EXPECT_EQ(old.FramedText(), "a");
}

TEST(RecordReader, NumbersIdsMissingFieldsAndTheSplit) {
  RecordReader r("LN0003 PT0001 @PT0002@ 1.5 -1 0 x", 40);
  EXPECT_EQ(r.OwnId(), "LN0043");
  EXPECT_EQ(r.Id(), "PT0041");
  EXPECT_EQ(r.FramedId(), "PT0042");
  EXPECT_FLOAT_EQ(r.Single(), 1.5f);
  EXPECT_TRUE(r.Bool() && !r.Bool());
  EXPECT_THROW(r.Single(), RecordError);  // "x"
  EXPECT_THROW(r.Text(), RecordError);    // nothing left
  RecordReader big("PT0001 70000");
  EXPECT_THROW(big.Short(), RecordError);
  // Records end in double semicolons; line ends between records are
  // dropped, and an unclosed last record is still given.
  auto recs = SplitRecords("GL Ver3.00 1 0 0 0 0;;PT0001 a;;\r\nPT0002 b;;");
  ASSERT_EQ(recs.size(), 3u);
  EXPECT_TRUE(recs[0] == "GL Ver3.00 1 0 0 0 0" && recs[2] == "PT0002 b");
  EXPECT_TRUE(SplitRecords("").empty());
  EXPECT_EQ(SplitRecords("PT0001 cut").size(), 1u);
}

}  // namespace
}  // namespace vt
