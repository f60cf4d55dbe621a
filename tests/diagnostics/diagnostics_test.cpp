// What is left behind for whoever asks later why a run failed.
#include <filesystem>
#include <regex>

#include "agent/diagnostics/Screenshots.h"
#include "agent/diagnostics/ViewHierarchy.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "tests/elements/CommandScreen.h"
#include "tests/support/Files.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using headless::Button;
using headless::Label;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class Failures : public CommandScreen {
 protected:
  Failures() { use(folder_.path); }
  ~Failures() override { unsetenv("KIF_SCREENSHOTS"); }

  static void use(const fs::path& folder) { setenv("KIF_SCREENSHOTS", folder.c_str(), 1); }
  void failCommand() { EXPECT_THAT(answer(R"({"functionname":5})"), HasSubstr("exceptionmsg")); }
  // By name, which is by time.
  std::vector<fs::path> files() const {
    std::vector<fs::path> all(fs::directory_iterator(folder_.path), {});
    std::ranges::sort(all);
    return all;
  }

  const Folder folder_;
};

TEST_F(Failures, CommandThatRaisesLeavesPictureAndHierarchy) {
  add<Label>("Hello");
  failCommand();
  failCommand();
  const std::vector<fs::path> written = files();
  ASSERT_THAT(written, SizeIs(4));
  EXPECT_TRUE(std::regex_match(written[0].filename().string(),
                               std::regex(R"(\d{8}T\d{6}\.\d{3}Z-\d{4}-exceptionmsg\.jpg)")));
  EXPECT_EQ(written[0].stem(), written[1].stem());
  EXPECT_THAT(contents(written[0]), StartsWith("\xFF\xD8"));
  EXPECT_THAT(contents(written[1]), HasSubstr("functionname"));
  EXPECT_THAT(contents(written[1]), HasSubstr("\n  UILabel  100x40 at 10,10  \"Hello\""));
}

TEST_F(Failures, AreWrittenIntoTheDirectoryAndNowhereElse) {
  command({{"functionname", "findelements"}});
  use("/nonexistent/folder");
  failCommand();
  EXPECT_THAT(environment.log().lines(),
              Contains(StartsWith("Diagnostics: cannot write /nonexistent/folder/")));
  unsetenv("KIF_SCREENSHOTS");
  failCommand();
  EXPECT_THAT(files(), IsEmpty());
  use(folder_.path);
  complete(Diagnostics::recordFailure("../../" + std::string(500, 'x'), "why"));
  EXPECT_THAT(files(), SizeIs(2));
}

TEST_F(Failures, HierarchyIsALineAViewIndentedByDepth) {
  const auto box = add<headless::View>().hidden().get();
  headless::build<Button>("two\nlines").frame({{1, 2}, {30, 40}}).in(*box);
  const std::string text = Diagnostics::viewHierarchyText(window);
  EXPECT_THAT(text, StartsWith("UIWindow  "));
  EXPECT_THAT(text, HasSubstr("\n  UIView  100x40 at 10,10  hidden\n    UIButton  30x40 at 1,2  "
                              "\"two lines\"\n"));
  EXPECT_THAT(Diagnostics::viewHierarchyText(nullptr), IsEmpty());

  nest(*window, 10'000);
  EXPECT_THAT(Diagnostics::viewHierarchyText(window), HasSubstr("(10000) UIView"));
}

}  // namespace
}  // namespace tarni::test
