// What skypost-status makes of the status pages: each counts once, and nothing in them is trusted.

#include "status/history.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/paths.h"
#include "support/appliance_folder.h"
#include "support/golden.h"
#include "support/locked_file.h"

namespace skypost::testing {
namespace {

struct status_pages {
  // What skypost-status leaves of these pages, which have blanks for tabs and "_" for blanks.
  std::string after(const std::string& run_page, const std::string& rapid_fire_page = "") {
    appliance.write(STATUS_PATH, with_tabs(run_page));
    appliance.write(RAPID_FIRE_STATUS_PATH, with_tabs(rapid_fire_page));
    return look();
  }
  std::string look() {
    std::fill(std::begin(records), std::end(records), status_record());
    EXPECT_EQ(read_status(records, at_work), 0);
    is_kept = keep_status(records) == 0;
    return replaced(replaced(history(), " ", "_"), "\t", " ");
  }
  std::string history() const { return appliance.read(HISTORY_PATH); }
  static std::string with_tabs(const std::string& text) {
    return replaced(replaced(text, " ", "\t"), "_", " ");
  }

  appliance_folder appliance;
  status_records records;
  status_at_work at_work{};
  bool is_kept = false;
};

class StatusHistory : public ::testing::Test, protected status_pages {};

// "$ run LINE / LINE" is a page, with a blank for each tab; what follows is the history. A page that is read again changes
// nothing.
TEST(StatusHistorySession, MatchesTheGoldenText) {
  std::optional<status_pages> pages;
  expect_session("tools/golden/history", [&](const std::string& line) {
    if (line.starts_with('#')) pages.emplace();
    if (!line.starts_with('$')) return std::string();
    const bool is_run = line.starts_with("$ run");
    const std::string page = replaced(line.substr(is_run ? 6 : 8), " / ", "\n");
    const std::string end = page.empty() || page.ends_with("...") ? "" : "\n";
    const std::string found =
        is_run ? pages->after(replaced(page, "...", "") + end) : pages->after("", page + end);
    EXPECT_EQ(pages->look(), found);
    return found;
  });
}

// The rest of a longer history that is being replaced.
TEST_F(StatusHistory, StopsAtALineOutOfOrder) {
  const std::string whole = after("1.000 skypost begin\n2.000 windit good\n");
  appliance.write(HISTORY_PATH, history() + with_tabs("1.000 windit failed   9  1.000 9\n"));
  EXPECT_EQ(look(), whole);
}

// Shown all the same.
TEST_F(StatusHistory, IsWrittenByOneProcessWhereNoOtherFileCanBeMeant) {
  const std::string page = "2.000 skypost begin\n2.100 windit failed\n";
  const std::string before = after("1.000 skypost begin\n1.100 windit failed\n");
  struct stat found {};
  ASSERT_EQ(stat(appliance.path(HISTORY_PATH).c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777, 0600U);
  {
    const locked_file locked(appliance.path(HISTORY_PATH));
    ASSERT_TRUE(locked.is_locked());
    EXPECT_EQ(after(page), before);
    EXPECT_FALSE(is_kept);
  }
  constexpr std::size_t WINDIT = FIRST_STEP_RECORD + 8;
  EXPECT_EQ(records[WINDIT].failures, 2U);
  std::filesystem::rename(appliance.path(HISTORY_PATH), appliance.path("/target"));
  std::filesystem::create_symlink(appliance.path("/target"), appliance.path(HISTORY_PATH));
  EXPECT_EQ(after(page), before);
  EXPECT_FALSE(is_kept);
  EXPECT_EQ(records[WINDIT].failures, 1U);
}

// Each byte of the three files in turn is missing, with all that follow, or another one.
TEST_F(StatusHistory, SurvivesAnyContent) {
  const std::string run_page = "1.000 skypost begin\n1.100 windit failed 4 a\\x0Ab\n1.200 skypost good\n";
  const std::string rapid_page = "1.000 skypost begin\n2.000 windit_rapid_fire failed 4 no_reply 3 1.500\n";
  after(run_page, rapid_page);
  const std::pair<const char*, std::string> files[] = {{STATUS_PATH, with_tabs(run_page)},
                                                       {RAPID_FIRE_STATUS_PATH, with_tabs(rapid_page)},
                                                       {HISTORY_PATH, history()}};
  for (const auto& [changed, content] : files) {
    std::vector<std::string> contents = {std::string(100'000, '\n'), std::string(100'000, 'x'),
                                         content + std::string(70'000, '\0') + "\n", content + content};
    for (std::size_t i = 0; i < content.size(); ++i) {
      contents.push_back(content.substr(0, i));
      contents.push_back(content);
      contents.back()[i] = "\0\t\n9\x1b"[i % 5];
    }
    for (const std::string& one : contents) {
      for (const auto& [path, good] : files) appliance.write(path, path == changed ? one : good);
      const std::string found = look();
      EXPECT_EQ(look(), found);
      EXPECT_TRUE(std::ranges::all_of(found, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
    }
  }
}

}  // namespace
}  // namespace skypost::testing
