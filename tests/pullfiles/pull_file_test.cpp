// Where the pull files go, and that nothing is written when the first directory is missing.

#include "pullfiles/pullfiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/process_state.h"
#include "run/run_list.h"
#include "support/appliance_folder.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

constexpr char IN_WEB_ROOT[] = "/srv/www/name.txt";
constexpr char IN_UPLOADS[] = "/var/run/nimbulog/uploads/name.txt";

class PullFile : public ::testing::Test {
 protected:
  void SetUp() override {
    flags = {};
    error_text.clear();
    error_text.append_text("left by another network");
    fill_settings(station_settings);
    live_record = fully_equipped_station();
    for (const char* const path : {IN_WEB_ROOT, IN_UPLOADS})
      appliance_.write(path, std::string(COMMAND_CAPACITY, 'x'));
  }

  std::string content(const char* path) { return read_whole_file(appliance_.path(path)); }

  appliance_folder appliance_;
};

TEST_F(PullFile, IsInBothDirectoriesInPlaceOfTheOldOne) {
  flags.debug_flag = 1;
  for (const run_step& step : run_list()) {
    if (step.what->by != carrier::file) continue;
    SCOPED_TRACE(step.name.text);
    const std::string before = composed_now(*step.what);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(step.call.write("name.txt"), 0);
    const std::string text = content(IN_WEB_ROOT);
    EXPECT_TRUE(text == before || text == composed_now(*step.what)) << text;
    EXPECT_EQ(content(IN_UPLOADS), text);
    const char* const title = static_cast<const pull_file*>(step.what)->debug_title;
    const std::string debug = title == nullptr ? "" : std::string("\n") + title + "\n" + text + "\n";
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), debug + debug);
  }
}

TEST_F(PullFile, IsWrittenNowhereWithoutTheFirstDirectory) {
  const std::filesystem::path file = appliance_.path(IN_WEB_ROOT);
  std::filesystem::remove_all(file.parent_path());
  EXPECT_EQ(write_awekas_file("name.txt"), -1);
  EXPECT_EQ(error_text.view(), "error open file " + file.string() + ": No such file or directory\n");
  EXPECT_EQ(content(IN_UPLOADS), std::string(COMMAND_CAPACITY, 'x'));
}

}  // namespace
}  // namespace skypost::testing
