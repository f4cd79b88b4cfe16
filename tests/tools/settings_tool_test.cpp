#include "settings_tool/settings_tool.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "base/paths.h"
#include "common/errors.h"
#include "common/field_descriptions.h"
#include "common/settings_file.h"
#include "settings/byte_order.h"
#include "settings/defaults.h"
#include "settings/load.h"
#include "support/golden.h"
#include "tools/owners_station.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class SettingsTool : public ::testing::Test {
 protected:
  std::string run(const std::string& line) { return station.run(SETTINGS_TOOL, line); }

  // The settings as the program itself loads them.
  settings_record loaded() const {
    settings_record result{};
    EXPECT_EQ(load_settings(result), 0);
    return result;
  }

  owners_station station;
};

TEST(SettingsToolSession, MatchesTheGoldenText) {
  expect_tool_session("tools/golden/settings_tool", SETTINGS_TOOL);
}

TEST_F(SettingsTool, MakesADefaultRecordThatOnlyItsOwnerReads) {
  fs::remove(station.file);
  EXPECT_EQ(run("new /home/nimbulog/nimbulog.conf"), "");
  settings_record expected{};
  set_default_settings(expected);
  EXPECT_EQ(read_whole_file(station.file),
            std::string(reinterpret_cast<const char*>(expected.bytes), SETTINGS_SIZE));
  EXPECT_EQ(fs::status(station.file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SettingsTool, SetsValuesInBothByteOrdersAndKeepsTheRest) {
  settings_record expected = station.settings;
  expected.set_integer(idokep_enabled, 2);
  expected.set_text(sensor_temp, "th12345");
  expected.set_integer(longitude_degrees, -2'147'483'647 - 1);
  expected.set_integer(aprs_port, -1);
  expected.set_integer(weatherflow_enabled, 0);
  std::memset(expected.bytes + awekas_user.offset, 0, awekas_user.size);
  std::memset(expected.bytes + awekas_password.offset, 0, awekas_password.size);
  expected.set_text(awekas_password, "a=b c");
  for (const bool foreign : {false, true}) {
    station.change(foreign ? "foreign" : "size 65536");
    EXPECT_EQ(run("set --force /home/nimbulog/nimbulog.conf idokep_enabled=2 sensor_temp=th12345 "
                  "weatherflow_enabled=0"
                  " longitude_degrees=-2147483648 aprs_port=4294967295 awekas_user= 'awekas_password=a=b c'"),
              "");
    EXPECT_EQ(read_whole_file(station.file).substr(18936, 4),
              std::string(foreign ? "\0\0\0\1" : "\1\0\0\0", 4));
    EXPECT_EQ(std::memcmp(loaded().bytes, expected.bytes, SETTINGS_SIZE), 0);
  }
}

TEST_F(SettingsTool, KeepsAnOlderLayout) {
  station.change("size 38264");
  std::string expected = read_whole_file(station.file);
  expected[7016] = 0;
  EXPECT_EQ(run("set /home/nimbulog/nimbulog.conf cwop_enabled=0"), "");
  EXPECT_EQ(read_whole_file(station.file), expected);
}

TEST_F(SettingsTool, ReplacesTheFileThatALinkNamesInOneStep) {
  fs::permissions(station.file, fs::perms::owner_read | fs::perms::group_read);
  const std::string link = station.folder.path("/home/link.conf");
  fs::create_symlink(station.file, link);
  std::ifstream reader(station.file, std::ios::binary);  // reads while the file is replaced
  const std::string before = read_whole_file(station.file);
  EXPECT_EQ(run("set /home/link.conf cwop_id=CW0001"), "");

  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(loaded().text(cwop_id), "CW0001");
  EXPECT_EQ(fs::status(station.file).permissions(), fs::perms::owner_read | fs::perms::group_read);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), before);
  std::size_t left = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(station.file).parent_path()))
    left += entry.path().string().starts_with(station.file) ? 1 : 0;
  EXPECT_EQ(left, 1U) << "a temporary file is left";
}

// Without the lock, most of these changes would be lost.
TEST_F(SettingsTool, LosesNoChangeOfSeveralAtOnce) {
  const char* const SWITCHES[] = {"awekas", "windfinder", "windit", "idokep"};
  for (int value = 0; value < 20; ++value) {
    std::vector<pid_t> children;
    for (const std::string name : SWITCHES) {
      children.push_back(fork());
      if (children.back() != 0) continue;
      std::ostringstream out;
      _exit(run_tool(SETTINGS_TOOL, {"set", station.file, name + "_enabled=" + std::to_string(value % 2)},
                     out, out));
    }
    for (const pid_t child : children) {
      int status = -1;
      waitpid(child, &status, 0);
      EXPECT_EQ(status, 0);
    }
    const settings_record record = loaded();
    for (const integer_field* const field :
         {&awekas_enabled, &windfinder_enabled, &windit_enabled, &idokep_enabled})
      EXPECT_EQ(record.integer(*field), value % 2);
  }
}

// The web pages do not take the lock.
TEST_F(SettingsTool, DoesNotUndoWhatAnotherProgramHasWritten) {
  const settings_file read = read_settings_file(station.file);
  station.change("set windfinder_name=elsewhere");
  const std::string written = read_whole_file(station.file);
  EXPECT_THROW(replace_settings_file(read, read.image), tool_error);
  EXPECT_EQ(read_whole_file(station.file), written);
  EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(station.file).parent_path()), {}), 3);
}

TEST_F(SettingsTool, ChecksTheApplianceAndAnswersWithItsStatus) {
  station.change("only wetterpage24");
  const auto expect_checked = [&](const std::string& fault) {
    const std::string status = fault.empty() ? "" : "-> 1\n";
    EXPECT_EQ(
        run("check --report=/report /home/nimbulog/nimbulog.conf"),
        (fault.empty() ? "Nothing wrong found.\n" : ENDPOINTS_PATH + fault + ". Correct it.\n") + status);
    EXPECT_EQ(run("check --quiet --report /report"), status);
  };
  ::testing::internal::CaptureStderr();
  expect_checked("");
  station.folder.write(ENDPOINTS_PATH, "windit = http://windit.example/\n");
  expect_checked(
      " line 1: remove the trailing slash; uploads that use windit fail unless a later line sets it");
  fs::remove(station.folder.path(ENDPOINTS_PATH));
  station.change(std::string("folder ") + ENDPOINTS_PATH);
  expect_checked(": Is a directory; all uploads fail");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

// This machine has no alarm script, and its endpoints are not the board's.
TEST_F(SettingsTool, ChecksTheSettingsAloneOfABoardWithoutARoot) {
  unsetenv("SKYPOST_ROOT");
  EXPECT_EQ(run("check --board /home/nimbulog/nimbulog.conf"), "Nothing wrong found.\n");
}

}  // namespace
}  // namespace skypost::testing
