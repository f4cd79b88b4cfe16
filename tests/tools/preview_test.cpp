#include "preview/preview.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <optional>
#include <sstream>

#include "base/paths.h"
#include "common/errors.h"
#include "common/field_descriptions.h"
#include "compose/md5.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "live/report_parser.h"
#include "preview/html.h"
#include "preview/preview_tool.h"
#include "preview/text.h"
#include "support/golden.h"
#include "support/pattern.h"
#include "tools/owners_station.h"

namespace skypost::testing {
namespace {

using texts = std::vector<std::string>;

texts all_ids() {
  texts ids;
  for (const upload* const upload : every_upload()) ids.emplace_back(upload->id);
  return ids;
}

struct previewed_station : owners_station {
  preview_page page(const texts& networks = {}) {
    reset_endpoints();
    load_endpoints();
    station_settings = settings;
    reset_live_record(live_record);
    parse_live_reply(report.c_str(), station_settings, live_record);
    const board host = {platform.c_str(), hardware_address.c_str()};
    return {"nimbulog.conf",
            "report",
            "noon",
            {},
            make_previews({.source = {station_settings, live_record, spring_morning(), host},
                           .report = report.c_str(),
                           .last_run_age = last_run_age,
                           .with_secrets = with_secrets},
                          networks)};
  }

  texts ids(const texts& networks = {}) {
    texts result;
    for (const step_preview& step : page(networks).steps) result.push_back(step.id);
    return result;
  }

