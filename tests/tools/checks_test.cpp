// What is found wrong with a station: each fault, and nothing else. A good station, one change, and what each
// line that this brings begins with.

#include "settings_tool/checks.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "base/endpoints.h"
#include "base/paths.h"
#include "common/kept_text.h"
#include "run/run_list.h"
#include "settings/byte_order.h"
#include "settings/field_descriptions.h"
#include "sim/report.h"
#include "support/appliance_folder.h"
#include "support/station.h"
#include "transport/md5.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

// A station with every network on, its account, server and sensors set, on a board with all that it needs.
struct good_station {
  good_station() {
    setenv("NIMBULOGHW", "X86", 1);
    fill_settings(settings);
    for (const run_step& step : run_list()) settings.set_integer(*step.enabled, 1);
    settings.set_integer(wunderground_rapid_enabled, 1);
    settings.set_integer(weatherflow_rapid_enabled, 1);
    select_sensors(settings);
    for (const char* const directory : PULL_DIRECTORIES) folder.path(std::string(directory) + "file");
    for (const char* const program : {ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH, WGET})
      write_program(program, "#!/bin/sh\necho '-cares +https +ipv6'\n");
    static const std::string REPORT = sim::lifelike_report(NOON);
    appliance.report = REPORT;
    appliance.hardware_address = "00:1A:2B:3C:4D:5E";
    appliance.wget = folder.path(WGET);
    appliance.now = NOON;
    appliance.built = NOON - 1;
  }
  ~good_station() {
    reset_endpoints();
    station_settings = settings_record{};
    unsetenv("NIMBULOGHW");
  }
  good_station(const good_station&) = delete;
  good_station& operator=(const good_station&) = delete;

  void write_program(const std::string& path, const std::string& script) const {
    folder.write(path, script);
    fs::permissions(folder.path(path), fs::perms::owner_all);
  }

  void remove(const std::string& path) const { fs::remove_all(folder.path(path)); }

  // The value after a key of the report.
  void report_instead(const std::string& key, const std::string& value) {
    const std::size_t place = appliance.report.find(key + ' ') + key.size() + 1;
    appliance.report.replace(place, appliance.report.find('\n', place) - place, value);
  }

  void switch_off(carrier by) {
    for (const run_step& step : run_list())
      if (step.what->by == by) settings.set_integer(*step.enabled, 0);
  }

  // With the appliance's folder left out of every line.
  findings found() {
    std::string image(reinterpret_cast<const char*>(settings.bytes), SETTINGS_SIZE);
    if (is_gap_missing) image = image.substr(0, 20'580) + image.substr(20'584) + std::string(100, 'x');
    folder.write(SETTINGS_PATH, image);
    const std::string path = folder.path(SETTINGS_PATH);
    chmod(path.c_str(), file_mode);
    folder.write(ENDPOINTS_PATH, endpoints);
    kept_text complaints;
    load_endpoints(complaints.stream());
    appliance.skipped_endpoints = complaints.text();
    appliance.file = read_settings_file(path);
    station_settings = as_loaded(appliance.file);

    findings lines = findings_of(appliance);
    const std::string root = folder.path("/file").parent_path();
    for (std::string& line : lines)
      for (std::size_t place; (place = line.find(root)) != std::string::npos;) line.erase(place, root.size());
    return lines;
  }

  static constexpr std::time_t NOON = 1'336'298'400;
  static constexpr char WGET[] = "/usr/bin/wget";

  appliance_folder folder;
  settings_record settings;
  std::string endpoints =
      "meteonews = 127.0.0.1\nshnetz = http://127.0.0.1\nwindit = http://127.0.0.1\n"
      "wetterring = http://127.0.0.1\nregiowetter = http://127.0.0.1\nregiowetter_bw = http://127.0.0.1\n";
  mode_t file_mode = 0600;
  bool is_gap_missing = false;
  checked_appliance appliance{};
};

void expect_found(const findings& found, const std::vector<std::string>& starts) {
  std::string all;
  for (const std::string& line : found) all += line + '\n';
  EXPECT_EQ(found.size(), starts.size()) << all;
  for (std::size_t i = 0; i < std::min(found.size(), starts.size()); ++i)
    EXPECT_TRUE(found[i].starts_with(starts[i])) << starts[i] << "\nis not what it begins with:\n"
                                                 << found[i];
}

