// What the owner learns from skypost-status, after real runs and from files that no run would write.

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <sstream>

#include "base/error_text.h"
#include "base/paths.h"
#include "common/field_descriptions.h"
#include "end_to_end/program.h"
#include "run/status_page.h"
#include "sim/report.h"
#include "status/history.h"
#include "support/golden.h"
#include "support/pattern.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// What the golden text's commands have at hand, in the directory of the status pages.
constexpr char SHELL_START[] = R"(
PATH=$TOOLS:$PATH
cd "$SKYPOST_ROOT/var/run/nimbulog"
home=$SKYPOST_ROOT/home/nimbulog
# a run, and then skypost-status, as after-run calls it; with a variable of interposed_calls.cpp
run() { "$SKYPOST"; end_run $?; }
run_with() { with "$1" "$SKYPOST"; end_run $?; }
with() { variable=SKYPOST_TEST_$1; shift; env TZ=UTC "LD_PRELOAD=$CALLS:$LD_PRELOAD" "$variable" "$@"; }
end_run() { skypost-status >status; return $1; }
# shows the status at a time, in seconds since the epoch
status_at() { with "TIME=$1" skypost-status; }
# a run as it is begun and followed by the unit; and what follows one, at a time
run_and_tell() { "$SKYPOST"; $AFTER_RUN; }
tell_at() { with "TIME=$1" $AFTER_RUN; }
# the page of a run that began at a time, from lines such as "windfinder failed 4 no_reply"
page() {
  start=$1; shift
  for line in "skypost begin" "$@"; do echo "$start.000 $line"; done | tr ' _' '\t ' >skypost.status
}
)";

// Sends nothing.
int wanted_status = NO_WGET_STATUS;
std::string wanted_reason;  // NOLINT(cert-err58-cpp)
int fail() {
  latest_exchange.wget_status = wanted_status;
  error_text.clear();
  error_text.append_text(wanted_reason);
  return -1;
}

// A run of this process in which the upload to Windfinder fails.
void record_failure(int status, const std::string& reason) {
  wanted_status = status;
  wanted_reason = reason;
  begin_run_page();
  send_in_run("windfinder", {"failing", carrier::http, nullptr, fail});
  end_run_page(status_outcome::good);
}

class status : public program {
 protected:
  status() {
    setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
    setenv("TOOLS", std::filesystem::path(STATUS_PROGRAM).parent_path().c_str(), 1);
    setenv("SKYPOST", SKYPOST_PROGRAM, 1);
    setenv("CALLS", INTERPOSED_CALLS, 1);
    setenv("AFTER_RUN", TESTS_DIRECTORY "/../packaging/after-run", 1);
    begin_anew();
  }
  ~status() override {
    for (const char* const name : {"SKYPOST_ROOT", "TOOLS", "SKYPOST", "CALLS", "AFTER_RUN"}) unsetenv(name);
  }

  void begin_anew() {
    running_.reset();
    for (const char* const path : {STATUS_PATH, HISTORY_PATH})
      std::filesystem::remove_all(all.board.path(path));
    all.board.write(STATUS_PATH, "");
    all.board.write("/etc/skypost/tell", "#!/bin/sh\nprintf 'told: %s\\n' \"$1\"\n");
    std::filesystem::permissions(all.board.path("/etc/skypost/tell"), std::filesystem::perms::owner_all);
    change("report");
    all.data->set_behaviour(sim::data_server::behaviour::report);
    all.peers.set_reply(sim::reply_kind::good);
    all.peers.forget_requests();
    all.write_endpoints();
    enable_only({&windfinder_enabled, &windit_enabled});
  }

  // What it prints, and its exit status unless that is 0.
  std::string shell(const std::string& command) const {
    const sim::run_result run = all.board.run_tool("/bin/sh", {"-c", SHELL_START + command});
    std::string text = replaced(run.output + run.errors, all.board.root(), "");
    // Times of this test; earlier ones are of a page that it has made up.
    text = with_matches_as(text, R"((?!20[12][0-5])\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)", "YYYY-MM-DD hh:mm:ss");
    text = with_matches_as(text, R"(ss, \d\d? s;)", "ss, N s;");
    if (!text.empty() && text.back() != '\n') text += '\n';
    return text + (run.status == 0 ? "" : "-> " + std::to_string(run.status) + '\n');
  }

