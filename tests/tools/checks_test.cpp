// What is found wrong with a station: each fault, and nothing else.

#include "settings_tool/checks.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "base/endpoint_file.h"
#include "base/endpoints.h"
#include "base/paths.h"
#include "common/kept_text.h"
#include "settings/field_descriptions.h"
#include "support/golden.h"
#include "tools/owners_station.h"

namespace skypost::testing {
namespace {

struct checked_station : owners_station {
  void prepare(const std::string& line) {
    if (line.starts_with("no-report ")) {
      report = "";
      appliance.report_fault = line.substr(10);
    } else if (line.starts_with("now ")) {
      appliance.now = appliance.built + std::stoi(line.substr(4));
    } else if (line == "online") {
      appliance.online = true;
    } else {
      change(line);
    }
  }

  findings found() {
    kept_text errors;
    reset_endpoints();
    load_endpoints(errors.stream());
    appliance.endpoint_errors = errors.text();
    appliance.file = read_settings_file(file);
    appliance.report = report;
    appliance.hardware_address = hardware_address;
    station_settings = as_loaded(appliance.file);
    return findings_of(appliance);
  }

  checked_appliance appliance{
      {},   "", "", "", "", folder.path("/usr/bin/wget"), spring_morning().seconds, spring_morning().seconds,
      false};
};

TEST(Checks, FindEachFaultAndNothingElse) {
  std::optional<checked_station> station;
  expect_session("tools/golden/checks", [&](const std::string& line) {
    std::string text;
    if (line.starts_with('#'))
      station.emplace();
    else if (line.starts_with('+'))
      station->prepare(line.substr(2));
    else
      for (const std::string& finding : station->found()) text += finding + '\n';
    return station->without_root(text);
  });
}

// Root may write anywhere, so another user looks.
TEST(Checks, FindAPullDirectoryThatCannotBeWrittenInto) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  constexpr uid_t NOBODY = 65'534;
  checked_station station;
  std::filesystem::permissions(station.folder.root(), std::filesystem::perms(0755));
  ASSERT_EQ(chown(station.folder.path("/srv/www").c_str(), NOBODY, NOBODY), 0);
  station.found();
  for (const char* const program : {ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH, "/usr/bin/wget"})
    station.change(std::string("mode 0755 ") + program);
  ASSERT_EQ(seteuid(NOBODY), 0);
  const findings found = findings_of(station.appliance);
  ASSERT_EQ(seteuid(0), 0);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_TRUE(station.without_root(found[0]).starts_with(
      "/var/run/nimbulog/uploads/: no file can be written there (Permission denied)"));
}

// An owner may write whatever the mode says, and a group as it says.
TEST(Checks, FindAnAlarmScriptOfAnotherUser) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  constexpr uid_t NOBODY = 65'534;
  const struct {
    uid_t owner;
    gid_t group;
    const char* mode;
    std::size_t findings;
  } ROWS[] = {{0, 0, "0775", 0},
              {0, NOBODY, "0755", 0},
              {0, NOBODY, "0775", 1},
              {NOBODY, 0, "0555", 1},
              {0, 0, "0757", 1}};
  for (const auto& row : ROWS) {
    checked_station station;
    ASSERT_EQ(chown(station.folder.path(ALARM_SCRIPT_PATH).c_str(), row.owner, row.group), 0);
    station.change(std::string("mode ") + row.mode + ' ' + ALARM_SCRIPT_PATH);
    EXPECT_EQ(station.found().size(), row.findings) << row.owner << ':' << row.group << ' ' << row.mode;
  }
}

// Every text and passcode of every network, from the list of settings alone.
TEST(Checks, FindWhateverIsMissingOfAnAccount) {
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    const std::string name = row.name;
    if (row.group == std::string("record") || row.group == std::string("appliance") ||
        row.group == std::string("sensors") || name == "meteonews_mac" ||
        !(row.field.is_text() || row.field.kind == field_kind::secret_integer))
      continue;
    SCOPED_TRACE(name);
    checked_station station;
    station.change("set " + name + (row.field.is_text() ? "=" : "=-1"));
    const findings found = station.found();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found[0].starts_with(name + ": ")) << found[0];
  }
}

}  // namespace
}  // namespace skypost::testing
