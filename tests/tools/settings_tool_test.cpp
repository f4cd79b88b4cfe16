// The owner's tool: what it prints, what it refuses, and that a refusal changes nothing.

#include "settings_tool/settings_tool.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "common/meaning.h"
#include "settings/byte_order.h"
#include "settings/defaults.h"
#include "settings/field_descriptions.h"
#include "settings/load.h"
#include "sim/report.h"
#include "support/tool_test.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class SettingsTool : public tool_test {
 protected:
  SettingsTool() : tool_test(SETTINGS_TOOL) {}

  // What the program itself makes of the file.
  settings_record loaded() const {
    settings_record result{};
    EXPECT_EQ(load_settings(result), 0);
    return result;
  }

  void expect_shown(const texts& lines) const {
    for (const std::string& line : lines)
      EXPECT_NE(("\n" + out).find("\n" + line + "\n"), std::string::npos) << line << " not in\n" << out;
  }
};

TEST_F(SettingsTool, MakesADefaultRecordThatOnlyItsOwnerReads) {
  expect_refused({"new", file}, file + ": File exists");
  fs::remove(file);
  run_well({"new", file});
  settings_record expected{};
  set_default_settings(expected);
  EXPECT_EQ(read_whole_file(file), std::string(reinterpret_cast<const char*>(expected.bytes), SETTINGS_SIZE));
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SettingsTool, ShowsTheAppliancesFileAndHidesSecrets) {
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
  settings_record converted = record;
  convert_byte_order(converted);
  const struct {
    std::size_t size;
    const char* platform;
    bool foreign;
    const char* layout;
  } CASES[] = {
      {65'536, "X86", true, "current, 65536 bytes"},
      {38'264, "X86", false, "older, 38264 bytes"},
      {38'264, "PLUG", true, "older, 38264 bytes"},
      {38'692, "PLUG", false, "older PLUG, 38692 bytes"},
      {38'692, "X86", true, "unlisted size, 38692 bytes"},
      {70'000, "X86", false, "unlisted size, 70000 bytes"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.layout);
    setenv("NIMBULOGHW", row.platform, 1);
    write(row.foreign ? converted : record, row.size);
    run_well({"show", file});
    EXPECT_FALSE(fs::exists(file + ".old"));
    const settings_record read = loaded();
    expect_shown(
        {std::string("Layout:     ") + row.layout,
         std::string("Byte order: ") + (row.foreign ? "foreign; the values are shown converted" : "native"),
         "longitude_degrees = 8", "cwop_id = \"" + std::string(read.text(cwop_id)) + "\"",
         "windit_id = \"" + std::string(read.text(windit_id)) + "\""});
    fs::remove(file + ".old");
  }
}

TEST_F(SettingsTool, SetsValuesInBothByteOrdersAndKeepsTheRest) {
  settings_record expected = record;
  expected.set_integer(idokep_enabled, 2);
  expected.set_text(sensor_temp, "th12345");
  expected.set_integer(longitude_degrees, -2'147'483'647 - 1);
  expected.set_integer(aprs_port, -1);
  expected.set_integer(weatherflow_enabled, 1);
  std::memset(expected.bytes + awekas_user.offset, 0, awekas_user.size);
  std::memset(expected.bytes + awekas_password.offset, 0, awekas_password.size);
  expected.set_text(awekas_password, "a=b c");
  for (const bool foreign : {false, true}) {
    if (foreign) convert_byte_order(record);
    write(record);
    run_well({"set", "--force", file, "idokep_enabled=2", "sensor_temp=th12345",
              "longitude_degrees=-2147483648", "aprs_port=4294967295", "weatherflow_enabled=1",
              "awekas_user=", "awekas_password=a=b c"});
    EXPECT_EQ(read_whole_file(file).substr(18936, 4), std::string(foreign ? "\0\0\0\1" : "\1\0\0\0", 4));
    EXPECT_EQ(std::memcmp(loaded().bytes, expected.bytes, SETTINGS_SIZE), 0);
  }
}

TEST_F(SettingsTool, KeepsAnOlderLayout) {
  write(record, 38'264);
  std::string expected = read_whole_file(file);
  expected[7016] = 1;
  run_well({"set", file, "cwop_enabled=1"});
  EXPECT_EQ(read_whole_file(file), expected);
  expect_refused({"set", file, "cwop_enabled=0", "windit_id=x"},
                 "windit_id is beyond the end of this file's layout (older, 38264 bytes)");
}

// Nor does a slip bring a password to the screen.
TEST_F(SettingsTool, RefusesWhatIsWrongAndWritesNothing) {
  constexpr std::pair<const char*, const char*> CASES[] = {
      {"wunderground_pasword=topsecret",
       "no setting \"wunderground_pasword\"; did you mean wunderground_password?"},
      {"Awekas_user=x", "no setting \"Awekas_user\"; did you mean awekas_user?"},
      {"WINDFINDERNAME=x", "no setting \"WINDFINDERNAME\"; did you mean windfinder_name?"},
      {"sensor_temp=th123456", "sensor_temp holds at most 7 bytes; this text has 8"},
      {"cwop_enabled=", "cwop_enabled takes a whole number, not \"\""},
      {"cwop_enabled=1 ", "cwop_enabled takes a whole number, not \"1 \""},
      {"cwop_enabled=0x1", "cwop_enabled takes a whole number, not \"0x1\""},
      {"aprs_passcode=topsecret", "aprs_passcode takes a whole number"},
      {"cwop_enabled=2147483648",
       "cwop_enabled takes a number from -2147483648 to 2147483647, not 2147483648"},
      {"aprs_passcode=55555555555555", "aprs_passcode takes a number from -2147483648 to 2147483647"},
      {"aprs_port=-1", "aprs_port takes a number from 0 to 4294967295, not -1"},
      {"aprs_port=99999999999999999999",
       "aprs_port takes a number from 0 to 4294967295, not 99999999999999999999"},
      {"byte_order_marker=1", "byte_order_marker is the mark of the file's byte order and cannot be set"},
  };
  for (const auto& [assignment, error] : CASES) {
    expect_refused({"set", file, "cwop_id=CHANGED", assignment}, error);
    expect_refused({"set", file, "cwop_id=CHANGED", assignment, "--force"}, error);
  }
}

TEST_F(SettingsTool, RefusesFilesThatItCannotJudge) {
  write(record, 38'692);
  expect_refused({"set", file, "cwop_enabled=1"},
                 file + ": not changed, as its layout is unknown (unlisted size, 38692 bytes)");
  appliance.write(SETTINGS_PATH, "");
  for (const texts& arguments : {texts{"show"}, {"show", file}}) expect_refused(arguments, file + ": empty");
  const std::string folder = fs::path(file).parent_path();
  expect_refused({"show", folder}, folder + ": not a regular file");
  expect_refused({"show", file + ".mis\nsing"}, file + ".mis\\x0asing: No such file or directory");
  // One without the slash may be a network.
  expect_refused({"show", "./idokep"}, "./idokep: No such file or directory");
  expect_refused({"show", "windfindr"},
                 "\"windfindr\" is neither a file nor a network; did you mean windfinder?");
  expect_refused(
      {"show", "Weather Undergruond"},
      "\"Weather Undergruond\" is neither a file nor a network; did you mean Weather Underground?");
  expect_refused({"show", "other.conf"}, "\"other.conf\" is neither a file nor a network");

  fs::remove(file);
  const std::string fault = file + ": No such file or directory; make one with: skypost-settings new " + file;
  expect_refused({"show"}, fault);
  expect_refused({"check"}, fault, 2);
}

TEST_F(SettingsTool, ReplacesTheFileThatALinkNamesInOneStep) {
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

TEST_F(SettingsTool, RefusesWhatCannotBeMeantUnlessForced) {
  const struct {
    const char* setting;
    texts meant;
    texts not_meant;
    const char* said;  // of the latter
  } CASES[] = {
      // clang-format off
      {"cwop_enabled",      {"0", "1"},         {"2", "-1"},    " takes 0 or 1 (1: upload to CWOP), not "},
      {"idokep_enabled",    {"0", "1", "2"},    {"3", "-1"},    " takes 0 to 2 (1: upload to Idokep; 2: to its pro"},
      {"latitude_degrees",  {"0", "90", "-1"},  {"91", "-2"},   " takes 0 to 90, or -1 when it is not set (degrees"},
      {"longitude_degrees", {"0", "180", "-1"}, {"181", "-2"},  " takes 0 to 180, or -1 when it is not set ("},
      {"latitude_minutes",  {"0", "59", "-1"},  {"60", "-2"},   " takes 0 to 59, or -1 when it is not set ("},
      {"latitude_south",    {"0", "1"},         {"2"},          " takes 0 or 1 (1 south of the equator"},
      {"longitude_west",    {"0", "1"},         {"2"},          " takes 0 or 1 (1 west of Greenwich"},
      {"aprs_port",         {"1", "65535"},     {"0", "65536"}, " takes 1 to 65535 (TCP port of the server), not "},
      {"aprs_passcode",     {"-1", "0", "99999"},        {},    ""},
      {"wunderground_rapid_interval", {"0", "-1"},       {},    ""},
      {"sensor_temp",
       {"", "t0", "th12", "thb1", "wind0", "rain0", "uv0", "sol0", "data99"},
       {"t", "0", "th0 ", " th0", "TH0", "thx0", "th0a", "th-1", "th0th1"},
       " takes a class of sensors (t, th, thb, wind, rain, uv, sol, data) and a number, or nothing (outdoor temperature "
       "sensor, such as th0), not "},
      {"sensor_extra_temp5",  {"t5"},  {"t"},        " takes a class of sensors"},
      {"windfinder_name",     {"", "a b", "\xe9t\xe9", "\"';&$`"}, {"a\nb", "\x1b[2J", "\x7f", "\t"}, " takes no line breaks or other control characters"},
      {"windfinder_password", {"a b"}, {"secret\r"}, " takes no line breaks or other control characters;"},
      // clang-format on
  };
  for (const coordinate& one : POSITION) {
    record.set_integer(one.minutes, 0);
    record.set_integer(one.seconds, 0);
  }
  write(record);
  for (const auto& row : CASES) {
    const std::string assign = std::string(row.setting) + '=';
    for (const std::string& value : row.meant) run_well({"set", file, assign + value});
    for (const std::string& value : row.not_meant) {
      SCOPED_TRACE(assign + value);
      const std::string before = read_whole_file(file);
      EXPECT_EQ(run({"set", file, "cwop_id=CHANGED", assign + value}), 1);
      EXPECT_TRUE(errors.starts_with(std::string("Error: ") + row.setting + row.said)) << errors;
      EXPECT_TRUE(errors.ends_with("; --force stores it anyway\n")) << errors;
      EXPECT_EQ(errors.find("secret"), std::string::npos);
      EXPECT_EQ(read_whole_file(file), before);
      run_well({"set", file, assign + value, "--force"});
      EXPECT_NE(read_whole_file(file), before);
    }
  }
}

TEST_F(SettingsTool, RefusesACoordinateThatGoesBeyondItsEnd) {
  run_well({"set", file, "latitude_degrees=90", "latitude_minutes=0", "latitude_seconds=0"});
  expect_refused({"set", file, "latitude_minutes=59"},
                 "a latitude of 90 degrees 59 minutes is more than 90 degrees; --force stores it anyway");
  run_well({"set", "--force", file, "latitude_minutes=59"});
  EXPECT_EQ(loaded().integer(latitude_minutes), 59);
  // What was stored by force hinders no other change.
  run_well({"set", file, "cwop_enabled=1"});
}

TEST_F(SettingsTool, ShowsOneNetworkAlone) {
  const std::string shown =
      "[Weather Underground]\nwunderground_enabled = 0\nwunderground_id = \"IBERLIN42\"\n"
      "wunderground_password = *\nwunderground_rapid_enabled = 0\nwunderground_rapid_interval = 30\n";
  for (const char* const name : {"Weather Underground", "weather-underground", "WUNDERGROUND"}) {
    run_well({"show", name});
    EXPECT_TRUE(out.ends_with("native\n\n" + shown)) << out;
  }
  run_well({"show", file, "sensors"});
  EXPECT_TRUE(out.ends_with("sensor_solar = \"\"\n")) << out;
}

TEST_F(SettingsTool, NamesEverySettingThatItSets) {
  run_well({"names"});
  std::istringstream names(out);
  std::size_t count = 0;
  for (std::string name; std::getline(names, name); ++count) run_well({"set", file, name + "=1", "--force"});
  EXPECT_EQ(count, std::size(FIELD_DESCRIPTIONS) - 1) << "the mark of the byte order alone is not set";
}

// What the report offers is what a station reads that has selected it.
TEST_F(SettingsTool, ListsTheSensorsThatARoleCanHave) {
  const std::string report = appliance.path("/report");
  appliance.write("/report",
                  "actual_th0_temp_c 21.5\nactual_th0_hum_rel 57\nactual_th10_temp_c -0.5\n"
                  "actual_th1_temp_c n/a\x1b\nactual_t0_temp_c 3\x1b[2J\n"
                  "actual_zz0_temp_c 1\nactual_th123456_temp_c 1\nactual_th2_extra_temp_c 1\n"
                  "my_actual_th4_temp_c 1\nactual_th5_temp_cc 1\n"
                  "actual_uv0_indexes 1\nactual_uv1_index 2\n"
                  "actual_thb0_press_hpa 987.4\nactual_thb0_sealevel_hpa 1013.2\n"
                  "actual_wind0_dir_de SW\nactual_data1_temp_c 4\nday1_th3_temp_c 1\n");
  run_well({"sensors", "--report", report});
  const std::string temperatures =
      "  th0     temp_c 21.5\n  th10    temp_c -0.5\n  th1     temp_c \"n/a\\x1b\" (counts as no value)\n"
      "  t0      temp_c 3\\x1b[2J\n  data1   temp_c 4\n";
  EXPECT_EQ(
      out, "sensor_temp: outdoor temperature sensor, such as th0\n" + temperatures +
               "  th3     (no present value)\nsensor_hum: outdoor humidity sensor, such as th0\n  th0     "
               "hum_rel 57\n"
               "sensor_dew: dew point sensor, such as th0\n  none in this report\n"
               "sensor_press: pressure sensor, such as thb0\n  thb0    press_hpa 987.4, sealevel_hpa 1013.2\n"
               "sensor_rain: rain sensor, such as rain0\n  none in this report\n"
               "sensor_wind: wind sensor, such as wind0\n  none in this report\n"
               "sensor_uv: UV sensor, such as uv0\n  uv1     index 2\n"
               "sensor_indoor: indoor temperature and humidity sensor, such as thb0\n"
               "  th0     temp_c 21.5, hum_rel 57\n" +
               temperatures.substr(temperatures.find("  th10")) +
               "sensor_extra_temp0: extra temperature sensor 1, such as t0\n"
               "sensor_extra_temp1: extra temperature sensor 2, such as t1\n"
               "sensor_extra_temp2: extra temperature sensor 3, such as t2\n"
               "sensor_extra_temp3: extra temperature sensor 4, such as t3\n"
               "sensor_extra_temp4: extra temperature sensor 5, such as t4\n"
               "sensor_extra_temp5: extra temperature sensor 6, such as t5\n" +
               temperatures + "sensor_solar: solar radiation sensor, such as sol0\n  none in this report\n");
  expect_refused({"sensors", "--report", report + "s"}, report + "s: No such file or directory");
}

TEST_F(SettingsTool, ChecksTheApplianceAndAnswersWithItsStatus) {
  appliance.write("/report", sim::lifelike_report(1'336'298'400));
  const std::string report = appliance.path("/report");
  appliance.write(ALARM_SCRIPT_PATH, "");
  fs::permissions(appliance.path(ALARM_SCRIPT_PATH), fs::perms::owner_all);
  run_well({"set", file, "sensor_temp=th0", "sensor_hum=th0", "sensor_dew=th0"});
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
  const std::string endpoints = appliance.path(ENDPOINTS_PATH);
  const auto expect_checked = [&](const std::string& skipped) {
    EXPECT_EQ(run({"check", file, "--report", report}), skipped.empty() ? 0 : 1);
    EXPECT_EQ(out + errors, skipped.empty() ? "Nothing found.\n"
                                            : endpoints + skipped + " is skipped until that is corrected.\n");
    EXPECT_EQ(run({"check", "--quiet", "--report", report}), skipped.empty() ? 0 : 1);
    EXPECT_EQ(out + errors, "");
  };
  ::testing::internal::CaptureStderr();
  expect_checked("");
  appliance.write(ENDPOINTS_PATH, "windit = http://windit.example/\n");
  expect_checked(" line 1: remove the trailing slash. The line");
  fs::remove(endpoints);
  fs::create_directory(endpoints);
  expect_checked(": Is a directory. The file");
  EXPECT_EQ(run({"check", "--quiet", "--report", report, file + "s"}), 2);
  EXPECT_EQ(out + errors, "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");

  expect_refused({"check", "--report", report, file + "s"}, file + "s: No such file or directory", 2);
  expect_refused({"check", "--report", report + "s"}, report + "s: No such file or directory", 2);
  appliance.write("/report", "");
  expect_refused({"check", "--report", report}, report + ": empty", 2);
}

// And repeats no word that may be a password.
TEST_F(SettingsTool, TellsHowItIsUsed) {
  const std::pair<texts, const char*> COMMAND_LINES[] = {
      {{}, "no command given"},
      {{"new"}, "new takes one FILE"},
      {{"new", "--force"}, "unknown option --force"},
      {{"chekc"}, "no command \"chekc\"; did you mean check?"},
      {{"show", "a", "b", "c"}, "show takes at most one FILE and one NETWORK"},
      {{"show", file, "sensor"}, "no network \"sensor\"; did you mean sensors?"},
      {{"show", file, "nothing.like.it"}, "no network \"nothing.like.it\""},
      {{"show", "--all"}, "unknown option --all"},
      {{"names", file}, "names takes no arguments"},
      {{"set", "windfinder_password=topsecret"}, "set takes a FILE and at least one NAME=VALUE"},
      {{"set", "windfinder_password=topsecret", "windfinder_enabled=1"},
       "set takes a FILE before NAME=VALUE"},
      {{"set", "--windfinder_password=topsecret", "x=1"}, "set takes a FILE before NAME=VALUE"},
      {{"set", file, "windfinder_password topsecret=1"}, "windfinder_password is not followed by =VALUE"},
      {{"set", file, "windfinder_password:topsecret"}, "windfinder_password is not followed by =VALUE"},
      {{"set", file, "windfinder_password=", "topsecret"}, "a word after FILE is not followed by =VALUE"},
      {{"set", file, "cwop_enabled"}, "cwop_enabled is not followed by =VALUE"},
      {{"sensors", "th0"}, "sensors takes no \"th0\""},
      {{"sensors", "--report"}, "--report takes a FILE"},
      {{"check", "a", "b"}, "check takes at most one FILE"},
      {{"check", "--offline"}, "unknown option --offline"},
  };
  for (const auto& [arguments, error] : COMMAND_LINES)
    expect_refused(arguments, std::string(error) + "\nTry 'skypost-settings --help'.", 2);

  // A file may have the name of a setting with its value.
  const std::string odd = appliance.path("/home/a=b").string();
  fs::copy_file(file, odd);
  run_well({"set", odd, "windfinder_password=topsecret"});

  run_well({"--help"});
  EXPECT_NE(out.find("\n  skypost-settings check ["), std::string::npos) << out;
  run_well({"--version"});
  EXPECT_EQ(out, "skypost-settings " SKYPOST_VERSION "\n");
}

}  // namespace
}  // namespace skypost::testing