  // Everything on a line of the golden text but commands.
  void change(const std::string& line) {
    std::istringstream words(line);
    std::string verb, word;
    words >> verb;
    if (verb == "enable") {
      enable_only({});
      while (words >> word) EXPECT_TRUE(set_field(all.board.settings, word + "_enabled", "1"));
      all.board.save_settings();
    } else if (verb == "report") {
      std::getline(words >> std::ws, word);
      all.data->set_report(word.empty() ? sim::lifelike_report(std::time(nullptr))
                                        : without_escapes(word) + "\n");
    } else if (verb == "no_report") {
      all.data->set_behaviour(sim::data_server::behaviour::nothing);
    } else if (verb == "begin") {  // a run, until that network's server has the request
      words >> word;
      const int before = requests(word);
      running_.emplace(all.board.root(), std::vector<std::string>{});
      EXPECT_TRUE(comes_true([&] { return requests(word) > before; }, 10));
    } else if (verb == "end") {  // what was begun
      running_.reset();
    } else if (verb == "fail") {  // with that exit status of wget and that reason
      int number = 0;
      words >> number;
      std::getline(words >> std::ws, word);
      record_failure(number, without_escapes(word));
    } else {
      const std::pair<const char*, sim::reply_kind> replies[] = {{"good", sim::reply_kind::good},
                                                                 {"bad", sim::reply_kind::bad},
                                                                 {"empty", sim::reply_kind::empty},
                                                                 {"hang", sim::reply_kind::hang}};
      words >> word;
      for (const auto& [name, how] : replies)
        if (verb == name) return all.peers.set_reply(word, how);
      FAIL() << line;
    }
  }

  // "# " begins anew with Windfinder and Windit, "$ " is a command, "+ " changes something or counts requests. A request
  // that hangs takes one of its server's few threads for good, so the cases with most of them come last.
  void expect_shell_session(const char* golden) {
    expect_session(golden, [&](const std::string& line) {
      if (line.starts_with('#')) begin_anew();
      if (line == "+ requests") return std::to_string(requests("windfinder")) + '\n';
      if (line.starts_with('+')) change(line.substr(2));
      return line.starts_with('$') ? shell(line.substr(2)) : std::string();
    });
  }

 private:
  std::optional<sim::running_program> running_;
};

TEST_F(status, is_as_in_the_golden_session) { expect_shell_session("end_to_end/golden/status"); }

TEST_F(status, of_the_tools_is_what_a_shell_sees) { expect_shell_session("end_to_end/golden/shell"); }

TEST_F(status, tells_the_news_of_the_golden_session) { expect_shell_session("end_to_end/golden/news"); }

// While a run is going on too.
TEST_F(status, lists_rapid_fire_beside_the_run) {
  enable_only_rapid_fire(1, 0);
  all.peers.set_reply("weather underground", sim::reply_kind::bad);
  all.board.write(RAPID_FIRE_STATUS_PATH, "");
  begin_run_page();
  {
    const sim::running_program running(all.board.root(), {"-r"});
    ASSERT_TRUE(comes_true([&] { return all.board.alarms().size() == 2; }, 20));
  }
  end_run_page(status_outcome::good);
  expect_golden("end_to_end/golden/status_of_rapid_fire", shell("skypost-status"));
}

TEST_F(status, shows_no_password_that_a_server_repeats) {
  fill_settings(all.board.settings);
  all.board.settings.set_integer(windfinder_enabled, 1);
  all.board.save_settings();
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_secret()) continue;
    const std::string secret = row.field.is_text()
                                   ? std::string(all.board.settings.text(row.as_text()))
                                   : std::to_string(all.board.settings.integer(row.as_integer()));
    ASSERT_GE(secret.size(), 3U) << row.name;
    // Up to and beyond the place where the reason is cut.
    for (const std::size_t before : {0UL, 185UL, 190UL, 195UL}) {
      record_failure(NO_WGET_STATUS, std::string(before, '.') + "<" + secret + "> is wrong");
      const std::string found = shell("skypost-status");
      const std::string repeated = found.substr(found.find('<') + 1);
      const std::size_t visible = repeated.find_first_not_of('*');
      EXPECT_TRUE(repeated[visible] == '>' || repeated[visible] == '\n') << row.name << ": " << found;
    }
  }
}

}  // namespace
}  // namespace skypost::testing
