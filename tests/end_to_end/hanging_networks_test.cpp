// Networks that hang, with the real wget and the settings for it that are installed: what a hang costs, and that
// it costs the other networks nothing.

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/tcp_server.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class hanging_networks : public program {
 protected:
  ~hanging_networks() override {
    unsetenv("LD_PRELOAD");
    unsetenv("SKYPOST_TEST_CLOCK");
  }

  // The limit of a step then comes after three seconds.
  static void run_clock_five_times_as_fast() {
    setenv("LD_PRELOAD", INTERPOSED_CALLS, 1);
    setenv("SKYPOST_TEST_CLOCK", "5", 1);
  }

  void set_wget_limits(const std::string& connect_seconds, const std::string& read_seconds) const {
    all.board.write(WGET_SETTINGS_PATH, "connect_timeout = " + connect_seconds +
                                            "\nread_timeout = " + read_seconds + "\nwaitretry = 0\n");
  }

  // From now on nobody accepts at the network's server.
  void put_full_server_at(const std::string& endpoint) {
    const std::string line = endpoint + " = http://127.0.0.1:" + std::to_string(full_.port()) + '\n';
    all.board.write(ENDPOINTS_PATH, all.board.read(ENDPOINTS_PATH) + line);
  }

  // The processes of this appliance that are alive, the program itself among them.
  int living_processes() const {
    const std::string mark = "SKYPOST_ROOT=" + all.board.root().string() + '\0';
    int count = 0;
    for (const auto& entry : fs::directory_iterator("/proc")) {
      std::ifstream file(entry.path() / "environ", std::ios::binary);
      const std::string environment((std::istreambuf_iterator<char>(file)), {});
      if (environment.find(mark) != std::string::npos) ++count;
    }
    return count;
  }

  // In rapid fire, each second: Weather Underground, which hangs, and WeatherFlow.
  void set_up_rapid_fire() {
    enable_only({&wunderground_enabled, &wunderground_rapid_enabled, &weatherflow_enabled,
                 &weatherflow_rapid_enabled});
    for (const integer_field* interval : {&wunderground_rapid_interval, &weatherflow_rapid_interval})
      all.board.settings.set_integer(*interval, 1);
    all.board.save_settings();
  }

  // That the loop serves the other network twice more and reports the one that hangs.
  void expect_loop_goes_on() {
    sim::running_program running(all.board.root(), {"-r"});
    const auto start = std::chrono::steady_clock::now();
    const auto is_done = [&] { return requests("weatherflow") >= 3 && all.board.alarms().size() >= 2; };
    while (!is_done() && std::chrono::steady_clock::now() - start < std::chrono::seconds(40))
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(running.has_ended());
    EXPECT_GE(requests("weatherflow"), 3);
    EXPECT_LE(living_processes(), 3);  // the program, a shell, a wget
    running.send_signal(SIGTERM);
    running.wait();
    const sim::alarm_call expected = {"skypost", "weather underground rapid fire",
                                      "no response from weather underground"};
    ASSERT_GE(all.board.alarms().size(), 2U);
    EXPECT_EQ(all.board.alarms()[0], expected);
    EXPECT_EQ(all.board.alarms()[1], expected);
  }

 private:
  sim::full_server full_;
};

TEST_F(hanging_networks, are_reported_when_they_do_not_accept_and_the_next_is_served) {
  enable_only({&windfinder_enabled, &windit_enabled});
  put_full_server_at("windfinder");
  const sim::run_result run = run_well();
  EXPECT_LT(run.seconds, 15);
  const std::vector<sim::alarm_call> expected = {{"skypost", "windfinder", "no response from windfinder"}};
  EXPECT_EQ(all.board.alarms(), expected);
  EXPECT_EQ(requests("windit"), 1);
}

// Each run is ended by its alarm and leaves a wget behind, for one more second of the four that it has.
TEST_F(hanging_networks, leave_few_processes_behind_when_they_never_answer) {
  run_clock_five_times_as_fast();
  set_wget_limits("1", "1");
  enable_only({&windfinder_enabled});
  all.peers.set_answer("windfinder", sim::answer::hang);
  for (int i = 0; i < 5; ++i) {
    const sim::run_result run = all.board.run();
    EXPECT_EQ(run.signal, SIGALRM);
    EXPECT_LE(living_processes(), 4);  // a shell and a wget of this run and of the one before
  }
  EXPECT_TRUE(all.board.alarms().empty());

  // The next run is not disturbed by them.
  enable_only({&windit_enabled});
  run_well();
  EXPECT_EQ(requests("windit"), 1);

  for (int i = 0; i < 50 && living_processes() > 0; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(living_processes(), 0);
}

TEST_F(hanging_networks, do_not_stop_rapid_fire_when_they_do_not_accept) {
  set_wget_limits("1", "1");
  set_up_rapid_fire();
  put_full_server_at("wunderground_rapid");
  expect_loop_goes_on();
}

TEST_F(hanging_networks, do_not_stop_rapid_fire_when_they_never_answer) {
  set_wget_limits("1", "1");
  set_up_rapid_fire();
  all.peers.set_answer("weather underground", sim::answer::hang);
  expect_loop_goes_on();
}

// Whoever starts the program with settings for wget keeps them; without the file wget has its own.
TEST_F(hanging_networks, meet_the_settings_of_the_caller_first) {
  enable_only({&windfinder_enabled});
  put_full_server_at("windfinder");
  run_clock_five_times_as_fast();
  fs::remove(all.board.path(WGET_SETTINGS_PATH));
  EXPECT_EQ(all.board.run().signal, SIGALRM);

  // wget has no limit of its own for connecting; the caller's is shorter than the installed one.
  all.board.write(WGET_SETTINGS_PATH, "connect_timeout = 300\n");
  all.board.write(sim::CALLERS_WGETRC_PATH, "connect_timeout = 0.2\nwaitretry = 0\n");
  run_well();
  EXPECT_EQ(all.board.alarms().size(), 1U);
}

}  // namespace
}  // namespace skypost::testing
