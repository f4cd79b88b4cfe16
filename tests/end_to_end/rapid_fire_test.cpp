#include <chrono>
#include <csignal>
#include <filesystem>
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

}  // namespace
}  // namespace skypost::testing