struct fault_case {
  const char* label;
  void (*change)(good_station& station);
  std::vector<std::string> starts;
};

void expect_each(const std::vector<fault_case>& cases) {
  for (const fault_case& row : cases) {
    SCOPED_TRACE(row.label);
    good_station station;
    row.change(station);
    expect_found(station.found(), row.starts);
  }
}

TEST(Checks, FindNothingWrongWithAGoodStation) {
  expect_each({
      {"all networks", [](good_station&) {}, {}},
      {"one network",
       [](good_station& station) {
         for (const carrier by : {carrier::http, carrier::file, carrier::aprs, carrier::mail})
           station.switch_off(by);
         station.settings.set_integer(wetterpage24_enabled, 1);
       },
       {}},
  });
}

TEST(Checks, FindWhatIsWrongWithTheSettingsFile) {
  expect_each({
      {"size",
       [](good_station& station) { station.is_gap_missing = true; },
       {"/home/nimbulog/nimbulog.conf: no known layout has its size of 65632 bytes"}},
      {"byte order",
       [](good_station& station) { convert_byte_order(station.settings); },
       {"/home/nimbulog/nimbulog.conf: its numbers are in the byte order of another kind of board"}},
      {"readable by the group",
       [](good_station& station) { station.file_mode = 0640; },
       {"/home/nimbulog/nimbulog.conf: others than its owner have access"}},
      {"readable by all",
       [](good_station& station) { station.file_mode = 0604; },
       {"/home/nimbulog/nimbulog.conf: others than its owner have access"}},
  });
}

TEST(Checks, FindSensorsThatAreNotThere) {
  expect_each({
      {"no temperature",
       [](good_station& station) { station.settings.set_text(sensor_temp, ""); },
       {"sensor_temp: no sensor is selected, so nothing at all is sent"}},
      {"no humidity",
       [](good_station& station) { station.settings.set_text(sensor_hum, ""); },
       {"sensor_hum: no sensor is selected, so nothing at all is sent"}},
      {"no dew point",
       [](good_station& station) { station.settings.set_text(sensor_dew, ""); },
       {"sensor_dew: no sensor is selected, so nothing at all is sent"}},
      {"no other sensor",
       [](good_station& station) {
         for (const text_field* const sensor : {&sensor_press, &sensor_rain, &sensor_wind, &sensor_uv,
                                                &sensor_solar, &sensor_indoor, &sensor_extra_temp0})
           station.settings.set_text(*sensor, "");
       },
       {}},
      {"temperature that is not in the report",
       [](good_station& station) { station.settings.set_text(sensor_temp, "th9"); },
       {"sensor_temp: there is no \"actual_th9_temp_c\" in the report, so nothing at all is sent"}},
      {"sensor of another kind",
       [](good_station& station) { station.settings.set_text(sensor_wind, "th0"); },
       {"sensor_wind: there is no \"actual_th0_dir_deg\" in the report, so it is not sent"}},
      {"UV index that is not in the report",
       [](good_station& station) { station.settings.set_text(sensor_uv, "uv1"); },
       {"sensor_uv: there is no \"actual_uv1_index\" in the report, so it is not sent"}},
      {"one value of several",
       [](good_station& station) { station.settings.set_text(sensor_indoor, "t1"); },
       {}},
      {"humidity that is no number",
       [](good_station& station) { station.report_instead("actual_th0_hum_rel", "low\x1b[2J"); },
       {"sensor_hum: the report's actual_th0_hum_rel is \"low\\x1b[2J\", which is not a number, so nothing"}},
      {"one value of several that is no number",
       [](good_station& station) { station.report_instead("actual_wind0_chill_c", "nan"); },
       {"sensor_wind: the report's actual_wind0_chill_c is \"nan\", which is not a number"}},
      {"no report",
       [](good_station& station) {
         station.appliance.report = "";
         station.appliance.report_fault = "data server: no report: why";
       },
       {"data server: no report: why, so nothing at all is sent"}},
  });
}

