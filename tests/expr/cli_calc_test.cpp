// vantrel-cli calc: the lines it prints and its exit codes. Runs the program
// that the build puts beside this test.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

std::filesystem::path CliPath() {
  std::array<char, 4096> buf{};
  const ssize_t n = readlink("/proc/self/exe", buf.data(), buf.size() - 1);
  if (n <= 0) return {};
  return std::filesystem::path(std::string(buf.data(), static_cast<std::size_t>(n))).parent_path() /
         "vantrel-cli";
}

std::string Quote(const std::string& s) {
  std::string q = "'";
  for (char c : s) {
    if (c == '\'')
      q += "'\\''";
    else
      q += c;
  }
  return q + "'";
}

struct Result {
  int exitCode = -1;
  std::vector<std::string> lines;  // stdout
  std::string err;                 // stderr
};

Result RunCalc(const std::vector<std::string>& args) {
  Result r;
  const std::filesystem::path cli = CliPath();
  std::string cmd = Quote(cli.string()) + " calc";
  for (const std::string& a : args) cmd += " " + Quote(a);
  const std::string errFile = testing::TempDir() + "vt_calc_err.txt";
  cmd += " 2>" + Quote(errFile);
  FILE* p = popen(cmd.c_str(), "r");
  if (!p) return r;
  std::string out;
  std::array<char, 4096> buf{};
  std::size_t got;
  while ((got = fread(buf.data(), 1, buf.size(), p)) > 0) out.append(buf.data(), got);
  const int status = pclose(p);
  r.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  std::size_t start = 0;
  for (std::size_t nl; (nl = out.find('\n', start)) != std::string::npos; start = nl + 1)
    r.lines.push_back(out.substr(start, nl - start));
  if (FILE* e = std::fopen(errFile.c_str(), "r")) {
    while ((got = fread(buf.data(), 1, buf.size(), e)) > 0) r.err.append(buf.data(), got);
    std::fclose(e);
  }
  return r;
}

class CliCalc : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(CliPath())) GTEST_SKIP() << "vantrel-cli is not built beside the tests";
  }
};

using Lines = std::vector<std::string>;

TEST_F(CliCalc, CompilesEvaluatesAndPrintsEveryLine) {
  Result r = RunCalc({"sin(x)*x^2+1", "x=0.5"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.lines, (Lines{"prepared: sin(x)*x^2+1", "postfix: X SIN X 2 ^ * 1 + ", "compile: 0", "ok: 1",
                            "value: 1.119856 0x3F8F5774"}));
  // The formula is compiled as given; the prepared text is for information.
  r = RunCalc({"2x", "X=3"});
  EXPECT_EQ(r.lines, (Lines{"prepared: 2*x", "postfix: 2 X * ", "compile: 0", "ok: 1", "value: 6 0x40C00000"}));
  // Variables in the order given, names as given, first match wins.
  r = RunCalc({"b+1", "a=1", "B=2.5", "b=7"});
  EXPECT_EQ(r.lines.at(1), "postfix: B 1 + ");
  EXPECT_EQ(r.lines.at(4), "value: 3.5 0x40600000");
  r = RunCalc({"sin(x)", "x=90", "--deg"});
  EXPECT_EQ(r.lines.at(4), "value: 1 0x3F800000");
}

TEST_F(CliCalc, SyntaxErrors) {
  Result r = RunCalc({"1+"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.lines, (Lines{"prepared: 1+", "postfix: 1 ", "compile: 2 Operand expected"}));
  // A failure at position 0 reads as success: the evaluation still runs.
  r = RunCalc({"2 3"});
  EXPECT_EQ(r.lines, (Lines{"prepared: 2 3", "postfix: 2 ", "compile: 0 Operator expected", "ok: 1",
                            "value: 2 0x40000000"}));
  r = RunCalc({"q"});
  EXPECT_EQ(r.lines, (Lines{"prepared: q", "postfix: ", "compile: 0 Undefined symbol : 'q'", "ok: 0"}));
  r = RunCalc({""});
  EXPECT_EQ(r.lines, (Lines{"prepared: *", "postfix: ", "compile: 0", "ok: 0"}));
}

TEST_F(CliCalc, DomainErrorsAndFailures) {
  Result r = RunCalc({"log(x)", "x=0"});
  EXPECT_EQ(r.lines.at(3), "ok: 1");
  EXPECT_EQ(r.lines.at(4), "value: 0.12345 0x3DFCD35B");
  EXPECT_EQ(r.lines.size(), 5u);
  r = RunCalc({"log(x)", "x=0", "--report"});
  EXPECT_EQ(r.lines.at(3), "ok: 0");
  EXPECT_EQ(r.lines.at(4), "error: The parameter of function LOG must be larger than 0.");
  EXPECT_EQ(r.lines.size(), 5u);
  // CTANH has no message even when reporting: a silent break.
  r = RunCalc({"ctanh(0)", "--report"});
  EXPECT_EQ(r.lines.at(4), "value: 0.12345 0x3DFCD35B");
  r = RunCalc({"exp(100)"});
  EXPECT_EQ(r.lines.at(3), "ok: 0");
  EXPECT_EQ(r.lines.at(4), "error: overflow");
}

TEST_F(CliCalc, Derivative) {
  Result r = RunCalc({"x^2*y", "x=2", "y=3", "--derive", "x"});
  ASSERT_EQ(r.lines.size(), 7u);
  EXPECT_EQ(r.lines.at(5), "derivative: 2*x*y");
  EXPECT_EQ(r.lines.at(6), "derivative-value: 12 0x41400000");
  r = RunCalc({"x^2*y", "--derive", "Y"});
  EXPECT_EQ(r.lines.back(), "derivative: x^2");
  r = RunCalc({"abs(x)", "x=1", "--derive", "x"});
  EXPECT_EQ(r.lines.back(), "derivative-error: Can not find derivative of abs");
  r = RunCalc({"x+", "x=1", "--derive", "x"});
  EXPECT_EQ(r.lines.back(), "derivative-error: Lack of parameter at 3");
  // The other variables of the command line are constants, in any case.
  r = RunCalc({"K*sin(x)", "X=1", "K=2", "--derive", "X"});
  ASSERT_EQ(r.lines.size(), 7u);
  EXPECT_EQ(r.lines.at(6).rfind("derivative-value: ", 0), 0u);
  EXPECT_NEAR(std::stod(r.lines.at(6).substr(18)), 2 * std::cos(1.0), 1e-6);
  r = RunCalc({"k*x", "x=1", "--derive", "x"});
  EXPECT_EQ(r.lines.back(), "derivative-error: Expression is illegal.");
}

TEST_F(CliCalc, WrongCommandLines) {
  for (const Lines& args : {Lines{}, Lines{"x", "a"}, Lines{"x", "=1"}, Lines{"x", "x=abc"},
                            Lines{"x", "--bogus"}, Lines{"x", "--derive"}}) {
    Result r = RunCalc(args);
    EXPECT_EQ(r.exitCode, 2) << (args.empty() ? "" : args.back());
    EXPECT_TRUE(r.lines.empty());
    EXPECT_NE(r.err.find("usage: vantrel-cli calc"), std::string::npos);
  }
  // After "--" everything is positional: a formula may begin with dashes.
  Result r = RunCalc({"--", "-x", "x=2"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.lines.at(4), "value: -2 0xC0000000");
}

}  // namespace
