// The preview of what a run would send: secrets in none of it, the reasons for what is not sent and for what
// is missing, and pages that hostile texts cannot change.

#include "preview/preview.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <ctime>
#include <regex>
#include <sstream>

#include "base/paths.h"
#include "common/errors.h"
#include "compose/md5.h"
#include "live/live_record.h"
#include "live/report_parser.h"
#include "preview/html.h"
#include "preview/preview_tool.h"
#include "preview/text.h"
#include "run/run_list.h"
#include "settings/field_descriptions.h"
#include "sim/report.h"
#include "support/tool_test.h"

namespace skypost::testing {
namespace {

texts all_ids() {
  texts ids;
  for (const outgoing* const what : everything_handed_out()) ids.emplace_back(what->id);
  return ids;
}

class Preview : public ::testing::Test {
 protected:
  Preview() {
    switch_everything_on(station_settings);
    reset_endpoints();
  }

  static void set(const integer_field& field, std::int32_t value) {
    station_settings.set_integer(field, value);
  }
  static void set(const text_field& field, std::string_view text) { station_settings.set_text(field, text); }

  preview_page page(const texts& networks = {}) {
    reset_live_record(live_record);
    parse_live_reply(report.c_str(), station_settings, live_record);
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

  // Of every step, with its id in front.
  texts all_of(texts step_preview::*sentences) {
    texts result;
    for (const step_preview& step : page(all_ids()).steps)
      for (const std::string& sentence : step.*sentences) result.push_back(step.id + ": " + sentence);
    return result;
  }

  void replace_in_report(const char* pattern, const char* replacement) {
    report = std::regex_replace(report, std::regex(pattern), replacement);
  }

  std::string report = sim::lifelike_report(spring_morning().seconds);
  board host = ORDINARY_BOARD;
  long long last_run_age = 9'999;
  bool with_secrets = false;
};

template <void print(std::ostream&, const preview_page&)>
std::string printed(const preview_page& page) {
  std::ostringstream out;
  print(out, page);
  return out.str();
}
constexpr auto as_text = printed<print_text>;
constexpr auto as_html = printed<print_html>;

texts all_matches(const std::string& text, const char* pattern) {
  const std::regex regex(pattern);
  return {std::sregex_token_iterator(text.begin(), text.end(), regex), {}};
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The secrets have characters that are escaped somewhere. What would betray them is nowhere else.
TEST_F(Preview, ShowsNoSecretUnlessAsked) {
  const std::string secret = " \"`$&#<>'%;Zq100Qz\\";
  md5_text digest;
  md5_hex(secret, digest);
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_secret() && row.field.is_text())
      set(row.as_text(), secret);
    else if (row.field.is_secret())
      set(row.as_integer(), 31'337);
  for (const char* const platform : {"X86", "NSLU2"}) {
    host.platform = platform;
    with_secrets = false;
    const std::string hidden = as_text(page()) + as_html(page());
    with_secrets = true;
    for (const std::string mark : {"Zq100Qz", "31337", digest.c_str()}) {
      EXPECT_FALSE(contains(hidden, mark.substr(0, 8))) << mark;
      // Or this test could not fail.
      for (const std::string& shown : {as_text(page()), as_html(page())}) EXPECT_TRUE(contains(shown, mark));
    }
  }
}

// What is composed in place of a secret is shown no more than the secret is, nor what is not from one hidden: a text
// has a line with *** for each secret of its network, and no other line is changed.
TEST_F(Preview, HidesWhatComesFromASecretAndNothingElse) {
  const auto lines_of = [&](const step_preview& step) {
    return all_matches(as_text({"", "", "", {}, {step}}), "[^\n]+");
  };
  const std::vector<step_preview> hidden = page().steps;
  with_secrets = true;
  const std::vector<step_preview> shown = page().steps;
  ASSERT_EQ(hidden.size(), shown.size());
  for (std::size_t step = 0; step < hidden.size(); ++step) {
    SCOPED_TRACE(hidden[step].id);
    const texts lines = lines_of(hidden[step]);
    const texts lines_shown = lines_of(shown[step]);
    ASSERT_EQ(lines.size(), lines_shown.size());
    int count = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (lines[i] == lines_shown[i]) continue;
      const std::size_t mark = lines[i].find("***");
      ASSERT_NE(mark, std::string::npos) << lines[i];
      EXPECT_TRUE(lines_shown[i].starts_with(lines[i].substr(0, mark)) &&
                  lines_shown[i].ends_with(lines[i].substr(mark + 3)))
          << lines[i];
      ++count;
    }
    const bool tells_secrets = hidden[step].how != "file" && hidden[step].how != "mail";
    const auto is_its_secret = [&](const field_description& row) {
      return row.field.is_secret() && (hidden[step].network + ",").starts_with(row.group + std::string(","));
    };
    EXPECT_EQ(count, tells_secrets ? std::count_if(std::begin(FIELD_DESCRIPTIONS),
                                                   std::end(FIELD_DESCRIPTIONS), is_its_secret)
                                   : 0);
  }
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
  EXPECT_EQ(ids({"weatherflow"}), texts{"weatherflow"});
  EXPECT_EQ(ids({"weatherflow-rapid"}), texts{"weatherflow_rapid"});
  EXPECT_EQ(ids({"AWEKAS", "SH-Netz"}), (texts{"awekas_pull", "awekas_push", "shnetz"}));
  // Its failures, its switch and its settings have three different names.
  for (const char* const name : {"HAMweather/weather4u", "hamweather", "PWSweather"})
    EXPECT_EQ(ids({name}), texts{"pwsweather"}) << name;
  for (const char* const nothing : {"", "weather", "awekas_pushy"})
    EXPECT_THROW(ids({nothing}), usage_error) << nothing;
}

TEST_F(Preview, TellsWhyARunWouldPassItOver) {
  last_run_age = 961;
  EXPECT_EQ(all_of(&step_preview::obstacles), texts{});
  last_run_age = 960;
  set(wedaal_user, "w");
  set(weatherflow_rapid_enabled, 0);
  set(cwop_id, "N0CALL\nUser X");
  const texts expected = {"wedaal_push: wedaal_user needs two characters or more",
                          "wetterarchiv: its last turn was 960 seconds ago; the next comes after 960",
                          "weatherflow_rapid: switched off: weatherflow_rapid_enabled is 0",
                          "cwop: cwop_id holds a line break"};
  EXPECT_EQ(all_of(&step_preview::obstacles), expected);
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
    live_data_stale = 0;
    load_live_record(report.c_str());
    EXPECT_EQ(is_sent, live_data_stale == 0) << key;
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
  EXPECT_EQ(one("cwop").where, (texts{"cwop.aprs.net:14580", "rotate.aprs2.net:14580, if the first fails"}));
  EXPECT_EQ(one("borgervejr").where, texts{"borgervejr@dmi.dk, through /opt/sbin/sendmail"});
  EXPECT_TRUE(
      contains(as_text(page({"wetterpage24"})),
               "\nWetterpage24, file (wetterpage24)\n  file /srv/www/wetterpage24.txt\n"
               "  file /var/run/nimbulog/uploads/wetterpage24.txt\n  Would be sent\n\n    11.2\n    76\n"));
}

TEST_F(Preview, WarnsOfWhatKeepsItFromArriving) {
  const appliance_folder folder;
  const auto warned = [&](const std::string& endpoints) {
    folder.write(ENDPOINTS_PATH, endpoints);
    load_endpoints();
    texts warnings = all_of(&step_preview::warnings);
    reset_endpoints();
    return warnings;
  };
  EXPECT_EQ(warned(local_servers() + "windit = http://windit.invalid.example.org\n"), texts{});

  host = {"NSLU2", ""};
  set(aprs_host, "");
  set(aprs_port, 0);
  set(latitude_degrees, -1);
  const auto unknown = [&](const std::string& network, const std::string& name) {
    return network + ": the network's server is not known: set " + name + " in " +
           folder.path(ENDPOINTS_PATH).string();
  };
  const auto no_position = [](const std::string& id, const std::string& network) {
    return id + ": latitude_degrees: the latitude is not set, so no valid position is sent to " + network +
           ". Set it in degrees, minutes and seconds.";
  };
  const std::string no_address =
      "meteonews: ifconfig shows no hardware address of eth0 after \"HWaddr\", by which MeteoNews knows the "
      "station";
  const texts expected = {
      unknown("meteonews", "meteonews"),
      no_address,
      unknown("windit", "windit"),
      unknown("cwop", "cwop_first"),
      unknown("cwop", "cwop_second"),
      no_position("cwop", "CWOP"),
      "aprs: aprs_host is empty",
      no_position("aprs", "APRS"),
      "aprs: aprs_port: 0 is out of range, so the server of APRS is not reached. Set it to 1 to 65535."};
  EXPECT_EQ(warned(local_servers() + "windit = https://windit.invalid:8080\nmeteonews = meteonews.invalid\n"
                                     "cwop_first = cwop.invalid\ncwop_second = x.invalid"),
            expected);
  EXPECT_EQ(warned(local_servers() + "cwop_second = x.invalid")[1],
            "cwop: only its other server is tried, this one is not known: set cwop_second in " +
                folder.path(ENDPOINTS_PATH).string());
}

TEST_F(Preview, SaysSoWhenNothingIsOn) {
  for (const run_step& step : run_list()) set(*step.enabled, 0);
  EXPECT_TRUE(contains(as_text(page()), "No network is switched on.\n"));
  EXPECT_TRUE(contains(as_html(page()), "<p>No network is switched on.</p>"));
}

// The words of a text, in lower case and without what is between them.
texts words_of(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return std::tolower(letter); });
  return all_matches(text, "[a-z0-9_]+");
}

// What a browser shows of the page below its title and its table of contents.
std::string text_of_page(std::string html) {
  html.erase(0, html.find("<dl>"));
  html.erase(html.find("<nav>"), html.find("</nav>") - html.find("<nav>"));
  constexpr std::pair<const char*, const char*> REPLACEMENTS[] = {
      {"<wbr>", ""}, {"<[^>]*>", " "}, {"&(ndash|#39|quot);", " "},
      {"&lt;", "<"}, {"&gt;", ">"},    {"&amp;", "&"}};
  for (const auto& [pattern, replacement] : REPLACEMENTS)
    html = std::regex_replace(html, std::regex(pattern), replacement);
  return html;
}

TEST_F(Preview, SaysTheSameToATerminalAndToABrowser) {
  set(windfinder_name, "");
  set(windfinder_password, "");
  set(sensor_rain, "");
  set(latitude_degrees, -1);
  set(idokep_enabled, 0);
  preview_page whole = page(all_ids());
  whole.warnings = {"endpoints line 3: unknown name. The line is skipped."};
  const texts text = words_of(as_text(whole));
  const texts html = words_of(text_of_page(as_html(whole)));
  ASSERT_GT(text.size(), 500U);
  EXPECT_EQ(text, html);
}

// The page's elements, without the texts between them.
texts elements_of(const std::string& html) { return all_matches(html, "<[^>]*>"); }

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
  hostile.settings = hostile.report = HOSTILE;
  EXPECT_EQ(elements_of(as_html(hostile)), elements_of(as_html(plain)));
  EXPECT_TRUE(contains(as_html(hostile),
                       "&lt;/td&gt;&lt;b id=&quot;x&quot;onload=&#39;y&#39;&gt;&amp;\\x1b[2J\\xff"));
  for (const std::string& output : {as_text(hostile), as_html(hostile)})
    EXPECT_EQ(all_matches(output, "[^\n -~]"), texts{});
}