TEST(Checks, FindWhatIsWrongWithTheBoard) {
  expect_each({
      {"no network",
       [](good_station& station) {
         for (const carrier by : {carrier::http, carrier::file, carrier::aprs, carrier::mail})
           station.switch_off(by);
         station.settings.set_text(sensor_dew, "");
         station.appliance.report = "";
       },
       {"sensor_dew: ", "no network is switched on, so nothing is sent. Set one's NAME_enabled to 1.", ""}},
      {"clock",
       [](good_station& station) { station.appliance.now = station.appliance.built - 1; },
       {"clock: it says 2012-05-06 09:59 UTC, but this program was built after 2012-05-06 09:59 UTC"}},
      {"no wget",
       [](good_station& station) { station.remove(good_station::WGET); },
       {"/usr/bin/wget: it cannot be run (No such file or directory), so nothing is sent to AWEKAS, Wedaal, "
        "MeteoNews, "}},
      {"no wget and no need of it",
       [](good_station& station) {
         station.remove(good_station::WGET);
         station.switch_off(carrier::http);
       },
       {}},
      {"wget without TLS",
       [](good_station& station) { station.write_program(good_station::WGET, "#!/bin/sh\necho -https"); },
       {"/usr/bin/wget: it cannot speak https, so nothing is sent to MeteoNews, PWSweather, "
        "Weather Underground, Met Office WOW, Idokep. "}},
      {"wget without TLS and no need of it",
       [](good_station& station) {
         station.write_program(good_station::WGET, "#!/bin/sh\necho -https");
         for (const integer_field* const secured :
              {&meteonews_enabled, &hamweather_enabled, &wunderground_enabled, &metoffice_enabled})
           station.settings.set_integer(*secured, 0);
         station.endpoints += "idokep = http://127.0.0.1\n";
       },
       {}},
      {"pull directory that is missing",
       [](good_station& station) { station.remove("/srv/www"); },
       {"/srv/www/: no file can be written there (No such file or directory), so there are no new ones for "
        "AWEKAS, Wedaal, HetWeerActueel, "}},
      {"pull directory that is a file",
       [](good_station& station) {
         station.remove("/var/run/nimbulog/uploads");
         station.folder.write("/var/run/nimbulog/uploads", "");
       },
       {"/var/run/nimbulog/uploads/: no file can be written there (Not a directory)"}},
      {"pull directory that nobody needs",
       [](good_station& station) {
         station.remove("/srv/www");
         station.switch_off(carrier::file);
       },
       {}},
      {"no mail program",
       [](good_station& station) { station.remove(MAIL_PROGRAM_PATH); },
       {"/opt/sbin/sendmail: it cannot be run (No such file or directory), so no mail is sent to "
        "borgervejr. Install a mail program, such as esmtp, and link it there: ln -s /usr/bin/esmtp "
        "/opt/sbin/sendmail."}},
      {"no mail program and no need of it",
       [](good_station& station) {
         station.remove(MAIL_PROGRAM_PATH);
         station.switch_off(carrier::mail);
       },
       {}},
      {"no alarm script",
       [](good_station& station) { station.remove(ALARM_SCRIPT_PATH); },
       {"/home/nimbulog/alarm: it cannot be run (No such file or directory), so nobody is told"}},
      {"alarm script that is not executable",
       [](good_station& station) {
         fs::permissions(station.folder.path(ALARM_SCRIPT_PATH), fs::perms::owner_read);
       },
       {"/home/nimbulog/alarm: it cannot be run (Permission denied), so nobody is told"}},
      {"alarm script that is a directory",
       [](good_station& station) {
         station.remove(ALARM_SCRIPT_PATH);
         station.folder.path(std::string(ALARM_SCRIPT_PATH) + "/file");
       },
       {"/home/nimbulog/alarm: it cannot be run (not a regular file), so nobody is told"}},
  });
}

// Root may write anywhere, so another user looks.
TEST(Checks, FindAPullDirectoryThatCannotBeWrittenInto) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  constexpr uid_t NOBODY = 65'534;
  good_station station;
  fs::permissions(station.folder.path("/file").parent_path(), fs::perms(0755));
  chmod(station.folder.path("/srv/www").c_str(), 0777);
  station.found();  // writes the files
  for (const char* const program : {ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH, good_station::WGET})
    fs::permissions(station.folder.path(program), fs::perms(0755));
  ASSERT_EQ(seteuid(NOBODY), 0);
  const findings found = findings_of(station.appliance);
  ASSERT_EQ(seteuid(0), 0);
  expect_found(found, {station.folder.path("/var/run/nimbulog/uploads").string() +
                       "/: no file can be written there (Permission denied)"});
}

