// What the owner learns from skypost-status, after real runs and from files that no run would write.

#include <fcntl.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "base/error_text.h"
#include "base/paths.h"
#include "end_to_end/program.h"
#include "live/live_record.h"
#include "run/status_writer.h"
#include "settings/field_descriptions.h"
#include "sim/report.h"
#include "support/pattern.h"
#include "support/station.h"
#include "transport/upload.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

constexpr char HEADER[] = "network | state | last good upload | failures | reason\n";
constexpr char WINDFINDER_GOOD[] = "windfinder | good | TIME | 0\n";
constexpr char WINDIT_GOOD[] = "windit | good | TIME | 0\n";

// Sends nothing.
int wanted_status = NO_WGET_STATUS;
std::string wanted_reason;  // NOLINT(cert-err58-cpp)
bool holds_command = false;
int fail() {
  wget_status = wanted_status;
  error_text_holds_command = holds_command;
  error_text.clear();
  error_text.append_text(wanted_reason);
  return -1;
}
int succeed() { return 0; }
constexpr outgoing FAILING = {"failing", carrier::http, nullptr, fail};
constexpr outgoing GOOD = {"good", carrier::http, nullptr, succeed};

const upload_switch& step_called(const std::string& name) {
  for (const upload_switch& row : STEP_SWITCHES)
    if (row.name.text == name) return row;
  throw std::logic_error(name);
}

class status : public program {
 protected:
  status() {
    all.board.write(STATUS_PATH, "");
    setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
    enable_only({&windfinder_enabled, &windit_enabled});
  }
  ~status() override { unsetenv("SKYPOST_ROOT"); }

  sim::run_result tool(const std::vector<std::string>& arguments = {}) const {
    return all.board.run_tool(STATUS_PROGRAM, arguments);
  }

  // What it prints, after a look at the exit status, with TIME for each time, N for a duration, and " | " for two and
  // more blanks, which separate the columns.
  std::string shown(int exit_status) const {
    const sim::run_result run = tool();
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, exit_status) << run.output;
    const sim::run_result quiet = tool({"--quiet"});
    EXPECT_EQ(quiet.output + quiet.errors, "");
    EXPECT_EQ(quiet.status, exit_status);
    std::string text = with_matches_as(run.output, R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)", "TIME");
    text = with_matches_as(text, R"(TIME, \d+ s;)", "TIME, N s;");
    return with_matches_as(text, "  +", " | ");
  }

  // A run of this process, in which `upload` is sent as that step.
  static void record(const std::string& step, const outgoing& upload) {
    begin_run_status();
    send_recorded(step_called(step), upload);
    end_run_status(status_outcome::good);
  }

  // Changes a number of the file.
  void set_number(std::size_t record, std::size_t offset, std::int64_t value, std::size_t size = 8) const {
    std::string bytes = all.board.read(STATUS_PATH);
    for (std::size_t i = 0; i < size; ++i)
      bytes[16 + record * 272 + offset + i] = static_cast<char>(value >> 8 * i);
    all.board.write(STATUS_PATH, bytes);
  }
};

constexpr std::size_t BEGUN = 32;
constexpr std::size_t ENDED = 40;
constexpr std::size_t LAST_GOOD = 48;

std::string complete(const std::string& rows) {
  return "Last run: TIME, N s; it came to its end.\n" + (HEADER + rows);
}

std::string ended(const std::string& how, const std::string& rows) {
  return "Last run: TIME; it was ended by its alarm in " + how + ".\n" + HEADER + rows;
}

TEST_F(status, tells_good_from_failed_and_remembers_the_last_good_upload) {
  EXPECT_EQ(tool().output,
            "No run yet.\n"
            "network          state          last good upload     failures  reason\n"
            "windfinder       not tried yet  never                       0\n"
            "windit           not tried yet  never                       0\n");
  all.peers.set_reply("windfinder", sim::reply_kind::bad);
  for (const std::string failures : {"1", "2"}) {
    run_well();
    EXPECT_EQ(shown(1), complete("windfinder | failed | never | " + failures +
                                 " | upload to windfinder: ERR\n" + WINDIT_GOOD));
  }
  all.peers.set_reply(sim::reply_kind::good);
  run_well();
  EXPECT_EQ(shown(0), complete(std::string(WINDFINDER_GOOD) + WINDIT_GOOD));
  all.peers.set_reply("windit", sim::reply_kind::empty);
  run_well();
  EXPECT_EQ(shown(1), complete(std::string(WINDFINDER_GOOD) +
                               "windit | failed | TIME | 1 | no response from windit\n"));
  enable_only({});
  EXPECT_EQ(shown(0), "Last run: TIME, N s; it came to its end.\nNo network is switched on.\n");
}