TEST_F(Preview, IsAPageThatLoadsNothing) {
  const std::string html = as_html(page());
  for (const char* const part : {"<script", " src=", "url(", "@import", "<link", "<img", "href=\"http"})
    EXPECT_FALSE(contains(html, part)) << part;
  for (const char* const part : {"default-src 'none'", "name=\"viewport\"", "charset=\"utf-8\""})
    EXPECT_TRUE(contains(html, part)) << part;
}

// The text in full.
TEST_F(Preview, IsReadByAPerson) {
  for (const text_field* const field : {&awekas_user, &awekas_password, &sensor_rain}) set(*field, "");
  set(awekas_enabled, 0);
  set(aprs_host, "aprs.invalid");
  set(aprs_port, 14'579);
  set(aprs_passcode, -1);
  replace_in_report("last15m_[^\n]*\n", "");
  EXPECT_EQ(as_text(page({"awekas_push", "aprs"})),
            R"(Settings: nimbulog.conf
Report:   report
Time:     noon

AWEKAS (awekas_push)
  GET http://www.awekas.at/extern/eingabe_pruefung.php
  NOT SENT: switched off: awekas_enabled is 0
  NOT SENT: awekas_user needs two characters or more
    val 1      (empty)
    val 2      d41d8cd98f00b204e9800998ecf8427e
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
  Not set: awekas_user, awekas_password

APRS (aprs)
  APRS packet aprs.invalid:14579
  WARNING: the network's server is not known: set aprs_host
    User DL1ABC-13 pass -1 vers nimbulog
    DL1ABC-13>APRS,TCPXX*:@060508z4703.50N/00818.00E_225/007g...t052r...p...P...b10147h76eNB49
  Missing values:
    last15m_wind0_gustspeedmax_ms  not in the report
    sensor_rain                    no sensor selected
  Not set: aprs_passcode
)");
}

// The command line.

class PreviewTool : public tool_test {
 protected:
  PreviewTool() : tool_test(PREVIEW_TOOL) { appliance.write("/report", "actual_th0_temp_c 7.3\n"); }

  std::string shown(texts arguments) {
    arguments.insert(arguments.end(), {"--report", report});
    run_well(arguments);
    return out;
  }

  std::string report = appliance.path("/report");
};

TEST_F(PreviewTool, ShowsTheAppliancesSettingsWithAReport) {
  const std::string settings = std::filesystem::canonical(appliance.path(SETTINGS_PATH));
  const std::string text = shown({});
  EXPECT_TRUE(text.starts_with("Settings: " + settings + "\nReport:   " + report + "\n")) << text;
  EXPECT_TRUE(contains(shown({"--html", "wetterring"}), "<h2>Wetterring <small>"));
}

TEST_F(PreviewTool, PreparesTheSettingsAndLooksAtTheLastRunAsARunDoes) {
  record.set_integer(wunderground_rapid_interval, 0);
  write(record);
  EXPECT_TRUE(contains(shown({"wunderground_rapid"}), "rtfreq        30\n"));
  EXPECT_FALSE(contains(shown({"wetterarchiv"}), "its last turn"));
  appliance.write("/var/run/nimbulog/aerolan.last", std::to_string(std::time(nullptr) - 100));
  EXPECT_TRUE(contains(shown({"wetterarchiv"}), "NOT SENT: its last turn was 10"));
  appliance.write("/var/run/nimbulog/aerolan.last", std::to_string(std::time(nullptr) + 60));
  EXPECT_TRUE(contains(shown({"wetterarchiv"}), " seconds in the future; the next comes after 960\n"));
}

TEST_F(PreviewTool, TellsWhatItCannotReadAndHowItIsUsed) {
  const std::string pipe = appliance.path("/pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  appliance.write("/long", std::string(500'000, 'x'));
  const std::string too_long = appliance.path("/long");
  expect_refused({"--report", report + "x"}, report + "x: No such file or directory");
  expect_refused({"--report", pipe}, pipe + ": not a regular file");
  expect_refused({"--report", too_long}, too_long + ": too long for a report");
  appliance.write("/report", std::string("\0actual_th0_temp_c 5", 20));
  expect_refused({"--report", report}, report + ": empty");
  expect_refused({"--report", report, "--settings", "/nowhere"}, "/nowhere: No such file or directory");
  const std::string hint = "\nTry 'skypost-preview --help'.";
  expect_refused({"idokep", "--names"}, "unknown option --names" + hint, 2);
  // Before it asks the data server.
  for (const auto& [name, near] : {std::pair("Aweka", "; did you mean awekas?"),
                                   {"wunderground_rapidd", "; did you mean wunderground_rapid?"},
                                   {"nosuch", ""},
                                   {"", ""}})
    expect_refused({name}, "no network \"" + std::string(name) + '"' + near + " (--names lists all)" + hint,
                   2);
  run_well({"idokep", "--help"});
  EXPECT_TRUE(out.starts_with("skypost-preview shows "));
}

TEST_F(PreviewTool, TellsWhatIsSkippedOfTheEndpointFile) {
  const std::string path = appliance.path(ENDPOINTS_PATH);
  appliance.write(ENDPOINTS_PATH, "windit = http://windit.example.org\nnothing = here\n");
  EXPECT_TRUE(contains(shown({}), "\nWARNING:  " + path + " line 2: unknown name. The line is skipped.\n"));
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  EXPECT_TRUE(contains(shown({}), "\nWARNING:  " + path + ": Is a directory. The file is skipped.\n"));
}

TEST_F(PreviewTool, NamesWhateverItCanShow) {
  run_well({"--names"});
  EXPECT_EQ(all_matches(out, "[^\n]+"), all_ids());
}

}  // namespace
}  // namespace skypost::testing