TEST(Checks, FindServersThatAreNotKnownOrNotThere) {
  expect_each({
      {"one that nobody knows",
       [](good_station& station) {
         station.endpoints.erase(station.endpoints.find("windit"), std::strlen("windit = http://127.0.0.1"));
       },
       {"windit_enabled: the server of WindIt is not known, so nothing reaches it. Set windit in "
        "/etc/skypost/endpoints to the network's server, or set windit_enabled to 0."}},
      {"one after a login in the URL",
       [](good_station& station) {
         setenv("NIMBULOGHW", "NSLU2", 1);
         station.endpoints += "meteonews = other.invalid:80\n";
       },
       {"meteonews_enabled: the server of MeteoNews is not known"}},
      {"the pro service of Idokep, which is on",
       [](good_station& station) {
         station.settings.set_integer(idokep_enabled, 2);
         station.endpoints += "idokep_pro = http://idokep.invalid\n";
       },
       {"idokep_enabled: the server of Idokep is not known, so nothing reaches it. Set idokep_pro in "}},
      {"the pro service of Idokep, which is off",
       [](good_station& station) { station.endpoints += "idokep_pro = http://idokep.invalid\n"; },
       {}},
      {"the rapid-fire server",
       [](good_station& station) { station.endpoints += "wunderground_rapid = http://rapid.invalid\n"; },
       {"wunderground_rapid_enabled: the rapid-fire server of Weather Underground is not known, so only the "
        "regular uploads are sent there. Set wunderground_rapid in /etc/skypost/endpoints to the network's "
        "server, or set wunderground_rapid_enabled to 0."}},
      {"one server for both forms",
       [](good_station& station) { station.endpoints += "weatherflow = http://weatherflow.invalid\n"; },
       {"weatherflow_enabled: the server of WeatherFlow is not known, so nothing reaches it."}},
      {"the rapid-fire server without rapid fire",
       [](good_station& station) {
         station.settings.set_integer(wunderground_rapid_enabled, 0);
         station.endpoints += "wunderground_rapid = http://rapid.invalid\n";
       },
       {}},
      {"the second of CWOP",
       [](good_station& station) { station.endpoints += "cwop_second = cwop.invalid\n"; },
       {"cwop_enabled: the second server of CWOP is not known, so only the other is tried. Set "
        "cwop_second "}},
      {"the first of CWOP",
       [](good_station& station) { station.endpoints += "cwop_first = cwop.invalid\n"; },
       {"cwop_enabled: the first server of CWOP is not known, so only the other is tried. Set cwop_first "
        "in"}},
      {"both of CWOP",
       [](good_station& station) {
         station.endpoints += "cwop_first = cwop.invalid\ncwop_second = cwop.invalid\n";
       },
       {"cwop_enabled: the first server of CWOP is not known, so nothing reaches it. ",
        "cwop_enabled: the second server of CWOP is not known, so nothing reaches it. "}},
      {"that of APRS",
       [](good_station& station) { station.settings.set_text(aprs_host, "aprs.invalid"); },
       {"aprs_enabled: the server of APRS is not known, so nothing reaches it. Set aprs_host to the "
        "network's server"}},
      {"an account that looks like a URL",
       [](good_station& station) {
         station.settings.set_text(anythingweather_user, "http://a.invalid/");
         station.settings.set_text(windfinder_name, "https://c.invalid");
       },
       {}},
      {"lines that are skipped",
       [](good_station& station) { station.endpoints = "nonsense\n" + station.endpoints + "windit = x/y\n"; },
       {"/etc/skypost/endpoints line 1: no \"name = value\". The line is skipped",
        "/etc/skypost/endpoints line 8: not a value for this name. The line is skipped"}},
  });
}

