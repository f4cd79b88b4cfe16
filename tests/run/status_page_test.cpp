// What the status pages say, and what is never written.

#include "run/status_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/error_text.h"
#include "base/paths.h"
#include "live/live_record.h"
#include "support/appliance_folder.h"
#include "support/golden.h"
#include "support/locked_file.h"
#include "support/pattern.h"
#include "support/small_disk.h"

namespace skypost::testing {
namespace {

// Uploads that need no network.
struct failure {
  std::string reason = "no reply";
  int wget_status = NO_WGET_STATUS;
  bool is_command_quoted = false;
};
failure next_failure;            // NOLINT(cert-err58-cpp)
std::string page_while_sending;  // NOLINT(cert-err58-cpp)

int succeed() {
  latest_exchange.wget_status = 0;
  page_while_sending = sim::read_file(std::getenv("SKYPOST_ROOT") + std::string(RAPID_FIRE_STATUS_PATH));
  return 0;
}
int fail() {
  error_text.clear();
  error_text.append_text(next_failure.reason);
  if (next_failure.wget_status != NO_WGET_STATUS) latest_exchange.wget_status = next_failure.wget_status;
  if (next_failure.is_command_quoted) latest_exchange.is_command_quoted = true;
  return -1;
}
int succeed_perhaps() {
  doubt_upload("the disk\nis full");
  return 0;
}
constexpr upload GOOD = {"good", carrier::http, nullptr, succeed};
constexpr upload DOUBTFUL = {"doubtful", carrier::file, nullptr, succeed_perhaps};
constexpr upload FAILING = {"failing", carrier::http, nullptr, fail};

// The page with T for each time.
std::string without_times(const std::string& page) { return with_matches_as(page, R"(\d+\.\d{3})", "T"); }

class StatusPage : public ::testing::Test {
 protected:
  StatusPage() {
    live_data_stale = 0;
    next_failure = {};
    appliance.write(STATUS_PATH, std::string(2'000, '\n'));
    appliance.write(RAPID_FIRE_STATUS_PATH, std::string(2'000, '\n'));
  }

  std::string page() const { return without_times(appliance.read(STATUS_PATH)); }

  appliance_folder appliance;
};

// A reason stays on one line, and no command is quoted: it may contain a password. The second failure has no status of
// its own, and must not get the first one's.
TEST_F(StatusPage, SaysWhatARunDoes) {
  begin_run_page();
  EXPECT_EQ(page(), "T\tskypost\tbegin\t\t\n");
  for (const failure& next :
       {failure{"no reply", 4}, failure{""}, failure{"a\tb\nc\x1b[2J\x9b\xC3\xB6\x7f\\x00"},
        failure{std::string(10'000, '.')}, failure{std::string(10'000, '\n')},
        failure{"error: wget '&password=secret'", -1, true}}) {
    next_failure = next;
    EXPECT_EQ(send_in_run("windfinder", FAILING), -1);
  }
  EXPECT_EQ(send_in_run("wetterspiegel", DOUBTFUL), 0);
  EXPECT_EQ(send_in_run("windit", GOOD), 0);
  end_run_page(status_outcome::stale);
  EXPECT_EQ(send_in_run("of no run", GOOD), 0);
  expect_golden("run/golden/status_page", page());
}

TEST_F(StatusPage, OfRapidFireIsWrittenAnewFromMemory) {
  std::string pages;
  const auto send = [&](std::size_t network, const upload& upload) {
    open_rapid_fire_page();
    send_in_rapid_fire(network, upload);
    close_page();
    pages += without_times(appliance.read(RAPID_FIRE_STATUS_PATH)) + '\n';
  };
  send(2, FAILING);
  send(0, GOOD);
  send(2, FAILING);
  // Without a page nothing changes in the memory.
  std::filesystem::rename(appliance.path(RAPID_FIRE_STATUS_PATH), appliance.path("/saved"));
  send(2, GOOD);
  std::filesystem::rename(appliance.path("/saved"), appliance.path(RAPID_FIRE_STATUS_PATH));
  send(2, GOOD);
  expect_golden("run/golden/rapid_fire_pages",
                pages + "While sending:\n" + without_times(page_while_sending));
  // The loop began once, and before its uploads.
  const std::vector<std::string> times = all_matches(appliance.read(RAPID_FIRE_STATUS_PATH), R"(\d+\.\d{3})");
  EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
}

TEST_F(StatusPage, StaysAsItIsWhileAnotherProcessHasIt) {
  const locked_file run_page(appliance.path(STATUS_PATH));
  const locked_file rapid_fire_page(appliance.path(RAPID_FIRE_STATUS_PATH));
  ASSERT_TRUE(run_page.is_locked() && rapid_fire_page.is_locked());
  begin_run_page();
  EXPECT_EQ(send_in_run("windit", GOOD), 0);
  end_run_page(status_outcome::good);
  open_rapid_fire_page();
  EXPECT_EQ(send_in_rapid_fire(2, GOOD), 0);
  close_page();
  EXPECT_EQ(appliance.read(STATUS_PATH), std::string(2'000, '\n'));
  EXPECT_EQ(appliance.read(RAPID_FIRE_STATUS_PATH), std::string(2'000, '\n'));
}

TEST_F(StatusPage, OnAFullDiskCostsTheRunNothing) {
  const small_disk disk(appliance.path(STATUS_PATH).parent_path());
  if (!disk.is_mounted()) GTEST_SKIP() << "may not mount anything";
  appliance.write(STATUS_PATH, "");
  disk.fill();
  begin_run_page();
  EXPECT_EQ(send_in_run("windit", GOOD), 0);
  end_run_page(status_outcome::good);
  EXPECT_EQ(page(), "");
  std::filesystem::remove(appliance.path(STATUS_PATH).parent_path() / "filler");
  begin_run_page();
  EXPECT_EQ(page(), "T\tskypost\tbegin\t\t\n");
  end_run_page(status_outcome::good);
}

}  // namespace
}  // namespace skypost::testing
