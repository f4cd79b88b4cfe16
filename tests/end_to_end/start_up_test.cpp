#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "live/data_server.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

// Runs a shell command, in which "$0" is the program.
sim::run_result run_by_shell(const sim::appliance& board, const std::string& command) {
  return board.run_tool("/bin/sh", {"-c", command, SKYPOST_PROGRAM});
}

TEST_F(program, refuses_a_bad_command_line) {
  for (const char* const argument : {"-x", "", "-rd", "100% %s"}) {
    const sim::run_result run = all.board.run({argument});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "Error: Bad argument (" + std::string(argument) +
                              "). Use \"-r\" for rapid fire mode, \"-d\" for debug\n");
  }
  EXPECT_EQ(all.board.run({"-r", "-d"}).errors, "Error: Bad number of arguments\n");
  EXPECT_EQ(all.data->clients(), 0);
}

// An alarm that the parent left running would end it before the third.
TEST_F(program, gives_up_after_three_attempts_at_the_settings) {
  fs::remove(all.board.path(SETTINGS_PATH));
  interpose("HASTE", "5");
  interpose("TRACE", all.board.path("/trace"));
  const sim::run_result run =
      run_by_shell(all.board, R"(exec perl -MTime::HiRes=ualarm -e 'ualarm 200_000; exec @ARGV' "$0")");
  EXPECT_EQ(run.signal, 0);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(traced("pause 1000\n"), 3);
  const std::vector<sim::alarm_call> expected = {{"skypost", "Can't read nimbulog settings file", ""}};
  EXPECT_EQ(all.board.alarms(), expected);
  EXPECT_EQ(all.data->clients(), 0);
}

// On this board /proc/bus/pci/devices is missing; the reason printed must not be that of this earlier error.
TEST_F(program, tells_of_an_ifconfig_without_an_address_and_a_bad_endpoint_and_goes_on) {
  enable_only({&windit_enabled});
  all.board.write(sim::IFCONFIG_OUTPUT_PATH, "eth0: flags=4163<UP,BROADCAST,RUNNING,MULTICAST>  mtu 1500\n");
  all.board.write(ENDPOINTS_PATH, "windfinder = http://x\";id\n" + all.board.read(ENDPOINTS_PATH));
  const std::string errors = run_well().errors;
  EXPECT_TRUE(errors.starts_with("Error ifconfig read eth0 mac address: Success\n")) << errors;
  EXPECT_NE(errors.find(" line 1: "), std::string::npos) << errors;
  EXPECT_EQ(requests("windit"), 1);
}

// Takes the alarm script's place, and writes what it inherited from the program: closed descriptors, the status file,
// SIGPIPE, SIGALRM or SIGXFSZ ignored, the language (MeteoNews is judged by wget's messages), and where wget's settings
// are.
constexpr char INHERITED[] = R"sh(#!/bin/sh
ulimit -S -f unlimited
for number in 0 1 2; do [ -e /proc/$$/fd/$number ] || closed="$closed $number"; done
ignored=0x$(sed -n 's/^SigIgn:[[:space:]]*//p' /proc/self/status)
{
  echo "closed:$closed"
  ls -l /proc/self/fd | grep -F skypost.status
  echo "ignored: $((ignored & 0x1003000))"
  echo "language: $LC_ALL"
  echo "wgetrc: ${WGETRC#"$SKYPOST_ROOT"}"
} >>"$SKYPOST_ROOT/inherited"
)sh";

// Neither the run nor the programs that it starts may suffer from what the parent left behind. Windfinder raises the
// only alarm: an empty reply from Met Office is good if wget's exit status is 0, which an ignored SIGCHLD would lose.
// Everybody may read the pull files.
TEST_F(program, starts_other_programs_alike_whatever_its_own_start) {
  enable_only({&windfinder_enabled, &metoffice_enabled, &wetterspiegel_enabled});
  all.peers.set_reply("windfinder", sim::reply_kind::bad);
  all.peers.set_reply("metoffice", sim::reply_kind::empty);
  all.board.write(STATUS_PATH, "");
  all.board.write(ALARM_SCRIPT_PATH, INHERITED);
  for (const char* const start : {
           R"(exec "$0" <&- >&- 2>&-)",
           R"(exec env --ignore-signal=CHLD "$0")",
           R"(exec env --ignore-signal=ALRM --block-signal=ALRM sh -c 'kill -ALRM $$; exec "$0"' "$0")",
           R"(exec env WGETRC= LC_ALL=de_DE.UTF-8 "$0")",
           R"(umask 077; exec "$0")",
           R"(ulimit -S -f 0; exec "$0")",
       }) {
    SCOPED_TRACE(start);
    all.board.write("/inherited", "");
    const sim::run_result run = run_by_shell(all.board, start);
    EXPECT_EQ(run.signal, 0);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(all.board.read("/inherited"),
              std::string("closed:\nignored: 0\nlanguage: C\nwgetrc: ") + WGET_SETTINGS_PATH + '\n');
    for (const std::string directory : PULL_DIRECTORIES) {
      const fs::path file = all.board.path(directory + "wetterspiegel.txt");
      EXPECT_NE(fs::status(file).permissions() & fs::perms::others_read, fs::perms::none) << file;
      fs::remove(file);
    }
  }
}

// Each recv() waits five seconds, so that eleven fit into the minute.
TEST_F(program, gives_up_a_report_that_trickles_for_a_minute) {
  interpose("CLOCK", "20");
  interpose("TRACE", all.board.path("/trace"));
  all.data.reset();
  std::atomic<bool> is_over = false;
  const sim::tcp_server trickling(DATA_SERVER_PORT, "data server", [&](const sim::connection& client) {
    for (int i = 0; i < 300 && !is_over; ++i) {
      client.write("#");
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  });
  run_well();
  is_over = true;
  EXPECT_LE(traced("recv\n"), 11);
  EXPECT_GE(traced("recv\n"), 9);  // on a busy machine
}

}  // namespace
}  // namespace skypost::testing