// A label of a name has 63 characters at most, so nobody has to be asked for this one.
TEST(Checks, ResolveNamesOnlyWhenTheyMay) {
  good_station station;
  for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row) {
    const std::string server = endpoint_value(endpoint{row});
    if (server.find('@') == std::string::npos)
      station.endpoints += std::string(endpoint_name(endpoint{row})) + " = " +
                           (server.starts_with("http") ? "https://" : "") + "127.0.0.1\n";
  }
  const std::string unknown = std::string(70, 'a') + ".example";
  station.endpoints += "wedaal = http://" + unknown + ":8080\n";
  expect_found(station.found(), {});
  station.appliance.online = true;
  expect_found(station.found(),
               {"wedaal_enabled: the server of Wedaal, \"" + unknown + "\", is not found ("});
  station.settings.set_text(aprs_host, unknown);
  expect_found(station.found(),
               {"wedaal_enabled: ", "aprs_enabled: the server of APRS, \"" + unknown + "\""});
}

// Every text and passcode of every network, from the list of settings alone.
TEST(Checks, FindWhateverIsMissingOfAnAccount) {
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    const std::string name = row.name;
    if (row.group == std::string("record") || row.group == std::string("appliance") ||
        row.group == std::string("sensors") ||
        !(row.field.is_text() || row.field.kind == field_kind::secret_integer))
      continue;
    SCOPED_TRACE(name);
    good_station station;
    if (row.field.is_text())
      station.settings.set_text(row.as_text(), "");
    else
      station.settings.set_integer(row.as_integer(), -1);
    if (name == "meteonews_mac")
      expect_found(station.found(), {});
    else
      expect_found(station.found(), {name + ": "});
  }
}

TEST(Checks, FindWhatElseKeepsANetworkFromItsStation) {
  expect_each({
      {"an address that others of the series share",
       [](good_station& station) {
         station.appliance.hardware_address = "0E:AD:00:00:00:03";
         station.settings.set_text(meteonews_mac, "");
       },
       {"meteonews_mac: MeteoNews is switched on without its hardware address. Set it, or set "
        "meteonews_enabled to 0."}},
      {"no hardware address",
       [](good_station& station) { station.appliance.hardware_address = ""; },
       {"eth0: ifconfig shows no hardware address, by which MeteoNews knows the station"}},
      {"no hardware address and no need of it",
       [](good_station& station) {
         station.appliance.hardware_address = "";
         station.settings.set_integer(meteonews_enabled, 0);
       },
       {}},
      {"a call sign that every answer has",
       [](good_station& station) { station.settings.set_text(cwop_id, ""); },
       {"cwop_id: CWOP is switched on without its CWOP number or call sign, and an empty one is found in "
        "every"}},
      {"a user that is too short",
       [](good_station& station) { station.settings.set_text(wedaal_user, "w"); },
       {"wedaal_user: it has fewer than two characters, so nothing is pushed to Wedaal"}},
      {"latitude that is not set",
       [](good_station& station) {
         for (const integer_field* const part : {&latitude_degrees, &latitude_minutes, &latitude_seconds})
           station.settings.set_integer(*part, -1);
       },
       {"latitude_degrees: the latitude is not set, so no valid position is sent to CWOP, APRS"}},
      {"position that is not needed",
       [](good_station& station) {
         station.settings.set_integer(latitude_degrees, -1);
         station.switch_off(carrier::aprs);
       },
       {}},
      {"position beyond its ends",
       [](good_station& station) {
         station.settings.set_integer(latitude_degrees, 91);
         station.settings.set_integer(latitude_minutes, 60);
         station.settings.set_integer(latitude_seconds, -2);
         station.settings.set_integer(longitude_degrees, 181);
         station.settings.set_integer(longitude_minutes, -2);
         station.settings.set_integer(longitude_seconds, 60);
       },
       {"latitude_degrees: 91 is out of range, so a wrong position is sent to CWOP, APRS",
        "latitude_minutes: ", "latitude_seconds: ", "longitude_degrees: 181 is out of range",
        "longitude_minutes: ", "longitude_seconds: "}},
      {"position at its ends",
       [](good_station& station) {
         station.settings.set_integer(latitude_degrees, 90);
         station.settings.set_integer(latitude_minutes, 0);
         station.settings.set_integer(latitude_seconds, 0);
         station.settings.set_integer(longitude_degrees, 179);
         station.settings.set_integer(longitude_minutes, 59);
         station.settings.set_integer(longitude_seconds, 59);
       },
       {}},
      {"position a little beyond its ends",
       [](good_station& station) {
         station.settings.set_integer(latitude_degrees, 90);
         station.settings.set_integer(latitude_minutes, 59);
         station.settings.set_integer(latitude_seconds, 0);
         station.settings.set_integer(longitude_degrees, 180);
         station.settings.set_integer(longitude_minutes, 0);
         station.settings.set_integer(longitude_seconds, 1);
       },
       {"latitude_degrees: a latitude of 90 degrees 59 minutes is more than 90 degrees, so a wrong position",
        "longitude_degrees: a longitude of 180 degrees 1 seconds is more than 180 degrees, so a wrong"}},
      {"parts of a position that are not set",
       [](good_station& station) {
         station.settings.set_integer(latitude_seconds, -1);
         station.settings.set_integer(longitude_minutes, -1);
       },
       {"latitude_seconds: it is not set, so a wrong position is sent to CWOP, APRS. Set it to 0 to 59.",
        "longitude_minutes: it is not set"}},
      {"intervals that are replaced",
       [](good_station& station) {
         station.settings.set_integer(wunderground_rapid_interval, -1);
         station.settings.set_integer(weatherflow_rapid_interval, 0);
       },
       {"wunderground_rapid_interval: -1 seconds is too short, so 30 are used",
        "weatherflow_rapid_interval: 0 seconds is too short, so 30 are used"}},
      {"intervals without rapid fire",
       [](good_station& station) {
         station.settings.set_integer(wunderground_rapid_interval, 0);
         station.settings.set_integer(wunderground_rapid_enabled, 0);
         station.settings.set_integer(weatherflow_rapid_interval, 0);
         station.settings.set_integer(weatherflow_enabled, 0);
       },
       {}},
  });
}

