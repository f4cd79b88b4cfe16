#include "pullfiles/pullfiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/debug.h"
#include "base/error_text.h"
#include "run/run_list.h"
#include "support/appliance_folder.h"
#include "support/golden.h"
#include "support/small_disk.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

class PullFile : public ::testing::Test {
 protected:
  void SetUp() override {
    live_data_stale = debug_flag = 0;
    error_text.clear();
    error_text.append_text("left by another network");
    fill_settings(station_settings);
    live_record = fully_equipped_station();
  }

  appliance_folder appliance_;
};

TEST_F(PullFile, IsInBothDirectoriesInPlaceOfTheOldOne) {
  debug_flag = 1;
  for (const run_step& step : run_list()) {
    if (step.upload->by != carrier::file) continue;
    SCOPED_TRACE(step.name.text);
    const auto& file = static_cast<const pull_file&>(*step.upload);
    const std::string in_web_root = std::string("/srv/www/") + file.name;
    const std::string in_uploads = std::string("/var/run/nimbulog/uploads/") + file.name;
    for (const std::string& path : {in_web_root, in_uploads})
      appliance_.write(path, std::string(COMMAND_CAPACITY, 'x'));
    const std::string before = composed_now(file);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(file.send(), 0);
    const std::string text = read_whole_file(appliance_.path(in_web_root));
    EXPECT_TRUE(text == before || text == composed_now(file)) << text;
    EXPECT_EQ(read_whole_file(appliance_.path(in_uploads)), text);
    const std::string debug =
        file.debug_title == nullptr ? "" : std::string("\n") + file.debug_title + "\n" + text + "\n";
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), debug + debug);
  }
}

TEST_F(PullFile, IsWrittenNowhereWithoutTheFirstDirectory) {
  const std::filesystem::path uploads = appliance_.path("/var/run/nimbulog/uploads");
  std::filesystem::create_directories(uploads);
  EXPECT_EQ(write_awekas_file("awekas.txt"), -1);
  EXPECT_EQ(error_text.view(), "error open file " + appliance_.path("/srv/www/awekas.txt").string() +
                                   ": No such file or directory\n");
  EXPECT_TRUE(std::filesystem::is_empty(uploads));
}

// The upload counts as good, but there is no file.
TEST_F(PullFile, CastsDoubtOnItselfOnAFullDisk) {
  appliance_.write("/srv/www/other", "");
  appliance_.write("/var/run/nimbulog/uploads/other", "");
  const small_disk disk(appliance_.path("/srv/www"));
  if (!disk.is_mounted()) GTEST_SKIP() << "may not mount anything";
  disk.fill();
  latest_exchange = {};
  EXPECT_EQ(write_awekas_file("awekas.txt"), 0);
  EXPECT_STREQ(latest_exchange.doubt, "awekas.txt was not written: No space left on device");
}

}  // namespace
}  // namespace skypost::testing