  long long last_run_age = 9'999;
  bool with_secrets = false;
};

class Preview : public ::testing::Test {
 protected:
  previewed_station station;
};

template <void print(std::ostream&, const preview_page&)>
std::string printed(const preview_page& page) {
  std::ostringstream out;
  print(out, page);
  return out.str();
}
constexpr auto as_text = printed<print_text>;
constexpr auto as_html = printed<print_html>;

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(PreviewSession, MatchesTheGoldenText) {
  std::optional<previewed_station> station;
  expect_session("tools/golden/previews", [&](const std::string& line) {
    if (line.starts_with('#')) {
      station.emplace();
    } else if (line.starts_with("+ last-run ")) {
      station->last_run_age = std::stoll(line.substr(11));
    } else if (line.starts_with('+')) {
      station->change(line.substr(2));
    } else {
      // "$ why" leaves out the requests and texts.
      const bool is_all_shown = !line.starts_with("$ why ");
      preview_page page = station->page(all_matches(line.substr(is_all_shown ? 1 : 6), "[^ ]+"));
      for (step_preview& step : page.steps)
        if (!is_all_shown) step.request = {}, step.text.clear();
      const std::string text = as_text(page);
      return station->without_root(text.substr(text.find("\n\n") + 2));
    }
    return std::string();
  });
}

TEST_F(Preview, HasNothingToSayOfAGoodStationButWhatIsSent) {
  EXPECT_EQ(station.ids(), all_ids());
  for (const step_preview& step : station.page().steps)
    EXPECT_TRUE(step.would_be_sent() && step.missing.empty()) << step.id;
}

// The first secret has to be escaped. With the second, which is plain, the hidden output must equal the full output
// with the secret and its digest replaced.
TEST_F(Preview, HidesWhatComesFromASecretAndNothingElse) {
  for (const std::string secret : {" \"`$&#<>'%;Zq100Qz\\", "Zq100Qz"}) {
    md5_text digest;
    md5_hex(secret, digest);
    for (const field_description& row : FIELD_DESCRIPTIONS)
      if (row.field.is_secret() && row.field.is_text())
        station.settings.set_text(row.as_text(), secret);
      else if (row.field.is_secret())
        station.settings.set_integer(row.as_integer(), 31'337);
    for (const char* const platform : {"X86", "NSLU2"}) {
      station.platform = platform;
      station.with_secrets = false;
      const std::string hidden = as_text(station.page()) + as_html(station.page());
      station.with_secrets = true;
      std::string shown = as_text(station.page()) + as_html(station.page());
      for (const std::string mark : {"Zq100Qz", "31337", digest.c_str()}) {
        EXPECT_FALSE(contains(hidden, mark)) << mark;
        EXPECT_TRUE(contains(shown, mark)) << mark;
        shown = replaced(shown, mark, "***");
      }
      // The width of the columns depends on their content.
      EXPECT_TRUE(with_matches_as(hidden, " +", " ") == with_matches_as(shown, " +", " ") ||
                  secret != "Zq100Qz");
    }
  }
}

TEST_F(Preview, ShowsWhatIsOnOrNamed) {
  station.change("set weatherflow_rapid_enabled=0");
  station.change("set wunderground_enabled=0");
  texts without = all_ids();
  for (const char* const id : {"wunderground", "wunderground_rapid", "weatherflow_rapid"})
    std::erase(without, id);
  EXPECT_EQ(station.ids(), without);

  station.change("set wunderground_enabled=1");
  EXPECT_EQ(station.ids({"Weather Underground"}), (texts{"wunderground", "wunderground_rapid"}));
  for (const char* const nothing : {"", "weather", "awekas_pushy"})
    EXPECT_THROW(station.ids({nothing}), usage_error) << nothing;
}

// The preview and a run decide separately whether data are stale.
TEST_F(Preview, TakesTheSameDataForStaleAsARun) {
  const std::string complete = station.report;
  for (const std::string key :
       {"th0_temp_c", "th0_hum_rel", "th0_dew_c", "thb0_press_hpa", "wind0_speed_ms"}) {
    station.report = complete;
    station.change("report actual_" + key);
    const bool is_sent = station.page({"idokep"}).steps.at(0).would_be_sent();
    live_data_stale = 0;
    load_live_record(station.report.c_str());
    EXPECT_EQ(is_sent, live_data_stale == 0) << key;
  }
}

// The page's tags, without the text between them.
texts elements_of(const std::string& html) { return all_matches(html, "<[^>]*>"); }

// Every text of the settings and every word of the report is hostile.
TEST_F(Preview, IsNotChangedByHostileTexts) {
  const std::string lifelike = station.report;
  const auto fill = [&](const std::string& name, const std::string& word) {
    for (const field_description& row : FIELD_DESCRIPTIONS)
      if (row.field.is_text() && row.group != std::string_view("sensors"))
        station.settings.set_text(row.as_text(), name);
    station.report = with_matches_as(
        lifelike, "(actual_wind0_dir_(?:de|en)|actual_sun\\w+|last15m_\\w+) [^\n]*", "$1 " + word);
    return station.page();
  };
  station.with_secrets = true;
  const std::string HOSTILE = "</td><b id=\"x\"onload='y'>&\x1b[2J\xff";
  std::string harmless = "no host /";
  harmless.resize(HOSTILE.size(), 'x');
  const preview_page plain = fill(harmless, "plain");
  preview_page hostile = fill(HOSTILE, "<b>'\"&\xff");
  hostile.settings = hostile.report = HOSTILE;
  EXPECT_EQ(elements_of(as_html(hostile)), elements_of(as_html(plain)));
  EXPECT_TRUE(contains(as_html(plain), "content=\"default-src 'none'; style-src 'unsafe-inline'\""));
  EXPECT_TRUE(contains(as_html(hostile),
                       "&lt;/td&gt;&lt;b id=&quot;x&quot;onload=&#39;y&#39;&gt;&amp;\\x1b[2J\\xff"));
  for (const std::string& output : {as_text(hostile), as_html(hostile)})
    EXPECT_EQ(all_matches(replaced(output, "\u00b0", ""), "[^\n -~]"), texts{});
}

// A field must change with the value named as its source, and with no other.
TEST_F(Preview, NamesWhatIsInEachFieldOfARecord) {
  const preview_page before = station.page();
  const std::string complete = station.report;
  std::size_t count = 0;
  for (const std::string key : {"last15m_wind0_speed_ms", "day1_rain0_total_mm", "actual_wind0_dir_deg"}) {
    station.report = complete;
    station.change("report " + key + " 77");
    const preview_page after = station.page();
    for (std::size_t step = 0; step < before.steps.size(); ++step) {
      for (std::size_t i = 0; i < before.steps[step].request.parameters.size(); ++i) {
        const request_parameter& one = before.steps[step].request.parameters[i];
        const request_parameter& other = after.steps[step].request.parameters[i];
        for (std::size_t field = 0; one.is_record() && field < one.fields.size(); ++field) {
          EXPECT_EQ(one.sources.at(field) == key, one.fields[field] != other.fields[field])
              << before.steps[step].id << ' ' << one.name << ' ' << field + 1;
          count += one.sources[field] == key ? 1 : 0;
        }
      }
    }
  }
  EXPECT_GT(count, 10U);
}

TEST(PreviewToolSession, MatchesTheGoldenText) {
  expect_tool_session("tools/golden/preview_tool", PREVIEW_TOOL);
}

class PreviewTool : public ::testing::Test {
 protected:
  std::string shown(const std::string& arguments) {
    return station.run(PREVIEW_TOOL, arguments + " --report /report");
  }

  owners_station station;
};

TEST_F(PreviewTool, ShowsTheAppliancesSettingsWithAReport) {
  const std::string text = shown("");
  EXPECT_TRUE(text.starts_with("Settings: /home/nimbulog/nimbulog.conf\nReport:   /report\n")) << text;
  EXPECT_TRUE(contains(shown("--html wetterring"), "<h2>Wetterring <small>"));
  const std::string pipe = station.folder.path("/pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(station.run(PREVIEW_TOOL, "--report=/pipe"), "Error: /pipe: not a regular file\n-> 1\n");
}

TEST_F(PreviewTool, PreparesTheSettingsAndLooksAtTheLastRunAsARunDoes) {
  station.change("set wunderground_rapid_interval=0");
  EXPECT_EQ(all_matches(shown("wunderground_rapid"), "rtfreq +30\n").size(), 1U);
  EXPECT_FALSE(contains(shown("wetterarchiv"), "last served"));
  station.folder.write(LAST_RUN_PATH, std::to_string(std::time(nullptr) - 100));
  EXPECT_TRUE(contains(shown("wetterarchiv"), "NOT SENT: last served 10"));
}

TEST_F(PreviewTool, TellsWhatIsWrongWithTheEndpointFile) {
  station.folder.write(ENDPOINTS_PATH, "windit = http://windit.example.org\nnothing = here\n");
  EXPECT_TRUE(
      contains(shown(""), "\nWARNING:  /etc/skypost/endpoints line 2: unknown name; the line is skipped.\n"));
  std::filesystem::remove(station.folder.path(ENDPOINTS_PATH));
  station.change(std::string("folder ") + ENDPOINTS_PATH);
  EXPECT_TRUE(contains(shown(""), "\nWARNING:  /etc/skypost/endpoints: Is a directory; all uploads fail.\n"));
}

}  // namespace
}  // namespace skypost::testing
