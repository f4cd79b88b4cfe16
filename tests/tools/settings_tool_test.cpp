// The owner's tool: what it prints, what it refuses, and that a refusal changes nothing.

#include "settings_tool.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/paths.h"
#include "settings/byte_order.h"
#include "settings/defaults.h"
#include "settings/load.h"
#include "support/appliance_folder.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class SettingsTool : public ::testing::Test {
 protected:
  SettingsTool() { setenv("NIMBULOGHW", "X86", 1); }
  ~SettingsTool() override { unsetenv("NIMBULOGHW"); }

  int run(const std::vector<std::string>& arguments) {
    std::ostringstream out_stream;
    std::ostringstream error_stream;
    const int status = run_settings_tool(arguments, out_stream, error_stream);
    out = out_stream.str();
    errors = error_stream.str();
    return status;
  }

  void run_well(const std::vector<std::string>& arguments) {
    EXPECT_EQ(run(arguments), 0);
    EXPECT_EQ(errors, "");
  }

  void expect_refused(const std::vector<std::string>& arguments, const std::string& error) {
    EXPECT_EQ(run(arguments), 1);
    EXPECT_EQ(errors, "Error: " + error + "\n");
  }

  void write(const settings_record& record, std::size_t size = SETTINGS_SIZE) const {
    std::string bytes(reinterpret_cast<const char*>(record.bytes), SETTINGS_SIZE);
    bytes.resize(size, 'x');
    appliance.write(SETTINGS_PATH, bytes);
  }

  // What the program itself makes of the file.
  settings_record loaded() const {
    settings_record record{};
    EXPECT_EQ(load_settings(record), 0);
    return record;
  }

  void expect_shown(std::initializer_list<std::string> lines) const {
    for (const std::string& line : lines)
      EXPECT_NE(("\n" + out).find("\n" + line + "\n"), std::string::npos) << line << " not in\n" << out;
  }

  appliance_folder appliance;
  std::string file = appliance.path(SETTINGS_PATH);
  std::string out;
  std::string errors;
};

settings_record filled_record() {
  settings_record record;
  fill_settings(record);
  return record;
}

TEST_F(SettingsTool, MakesADefaultRecordThatOnlyItsOwnerReads) {
  run_well({"new", file});
  settings_record expected{};
  set_default_settings(expected);
  EXPECT_EQ(read_whole_file(file), std::string(reinterpret_cast<const char*>(expected.bytes), SETTINGS_SIZE));
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);

  appliance.write(SETTINGS_PATH, "kept");
  expect_refused({"new", file}, file + ": File exists");
  EXPECT_EQ(read_whole_file(file), "kept");
}

TEST_F(SettingsTool, ShowsTheAppliancesFileAndHidesSecrets) {
  settings_record record = filled_record();
  record.set_text(cwop_id, "N0\x1b[2J\"\\\n");
  record.set_text(wedaal_password, "");
  record.set_integer(aprs_port, -1);
  write(record);
  run_well({"show"});
  EXPECT_EQ(out.substr(0, out.find("\n[")),
            "File:       " + file + "\nLayout:     current, 65536 bytes\nByte order: native\n");
  expect_shown({"[AWEKAS]\nawekas_enabled = 0\nawekas_user = \"awekasuser\"\nawekas_password = *\n",
                "aprs_passcode = *", "wedaal_password = \"\"", "aprs_port = 4294967295",
                "longitude_degrees = 8", "cwop_id = \"N0\\x1b[2J\\\"\\\\\\x0a\""});

  run_well({"show", "--secrets", file});
  expect_shown({"awekas_password = \"abc\"", "aprs_passcode = 12345"});
}

