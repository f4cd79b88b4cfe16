#include "settings_tool/checks.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "base/paths.h"
#include "common/field_descriptions.h"
#include "common/kept_text.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "status/history.h"
#include "support/golden.h"
#include "support/small_disk.h"
#include "tools/owners_station.h"

namespace skypost::testing {
namespace {

struct checked_station : owners_station {
  checked_station() {
    appliance.wget = folder.path("/usr/bin/wget");
    appliance.certificates = folder.path("/etc/ssl/certs");
    appliance.now = appliance.built = spring_morning().seconds;
  }

  void prepare(const std::string& line) {
    if (line.starts_with("no-report ")) {
      report = "";
      appliance.report_fault = line.substr(10);
    } else if (line.starts_with("now ")) {
      appliance.now = appliance.built + std::stoi(line.substr(4));
    } else if (line.starts_with("at-hand ")) {
      appliance.at_hand = line == "at-hand files" ? extent::files : extent::settings;
    } else if (line == "online") {
      appliance.online = true;
    } else if (line.starts_with("timer")) {
      appliance.timer = line.substr(5);
    } else if (line.starts_with("rapid-service")) {
      appliance.rapid_service = line.substr(13);
    } else if (line.starts_with("status ")) {
      record_status(line.substr(7));
    } else if (line.starts_with("run-begun ")) {
      record_run(appliance.now - std::stoi(line.substr(10)));
    } else if (line.starts_with("last-run ")) {
      folder.write(LAST_RUN_PATH, std::to_string(appliance.now - std::stoi(line.substr(9))));
    } else {
      change(line);
    }
  }

  // Writes a status page on which a run began. Each page of the same station is newer than the one before.
  void record_run(std::int64_t begun) {
    folder.write(STATUS_PATH, page_ = std::to_string(begun) + ".000\tskypost\tbegin\n");
    change(std::string("mode 0600 ") + STATUS_PATH);
    std::filesystem::remove(folder.path(HISTORY_PATH));
  }

  // Adds "UPLOAD<tab>OUTCOME<tab>EXIT STATUS<tab>REASON" to the page of a run that has come to its end.
  void record_status(const std::string& line) {
    if (page_.empty()) record_run(appliance.now - 60);
    const std::string time = std::to_string(appliance.now - 50) + ".000\t";
    page_ += time + without_escapes(line) + '\n';
    folder.write(STATUS_PATH, page_ + time + "skypost\tgood\n");
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

  checked_appliance appliance{};

 private:
  std::string page_;
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

// Root can write anywhere, so the check runs as another user.
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

// A file can still be created on a full disk, and a short one overwritten, so trying either would find nothing.
TEST(Checks, FindAPullDirectoryOnAFullDisk) {
  checked_station station;
  const small_disk disk(station.folder.path("/srv/www"));
  if (!disk.is_mounted()) GTEST_SKIP() << "only root can mount";
  station.change("mode 0755 /srv/www");
  EXPECT_EQ(station.found(), findings{});
  disk.fill();
  const findings found = station.found();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_TRUE(station.without_root(found[0]).starts_with(
      "/srv/www/: no file can be written there (No space left on device), so new values do not reach AWEKAS"))
      << found[0];
}

TEST(Checks, LeaveNothingInAPullDirectory) {
  checked_station station;
  station.found();
  for (const char* const directory : PULL_DIRECTORIES)
    EXPECT_TRUE(std::filesystem::is_empty(station.folder.path(directory))) << directory;
}

// wgetrc can name other certificates than the system's, or switch the check off.
TEST(Checks, LookForTheCertificatesThatWgetTrusts) {
  const std::string PEM = "-----BEGIN TRUSTED CERTIFICATE-----\n";
  const struct {
    const char* wgetrc;  // %s is a folder whose only certificate is own.pem
    std::size_t findings;
  } ROWS[] = {{"", 1},
              {"ca_directory = %s\n", 0},
              {"CA-Certificate=%s/own.pem \r\n", 0},
              {"ca_certificate = %s/other.pem\n", 1},
              {"check_certificate = off\n", 0},
              {"check_certificate = off\ncheck_certificate = on\n", 1}};
  for (const auto& row : ROWS) {
    checked_station station;
    station.change("remove /etc/ssl/certs");
    station.folder.write("/own/own.pem", PEM);
    station.folder.write("/own/other.pem", "no certificate");
    station.folder.write(WGET_SETTINGS_PATH, replaced(row.wgetrc, "%s", station.folder.path("/own")));
    EXPECT_EQ(station.found().size(), row.findings) << row.wgetrc;
  }
}

// A file's owner can always change it, its group only if the mode permits.
TEST(Checks, FindWhatAnotherUserOwns) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  constexpr uid_t NOBODY = 65'534;
  const struct {
    const char* path;
    uid_t owner;
    gid_t group;
    const char* mode;
    std::size_t findings;
  } ROWS[] = {{ALARM_SCRIPT_PATH, 0, 0, "0775", 0},        {ALARM_SCRIPT_PATH, 0, NOBODY, "0755", 0},
              {ALARM_SCRIPT_PATH, 0, NOBODY, "0775", 1},   {ALARM_SCRIPT_PATH, NOBODY, 0, "0555", 1},
              {ALARM_SCRIPT_PATH, 0, 0, "0757", 1},        {MAIL_PROGRAM_PATH, NOBODY, 0, "0755", 1},
              {"/var/run/nimbulog", NOBODY, 0, "0755", 1}, {STATUS_PATH, NOBODY, 0, "0600", 1},
              {RAPID_FIRE_STATUS_PATH, 0, 0, "0640", 1},   {HISTORY_PATH, 0, 0, "0604", 1}};
  for (const auto& row : ROWS) {
    checked_station station;
    station.record_run(station.appliance.now);
    for (const char* const path : {RAPID_FIRE_STATUS_PATH, HISTORY_PATH}) {
      station.folder.write(path, "");
      station.change(std::string("mode 0600 ") + path);
    }
    ASSERT_EQ(chown(station.folder.path(row.path).c_str(), row.owner, row.group), 0);
    station.change(std::string("mode ") + row.mode + ' ' + row.path);
    const findings found = station.found();
    EXPECT_EQ(found.size(), row.findings) << row.owner << ':' << row.group << ' ' << row.mode;
    for (const std::string& finding : found)
      EXPECT_TRUE(
          station.without_root(finding).starts_with(std::string(row.path) + ": users other than root"))
          << finding;
  }
}

// The cases come from the list of settings, so no text or passcode is forgotten.
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
