#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <thread>

#include "base/paths.h"
#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

// Waits until it holds, a few passes long.
template <typename condition>
bool comes_true(condition holds) {
  using namespace std::chrono;
  for (const auto start = steady_clock::now(); steady_clock::now() - start < seconds(12);) {
    if (holds()) return true;
    std::this_thread::sleep_for(milliseconds(50));
  }
  return false;
}

long open_descriptors(const sim::running_program& running) {
  const fs::path folder = "/proc/" + std::to_string(running.process()) + "/fd";
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

class rapid_fire : public program {
 protected:
  ~rapid_fire() override {
    for (const char* const variable : {"LD_PRELOAD", "SKYPOST_TEST_HASTE", "SKYPOST_TEST_CLOCK"})
      unsetenv(variable);
  }

  // The clock, and with it the pauses.
  static void run_faster_by(const char* factor) {
    setenv("LD_PRELOAD", INTERPOSED_CALLS, 1);
    setenv("SKYPOST_TEST_HASTE", factor, 1);
    setenv("SKYPOST_TEST_CLOCK", factor, 1);
  }

  // One network each second.
  void set_up_each_second(const integer_field& interval, const integer_field& enabled,
                          const integer_field& rapid) {
    all.board.settings.set_integer(interval, 1);
    all.board.settings.set_integer(enabled, 1);
    all.board.settings.set_integer(rapid, 1);
    all.board.save_settings();
  }

  bool more_of(const std::string& name) {
    const int before = requests(name);
    return comes_true([&] { return requests(name) > before + 1; });
  }
};

TEST_F(rapid_fire, follows_the_settings_file_and_outlives_its_absence) {
  enable_only({});
  set_up_each_second(wunderground_rapid_interval, wunderground_enabled, wunderground_rapid_enabled);
  sim::running_program running(all.board.root(), {"-r"});

  ASSERT_TRUE(more_of("weather underground"));
  EXPECT_STREQ(all.peers.requests()[0].network->endpoint, "wunderground_rapid");
  EXPECT_EQ(requests("weatherflow"), 0);

  // A change takes effect without a restart.
  set_up_each_second(weatherflow_rapid_interval, weatherflow_enabled, weatherflow_rapid_enabled);
  ASSERT_TRUE(more_of("weatherflow"));
  const long descriptors = open_descriptors(running);

  // Without the file the last settings stay in force.
  fs::remove(all.board.path(SETTINGS_PATH));
  ASSERT_TRUE(comes_true([&] { return !all.board.alarms().empty(); }));
  const sim::alarm_call expected = {"skypost", "Can't read nimbulog settings file (rapid fire)", ""};
  EXPECT_EQ(all.board.alarms()[0], expected);
  ASSERT_TRUE(more_of("weatherflow"));

  all.board.settings.set_integer(wunderground_enabled, 0);
  all.board.save_settings();
  ASSERT_TRUE(more_of("weatherflow"));
  const int of_the_other = requests("weather underground");
  ASSERT_TRUE(more_of("weatherflow"));
  EXPECT_EQ(requests("weather underground"), of_the_other);

  // Between two uploads it has as many as before.
  EXPECT_TRUE(comes_true([&] { return open_descriptors(running) <= descriptors; }));
  running.send_signal(SIGTERM);
  const sim::run_result run = running.wait();
  EXPECT_EQ(run.signal, SIGTERM);
  EXPECT_EQ(run.errors, "");
}

TEST_F(rapid_fire, skips_passes_without_data_and_reports_each_failed_upload) {
  enable_only({});
  set_up_each_second(wunderground_rapid_interval, wunderground_enabled, wunderground_rapid_enabled);
  all.data->set_behaviour(sim::data_server::behaviour::silence);
  sim::running_program running(all.board.root(), {"-r"});

  // Five seconds until the first report is given up; the second one begins then.
  ASSERT_TRUE(comes_true([&] { return all.data->clients() == 2; }));
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.board.alarms().empty());

  all.data->set_behaviour(sim::data_server::behaviour::report);
  all.peers.set_answer(sim::answer::bad);
  ASSERT_TRUE(comes_true([&] { return all.board.alarms().size() == 2; }));
  const sim::alarm_call expected = {
      "skypost", "weather underground rapid fire",
      "upload to weather underground failed: INVALIDPASSWORDID|Password or key and/or id are incorrect"};
  EXPECT_EQ(all.board.alarms()[0], expected);
  EXPECT_EQ(all.board.alarms()[1], expected);
}

// Ten times as fast as the clock, so that WindIt's fixed interval takes a second.
TEST_F(rapid_fire, sends_each_network_in_its_own_form_what_its_pass_has_fetched) {
  enable_only({&windit_enabled});
  set_up_each_second(wunderground_rapid_interval, wunderground_enabled, wunderground_rapid_enabled);
  set_up_each_second(weatherflow_rapid_interval, weatherflow_enabled, weatherflow_rapid_enabled);
  for (const integer_field* interval : {&wunderground_rapid_interval, &weatherflow_rapid_interval})
    all.board.settings.set_integer(*interval, 5);
  all.board.save_settings();
  all.data->set_behaviour(sim::data_server::behaviour::numbered);
  all.peers.set_answer(sim::answer::bad);
  run_faster_by("10");
  const sim::running_program running(all.board.root(), {"-r"});
  ASSERT_TRUE(comes_true([&] { return requests("windit") == 2; }));

  for (const sim::request_seen& seen : all.peers.requests()) {
    const std::string endpoint = seen.network->endpoint;
    EXPECT_TRUE(endpoint == "wunderground_rapid" || endpoint == "weatherflow" || endpoint == "windit")
        << endpoint;
    EXPECT_EQ(seen.request.find("&realtime=1&rtfreq=5") != std::string::npos, endpoint != "windit")
        << seen.request;
  }
  // The first pass fetches and has nothing to send; the second sends 2 °C.
  const std::string first = all.peers.requests()[0].request;
  EXPECT_NE(first.find("&tempf=35.6&"), std::string::npos) << first;

  std::set<std::string> names;
  for (const sim::alarm_call& call : all.board.alarms()) names.insert(call[1]);
  const std::set<std::string> expected = {"weather underground rapid fire", "weather flow rapid fire",
                                          "windit rapid fire"};
  EXPECT_EQ(names, expected);
}

// A negative one would be a sleep of more than a century.
TEST_F(rapid_fire, takes_thirty_seconds_for_an_interval_that_is_none) {
  enable_only({});
  set_up_each_second(wunderground_rapid_interval, wunderground_enabled, wunderground_rapid_enabled);
  all.board.settings.set_integer(wunderground_rapid_interval, -5);
  all.board.save_settings();
  run_faster_by("100");
  const sim::running_program running(all.board.root(), {"-r"});
  ASSERT_TRUE(comes_true([&] { return requests("weather underground") > 0; }));
  EXPECT_NE(all.peers.requests()[0].request.find("&rtfreq=30&"), std::string::npos);
}

}  // namespace
}  // namespace skypost::testing
