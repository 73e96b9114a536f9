#include <gtest/gtest.h>

#include <utility>
#include <string>

#include "document/numtext.h"

namespace vt {
namespace {

TEST(SingleToText, PlainAndExponentFormsReadBackToTheSameText) {
  const std::pair<float, const char*> cases[] = {
      {0.0f, "0"}, {-0.0f, "0"} /* no negative zero in a document */, {1.0f, "1"}, {-2.5f, "-2.5"}, {0.1f, "0.1"},
      {1.0f / 3.0f, "0.3333333"}, {1234567.0f, "1234567"} /* all 7 digits */, {9999999.0f, "9999999"},
      {10000000.0f, "1E+07"}, {12345678.0f, "1.234568E+07"}, {1.234568e-5f, "1.234568E-05"}, {0.0001f, "0.0001"},
      {0.00001f, "1E-05"}, {3.4028235e38f, "3.402823E+38"}, {0.12345f, "0.12345"}, {123.456f, "123.456"},
      {-7.25e-6f, "-7.25E-06"}, {6.2832f, "6.2832"}, {1e20f, "1E+20"}, {16777217.0f, "1.677722E+07"}};
  for (const auto& [v, text] : cases) {
    EXPECT_EQ(SingleToText(v), text) << text;
    float back = 0;
    ASSERT_TRUE(TextToSingle(text, back)) << text;
    EXPECT_EQ(SingleToText(back), text);
  }
}

TEST(TextToNumber, StrictFields) {
  float f = 0;
  const std::pair<const char*, float> good[] = {{"1.5", 1.5f},  {" -2 ", -2.0f}, {"1E+07", 1e7f},
                                                {"1.234568E-05", 1.234568e-5f}, {".5", 0.5f}, {"+3", 3.0f},
                                                {"1e-50", 0.0f} /* underflow reads as zero */};
  for (const auto& [text, v] : good) EXPECT_TRUE(TextToSingle(text, f) && f == v) << text;
  // The period is the decimal mark; 1e39 is beyond a single.
  for (const char* bad : {"", "abc", "1x", "1,5", "1E", ".", "1e39"}) EXPECT_FALSE(TextToSingle(bad, f)) << bad;
  long n = 0;
  const std::pair<const char*, long> longs[] = {{"42", 42}, {"2.5", 2} /* half to even */, {"3.5", 4}};
  for (const auto& [text, v] : longs) EXPECT_TRUE(TextToLong(text, n) && n == v) << text;
  EXPECT_FALSE(TextToLong("9999999999", n));
  bool b = false;
  for (const auto& [text, v] : {std::pair{"-1", true}, {"0", false}, {"True", true}})
    EXPECT_TRUE(TextToBool(text, b) && b == v) << text;
  EXPECT_FALSE(TextToBool("yes", b));
}

TEST(TextToNumber, ValTakesTheLeadingNumber) {
  EXPECT_DOUBLE_EQ(Val("12abc"), 12.0);
  EXPECT_DOUBLE_EQ(Val("  -1.5e2x"), -150.0);
  EXPECT_DOUBLE_EQ(Val("1 2 3"), 123.0);
  EXPECT_DOUBLE_EQ(Val("abc"), 0.0);
  EXPECT_DOUBLE_EQ(Val("2e"), 2.0);
  EXPECT_DOUBLE_EQ(Val(""), 0.0);
  EXPECT_DOUBLE_EQ(Val("0." + std::string(400, '0') + "1"), 0.0);  // too small: zero
  EXPECT_GT(Val("1" + std::string(400, '0')), 1e300);                 // too large: the largest
  double d = 1;
  EXPECT_TRUE(TextToDouble("0.000" + std::string(400, '0') + "5", d));
  EXPECT_EQ(d, 0.0);
  EXPECT_FALSE(TextToDouble("12" + std::string(400, '0'), d));
  // Exponents beyond what a long holds (a damaged note record once overflowed
  // the exponent arithmetic).
  EXPECT_FALSE(TextToDouble("88888888888888888888E+99999999999999999999999", d));
  d = 1;
  EXPECT_TRUE(TextToDouble("0.5E-99999999999999999999999", d));
  EXPECT_EQ(d, 0.0);
  bool b = false;
  EXPECT_FALSE(TextToBool("8" + std::string(60, '8') + "E+9" + std::string(30, '9'), b));
}

TEST(FormatPatterns, DecimalsAndRounding) {
  EXPECT_EQ(FormatDecimals(5.0, 0), "5.");
  const struct {
    double v;
    const char *pattern, *text;
  } cases[] = {
      {5.0, "0.", "5."}, {5.0, "0", "5"}, {3.14159, "0.00", "3.14"},
      {2.5, "0.", "3."},                          // a display rounds ties up
      {0.125, "0.00", "0.13"},                    // exact tie in binary
      {2.675f, "0.00", "2.67"},                   // 2.675f lies just below the tie
      {-1.005, "0.00", "-1.00"}, {-0.001, "0.00", "0.00"},  // no "-0.00"
      {9.999, "0.00", "10.00"},  {0.5, "0.000", "0.500"}, {1e7, "0.0", "10000000.0"}, {-2.5, "0.", "-3."}};
  for (const auto& c : cases) EXPECT_EQ(FormatPattern(c.v, c.pattern), c.text) << c.v << " " << c.pattern;
}

TEST(Rounding, HalfToEvenAndWholeParts) {
  for (const auto& [v, r] : {std::pair{0.5, 0.0}, {1.5, 2.0}, {2.5, 2.0}, {-2.5, -2.0}, {1.4, 1.0}})
    EXPECT_EQ(RoundHalfEven(v), r) << v;
  EXPECT_EQ(RoundToLong(-3.5), -4);
  EXPECT_TRUE(IntPart(-1.5) == -2.0 && FixPart(-1.5) == -1.0);
  EXPECT_EQ(ZeroPad(42, 4) + " " + ZeroPad(12345, 4), "0042 12345");
}

}  // namespace
}  // namespace vt
