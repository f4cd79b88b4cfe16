#include <sys/stat.h>

#include <filesystem>

#include "base/paths.h"
#include "end_to_end/program.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

TEST_F(program, refuses_a_bad_command_line) {
  const struct {
    std::vector<std::string> arguments;
    std::string error;
  } cases[] = {
      // clang-format off
      {{"-r", "-d"}, "number of arguments\n"},
      {{"-d", "-d"}, "number of arguments\n"},
      {{"-x"},       "argument (-x). Use \"-r\" for rapid fire mode, \"-d\" for debug\n"},
      {{""},         "argument (). Use \"-r\" for rapid fire mode, \"-d\" for debug\n"},
      {{"-rd"},      "argument (-rd). Use \"-r\" for rapid fire mode, \"-d\" for debug\n"},
      {{"100% %s"},  "argument (100% %s). Use \"-r\" for rapid fire mode, \"-d\" for debug\n"},
      // clang-format on
  };
  for (const auto& one : cases) {
    const sim::run_result run = all.board.run(one.arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "Error: Bad " + one.error);
  }
  EXPECT_EQ(all.data->clients(), 0);
}

TEST_F(program, gives_up_after_three_attempts_at_the_settings) {
  fs::remove(all.board.path(SETTINGS_PATH));
  const sim::run_result run = all.board.run();
  EXPECT_EQ(run.status, 1);
  EXPECT_NEAR(run.seconds, 3, 0.9);
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

TEST_F(program, lets_everybody_read_the_pull_files_whatever_its_parents_umask) {
  enable_only({&wetterspiegel_enabled});
  const mode_t before = umask(077);
  run_well();
  umask(before);
  for (const std::string directory : PULL_DIRECTORIES) {
    const fs::perms mode = fs::status(all.board.path(directory + "wetterspiegel.txt")).permissions();
    EXPECT_EQ(mode & fs::perms::others_read, fs::perms::others_read) << directory;
  }
}

// MeteoNews is judged by wget's messages, which must be in English.
TEST_F(program, starts_other_programs_in_english_whatever_its_own_language) {
  enable_only({&windfinder_enabled, &borgervejr_enabled});
  all.peers.set_reply("windfinder", sim::reply_kind::bad);
  constexpr char SCRIPT[] = "#!/bin/sh\necho \"${0##*/} $LC_ALL\" >> \"$SKYPOST_ROOT/languages\"\n";
  fs::remove(all.board.path(MAIL_PROGRAM_PATH));
  for (const char* const started : {ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH}) {
    all.board.write(started, SCRIPT);
    fs::permissions(all.board.path(started), fs::perms::owner_all);
  }
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  run_well();
  unsetenv("LC_ALL");
  EXPECT_EQ(all.board.read("/languages"), "alarm C\nsendmail C\n");
}

}  // namespace
}  // namespace skypost::testing
