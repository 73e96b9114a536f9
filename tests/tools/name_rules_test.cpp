#include "tools/name_rules.h"

#include <gtest/gtest.h>

#include "document/host.h"

namespace vt {
namespace {

TEST(ParameterName, AcceptsCapitalFirstThenLettersDigitsUnderscore) {
  std::string name = "  A1_b \t";
  EXPECT_EQ(ParameterNameError(name), "");
  EXPECT_EQ(name, "A1_b");
}

TEST(ParameterName, RefusesEachRuleWithItsMessage) {
  std::string empty = "   ";
  EXPECT_EQ(ParameterNameError(empty), "Please input the name. ");
  std::string lower = "a1";
  EXPECT_EQ(ParameterNameError(lower),
            "The name is invalid, the first letter must be written in capitals. ");
  std::string dash = "A-1";
  EXPECT_EQ(ParameterNameError(dash).rfind("The name is invalid, invalid character exists.", 0), 0u);
  std::string digitFirst = "1A";
  EXPECT_NE(ParameterNameError(digitFirst), "");
}

}  // namespace
}  // namespace vt
