// What a link from a document may open: addresses and files shown by the
// desktop, never programs, scripts or desktop entries; the question asked
// once per document.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "document/frame_commands.h"
#include "document/globals.h"
#include "support/fixtures.h"
#include "tools/link_safety.h"

namespace vt::test {
namespace {

class LinkSafetyTest : public DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    ResetLinkTrust();
  }
  std::string File(const std::string& name, const std::string& content, bool executable = false) {
    const std::string p = dir_.path(name);
    std::ofstream(p, std::ios::binary) << content;
    if (executable) std::filesystem::permissions(p, std::filesystem::perms::owner_all);
    return p;
  }
  TempDir dir_;
};

TEST_F(LinkSafetyTest, AddressesAndShownFilesPassProgramsAndScriptsDoNot) {
  EXPECT_EQ(ClassifyLink("https://example.org/a?b=c"), LinkKind::WebAddress);
  EXPECT_EQ(ClassifyLink("HTTP://example.org"), LinkKind::WebAddress);
  EXPECT_EQ(ClassifyLink("www.example.org"), LinkKind::WebAddress);
  EXPECT_EQ(ClassifyLink("mailto:someone@example.org"), LinkKind::MailAddress);
  EXPECT_EQ(ClassifyLink("file:///bin/sh"), LinkKind::Refused);
  EXPECT_EQ(ClassifyLink("javascript:alert(1)"), LinkKind::Refused);
  EXPECT_EQ(ClassifyLink("ssh://host"), LinkKind::Refused);
  EXPECT_EQ(ClassifyLink(""), LinkKind::Missing);
  EXPECT_EQ(ClassifyLink(dir_.path("none.pdf")), LinkKind::Missing);

  EXPECT_EQ(ClassifyLink(File("notes.txt", "plain words")), LinkKind::Document);
  EXPECT_EQ(ClassifyLink(File("photo.PNG", "\x89PNG....")), LinkKind::Document);
  EXPECT_EQ(ClassifyLink(File("run.sh", "#!/bin/sh\n", true)), LinkKind::Refused);
  EXPECT_EQ(ClassifyLink(File("app.desktop", "[Desktop Entry]\nExec=sh\n")), LinkKind::Refused);
  EXPECT_EQ(ClassifyLink(File("tool", "\x7f" "ELF....", true)), LinkKind::Refused);
  // A script dressed as a document, or a document with the execute bit.
  EXPECT_EQ(ClassifyLink(File("readme.txt", "#!/bin/sh\nrm -rf ~\n")), LinkKind::Refused);
  EXPECT_EQ(ClassifyLink(File("odd.pdf", "%PDF-1.4", true)), LinkKind::Refused);
  EXPECT_EQ(ClassifyLink(dir_.dir()), LinkKind::Refused);
  // A link whose shown name is a picture but which leads to a script.
  const std::string target = File("go.sh", "#!/bin/sh\n", true);
  std::filesystem::create_symlink(target, dir_.path("pretty.png"));
  EXPECT_EQ(ClassifyLink(dir_.path("pretty.png")), LinkKind::Refused);
}

TEST_F(LinkSafetyTest, TheFirstOpeningOfADocumentAsksOnce) {
  const std::string pic = File("a.jpg", "\xff\xd8\xff");
  CurrentFilePath = "/somewhere/lesson.vtd";
  host_.msgAnswers = {MsgResult::No};
  EXPECT_FALSE(OpenLinkSafely(pic));
  EXPECT_TRUE(host_.openedPaths.empty());
  EXPECT_EQ(host_.messages.size(), 1u);
  host_.msgAnswers = {MsgResult::Yes};
  EXPECT_TRUE(OpenLinkSafely(pic));
  EXPECT_TRUE(OpenLinkSafely("www.example.org"));
  EXPECT_EQ(host_.messages.size(), 2u);
  ASSERT_EQ(host_.openedPaths.size(), 2u);
  EXPECT_EQ(host_.openedPaths[1], "http://www.example.org");
  // Another document asks again.
  CurrentFilePath = "/elsewhere/other.vtd";
  host_.msgAnswers = {MsgResult::Yes};
  EXPECT_TRUE(OpenLinkSafely("mailto:a@b.c"));
  EXPECT_EQ(host_.messages.size(), 3u);
}

TEST_F(LinkSafetyTest, RefusedAndMissingTargetsSayWhyWithoutAsking) {
  EXPECT_FALSE(OpenLinkSafely(File("x.sh", "echo", true)));
  EXPECT_EQ(host_.LastMessage(), kLinkRefused);
  EXPECT_FALSE(OpenLinkSafely(dir_.path("gone.pdf")));
  EXPECT_EQ(host_.LastMessage(), kLinkMissing);
  EXPECT_EQ(host_.messages.size(), 2u);
  EXPECT_TRUE(host_.openedPaths.empty());
}

TEST_F(LinkSafetyTest, RelativePathsStandUnderTheProgramsFolder) {
  const std::string saved = SystemFolder;
  SystemFolder = "/opt/prog";
  EXPECT_EQ(ResolveButtonPath("\\Tutorials\\T0.vtd", 2), "/opt/prog/Tutorials/T0.vtd");
  SystemFolder = saved;
  EXPECT_EQ(ResolveButtonPath("/data/a.vtd", 1), "/data/a.vtd");
  EXPECT_FALSE(OpenSampleDocument(File("b.txt", "GL Ver3.00 1 0 0 0 0;;")));
  EXPECT_EQ(host_.LastMessage(), kSampleRefused);
}

}  // namespace
}  // namespace vt::test
