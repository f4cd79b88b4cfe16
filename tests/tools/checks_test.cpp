// What is found wrong with a station: each fault, and nothing else. A good station, one change, and what each
// line that this brings begins with.

#include "settings_tool/checks.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <regex>

#include "base/endpoints.h"
#include "base/paths.h"
#include "common/kept_text.h"
#include "compose/md5.h"
#include "run/run_list.h"
#include "settings/byte_order.h"
#include "settings_tool/field_lookup.h"
#include "sim/report.h"
#include "support/appliance_folder.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

using texts = std::vector<std::string>;

// A station with every network on, its account, server and sensors set, on a board with all that it needs.
struct good_station {
  good_station() {
    setenv("NIMBULOGHW", "X86", 1);
    switch_everything_on(settings);
    for (const char* const directory : PULL_DIRECTORIES) folder.path(std::string(directory) + "file");
    for (const char* const program : {ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH, WGET})
      write_program(program, "#!/bin/sh\necho '-cares +https +ipv6'\n");
  }
  ~good_station() {
    reset_endpoints();
    station_settings = settings_record{};
    unsetenv("NIMBULOGHW");
  }
  good_station(const good_station&) = delete;
  good_station& operator=(const good_station&) = delete;

  // Each a setting, "name=value", another line of the endpoint file, or the path of what is not there.
  void change(const texts& lines) {
    for (const std::string& line : lines) {
      const std::size_t equals = line.find('=');
      if (line.starts_with('/'))
        fs::remove_all(folder.path(line));
      else if (equals == std::string::npos || line[equals - 1] == ' ')
        endpoints += line + '\n';
      else if (const field_description& row = field_named(line.substr(0, equals)); row.field.is_text())
        settings.set_text(row.as_text(), line.substr(equals + 1));
      else
        settings.set_integer(row.as_integer(), std::stoi(line.substr(equals + 1)));
    }
  }

  void write_program(const std::string& path, const std::string& script) const {
    folder.write(path, script);
    fs::permissions(folder.path(path), fs::perms::owner_all);
  }

  // The value after a key of the report.
  void report_instead(const std::string& key, const std::string& value) {
    const std::size_t place = appliance.report.find(key + ' ') + key.size() + 1;
    appliance.report.replace(place, appliance.report.find('\n', place) - place, value);
  }

  void switch_all_off() {
    for (const run_step& step : run_list()) settings.set_integer(*step.enabled, 0);
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
    for (std::string& line : lines) line = std::regex_replace(line, std::regex(root), "");
    return lines;
  }

  static constexpr std::time_t NOON = 1'336'298'400;
  static constexpr char WGET[] = "/usr/bin/wget";

  appliance_folder folder;
  settings_record settings;
  std::string endpoints = local_servers();
  mode_t file_mode = 0600;
  bool is_gap_missing = false;
  checked_appliance appliance{
      {}, sim::lifelike_report(NOON), "", "", "00:1A:2B:3C:4D:5E", folder.path(WGET), NOON, NOON - 1, false};
};

// Every line begins as told, and there are no others.
void expect_found(const findings& found, const texts& starts) {
  texts beginnings = found;
  for (std::size_t i = 0; i < found.size() && i < starts.size(); ++i)
    beginnings[i].resize(std::min(found[i].size(), starts[i].size()));
  EXPECT_EQ(beginnings, starts);
}

struct fault_case {
  texts changes;
  texts starts;
  void (*change)(good_station& it) = [](good_station&) {};
};

void expect_each(const std::vector<fault_case>& cases) {
  for (const fault_case& row : cases) {
    SCOPED_TRACE("row " + std::to_string(&row - cases.data()));
    good_station station;
    station.change(row.changes);
    row.change(station);
    expect_found(station.found(), row.starts);
  }
}