// Everything that can be wrong at once.
TEST(Checks, BeginWithTheWorstAndTellNoSecret) {
  good_station station;
  std::vector<std::string> secrets = {"Geheim"};  // in whatever form the characters around it are
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_secret()) continue;
    const std::string secret =
        row.field.is_text() ? "\"Geheim" + std::to_string(secrets.size()) + "&\n" : "987654321";
    if (row.field.is_text())
      station.settings.set_text(row.as_text(), secret);
    else
      station.settings.set_integer(row.as_integer(), std::stoi(secret));
    fixed_text<32> digest;
    md5_hex(secret, digest);
    secrets.insert(secrets.end(), {secret, digest.c_str()});
  }
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_text() && !row.field.is_secret()) station.settings.set_text(row.as_text(), "");
  for (const integer_field* const part :
       {&latitude_degrees, &longitude_degrees, &wunderground_rapid_interval})
    station.settings.set_integer(*part, -1);
  station.settings.set_text(sensor_uv, "uv9");
  station.settings.set_text(sensor_hum, "th9");
  for (const char* const path : {"/srv/www", ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH, good_station::WGET})
    station.remove(path);
  station.endpoints = "nonsense\n";
  station.file_mode = 0644;
  station.is_gap_missing = true;
  station.appliance.now = 0;
  station.appliance.hardware_address = "";

  const findings found = station.found();
  std::string all;
  for (const std::string& line : found) all += line + '\n';
  for (const std::string& secret : secrets) EXPECT_EQ(all.find(secret), std::string::npos) << secret;
  std::size_t place = 0;
  for (const char* const start :
       {"/home/nimbulog/nimbulog.conf: no known layout",
        "sensor_temp: ", "sensor_hum: ", "clock: ", "/usr/bin/wget: ", "/srv/www/: ", "/opt/sbin/sendmail: ",
        "/etc/skypost/endpoints line 1: ", "windit_enabled: ", "windfinder_name: ", "latitude_degrees: ",
        "awekas_user: ", "/home/nimbulog/alarm: ", "sensor_uv: ", "wunderground_rapid_interval: ",
        "/home/nimbulog/nimbulog.conf: others"}) {
    const std::size_t next = ("\n" + all).find(std::string("\n") + start, place);
    EXPECT_NE(next, std::string::npos) << start << " is not in its place in\n" << all;
    if (next != std::string::npos) place = next;
  }
}

}  // namespace
}  // namespace skypost::testing