TEST_F(status, names_the_network_that_hangs_and_those_that_lose_their_turn) {
  enable_only({&windfinder_enabled, &windit_enabled, &idokep_enabled});
  run_well();
  interpose("CLOCK", "5");
  all.peers.set_reply("windit", sim::reply_kind::hang);
  EXPECT_EQ(all.board.run().signal, SIGALRM);
  EXPECT_EQ(shown(1),
            ended("windit", std::string(WINDFINDER_GOOD) +
                                "windit | hung | TIME | 1 | it was ended before it was done\n"
                                "idokep | no turn | TIME | 0 | the run was ended before its turn\n"));
  all.peers.set_reply(sim::reply_kind::good);
  run_well();
  EXPECT_EQ(tool().status, 0);
}

// The network has failed and not hung.
TEST_F(status, names_the_alarm_script_when_that_hangs) {
  interpose("CLOCK", "5");
  all.board.write(ALARM_SCRIPT_PATH, "#!/bin/sh\nexec sleep 5\n");
  all.peers.set_reply("windfinder", sim::reply_kind::bad);
  EXPECT_EQ(all.board.run().signal, SIGALRM);
  EXPECT_EQ(shown(1), ended("the alarm script, called for windfinder",
                            "windfinder | failed | never | 1 | upload to windfinder: ERR\n"
                            "windit | no turn | never | 0 | the run was ended before its turn\n"));
}

TEST_F(status, says_when_the_run_had_nothing_to_send) {
  run_well();
  const std::string rows = std::string(HEADER) + WINDFINDER_GOOD + WINDIT_GOOD;
  all.data->set_report("actual_th0_temp_c 5\n");
  run_well();
  EXPECT_EQ(
      shown(1),
      "Last run: TIME, N s; the station's outdoor values were not current, so nothing was sent.\n" + rows);
  all.data->set_behaviour(sim::data_server::behaviour::nothing);
  run_well();
  EXPECT_EQ(shown(1), "Last run: TIME, N s; the data server could not be read.\n" + rows);
}

// A monitor must not be alarmed by a run that is going on, and a second run must not spoil the records of the first.
TEST_F(status, knows_a_run_that_is_going_on) {
  run_well();
  all.peers.set_reply("windfinder", sim::reply_kind::hang);
  sim::running_program first(all.board.root(), std::vector<std::string>{});
  ASSERT_TRUE(comes_true([&] { return requests("windfinder") == 2; }, 10));
  const std::string going_on =
      std::string("A run has been going on since TIME.\n") + HEADER + WINDFINDER_GOOD + WINDIT_GOOD;
  EXPECT_EQ(shown(0), going_on);

  all.peers.set_reply("windfinder", sim::reply_kind::bad);
  run_well();
  EXPECT_EQ(all.board.alarms().size(), 1U);
  EXPECT_EQ(shown(0), going_on);
  first.send_signal(SIGALRM);
  first.wait();
  EXPECT_EQ(shown(1), ended("windfinder",
                            "windfinder | hung | TIME | 1 | it was ended before it was done\n"
                            "windit | no turn | TIME | 0 | the run was ended before its turn\n"));

  // It hung, and may not now. Nothing is known of a command that could not be run.
  all.peers.set_reply("windfinder", sim::reply_kind::hang);
  sim::running_program third(all.board.root(), std::vector<std::string>{});
  ASSERT_TRUE(comes_true([&] { return requests("windfinder") == 4; }, 10));
  EXPECT_EQ(shown(1), std::string("A run has been going on since TIME.\n") + HEADER +
                          "windfinder | failed | TIME | 1 | it is being tried again\n" + WINDIT_GOOD);
  third.send_signal(SIGALRM);
  third.wait();
}

TEST_F(status, lists_rapid_fire_beside_the_run) {
  enable_only_rapid_fire(1, 0);
  all.peers.set_reply("weather underground", sim::reply_kind::bad);
  {
    const sim::running_program running(all.board.root(), {"-r"});
    ASSERT_TRUE(comes_true([&] { return all.board.alarms().size() == 2; }, 20));
  }
  EXPECT_EQ(shown(1), std::string("No run yet.\n") + HEADER +
                          "weather underground | not tried yet | never | 0\n"
                          "weather underground rapid fire | failed | never | 2 | login refused; no response "
                          "from weather underground\n");
}

