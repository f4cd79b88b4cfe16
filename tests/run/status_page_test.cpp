// What the status pages say, and what is never written.

#include "run/status_page.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>

#include "base/error_text.h"
#include "base/paths.h"
#include "live/live_record.h"
#include "support/appliance_folder.h"
#include "support/locked_file.h"
#include "support/pattern.h"
#include "support/small_disk.h"

namespace skypost::testing {
namespace {

// Uploads that need no network: one that is good, and one that does what it is told and fails.
std::string page_while_sending;  // NOLINT(cert-err58-cpp)
std::function<void()> fault;     // NOLINT(cert-err58-cpp)
int succeed() {
  latest_exchange.wget_status = 0;
  page_while_sending = sim::read_file(std::getenv("SKYPOST_ROOT") + std::string(RAPID_FIRE_STATUS_PATH));
  return 0;
}
int fail() {
  error_text.clear();
  fault();
  return -1;
}
int succeed_perhaps() {
  doubt_upload("the disk\nis full");
  return 0;
}
constexpr upload GOOD = {"good", carrier::http, nullptr, succeed};
constexpr upload DOUBTFUL = {"doubtful", carrier::file, nullptr, succeed_perhaps};
constexpr upload FAILING = {"failing", carrier::http, nullptr, fail};

class StatusPage : public ::testing::Test {
 protected:
  StatusPage() {
    live_data_stale = 0;
    appliance.write(STATUS_PATH, std::string(2'000, '\n'));
    appliance.write(RAPID_FIRE_STATUS_PATH, std::string(2'000, '\n'));
    fault = [] { error_text.append_text("no reply"); };
  }

  // The page with T for each time.
  static std::string without_times(const std::string& page) {
    return with_matches_as(page, R"(\d+\.\d{3})", "T");
  }
  std::string page() const { return without_times(appliance.read(STATUS_PATH)); }

  // The columns that a run records of a failure.
  std::string recorded_failure(const std::function<void()>& what) {
    fault = what;
    begin_run_page();
    EXPECT_EQ(send_in_run("windit", FAILING), -1);
    end_run_page(status_outcome::good);
    return first_match(page(), "failed(.*)\n")[1];
  }

  appliance_folder appliance;
};

TEST_F(StatusPage, SaysWhatARunDoes) {
  fault = [] {
    latest_exchange.wget_status = 4;
    error_text.append_text("no reply");
  };
  begin_run_page();
  EXPECT_EQ(page(), "T\tskypost\tbegin\t\t\n");
  EXPECT_EQ(send_in_run("windfinder", FAILING), -1);
  // The status of the wget before is not taken for its own.
  fault = [] {};
  EXPECT_EQ(send_in_run("weather underground", FAILING), -1);
  EXPECT_EQ(send_in_run("wetterspiegel", DOUBTFUL), 0);
  EXPECT_EQ(send_in_run("windit", GOOD), 0);
  end_run_page(status_outcome::stale);
  EXPECT_EQ(send_in_run("of no run", GOOD), 0);
  EXPECT_EQ(page(),
            "T\tskypost\tbegin\t\t\n"
            "T\twindfinder\tbegin\t\t\n"
            "T\twindfinder\tfailed\t4\tno reply\n"
            "T\tweather underground\tbegin\t\t\n"
            "T\tweather underground\tfailed\t\t\n"
            "T\twetterspiegel\tbegin\t\t\n"
            "T\twetterspiegel\tunclear\t\tthe disk\\x0Ais full\n"
            "T\twindit\tbegin\t\t\n"
            "T\twindit\tgood\t0\t\n"
            "T\tskypost\tstale\t\t\n");
}

TEST_F(StatusPage, KeepsTheReasonOnOneLine) {
  const std::string backslash = "\\x5C";
  EXPECT_EQ(recorded_failure([] { error_text.append_text("a\tb\nc\x1b[2J\x9b\xC3\xB6\x7f\\x00"); }),
            "\t\ta\\x09b\\x0Ac\\x1B[2J\\x9B\\xC3\\xB6\\x7F" + backslash + "x00");
  EXPECT_EQ(recorded_failure([] { error_text.append_text(std::string(10'000, '.')); }),
            "\t\t" + std::string(200, '.'));
  std::string escaped;
  for (int i = 0; i < 200; ++i) escaped += "\\x0A";
  EXPECT_EQ(recorded_failure([] { error_text.append_text(std::string(10'000, '\n')); }), "\t\t" + escaped);
}

// It may contain a password.
TEST_F(StatusPage, NeverQuotesACommand) {
  EXPECT_EQ(recorded_failure([] {
              error_text.append_text("error open pipe: wget 'http://...&password=secret'");
              latest_exchange.is_command_quoted = true;
            }),
            "\t\t");
}

TEST_F(StatusPage, OfRapidFireIsWrittenAnewFromMemory) {
  const auto send = [&](std::size_t network, const upload& upload) {
    open_rapid_fire_page();
    send_in_rapid_fire(network, upload);
    close_page();
    return without_times(appliance.read(RAPID_FIRE_STATUS_PATH));
  };
  EXPECT_EQ(send(2, FAILING), "T\tskypost\tbegin\t\t\t0\t\nT\twindit rapid fire\tfailed\t\tno reply\t1\t\n");
  EXPECT_EQ(send(0, GOOD),
            "T\tskypost\tbegin\t\t\t0\t\n"
            "T\tweather underground rapid fire\tgood\t0\t\t0\tT\n"
            "T\twindit rapid fire\tfailed\t\tno reply\t1\t\n");
  EXPECT_EQ(send(2, FAILING),
            "T\tskypost\tbegin\t\t\t0\t\n"
            "T\tweather underground rapid fire\tgood\t0\t\t0\tT\n"
            "T\twindit rapid fire\tfailed\t\tno reply\t2\t\n");
  // Shorter, and without a page nothing changes in the memory.
  std::filesystem::rename(appliance.path(RAPID_FIRE_STATUS_PATH), appliance.path("/saved"));
  EXPECT_EQ(send(2, GOOD), "");
  std::filesystem::rename(appliance.path("/saved"), appliance.path(RAPID_FIRE_STATUS_PATH));
  EXPECT_EQ(send(2, GOOD),
            "T\tskypost\tbegin\t\t\t0\t\n"
            "T\tweather underground rapid fire\tgood\t0\t\t0\tT\n"
            "T\twindit rapid fire\tgood\t0\t\t0\tT\n");
  EXPECT_EQ(without_times(page_while_sending),
            "T\tskypost\tbegin\t\t\t0\t\n"
            "T\tweather underground rapid fire\tgood\t0\t\t0\tT\n"
            "T\twindit rapid fire\tbegin\t\tno reply\t2\t\n");
  // The loop began once, and before its uploads.
  const std::vector<std::string> times = all_matches(appliance.read(RAPID_FIRE_STATUS_PATH), R"(\d+\.\d{3})");
  EXPECT_LE(times[0], times[1]);
  EXPECT_EQ(times[1], times[2]);
  EXPECT_LE(times[2], times[3]);
  EXPECT_EQ(times[3], times[4]);
}

TEST_F(StatusPage, StaysAsItIsWhileAnotherProcessHasIt) {
  for (const char* const path : {STATUS_PATH, RAPID_FIRE_STATUS_PATH}) {
    const std::string before = appliance.read(path);
    {
      const locked_file locked(appliance.path(path));
      ASSERT_TRUE(locked.is_locked());
      begin_run_page();
      EXPECT_EQ(send_in_run("windit", GOOD), 0);
      end_run_page(status_outcome::good);
      open_rapid_fire_page();
      EXPECT_EQ(send_in_rapid_fire(2, GOOD), 0);
      close_page();
      EXPECT_EQ(appliance.read(path), before);
    }
  }
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
