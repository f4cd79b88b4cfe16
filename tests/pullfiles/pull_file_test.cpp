// Where the pull files go, and that nothing is written when the first directory is missing.

#include "pullfiles/pull_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "base/process_state.h"
#include "pullfiles/awekas_files.h"
#include "pullfiles/hetweeractueel.h"
#include "pullfiles/meteoclimatic.h"
#include "pullfiles/wetterspiegel.h"
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
      appliance_.write(path, std::string(PULL_FILE_CAPACITY, 'x'));
  }

  std::string content(const char* path) { return read_whole_file(appliance_.path(path)); }

  appliance_folder appliance_;
};

TEST_F(PullFile, StandsInBothDirectoriesInPlaceOfTheOldOne) {
  struct writer_case {
    int (*write)(const char* name);
    std::ptrdiff_t lines;
    const char* holds;
    const char* debug_title;
  };
  const writer_case cases[] = {
      {write_awekas_file, 10, "\n225\n", ""},
      {write_wedaal_file, 24, "\nSW\n", ""},
      {write_wetterpage24_file, 10, "\nSW\n", ""},
      {write_meteoclimatic_file, 34, "*VER=DATA2\n", "METEOCLIMATIC"},
      {write_wetterspiegel_file, 18, "Wetterspiegel-id: ", ""},
      {write_hetweeractueel_file, 94, "BOF\n", "HETWEERACTUEEL"},
  };
  flags.debug_flag = 1;
  for (const writer_case& row : cases) {
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(row.write("name.txt"), 0);
    const std::string text = content(IN_WEB_ROOT);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), row.lines);
    EXPECT_NE(text.find(row.holds), std::string::npos) << text;
    EXPECT_EQ(content(IN_UPLOADS), text);
    const std::string title = row.debug_title;
    const std::string debug = title.empty() ? "" : "\n" + title + "\n" + text + "\n";
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), debug + debug);
  }
}

TEST_F(PullFile, IsWrittenNowhereWithoutTheFirstDirectory) {
  const std::filesystem::path file = appliance_.path(IN_WEB_ROOT);
  std::filesystem::remove_all(file.parent_path());
  EXPECT_EQ(write_awekas_file("name.txt"), -1);
  EXPECT_EQ(error_text.view(), "error open file " + file.string() + ": No such file or directory\n");
  EXPECT_EQ(content(IN_UPLOADS), std::string(PULL_FILE_CAPACITY, 'x'));
}

}  // namespace
}  // namespace skypost::testing