TEST_F(status, says_what_an_exit_status_of_wget_means) {
  const std::pair<int, const char*> cases[] = {
      {1, "wget failed and does not say why"},
      {2, "wget does not take its options: check its settings, /etc/skypost/wgetrc"},
      {3, "wget could not write the reply"},
      {4, "the server was not reached"},
      {5, "its certificate is not trusted: check the clock and ca-certificates"},
      {6, "login refused"},
      {7, "the server does not speak HTTP"},
      {8, "the server answered with an error"},
      {126, "wget cannot be run"},
      {127, "wget is not installed"},
  };
  for (const auto& [number, words] : cases) {
    wanted_status = number;
    wanted_reason = "no response from windfinder";
    record("windfinder", FAILING);
    EXPECT_NE(tool().output.find(std::string("  ") + words + "; no response from windfinder\n"),
              std::string::npos)
        << tool().output;
  }
  // Without a text of the network's own, and without either.
  wanted_reason.clear();
  wanted_status = 4;
  record("windfinder", FAILING);
  EXPECT_NE(tool().output.find("  the server was not reached\n"), std::string::npos);
  wanted_status = NO_WGET_STATUS;
  wanted_reason = "wget ?PASSWORD=secret";
  holds_command = true;
  record("windfinder", FAILING);
  holds_command = false;
  EXPECT_NE(tool().output.find("  its command could not be run\n"), std::string::npos) << tool().output;
}

// The real wget and a server that is not there.
TEST_F(status, knows_a_server_that_is_not_reached) {
  all.board.write(ENDPOINTS_PATH, "windfinder = http://127.0.0.1:9\n");
  enable_only({&windfinder_enabled});
  run_well();
  EXPECT_NE(tool().output.find("  the server was not reached; no response from windfinder\n"),
            std::string::npos)
      << tool().output;
}

TEST_F(status, shows_no_password_that_a_server_repeats) {
  fill_settings(all.board.settings);
  all.board.settings.set_integer(windfinder_enabled, 1);
  all.board.save_settings();
  wanted_status = NO_WGET_STATUS;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_secret()) continue;
    const std::string secret = row.field.is_text()
                                   ? std::string(all.board.settings.text(row.as_text()))
                                   : std::to_string(all.board.settings.integer(row.as_integer()));
    ASSERT_GE(secret.size(), 3U) << row.name;
    // Up to and beyond the place where the reason is cut.
    for (const std::size_t before : {0UL, 185UL, 190UL, 195UL}) {
      wanted_reason = std::string(before, '.') + "<" + secret + "> is wrong";
      record("windfinder", FAILING);
      const std::string found = tool().output;
      const std::string repeated = found.substr(found.find('<') + 1);
      const std::size_t visible = repeated.find_first_not_of('*');
      EXPECT_TRUE(repeated[visible] == '>' || repeated[visible] == '\n') << row.name << ": " << found;
    }
  }
}

TEST_F(status, prints_nothing_that_a_terminal_obeys) {
  wanted_reason = "\x1b[2J\x9b\r\nK\xC3\xB6ln\t!\x7f\n";
  wanted_status = NO_WGET_STATUS;
  record("windfinder", FAILING);
  const std::string found = tool().output;
  EXPECT_NE(found.find("  ?[2J???K??ln?!?\n"), std::string::npos) << found;
}

// The words say the same.
TEST_F(status, is_coloured_on_a_terminal_unless_the_owner_wants_none) {
  record("windfinder", GOOD);
  for (const char* const no_color : {"", "1"}) {
    const sim::run_result run = all.board.run_tool(
        "/usr/bin/script", {"-qec", std::string("NO_COLOR=") + no_color + " " STATUS_PROGRAM, "/dev/null"});
    const std::string good = *no_color == '\0' ? "\033[32mgood\033[0m           " : "good           ";
    EXPECT_NE(run.output.find("windfinder       " + good), std::string::npos) << run.output;
  }
}

