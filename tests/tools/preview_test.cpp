// The preview of what a run would send: secrets in none of it, the reasons for what is not sent and for what
// is missing, and pages that hostile texts cannot change.

#include "preview/preview.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <ctime>
#include <regex>
#include <sstream>

#include "base/paths.h"
#include "base/process_state.h"
#include "common/errors.h"
#include "live/report_parser.h"
#include "preview/hidden_secrets.h"
#include "preview/html.h"
#include "preview/preview_tool.h"
#include "preview/text.h"
#include "run/run_list.h"
#include "settings/field_descriptions.h"
#include "sim/report.h"
#include "support/appliance_folder.h"
#include "support/station.h"
#include "transport/md5.h"

namespace skypost::testing {
namespace {

using texts = std::vector<std::string>;

constexpr long long LONG_AGO = 9'999;

class Preview : public ::testing::Test {
 protected:
  Preview() {
    fill_settings(station_settings);
    for (const settings_field& field : SETTINGS_FIELDS)
      if (field.kind == field_kind::flag) set(static_cast<const integer_field&>(field), 1);
    select_sensors(station_settings);
    reset_endpoints();
  }

  static void set(const integer_field& field, std::int32_t value) {
    station_settings.set_integer(field, value);
  }
  static void set(const text_field& field, std::string_view text) { station_settings.set_text(field, text); }

  preview_page page(const texts& networks = {}) {
    reset_live_record();
    parse_live_reply(report.c_str());
    return {"nimbulog.conf",
            "report",
            "noon",
            {},
            make_previews({.from = {station_settings, live_record, spring_morning(), host},
                           .report = report.c_str(),
                           .last_run_age = last_run_age,
                           .with_secrets = with_secrets},
                          networks)};
  }

  step_preview one(const std::string& network) {
    const preview_page shown = page({network});
    EXPECT_EQ(shown.steps.size(), 1U);
    return shown.steps.at(0);
  }

  texts ids(const texts& networks = {}) {
    texts result;
    for (const step_preview& step : page(networks).steps) result.push_back(step.id);
    return result;
  }

  void replace_in_report(const char* pattern, const char* replacement) {
    report = std::regex_replace(report, std::regex(pattern), replacement);
  }

