// What a hanging network costs, with the real wget and its installed settings.

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/tcp_server.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class hanging_networks : public program {
 protected:
  void set_wget_limits(const std::string& seconds) const {
    all.board.write(WGET_SETTINGS_PATH, "read_timeout = " + seconds + "\nwaitretry = 0\n");
  }

  // Points the endpoint at a server that accepts no connection.
  void put_full_server_at(const std::string& endpoint) {
    const std::string line = endpoint + " = http://127.0.0.1:" + std::to_string(full_.port()) + '\n';
    all.board.write(ENDPOINTS_PATH, all.board.read(ENDPOINTS_PATH) + line);
  }

  // Counts the appliance's living processes, including the program.
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

// SIGALRM must end each run even if the parent blocked and ignored it. The wget left behind ends soon after.
TEST_F(hanging_networks, leave_few_processes_behind_when_they_never_reply) {
  interpose("CLOCK", "10");  // shortens a step's time limit to 1.5 seconds
  set_wget_limits("0.6");    // four tries
  enable_only({&windfinder_enabled, &windit_enabled});
  all.peers.set_reply("windfinder", sim::reply_kind::hang);
  sigset_t alarm_signal;
  sigemptyset(&alarm_signal);
  sigaddset(&alarm_signal, SIGALRM);
  sigprocmask(SIG_BLOCK, &alarm_signal, nullptr);
  std::signal(SIGALRM, SIG_IGN);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(all.board.run().signal, SIGALRM);
    EXPECT_LE(living_processes(), 4);  // a shell and a wget of this run and of the one before
  }
  std::signal(SIGALRM, SIG_DFL);
  sigprocmask(SIG_UNBLOCK, &alarm_signal, nullptr);
  EXPECT_TRUE(all.board.alarms().empty());
  EXPECT_EQ(requests("windit"), 0);

  // The processes left behind must not disturb the next run.
  enable_only({&windit_enabled});
  run_well();
  EXPECT_EQ(requests("windit"), 1);
  EXPECT_TRUE(comes_true([&] { return living_processes() == 0; }, 5));
}

// While Weather Underground hangs, the loop must report that and go on uploading to WeatherFlow.
TEST_F(hanging_networks, do_not_stop_rapid_fire) {
  all.peers.set_reply("weather underground", sim::reply_kind::hang);
  set_wget_limits("0.2");
  enable_only_rapid_fire(1, 1);
  const sim::running_program running(all.board.root(), {"-r"});
  EXPECT_TRUE(comes_true([&] { return requests("weatherflow") >= 2 && !all.board.alarms().empty(); }, 40));
  EXPECT_FALSE(running.has_ended());
  EXPECT_LE(living_processes(), 3);  // the program, a shell, a wget
  const sim::alarm_call expected = {"skypost", "weather underground rapid fire",
                                    "no response from weather underground"};
  EXPECT_EQ(all.board.alarms()[0], expected);
}

// The caller's wget settings take precedence. Without the installed ones, wget never gives up connecting.
TEST_F(hanging_networks, meet_the_settings_of_the_caller_first) {
  enable_only({&windfinder_enabled});
  put_full_server_at("windfinder");
  interpose("CLOCK", "10");
  fs::remove(all.board.path(WGET_SETTINGS_PATH));
  EXPECT_EQ(all.board.run().signal, SIGALRM);

  all.board.write(WGET_SETTINGS_PATH, "connect_timeout = 300\n");
  all.board.write(sim::CALLERS_WGETRC_PATH, "connect_timeout = 0.1\nwaitretry = 0\n");
  run_well();
  EXPECT_EQ(all.board.alarms().size(), 1U);
}

}  // namespace
}  // namespace skypost::testing