TEST(Checks, FindNothingWrongWithAGoodStation) {
  expect_each({
      {{}, {}},
      // One network, on a board without what the others need.
      {{"latitude_degrees=-1", good_station::WGET, MAIL_PROGRAM_PATH},
       {},
       [](good_station& it) {
         it.switch_all_off();
         it.change({"wetterpage24_enabled=1"});
         it.appliance.hardware_address = "";
       }},
      // No pull files, and no server that wants TLS.
      {{"idokep = http://127.0.0.1", "/srv/www"},
       {},
       [](good_station& it) {
         it.switch_all_off();
         it.change({"idokep_enabled=1"});
         it.write_program(good_station::WGET, "#!/bin/sh\necho -https");
       }},
      {{"sensor_press=", "sensor_rain=", "sensor_wind=", "sensor_uv=", "sensor_solar=", "sensor_indoor=",
        "sensor_extra_temp0="},
       {}},
      {{"sensor_indoor=t1"}, {}},  // one value of several
      {{"anythingweather_user=http://a.invalid/", "windfinder_name=https://c.invalid"}, {}},
      // What only what is off would use.
      {{"idokep_pro = http://idokep.invalid", "wunderground_rapid = http://rapid.invalid",
        "wunderground_rapid_enabled=0", "wunderground_rapid_interval=0", "weatherflow_enabled=0",
        "weatherflow_rapid_interval=0"},
       {}},
      // The ends of a position.
      {{"latitude_degrees=90", "latitude_minutes=0", "latitude_seconds=0", "longitude_degrees=179",
        "longitude_minutes=59", "longitude_seconds=59"},
       {}},
  });
}

TEST(Checks, FindWhatIsWrongWithTheSettingsFile) {
  const std::string file = "/home/nimbulog/nimbulog.conf: ";
  expect_each({
      {{},
       {file + "its numbers are in the byte order of another kind of board",
        file + "others than its owner have access"},
       [](good_station& it) {
         convert_byte_order(it.settings);
         it.file_mode = 0640;
       }},
      {{},
       {file + "no known layout has its size of 65632 bytes", file + "others than its owner have access"},
       [](good_station& it) {
         it.is_gap_missing = true;
         it.file_mode = 0604;
       }},
  });
}

TEST(Checks, FindSensorsThatAreNotThere) {
  expect_each({
      {{"sensor_temp=", "sensor_hum=", "sensor_dew="},
       {"sensor_temp: no sensor is selected, so nothing at all is sent",
        "sensor_hum: no sensor is selected, so nothing at all is sent",
        "sensor_dew: no sensor is selected, so nothing at all is sent"}},
      {{"sensor_temp=th9", "sensor_wind=th0", "sensor_uv=uv1", "sensor_rain=rain7"},
       {"sensor_temp: there is no \"actual_th9_temp_c\" in the report, so nothing at all is sent",
        "sensor_rain: there is no \"actual_rain7_rate_mm\" in the report, so this value is not sent",
        "sensor_wind: there is no \"actual_th0_dir_deg\" in the report, so this value is not sent",
        "sensor_uv: there is no \"actual_uv1_index\" in the report, so this value is not sent"},
       [](good_station& it) { it.appliance.report += "day1_th9_temp_c 21.5\nday1_rain7_total_mm 1.2\n"; }},
      {{},
       {"sensor_hum: the report's \"actual_th0_hum_rel\" is \"low\\x1b[2J\", which counts as no value, so "
        "nothing",
        "sensor_wind: the report's \"actual_wind0_chill_c\" is \"nan\", which counts as no value"},
       [](good_station& it) {
         it.report_instead("actual_th0_hum_rel", "low\x1b[2J");
         it.report_instead("actual_wind0_chill_c", "nan");
       }},
      {{},
       {"data server: no report: why, so nothing at all is sent"},
       [](good_station& it) {
         it.appliance.report = "";
         it.appliance.report_fault = "data server: no report: why";
       }},
  });
}