  std::string report = sim::lifelike_report(spring_morning().seconds);
  board host = ORDINARY_BOARD;
  long long last_run_age = LONG_AGO;
  bool with_secrets = false;
};

std::string as_text(const preview_page& page) {
  std::ostringstream out;
  print_text(out, page);
  return out.str();
}

std::string as_html(const preview_page& page) {
  std::ostringstream out;
  print_html(out, page);
  return out.str();
}

texts all_ids() {
  texts ids;
  for (const outgoing* const what : everything_handed_out()) ids.emplace_back(what->id);
  return ids;
}

// A secret, and what would betray it whatever it is escaped or encoded for: letters and digits that are
// nowhere else.
struct planted_secret {
  const char* field;
  std::string mark;
  std::string digest;
};

// Puts a secret of its own into every secret field, with characters that are escaped somewhere around its
// mark.
std::vector<planted_secret> plant_secrets() {
  std::vector<planted_secret> planted;
  int number = 0;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_secret()) continue;
    planted_secret secret = {row.name, "Zq" + std::to_string(100 + number++) + "Qz", {}};
    if (row.field.is_text()) {
      const std::string text = " \"`$&#<>'%;" + secret.mark + "\\";
      station_settings.set_text(row.as_text(), text);
      fixed_text<32> digest;
      secret.digest = md5_hex(text, digest).view();
    } else {
      secret.mark = "31337";
      station_settings.set_integer(row.as_integer(), 31'337);
    }
    planted.push_back(secret);
  }
  return planted;
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(Preview, ShowsNoSecretUnlessAsked) {
  const std::vector<planted_secret> secrets = plant_secrets();
  const board boards[] = {ORDINARY_BOARD, {"NSLU2", ORDINARY_BOARD.hardware_address}};
  for (const board& one_board : boards) {
    host = one_board;
    with_secrets = false;
    const std::string hidden = as_text(page()) + as_html(page());
    with_secrets = true;
    const std::string text = as_text(page());
    const std::string html = as_html(page());
    for (const planted_secret& secret : secrets) {
      EXPECT_FALSE(contains(hidden, secret.mark)) << secret.field;
      EXPECT_TRUE(secret.digest.empty() || !contains(hidden, secret.digest.substr(0, 8))) << secret.field;
      // Or this test could not fail.
      for (const std::string& shown : {text, html})
        EXPECT_TRUE(contains(shown, secret.mark) || contains(shown, secret.digest)) << secret.field;
    }
  }
}

// What is composed in place of a secret is shown no more than the secret is, nor what is not from one hidden.
TEST_F(Preview, HidesWhatComesFromASecretAndNothingElse) {
  const preview_page hidden = page();
  with_secrets = true;
  const preview_page shown = page();
  ASSERT_EQ(hidden.steps.size(), shown.steps.size());
  const texts expected = {"awekas_push val 2",
                          "wedaal_push val 2",
                          "meteonews login password",
                          "sauerlandwetter val 4",
                          "shnetz daten 2",
                          "windfinder password",
                          "pwsweather PASSWORD",
                          "wetterarchiv passwort",
                          "anythingweather password",
                          "wetterring secret",
                          "regiowetter_bw Data 23",
                          "wunderground PASSWORD",
                          "wunderground_rapid PASSWORD",
                          "weatherflow PASSWORD",
                          "weatherflow_rapid PASSWORD",
                          "metoffice siteAuthenticationKey",
                          "weatherbug PASSWORD",
                          "idokep pass"};
  texts different;
  const auto compare = [&](const std::string& id, const auto& one, const auto& other) {
    ASSERT_EQ(one.size(), other.size());
    for (std::size_t i = 0; i < one.size(); ++i) {
      ASSERT_EQ(one[i].fields.size(), other[i].fields.size());
      for (std::size_t field = 0; field < one[i].fields.size(); ++field) {
        if (one[i].fields[field] == other[i].fields[field]) continue;
        EXPECT_EQ(one[i].fields[field], HIDDEN);
        different.push_back(id + ' ' + one[i].name +
                            (one[i].is_record() ? ' ' + std::to_string(field + 1) : ""));
      }
    }
  };
  for (std::size_t i = 0; i < hidden.steps.size(); ++i) {
    const step_preview& one = hidden.steps[i];
    const step_preview& other = shown.steps[i];
    compare(one.id + " login", one.request.login, other.request.login);
    compare(one.id, one.request.parameters, other.request.parameters);
    EXPECT_EQ(one.request.server + one.request.path, other.request.server + other.request.path);
    EXPECT_EQ(std::regex_replace(one.text, std::regex("pass \\*\\*\\*"), "pass 12345"), other.text);
  }
  EXPECT_EQ(different, expected);
  EXPECT_EQ(one("aprs").text.substr(0, 39), "User DL1ABC-13 pass 12345 vers nimbulog");
  with_secrets = false;
  EXPECT_EQ(one("aprs").text.substr(0, 37), "User DL1ABC-13 pass *** vers nimbulog");
}

// A password that nobody has entered is the commonest fault.
TEST_F(Preview, TellsASecretOrANameThatIsNotSet) {
  EXPECT_EQ(one("windfinder").unset, texts{});
  set(windfinder_name, "");
  set(windfinder_password, "");
  set(aprs_passcode, -1);
  const step_preview windfinder = one("windfinder");
  EXPECT_EQ(windfinder.unset, (texts{"windfinder_name", "windfinder_password"}));
  EXPECT_EQ(windfinder.request.parameters.at(1).value(), "");
  EXPECT_EQ(one("aprs").unset, texts{"aprs_passcode"});
  EXPECT_TRUE(contains(one("aprs").text, " pass -1 "));
}

TEST_F(Preview, ShowsWhatIsOnOrNamed) {
  EXPECT_EQ(ids(), all_ids());
  set(weatherflow_rapid_enabled, 0);
  set(wunderground_enabled, 0);
  texts without = all_ids();
  for (const char* const id : {"wunderground", "wunderground_rapid", "weatherflow_rapid"})
    std::erase(without, id);
  EXPECT_EQ(ids(), without);

  set(wunderground_enabled, 1);
  EXPECT_EQ(ids({"Weather Underground"}), (texts{"wunderground", "wunderground_rapid"}));
  EXPECT_EQ(ids({"wunderground_rapid"}), texts{"wunderground_rapid"});
  EXPECT_EQ(ids({"weatherflow"}), texts{"weatherflow"});
  EXPECT_EQ(ids({"weatherflow-rapid"}), texts{"weatherflow_rapid"});
  EXPECT_EQ(ids({"AWEKAS", "SH-Netz"}), (texts{"awekas_pull", "awekas_push", "shnetz"}));
  EXPECT_EQ(ids({"awekas-push"}), texts{"awekas_push"});
  // Its failures, its switch and its settings have three different names.
  for (const char* const name : {"HAMweather/weather4u", "hamweather", "PWSweather"})
    EXPECT_EQ(ids({name}), texts{"pwsweather"}) << name;
  for (const char* const nothing : {"", "weather", "awekas_pushy"})
    EXPECT_THROW(ids({nothing}), usage_error) << nothing;
}

TEST_F(Preview, TellsWhyARunWouldPassItOver) {
  EXPECT_EQ(one("wetterarchiv").obstacles, texts{});
  last_run_age = 961;
  EXPECT_EQ(one("wetterarchiv").obstacles, texts{});
  last_run_age = 960;
  EXPECT_EQ(one("wetterarchiv").obstacles,
            texts{"its last turn was 960 seconds ago; the next comes after 960"});
  EXPECT_EQ(one("idokep").obstacles, texts{});

  set(wedaal_user, "w");
  EXPECT_EQ(one("wedaal_push").obstacles, texts{"wedaal_user needs two characters or more"});
  EXPECT_EQ(one("wedaal_pull").obstacles, texts{});

  set(idokep_enabled, 0);
  EXPECT_EQ(one("idokep").obstacles, texts{"switched off: idokep_enabled is 0"});
  set(weatherflow_rapid_enabled, 0);
  EXPECT_EQ(one("weatherflow_rapid").obstacles, texts{"switched off: weatherflow_rapid_enabled is 0"});

  set(cwop_id, "N0CALL\nUser X");
  EXPECT_EQ(one("cwop").obstacles, texts{"cwop_id holds a line break"});
  EXPECT_EQ(one("aprs").obstacles, texts{});
}

TEST_F(Preview, TellsWhichOutdoorValueMakesTheDataStale) {
  replace_in_report("actual_th0_dew_c [^\n]*", "actual_th0_dew_c ---");
  set(sensor_hum, "");
  for (const step_preview& step : page().steps)
    EXPECT_EQ(step.obstacles, (texts{"outdoor value missing: sensor_hum (no sensor selected)",
                                     "outdoor value missing: actual_th0_dew_c (\"---\" in the report)"}));
  // What is there is shown all the same.
  EXPECT_TRUE(contains(as_text(page({"idokep"})), "    hom       "));
}

// A run has a rule of its own for when it sends nothing.
TEST_F(Preview, TakesTheSameDataForStaleAsARun) {
  const std::string complete = report;
  for (const std::string key :
       {"th0_temp_c", "th0_hum_rel", "th0_dew_c", "thb0_press_hpa", "wind0_speed_ms"}) {
    report = complete;
    replace_in_report(("actual_" + key + " [^\n]*\n").c_str(), "");
    const bool is_sent = one("idokep").obstacles.empty();
    flags.live_data_stale = 0;
    load_live_record(report.c_str());
    EXPECT_EQ(is_sent, flags.live_data_stale == 0) << key;
  }
}

TEST_F(Preview, TellsWhatIsMissingAndWhy) {
  using missing = std::vector<missing_value>;
  for (const step_preview& step : page().steps) EXPECT_EQ(step.missing, missing{}) << step.id;

  set(sensor_wind, "");
  replace_in_report("last15m_th0_temp_c [^\n]*\n", "");
  replace_in_report("last15m_rain0_total_mm [^\n]*\n", "last15m_rain0_total_mm n/a\n");
  replace_in_report("day1_th0_tempmin_time [^\n]*\n", "day1_th0_tempmin_time soon\n");
  const missing_value no_wind = {"sensor_wind", "no sensor selected"};
  EXPECT_EQ(one("windfinder").missing, (missing{{"last15m_rain0_total_mm", "\"n/a\" in the report"},
                                                {"last15m_th0_temp_c", "not in the report"},
                                                no_wind}));
  EXPECT_EQ(one("wetterring").missing,
            (missing{no_wind, {"day1_th0_tempmin_time", "\"soon\" in the report"}}));
  EXPECT_EQ(one("wetterpage24").missing, missing{no_wind});

  set(sensor_uv, "uv7");  // its key ends in a blank
  EXPECT_EQ(one("wetterarchiv").missing, missing{no_wind});
  EXPECT_EQ(one("idokep").missing, (missing{no_wind, {"actual_uv7_index", "not in the report"}}));
}

TEST_F(Preview, TellsWhereItGoes) {
  EXPECT_EQ(one("awekas_pull").where, (texts{"/srv/www/awekas.txt", "/var/run/nimbulog/uploads/awekas.txt"}));
  EXPECT_EQ(one("cwop").where, (texts{"cwop.aprs.net:14580", "rotate.aprs2.net:14580, if the first fails"}));
  set(aprs_host, "euro.aprs2.net");
  set(aprs_port, 14'579);
  EXPECT_EQ(one("aprs").where, texts{"euro.aprs2.net:14579"});
  EXPECT_EQ(one("borgervejr").where, texts{"borgervejr@dmi.dk, through /opt/sbin/sendmail"});
  EXPECT_EQ(one("anythingweather").how, "POST");

  const appliance_folder folder;
  folder.write("/etc/skypost/endpoints", "windit = http://windit.example.org:8080\n");
  load_endpoints();
  EXPECT_EQ(one("windit").where, texts{"http://windit.example.org:8080/nimbulog/nimbulogload"});
  EXPECT_EQ(one("windit").warnings, texts{});
  reset_endpoints();
  EXPECT_EQ(one("windit").warnings.size(), 1U);
}

TEST_F(Preview, WarnsOfAServerThatIsNotKnown) {
  const appliance_folder folder;
  const std::string in_file = " in " + folder.path("/etc/skypost/endpoints").string();
  const auto unknown = [](const std::string& where_to_set) {
    return "the network's server is not known: set " + where_to_set;
  };
  const struct {
    const char* endpoints;
    const char* network;
    texts warnings;
  } CASES[] = {
      {"", "wetterring", {unknown("wetterring" + in_file)}},
      {"", "meteonews", {unknown("meteonews" + in_file)}},
      {"", "cwop", {}},
      {"windit = https://windit.invalid:8080", "windit", {unknown("windit" + in_file)}},
      {"windit = http://windit.invalid.example.org", "windit", {}},
      {"cwop_first = cwop.invalid", "cwop", {unknown("cwop_first" + in_file)}},
      {"cwop_first = cwop.invalid\ncwop_second = cwop.invalid",
       "cwop",
       {unknown("cwop_first" + in_file), unknown("cwop_second" + in_file)}},
  };
  for (const auto& row : CASES) {
    folder.write("/etc/skypost/endpoints", row.endpoints);
    load_endpoints();
    EXPECT_EQ(one(row.network).warnings, row.warnings) << row.network << ", " << row.endpoints;
  }
  reset_endpoints();
  set(aprs_host, "aprs.invalid");
  EXPECT_EQ(one("aprs").warnings, texts{unknown("aprs_host")});
  set(aprs_host, "");
  EXPECT_EQ(one("aprs").warnings, texts{"aprs_host is empty"});
}

TEST_F(Preview, WarnsOfAStationThatIsNotFoundByItsHardwareAddress) {
  const appliance_folder folder;
  folder.write("/etc/skypost/endpoints", "meteonews = meteonews.example.org\n");
  load_endpoints();
  EXPECT_EQ(one("meteonews").warnings, texts{});
  for (const char* const platform : {"X86", "NSLU2"}) {
    host = {platform, ""};
    texts warned;
    for (const step_preview& step : page().steps)
      for (const std::string& warning : step.warnings)
        if (contains(warning, "hardware address")) warned.push_back(step.id + ": " + warning);
    EXPECT_EQ(warned, texts{"meteonews: ifconfig shows no hardware address of eth0, by which MeteoNews knows "
                            "the station"});
  }
}

TEST_F(Preview, WarnsOfAPositionThatIsWrong) {
  for (const char* const network : {"cwop", "aprs"}) EXPECT_EQ(one(network).warnings, texts{}) << network;
  set(latitude_degrees, -1);
  set(longitude_minutes, 60);
  EXPECT_EQ(
      one("cwop").warnings,
      (texts{"latitude_degrees: the latitude is not set, so no valid position is sent to CWOP. Set it in "
             "degrees, minutes and seconds.",
             "longitude_minutes: 60 is out of range, so a wrong position is sent to CWOP. Set it to 0 to "
             "59."}));
  EXPECT_EQ(one("aprs").warnings.size(), 2U);
  EXPECT_EQ(one("windfinder").warnings, texts{});
}

TEST_F(Preview, SaysSoWhenNothingIsOn) {
  for (const run_step& step : run_list()) set(*step.enabled, 0);
  EXPECT_TRUE(contains(as_text(page()), "No network is switched on.\n"));
  EXPECT_TRUE(contains(as_html(page()), "<p>No network is switched on.</p>"));
}

// The words of a text, in lower case and without what is between them.
texts words_of(const std::string& text) {
  texts result;
  const std::regex word("[A-Za-z0-9_]+");
  for (std::sregex_iterator found(text.begin(), text.end(), word), end; found != end; ++found) {
    result.push_back(found->str());
    for (char& character : result.back())
      character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  }
  return result;
}

// What a browser shows of the page below its title and its table of contents.
std::string text_of_page(std::string html) {
  html.erase(0, html.find("<dl>"));
  html.erase(html.find("<nav>"), html.find("</nav>") - html.find("<nav>"));
  const struct {
    const char* pattern;
    const char* replacement;
  } REPLACEMENTS[] = {{"<wbr>", ""}, {"<[^>]*>", " "}, {"&(ndash|#39|quot);", " "},
                      {"&lt;", "<"}, {"&gt;", ">"},    {"&amp;", "&"}};
  for (const auto& row : REPLACEMENTS)
    html = std::regex_replace(html, std::regex(row.pattern), row.replacement);
  return html;
}

TEST_F(Preview, SaysTheSameToATerminalAndToABrowser) {
  set(windfinder_name, "");
  set(windfinder_password, "");
  set(sensor_rain, "");
  set(latitude_degrees, -1);
  set(idokep_enabled, 0);
  preview_page whole = page(all_ids());
  whole.warnings = {"endpoints line 3: no such name. The line is skipped."};
  const texts text = words_of(as_text(whole));
  const texts html = words_of(text_of_page(as_html(whole)));
  ASSERT_GT(text.size(), 500U);
  EXPECT_EQ(text, html);
}

// The page's elements, without the texts between them.
texts elements_of(const std::string& html) {
  texts elements;
  const std::regex tag("<[^>]*>");
  for (std::sregex_iterator found(html.begin(), html.end(), tag), end; found != end; ++found)
    elements.push_back(found->str());
  return elements;
}

// Fills every text of the settings and every word of the report.
TEST_F(Preview, IsNotChangedByHostileTexts) {
  const auto fill = [&](const std::string& name, const std::string& word) {
    for (const field_description& row : FIELD_DESCRIPTIONS)
      if (row.field.is_text() && row.group != std::string_view("sensors")) set(row.as_text(), name);
    report = sim::lifelike_report(spring_morning().seconds);
    replace_in_report("(actual_wind0_dir_(?:de|en)|actual_sun\\w+) [^\n]*", ("$1 " + word).c_str());
    replace_in_report("(last15m_\\w+) [^\n]*", ("$1 " + word).c_str());
  };
  with_secrets = true;
  fill("plainplain", "plain");
  const preview_page plain = page();
  const std::string HOSTILE = "</td><b id=\"x\"onload='y'>&\x1b[2J\xff";
  fill(HOSTILE, "<b>'\"&\xff");
  preview_page hostile = page();
  EXPECT_EQ(elements_of(as_html(hostile)), elements_of(as_html(plain)));
  EXPECT_TRUE(contains(as_html(page({"windfinder"})),
                       "&lt;/td&gt;&lt;b id=&quot;x&quot;onload=&#39;y&#39;&gt;&amp;\\x1b[2J\\xff"));

  hostile.settings = hostile.report = HOSTILE;
  for (const std::string& output : {as_text(hostile), as_html(hostile)}) {
    EXPECT_EQ(output.find('\xff'), std::string::npos);
    EXPECT_TRUE(std::all_of(output.begin(), output.end(), [](char character) {
      return character == '\n' || static_cast<unsigned char>(character) >= ' ';
    }));
  }
  EXPECT_FALSE(contains(as_html(hostile), HOSTILE.substr(0, 5) + "<b"));
}

TEST_F(Preview, IsAPageThatLoadsNothing) {
  const std::string html = as_html(page());
  for (const char* const part : {"<script", " src=", "url(", "@import", "<link", "<img", "href=\"http"})
    EXPECT_FALSE(contains(html, part)) << part;
  for (const char* const part : {"default-src 'none'", "name=\"viewport\""})
    EXPECT_TRUE(contains(html, part)) << part;
}

// The text in full.
TEST_F(Preview, IsReadByAPerson) {
  set(windfinder_name, "");
  set(windfinder_password, "");
  set(sensor_rain, "");
  set(awekas_enabled, 0);
  set(aprs_host, "aprs.invalid");
  replace_in_report("last15m_[^\n]*\n", "");
  EXPECT_EQ(as_text(page({"awekas_push", "windfinder", "aprs"})),
            R"(Settings: nimbulog.conf
Report:   report
Time:     noon

AWEKAS (awekas_push)
  GET http://www.awekas.at/extern/eingabe_pruefung.php
  NOT SENT: switched off: awekas_enabled is 0
    val 1      awekasuser
    val 2      ***
    val 3      06.05.2012
    val 4      07:08
    val 5      11.2
    val 6      76
    val 7      1014.7
    val 8      (empty)
    val 9      11.5
    val 10     225
    val 11-13  (empty)
    val 14     de
    val 15-16  (empty)
    val 17     112.3
    val 18     1.0
    val 19-22  (empty)
    val 23     NB_49
  Missing values:
    sensor_rain                    no sensor selected
    last15m_wind0_gustspeedmax_ms  not in the report

Windfinder (windfinder)
  GET http://www.windfinder.com/wind-cgi/nimbulogload.pl
  Would be sent
    name      (empty)
    password  (empty)
    date      06.05.2012
    time      07:08
  Missing values:
    sensor_rain                    no sensor selected
    last15m_th0_temp_c             not in the report
    last15m_thb0_sealevel_hpa      not in the report
    last15m_wind0_gustspeedmax_ms  not in the report
    last15m_wind0_speed_ms         not in the report
    last15m_wind0_maindir_deg      not in the report
  Not set: windfinder_name, windfinder_password

APRS (aprs)
  APRS packet aprs.invalid:14580
  WARNING: the network's server is not known: set aprs_host
    User DL1ABC-13 pass *** vers nimbulog
    DL1ABC-13>APRS,TCPXX*:@060508z4703.50N/00818.00E_225/007g...t052r...p...P...b10147h76eNB49
  Missing values:
    last15m_wind0_gustspeedmax_ms  not in the report
    sensor_rain                    no sensor selected
)");
}

// The command line.

struct tool_run {
  int status;
  std::string out;
  std::string errors;
};

tool_run run(const texts& arguments) {
  std::ostringstream out;
  std::ostringstream errors;
  const int status = run_tool(PREVIEW_TOOL, arguments, out, errors);
  return {status, out.str(), errors.str()};
}

class PreviewTool : public ::testing::Test {
 protected:
  PreviewTool() {
    settings_record settings;
    fill_settings(settings);
    settings.set_integer(windit_enabled, 1);
    write_settings(settings);
    appliance.write("/report", "actual_th0_temp_c 7.3\n");
  }
  ~PreviewTool() override {
    unsetenv("NIMBULOGHW");
    reset_endpoints();
  }

  void write_settings(const settings_record& settings) const {
    appliance.write(SETTINGS_PATH, {reinterpret_cast<const char*>(settings.bytes), sizeof settings.bytes});
  }

  appliance_folder appliance;
  std::string report = appliance.path("/report");
};

TEST_F(PreviewTool, ShowsTheAppliancesSettingsWithAReport) {
  const tool_run shown = run({"--report", report});
  EXPECT_EQ(shown.status, 0);
  EXPECT_EQ(shown.errors, "");
  const std::string settings = std::filesystem::canonical(appliance.path("/home/nimbulog/nimbulog.conf"));
  EXPECT_TRUE(shown.out.starts_with("Settings: " + settings + "\nReport:   " + report + "\n")) << shown.out;
  EXPECT_TRUE(contains(shown.out, "\nWindIt (windit)\n"));
  EXPECT_FALSE(contains(shown.out, "\nWetterring"));
  EXPECT_TRUE(contains(run({"--report", report, "--html", "wetterring"}).out, "<h2>Wetterring <small>"));
  EXPECT_TRUE(contains(run({"idokep", "--secrets", "--report", report}).out, "ido\\pass"));
}

TEST_F(PreviewTool, PreparesTheSettingsAndLooksAtTheLastRunAsARunDoes) {
  settings_record settings;
  fill_settings(settings);
  settings.set_integer(wunderground_rapid_interval, 0);
  write_settings(settings);
  EXPECT_TRUE(contains(run({"--report", report, "wunderground_rapid"}).out, "rtfreq        30\n"));

  EXPECT_FALSE(contains(run({"--report", report, "wetterarchiv"}).out, "its last turn"));
  appliance.write("/var/run/nimbulog/aerolan.last", std::to_string(std::time(nullptr) - 100));
  EXPECT_TRUE(contains(run({"--report", report, "wetterarchiv"}).out, "NOT SENT: its last turn was 10"));
}

TEST_F(PreviewTool, TellsWhatItCannotReadAndHowItIsUsed) {
  const std::string hint = "\nTry 'skypost-preview --help'.";
  const std::string folder = appliance.path("/report").parent_path();
  const std::string pipe = appliance.path("/pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  appliance.write("/empty", "");
  const std::string empty = appliance.path("/empty");
  appliance.write("/long", std::string(500'000, 'x'));
  const std::string too_long = appliance.path("/long");
  const struct {
    texts arguments;
    int status;
    std::string error;
  } CASES[] = {
      {{"--report", report + "x"}, 1, report + "x: No such file or directory"},
      {{"--report", folder}, 1, folder + ": not a regular file"},
      {{"--report", pipe}, 1, pipe + ": not a regular file"},
      {{"--report", "/dev/zero"}, 1, "/dev/zero: not a regular file"},
      {{"--report", empty}, 1, empty + ": empty"},
      {{"--report", too_long}, 1, too_long + ": too long for a report"},
      {{"--report", report, "--settings", "/nowhere"}, 1, "/nowhere: No such file or directory"},
      {{"--report"}, 2, "--report takes a FILE" + hint},
      {{"--settings"}, 2, "--settings takes a FILE" + hint},
      {{"-x"}, 2, "unknown option -x" + hint},
      {{"idokep", "--names"}, 2, "unknown option --names" + hint},
      // Before it asks the data server.
      {{"windfindr"}, 2, "no network \"windfindr\"; did you mean windfinder? --names lists all" + hint},
      {{"Aweka"}, 2, "no network \"Aweka\"; did you mean awekas? --names lists all" + hint},
      {{"wunderground_rapidd"},
       2,
       "no network \"wunderground_rapidd\"; did you mean wunderground_rapid? --names lists all" + hint},
  };
  for (const auto& row : CASES) {
    const tool_run shown = run(row.arguments);
    EXPECT_EQ(shown.status, row.status);
    EXPECT_EQ(shown.errors, "Error: " + row.error + '\n');
    EXPECT_EQ(shown.out, "");
  }
  EXPECT_TRUE(run({"idokep", "--help"}).out.starts_with("skypost-preview shows "));
  EXPECT_EQ(run({"--version"}).out, "skypost-preview " SKYPOST_VERSION "\n");
}

TEST_F(PreviewTool, TellsWhichLinesOfTheEndpointFileAreSkipped) {
  const std::string path = appliance.path("/etc/skypost/endpoints");
  const auto expect_warning = [&](const std::string& warning) {
    const tool_run text = run({"--report", report, "idokep"});
    EXPECT_EQ(text.errors, "");
    EXPECT_TRUE(contains(text.out, "\nWARNING:  " + path + warning + "\n")) << text.out;
    EXPECT_TRUE(contains(run({"--report", report, "--html", "idokep"}).out,
                         "Warning:</strong> " + path + warning + "</p>"));
  };
  appliance.write("/etc/skypost/endpoints", "windit = http://windit.example.org\nnothing = here\n");
  expect_warning(" line 2: no such name. The line is skipped.");
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  expect_warning(": Is a directory. The file is skipped.");
}

TEST_F(PreviewTool, NamesWhateverItCanShow) {
  std::istringstream names(run({"--names"}).out);
  texts ids;
  for (std::string name; std::getline(names, name);) ids.push_back(name);
  EXPECT_EQ(ids, all_ids());
}

}  // namespace
}  // namespace skypost::testing