// Neither is followed, waited for or changed, and the run goes on.
TEST_F(status, is_not_kept_in_what_only_has_the_files_name) {
  const std::string place = all.board.path(STATUS_PATH);
  const std::string target = all.board.path("/target");
  const struct {
    const char* command;
    const char* says;
  } cases[] = {
      {"ln -s $target $place", "Too many levels of symbolic links\n"},
      {"ln -s $target.nowhere $place", "Too many levels of symbolic links\n"},
      {"ln $target $place", " has a second name, so no status is kept in it; delete it\n"},
      {"mkfifo $place", "No such device or address\n"},
      {"mkdir $place", "Is a directory\n"},
      {":", "install -m 600 /dev/null "},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.command);
    fs::remove_all(place);
    all.board.write("/target", "");
    ASSERT_EQ(std::system(("place=" + place + " target=" + target + "; " + row.command).c_str()), 0);
    all.peers.forget_requests();
    EXPECT_EQ(run_well().errors, "");
    EXPECT_EQ(requests(), 2);
    EXPECT_EQ(all.board.read("/target"), "");
    EXPECT_FALSE(fs::exists(target + ".nowhere"));
    const sim::run_result run = tool();
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_NE(run.errors.find(row.says), std::string::npos) << run.errors;
    EXPECT_EQ(tool({"--quiet"}).errors, "");
  }
  EXPECT_FALSE(fs::exists(place));
}

TEST_F(status, says_when_the_last_run_is_long_ago) {
  record("windfinder", GOOD);
  enable_only({&windfinder_enabled});
  EXPECT_EQ(tool().status, 0);
  const std::int64_t now = std::time(nullptr);
  const struct {
    std::int64_t seconds_ago;
    const char* says;
  } cases[] = {
      {3'590, ""},
      {3'700, " That was 1 hour ago: is skypost still started?"},
      {170'000, " That was 47 hours ago: is skypost still started?"},
      {260'000, " That was 3 days ago: is skypost still started?"},
      {-86'400, ""},  // the clock was set back
  };
  for (const auto& row : cases) {
    set_number(RUN_RECORD, BEGUN, now - row.seconds_ago);
    set_number(RUN_RECORD, ENDED, now - row.seconds_ago + 4);
    const sim::run_result run = tool();
    EXPECT_NE(run.output.find(std::string(", 4 s; it came to its end.") + row.says + "\n"), std::string::npos)
        << run.output;
    EXPECT_EQ(run.status, *row.says == '\0' ? 0 : 1);
  }
}

TEST_F(status, shows_a_question_mark_for_a_time_that_cannot_be) {
  record("windfinder", GOOD);
  enable_only({&windfinder_enabled});
  const auto windfinder =
      FIRST_STEP_RECORD + static_cast<std::size_t>(&step_called("windfinder") - STEP_SWITCHES);
  for (const std::int64_t time : {std::int64_t{1} << 40, std::int64_t{1} << 62}) {
    set_number(windfinder, LAST_GOOD, time);
    EXPECT_EQ(shown(0), complete("windfinder | good | ? | 0\n"));
  }
}

TEST_F(status, says_what_it_cannot_read_or_write) {
  run_well();
  const struct {
    std::vector<std::string> arguments;
    int exit_status;
    const char* errors;
  } lines[] = {
      {{"--loud"},
       2,
       "Error: it takes nothing but --quiet, --help and --version\nTry 'skypost-status --help'.\n"},
      {{"--quiet", "x"},
       2,
       "Error: it takes nothing but --quiet, --help and --version\nTry 'skypost-status --help'.\n"},
      {{"--version"}, 0, ""},
      {{"--quiet", "--help"}, 0, ""},
  };
  for (const auto& row : lines) {
    const sim::run_result run = tool(row.arguments);
    EXPECT_EQ(run.status, row.exit_status);
    EXPECT_EQ(run.errors, row.errors);
    EXPECT_EQ(run.output.empty(), row.exit_status != 0);
  }
  const sim::run_result full = all.board.run_tool("/bin/sh", {"-c", "exec " STATUS_PROGRAM " >/dev/full"});
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.errors, "Error: cannot write to standard output\n");

  // A file of unlisted size, which a run copies first.
  all.board.write(SETTINGS_PATH, all.board.read(SETTINGS_PATH).substr(0, 60'000));
  EXPECT_EQ(tool().errors, "");
  EXPECT_FALSE(fs::exists(all.board.path(SETTINGS_PATH).string() + ".old"));

  fs::remove(all.board.path(SETTINGS_PATH));
  const sim::run_result run = tool();
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors, "Error: cannot read " + all.board.path(SETTINGS_PATH).string() + "\n");
}

}  // namespace
}  // namespace skypost::testing