TEST(Checks, FindWhatIsWrongWithTheBoard) {
  expect_each({
      {{"sensor_dew="},
       {"sensor_dew: ", "no network is switched on, so nothing is sent. Set one's NAME_enabled to 1.", ""},
       [](good_station& it) {
         it.switch_all_off();
         it.appliance.report = "";
       }},
      {{good_station::WGET, MAIL_PROGRAM_PATH, ALARM_SCRIPT_PATH},
       {"/usr/bin/wget: it cannot be run (No such file or directory), so nothing is sent to AWEKAS, Wedaal, "
        "MeteoNews, ",
        "/opt/sbin/sendmail: it cannot be run (No such file or directory), so no mail is sent to "
        "borgervejr. Install a mail program, such as esmtp, and link it there: ln -s /usr/bin/esmtp "
        "/opt/sbin/sendmail.",
        "/home/nimbulog/alarm: it cannot be run (No such file or directory), so nobody is told"}},
      {{"/srv/www", "/var/run/nimbulog/uploads"},
       {"/usr/bin/wget: it cannot speak https, so nothing is sent to MeteoNews, PWSweather, "
        "Weather Underground, Met Office WOW, Idokep. ",
        "/srv/www/: no file can be written there (No such file or directory), so there are no new ones for "
        "AWEKAS, Wedaal, HetWeerActueel, ",
        "/var/run/nimbulog/uploads/: no file can be written there (Not a directory)",
        "/home/nimbulog/alarm: it cannot be run (Permission denied), so nobody is told"},
       [](good_station& it) {
         it.write_program(good_station::WGET, "#!/bin/sh\necho -https");
         it.folder.write("/var/run/nimbulog/uploads", "");
         fs::permissions(it.folder.path(ALARM_SCRIPT_PATH), fs::perms::owner_read);
       }},
      {{ALARM_SCRIPT_PATH},
       {"clock: it says 2012-05-06 09:59 UTC, but this program was built after 2012-05-06 09:59 UTC",
        "/home/nimbulog/alarm: it cannot be run (not a regular file), so nobody is told"},
       [](good_station& it) {
         it.appliance.now = it.appliance.built - 1;
         it.folder.path(std::string(ALARM_SCRIPT_PATH) + "/file");
       }},
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
      // WeatherFlow has one server for both of its forms.
      {{"windit = http://windit.invalid", "wunderground_rapid = http://rapid.invalid",
        "weatherflow = http://weatherflow.invalid"},
       {"windit_enabled: the server of WindIt is not known, so nothing reaches it. Set windit in "
        "/etc/skypost/endpoints to the network's server, or set windit_enabled to 0.",
        "wunderground_rapid_enabled: the rapid-fire server of Weather Underground is not known, so only the "
        "regular uploads are sent there. Set wunderground_rapid in /etc/skypost/endpoints to the network's "
        "server, or set wunderground_rapid_enabled to 0.",
        "weatherflow_enabled: the server of WeatherFlow is not known, so nothing reaches it."}},
      {{"idokep_enabled=2", "idokep_pro = http://idokep.invalid", "windit = http://idokep.invalid",
        "cwop_second = cwop.invalid", "aprs_host=aprs.invalid"},
       {"windit_enabled: the server of WindIt is not known, so nothing reaches it. Set windit in ",
        "cwop_enabled: the second server of CWOP is not known, so only the other is tried. Set cwop_second ",
        "aprs_enabled: the server of APRS is not known, so nothing reaches it. Set aprs_host to the "
        "network's server",
        "idokep_enabled: the server of Idokep is not known, so nothing reaches it. Set idokep_pro in "}},
      // After a login in the URL.
      {{"meteonews = other.invalid:80", "cwop_first = cwop.invalid"},
       {"/etc/skypost/endpoints line 1: expected \"name = value\". The line is skipped",
        "/etc/skypost/endpoints line 2: invalid value for this name. The line is skipped",
        "meteonews_enabled: the server of MeteoNews is not known",
        "cwop_enabled: the first server of CWOP is not known, so only the other is tried. Set cwop_first in"},
       [](good_station& it) {
         setenv("NIMBULOGHW", "NSLU2", 1);
         it.endpoints = "nonsense\nwindit = x/y\n" + it.endpoints;
       }},
      // One for several networks.
      {{"windit = http://a.invalid", "shnetz = http://a.invalid", "regiowetter = http://a.invalid",
        "regiowetter_bw = http://a.invalid"},
       {"shnetz_enabled: the server of SH-Netz is not known, so nothing reaches it. Set shnetz in ",
        "windit_enabled: the server of WindIt is not known, so nothing reaches it. Set windit in ",
        "regiowetter_enabled: the server of Regiowetter is not known, so nothing reaches it. Set regiowetter "
        "in ",
        "regiowetter_bw_enabled: the server of Regiowetter-BW is not known, so nothing reaches it. Set "
        "regiowetter_bw in "}},
      {{"cwop_first = cwop.invalid", "cwop_second = cwop.invalid"},
       {"cwop_enabled: the first server of CWOP is not known, so nothing reaches it. ",
        "cwop_enabled: the second server of CWOP is not known, so nothing reaches it. "}},
  });
}

// A label of a name has 63 characters at most, so nobody has to be asked for this one.
TEST(Checks, ResolveNamesOnlyWhenTheyMay) {
  good_station station;
  const std::string unknown = std::string(70, 'a') + ".example";
  station.change({"wedaal = http://" + unknown + ":8080", "aprs_host=" + unknown});
  expect_found(station.found(), {});
  station.appliance.online = true;
  expect_found(station.found(), {"wedaal_enabled: the server of Wedaal, \"" + unknown + "\", is not found (",
                                 "aprs_enabled: the server of APRS, \"" + unknown + "\""});
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
    station.change({name + (row.field.is_text() ? "=" : "=-1")});
    expect_found(station.found(), name == "meteonews_mac" ? texts{} : texts{name + ": "});
  }
}