TEST_F(SettingsTool, ShowsEveryLayoutAsTheProgramReadsIt) {
  const struct {
    std::size_t size;
    const char* platform;
    bool foreign;
    const char* layout;
  } cases[] = {
      {65'536, "X86", true, "current, 65536 bytes"},
      {38'264, "X86", false, "older, 38264 bytes"},
      {38'264, "PLUG", true, "older, 38264 bytes"},
      {38'692, "PLUG", false, "older PLUG, 38692 bytes"},
      {38'692, "X86", true, "unlisted size, 38692 bytes"},
      {70'000, "X86", false, "unlisted size, 70000 bytes"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.layout);
    settings_record record = filled_record();
    if (row.foreign) convert_byte_order(record);
    setenv("NIMBULOGHW", row.platform, 1);
    write(record, row.size);
    run_well({"show", file});
    EXPECT_FALSE(fs::exists(file + ".old"));
    const char* const order = row.foreign ? "foreign; the values are shown converted" : "native";
    const settings_record read = loaded();
    expect_shown({std::string("Layout:     ") + row.layout, std::string("Byte order: ") + order,
                  "longitude_degrees = 8", "cwop_id = \"" + std::string(read.text(cwop_id)) + "\"",
                  "windit_id = \"" + std::string(read.text(windit_id)) + "\""});
    fs::remove(file + ".old");
  }
}

TEST_F(SettingsTool, SetsValuesInBothByteOrdersAndKeepsTheRest) {
  for (const bool foreign : {false, true}) {
    settings_record expected = filled_record();
    settings_record record = expected;
    if (foreign) convert_byte_order(record);
    write(record);
    run_well({"set", file, "idokep_enabled=2", "sensor_temp=th12345", "longitude_degrees=-2147483648",
              "aprs_port=4294967295", "weatherflow_enabled=1", "awekas_user=", "awekas_password=a=b c"});
    EXPECT_EQ(read_whole_file(file).substr(18936, 4), std::string(foreign ? "\0\0\0\1" : "\1\0\0\0", 4));

    expected.set_integer(idokep_enabled, 2);
    expected.set_text(sensor_temp, "th12345");
    expected.set_integer(longitude_degrees, -2'147'483'647 - 1);
    expected.set_integer(aprs_port, -1);
    expected.set_integer(weatherflow_enabled, 1);
    std::memset(expected.bytes + awekas_user.offset, 0, awekas_user.size);
    std::memset(expected.bytes + awekas_password.offset, 0, awekas_password.size);
    expected.set_text(awekas_password, "a=b c");
    const settings_record found = loaded();
    EXPECT_EQ(std::memcmp(found.bytes, expected.bytes, SETTINGS_SIZE), 0);
  }
}

TEST_F(SettingsTool, KeepsAnOlderLayout) {
  write(filled_record(), 38'264);
  const std::string before = read_whole_file(file);
  run_well({"set", file, "cwop_enabled=1"});
  std::string expected = before;
  expected[7016] = 1;
  EXPECT_EQ(read_whole_file(file), expected);

  expect_refused({"set", file, "cwop_enabled=0", "windit_id=x"},
                 "windit_id lies beyond the end of this file's layout (older, 38264 bytes)");
  EXPECT_EQ(read_whole_file(file), expected);
}

TEST_F(SettingsTool, RefusesWhatIsWrongAndWritesNothing) {
  constexpr std::pair<const char*, const char*> CASES[] = {
      {"wunderground_pasword=x", "no setting \"wunderground_pasword\"; did you mean wunderground_password?"},
      {"Awekas_user=x", "no setting \"Awekas_user\"; did you mean awekas_user?"},
      {"sensor_temp=th123456", "sensor_temp holds at most 7 bytes; this text has 8"},
      {"cwop_enabled=yes", "cwop_enabled takes a whole number, not \"yes\""},
      {"cwop_enabled=", "cwop_enabled takes a whole number, not \"\""},
      {"cwop_enabled=1 ", "cwop_enabled takes a whole number, not \"1 \""},
      {"cwop_enabled=1.5", "cwop_enabled takes a whole number, not \"1.5\""},
      {"cwop_enabled=0x1", "cwop_enabled takes a whole number, not \"0x1\""},
      {"cwop_enabled=2147483648",
       "cwop_enabled takes a number from -2147483648 to 2147483647, not 2147483648"},
      {"aprs_port=-1", "aprs_port takes a number from 0 to 4294967295, not -1"},
      {"aprs_port=99999999999999999999",
       "aprs_port takes a number from 0 to 4294967295, not 99999999999999999999"},
      {"byte_order_marker=1", "byte_order_marker tells the file's byte order and stays"},
  };
  write(filled_record());
  const std::string before = read_whole_file(file);
  for (const auto& [assignment, error] : CASES) {
    expect_refused({"set", file, "cwop_id=CHANGED", assignment}, error);
    EXPECT_EQ(read_whole_file(file), before);
  }
}

TEST_F(SettingsTool, RefusesFilesThatItCannotJudge) {
  write(filled_record(), 38'692);
  const std::string before = read_whole_file(file);
  expect_refused({"set", file, "cwop_enabled=1"},
                 file + ": not changed, as its layout is unknown (unlisted size, 38692 bytes)");
  EXPECT_EQ(read_whole_file(file), before);

  appliance.write(SETTINGS_PATH, "");
  expect_refused({"show", file}, file + ": empty");
  const std::string folder = fs::path(file).parent_path();
  expect_refused({"show", folder}, folder + ": not a regular file");
  expect_refused({"show", file + ".missing"}, file + ".missing: No such file or directory");
}

TEST_F(SettingsTool, ReplacesTheFileBehindALinkInOneStep) {
  write(filled_record());
  fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
  const std::string link = appliance.path("/home/link.conf");
  fs::create_symlink(file, link);
  std::ifstream reader(file, std::ios::binary);  // one that is reading meanwhile
  const std::string before = read_whole_file(file);
  run_well({"set", link, "cwop_id=CW0001"});

  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(loaded().text(cwop_id), "CW0001");
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::group_read);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), before);
  const fs::directory_iterator entries(fs::path(file).parent_path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1) << "a temporary file is left";
}

TEST_F(SettingsTool, TellsHowItIsUsed) {
  const std::vector<std::string> command_lines[] = {
      {}, {"frobnicate"}, {"new"}, {"new", "--force"}, {"show", "a", "b"}, {"show", "--all"}, {"set", file},
  };
  for (const auto& arguments : command_lines) {
    EXPECT_EQ(run(arguments), 2);
    EXPECT_NE(errors.find("skypost-settings set FILE NAME=VALUE..."), std::string::npos);
    EXPECT_EQ(out, "");
  }
  write(filled_record());
  EXPECT_EQ(run({"set", file, "cwop_enabled"}), 2);
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_EQ(errors, "");
}

}  // namespace
}  // namespace skypost::testing
