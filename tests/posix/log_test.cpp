#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

#include "backends/posix/SystemLog.h"
#include "tests/posix/Immortal.h"

namespace tarni::test {
namespace {

// What a destination was given, and a gate that holds it up.
struct Journal {
  std::mutex gate;
  std::vector<std::string> lines;
};

class JournalDestination : public posix::LogDestination {
 public:
  explicit JournalDestination(Journal& journal) : journal_(journal) {}
  void write(double time, std::string_view line) override {
    const std::lock_guard lock(journal_.gate);
    EXPECT_GT(time, 1.7e9);
    journal_.lines.emplace_back(line);
  }
  void flush() override {}

 private:
  Journal& journal_;
};

class LogTest : public testing::Test {
 protected:
  ~LogTest() override { std::filesystem::remove(path_); }

  std::vector<std::string> fileLines() const {
    std::ifstream file(path_);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }

  Journal& journal_ = immortal<Journal>();
  posix::SystemLog& log_ =
      immortal<posix::SystemLog>(std::make_unique<JournalDestination>(journal_));
  const std::string path_ =
      (std::filesystem::temp_directory_path() / ("tarni-log-" + std::to_string(getpid()))).string();
};

TEST_F(LogTest, AStuckDestinationHoldsUpNobodyAndTheLossIsCounted) {
  constexpr int kLines = 4000;
  const std::string line(1000, 'x');
  {
    const std::lock_guard stuck(journal_.gate);
    log_.write("first");
    for (int i = 0; i < kLines; ++i) log_.write(line);
    EXPECT_FALSE(log_.flush(0.01));
  }
  EXPECT_TRUE(log_.flush(20));
  log_.write("last");
  EXPECT_TRUE(log_.flush(20));
  int dropped = 0;
  int kept = 0;
  for (const std::string& written : journal_.lines) {
    if (written == line) ++kept;
    if (written.ends_with(" log lines dropped")) dropped += std::stoi(written);
  }
  EXPECT_GT(dropped, 0);
  EXPECT_EQ(kept + dropped, kLines);
  EXPECT_EQ(journal_.lines.back(), "last");
}

TEST_F(LogTest, AFileGetsOneLineEachAppended) {
  std::ofstream(path_) << "before\n";
  const auto file = posix::openLogDestination(path_);
  file->write(1'700'000'000.25, "two\r\nlines\x01\x7F\u009B\u202E\u2066");
  file->flush();
  const std::vector<std::string> lines = fileLines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], "before");
  EXPECT_THAT(lines[1],
              testing::MatchesRegex(
                  R"([0-9]{2}:[0-9]{2}:[0-9]{2}\.250 tarni\[[0-9]+\]: two\\r\\nlines\?\?\?\?\?)"));
}

TEST_F(LogTest, AFileIsForItsUserAloneAndNoLinkThatSomebodyElseLaid) {
  const auto writeTo = [](const std::string& path) {
    const auto log = posix::openLogDestination(path);
    log->write(0, "secret");
    log->flush();
  };
  std::filesystem::remove(path_);
  writeTo(path_);
  EXPECT_EQ(std::filesystem::status(path_).permissions(), std::filesystem::perms{0600});
  const std::string link = path_ + ".link";
  std::filesystem::create_symlink(path_, link);
  writeTo(link);
  EXPECT_EQ(fileLines().size(), 2U);
  constexpr uid_t kNobody = 65534;
  if (lchown(link.c_str(), kNobody, kNobody) == 0) {
    writeTo(link);
    EXPECT_EQ(fileLines().size(), 2U);
  }
  std::filesystem::remove(link);
}

// The process that exits is started anew with this one's environment, and so knows the file.
TEST_F(LogTest, WhatWaitsAtExitIsStillWritten) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  setenv("TARNI_TEST_LOG", path_.c_str(), 0);
  const auto logAndExit = [] {
    setenv("TARNI_LOG", std::getenv("TARNI_TEST_LOG"), 1);
    auto& log = immortal<posix::SystemLog>();
    for (int i = 0; i < 100; ++i) log.write("line " + std::to_string(i));
    std::exit(0);
  };
  EXPECT_EXIT(logAndExit(), testing::ExitedWithCode(0), "");
  const std::vector<std::string> lines = fileLines();
  ASSERT_EQ(lines.size(), 100U);
  EXPECT_THAT(lines.back(), testing::EndsWith("]: line 99"));
}

}  // namespace
}  // namespace tarni::test