TEST(Checks, FindWhatElseKeepsANetworkFromItsStation) {
  expect_each({
      // A hardware address that others of the series share.
      {{"meteonews_mac=", "latitude_degrees=-1", "latitude_minutes=-1", "latitude_seconds=-1",
        "longitude_minutes=-1", "wedaal_user=w"},
       {"meteonews_mac: MeteoNews is switched on without its hardware address. Set it, or set "
        "meteonews_enabled to 0.",
        "latitude_degrees: the latitude is not set, so no valid position is sent to CWOP, APRS",
        "longitude_minutes: it is not set, so a wrong position is sent to CWOP, APRS. Set it to 0 to 59.",
        "wedaal_user: it has fewer than two characters, so nothing is pushed to Wedaal"},
       [](good_station& it) { it.appliance.hardware_address = "0E:AD:00:00:00:03"; }},
      {{"cwop_id=", "wunderground_rapid_interval=-1", "weatherflow_rapid_interval=0"},
       {"eth0: ifconfig shows no hardware address after \"HWaddr\", by which MeteoNews knows the station",
        "cwop_id: CWOP is switched on without its CWOP number or call sign, and an empty one is found in "
        "every",
        "wunderground_rapid_interval: -1 seconds is too short, so 30 are used",
        "weatherflow_rapid_interval: 0 seconds is too short, so 30 are used"},
       [](good_station& it) { it.appliance.hardware_address = ""; }},
      {{"latitude_degrees=91", "latitude_minutes=60", "latitude_seconds=-2", "longitude_degrees=181",
        "longitude_minutes=-2", "longitude_seconds=60"},
       {"latitude_degrees: 91 is out of range, so a wrong position is sent to CWOP, APRS",
        "latitude_minutes: ", "latitude_seconds: ", "longitude_degrees: 181 is out of range",
        "longitude_minutes: ", "longitude_seconds: "}},
      {{"cwop_id=N0CALL\rN0CALL", "aprs_port=-1"},
       {"cwop_id: it holds a line break, so nothing is sent to CWOP. Set it to the call sign alone.",
        "aprs_port: 4294967295 is out of range, so the server of APRS is not reached. Set it to 1 to "
        "65535."}},
      {{"latitude_degrees=90", "latitude_minutes=59", "latitude_seconds=0", "longitude_degrees=180",
        "longitude_minutes=0", "longitude_seconds=1"},
       {"latitude_degrees: a latitude of 90 degrees 59 minutes is more than 90 degrees, so a wrong position",
        "longitude_degrees: a longitude of 180 degrees 1 seconds is more than 180 degrees, so a wrong"}},
  });
}

// Everything that can be wrong at once.
TEST(Checks, BeginWithTheWorstAndTellNoSecret) {
  good_station station;
  const std::string secret = "\"Geheim&\n";
  md5_text digest;
  md5_hex(secret, digest);
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_text())
      station.settings.set_text(row.as_text(), row.field.is_secret() ? secret : "");
    else if (row.field.is_secret())
      station.settings.set_integer(row.as_integer(), 987'654'321);
  station.endpoints = "nonsense\n";
  station.change({"latitude_degrees=-1", "longitude_degrees=-1", "wunderground_rapid_interval=-1",
                  "sensor_uv=uv9", "sensor_hum=th9", "/srv/www", ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH,
                  good_station::WGET});
  station.file_mode = 0644;
  station.is_gap_missing = true;
  station.appliance.now = 0;
  station.appliance.hardware_address = "";

  std::string all = "\n";
  for (const std::string& line : station.found()) all += line + '\n';
  for (const char* const betrayed : {"Geheim", "987654321", digest.c_str()})
    EXPECT_EQ(all.find(betrayed), std::string::npos) << betrayed;
  std::size_t place = 0;
  for (const char* const start :
       {"/home/nimbulog/nimbulog.conf: no known layout",
        "sensor_temp: ", "sensor_hum: ", "clock: ", "/usr/bin/wget: ", "/srv/www/: ", "/opt/sbin/sendmail: ",
        "/etc/skypost/endpoints line 1: ", "windit_enabled: ", "windfinder_name: ", "latitude_degrees: ",
        "awekas_user: ", "/home/nimbulog/alarm: ", "sensor_uv: ", "wunderground_rapid_interval: ",
        "/home/nimbulog/nimbulog.conf: others"}) {
    const std::size_t next = all.find(std::string("\n") + start, place);
    ASSERT_NE(next, std::string::npos) << start << " is not in its place in" << all;
    place = next;
  }
}

}  // namespace
}  // namespace skypost::testing
