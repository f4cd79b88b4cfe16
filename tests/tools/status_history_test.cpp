// What skypost-status makes of the status pages: each counts once, and nothing in them is trusted.

#include "status/history.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/paths.h"
#include "support/appliance_folder.h"
#include "support/golden.h"
#include "support/locked_file.h"

namespace skypost::testing {
namespace {

class StatusHistory : public ::testing::Test {
 protected:
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

TEST_F(StatusHistory, CountsEachRunOnce) {
  const std::pair<std::string, std::string> cases[] = {
      {"1.000 skypost begin\n1.100 windit begin\n1.200 windit failed 4 no_reply\n1.300 skypost good\n",
       "1.300 skypost good   0 1.300 1.000 0  \n1.200 windit failed 4 no_reply 1  1.000 1 1.200 \n"},
      {"2.000 skypost begin\n2.100 windit begin\n2.200 windit failed  \n2.300 skypost good\n",
       "2.300 skypost good   0 2.300 2.000 0  \n2.200 windit failed   2  2.000 1 1.200 \n"},
      // Under way, with a network that is new.
      {"3.000 skypost begin\n3.100 windfinder begin\n",
       "3.000 skypost begin   0 2.300 3.000 0  \n3.100 windfinder begin   0  3.000 0  \n"
       "2.200 windit failed   2  2.000 1 1.200 \n"},
      {"3.000 skypost begin\n3.100 windfinder begin\n3.200 windfinder good 0 \n3.300 windit begin\n"
       "3.400 windit failed 5 bad\n3.500 skypost stale\n",
       "3.500 skypost stale   1 2.300 3.000 1 3.500 \n3.200 windfinder good 0  0 3.200 3.000 0  \n"
       "3.400 windit failed 5 bad 3  3.000 1 1.200 \n"},
      // Ended in an upload, which counts when the next begins; until then the reason stays.
      {"4.000 skypost begin\n4.100 windit begin\n",
       "4.000 skypost begin   1 2.300 4.000 0 3.500 \n3.200 windfinder good 0  0 3.200 3.000 0  \n"
       "4.100 windit begin 5 bad 3  4.000 0 1.200 \n"},
      {"5.000 skypost begin\n5.100 windit begin\n5.200 skypost timed-out\n",
       "5.200 skypost timed-out   3 2.300 5.000 1 3.500 \n3.200 windfinder good 0  0 3.200 3.000 0  \n"
       "5.100 windit begin 5 bad 4  5.000 0 1.200 \n"},
      {"6.000 skypost begin\n6.100 windit begin\n6.200 windit good 0 \n6.300 skypost no-report\n",
       "6.300 skypost no-report   4 2.300 6.000 1 3.500 \n3.200 windfinder good 0  0 3.200 3.000 0  \n"
       "6.200 windit good 0  0 6.200 6.000 0  \n"},
      // An unclear upload is no failure, and not the last good one.
      {"7.000 skypost begin\n7.200 windit unclear 4 doubt\n7.300 skypost good\n",
       "7.300 skypost good   0 7.300 7.000 0  \n3.200 windfinder good 0  0 3.200 3.000 0  \n"
       "7.200 windit unclear 4 doubt 0 6.200 7.000 0  \n"},
      // A page that the owner has emptied.
      {"",
       "7.300 skypost good   0 7.300 7.000 0  \n3.200 windfinder good 0  0 3.200 3.000 0  \n"
       "7.200 windit unclear 4 doubt 0 6.200 7.000 0  \n"},
  };
  for (const auto& [page, expected] : cases)
    for (int i = 0; i < 3; ++i) EXPECT_EQ(after(page), expected) << i;
  // The rest of a longer history that is being replaced.
  appliance.write(HISTORY_PATH, history() + with_tabs("1.000 windit failed   9  1.000 9\n"));
  EXPECT_EQ(look(), cases[std::size(cases) - 1].second);
}

TEST_F(StatusHistory, GoesOnCountingWhenRapidFireStartsAnew) {
  const std::pair<std::string, std::string> cases[] = {
      {"1.000 skypost begin\n2.000 windit_rapid_fire failed 4 no_reply 3 \n",
       "2.000 windit_rapid_fire failed 4 no_reply 3  1.000 3 2.000 \n"},
      {"1.000 skypost begin\n3.000 windit_rapid_fire begin 4 no_reply 5 \n",
       "3.000 windit_rapid_fire begin 4 no_reply 5  1.000 5 2.000 \n"},
      {"4.000 skypost begin\n", "3.000 windit_rapid_fire begin 4 no_reply 5  1.000 5 2.000 \n"},
      {"4.000 skypost begin\n5.000 windit_rapid_fire begin\n",
       "5.000 windit_rapid_fire begin 4 no_reply 6  4.000 0 2.000 \n"},
      {"4.000 skypost begin\n6.000 windit_rapid_fire failed 5 bad 7 \n",
       "6.000 windit_rapid_fire failed 5 bad 13  4.000 7 2.000 \n"},
      {"4.000 skypost begin\n8.000 windit_rapid_fire failed   1 7.000\n",
       "8.000 windit_rapid_fire failed   1 7.000 4.000 1 8.000 \n"},
      {"9.000 skypost begin\n9.100 windit_rapid_fire failed   1 \n",
       "9.100 windit_rapid_fire failed   2 7.000 9.000 1 8.000 \n"},
      // The rest of a longer page that is being replaced.
      {"9.000 skypost begin\n9.200 windit_rapid_fire good 0  0 9.200\n9.100 windit_rapid_fire failed   1 \n",
       "9.200 windit_rapid_fire good 0  0 9.200 9.000 0  \n"},
  };
  for (const auto& [page, expected] : cases)
    for (int i = 0; i < 3; ++i) EXPECT_EQ(after("", page), expected) << i;
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

TEST_F(StatusHistory, IgnoresLinesThatCannotBe) {
  const char* const lines[] = {
      "",
      "junk",
      "2.000",
      "2.000 windit",
      "2.000 windit well",
      "2.000 windit good 256",
      "2.000 windit good -1",
      "2.000 windit good 4x",
      "2.000 windit good 99999999999999999999",
      "2.000 nobody good",
      " windit good",
      "0.000 windit good",
      "-2.000 windit good",
      "2 windit good",
      ".000 windit good",
      "2.0000 windit good",
      "+2.000 windit good",
      "9999999999999.000 windit good",
      "2.000 windit good   -1",
      "2.000 windit good   4294967296",
      "2.000 windit good    7",
      "2.000 windit good   0 2.000 2.000 0   ",
      "2.000 windit good   0 2.000 2.000 x",
      "2.000 windit good   0 2.000 2.000 0 x",
      "2.000 windit good   0 2.000 2.000 0  x",
      "2.000 windit_rapid_fire good",
  };
  for (const std::string line : lines) {
    const std::string text = "1.000 skypost begin\n1.500 windit failed\n" + line + "\n2.000 idokep good\n";
    EXPECT_EQ(after(text),
              "1.000 skypost begin   0  1.000 0  \n"
              "1.500 windit failed   1  1.000 1 1.500 \n"
              "2.000 idokep good   0 2.000 1.000 0  \n")
        << line;
    std::filesystem::remove(appliance.path(HISTORY_PATH));
  }
  // No run has written the first line, or not all of the last.
  EXPECT_EQ(after("2.000 windit good\n2.000 skypost begin\n", "2.000 windit_rapid_fire good\n"), "");
  EXPECT_EQ(after("1.000 skypost begin\n2.000 windit good"), "1.000 skypost begin   0  1.000 0  \n");
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
