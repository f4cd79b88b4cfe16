// Sessions of the owner's tools in a shell, beside real runs and servers of each kind.

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>

#include "base/error_text.h"
#include "base/paths.h"
#include "common/field_descriptions.h"
#include "end_to_end/program.h"
#include "run/status_page.h"
#include "sim/report.h"
#include "sim/tcp_server.h"
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

// An owner's shell on the appliance, with Windfinder and Windit switched on.
class owners_shell : public program {
 public:
  owners_shell() {
    setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
    setenv("TOOLS", std::filesystem::path(STATUS_PROGRAM).parent_path().c_str(), 1);
    setenv("SKYPOST", SKYPOST_PROGRAM, 1);
    setenv("CALLS", INTERPOSED_CALLS, 1);
    setenv("AFTER_RUN", TESTS_DIRECTORY "/../packaging/after-run", 1);
    all.board.write(STATUS_PATH, "");
    change("program /etc/skypost/tell printf 'told: %s\\n' \"$1\"");
    change("report");
    change("enable windfinder windit");
  }
  ~owners_shell() override {
    for (const char* const name : {"SKYPOST_ROOT", "TOOLS", "SKYPOST", "CALLS", "AFTER_RUN"}) unsetenv(name);
  }

  // What a command prints, its exit status unless that is 0, and how many requests an owner's tool has made, because no
  // server may get more than it must.
  std::string shell(const std::string& command) {
    all.peers.forget_requests();
    const sim::run_result run = all.board.run_tool("/bin/sh", {"-c", SHELL_START + command});
    EXPECT_LT(run.seconds, 15);
    std::string text = without_what_differs(run.output, command) + run.errors;
    text = replaced(text, all.board.root(), "");
    for (const auto& [name, port] : ports_) text = replaced(text, ':' + port, ':' + name);
    text = with_matches_as(text, ":[3-6][0-9]{4}", ":PORT");
    // Times of this test; earlier ones are of a page that it has made up.
    text = with_matches_as(text, R"((?!20[12][0-5])\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)", "YYYY-MM-DD hh:mm:ss");
    text = with_matches_as(text, R"(ss, \d\d? s;)", "ss, N s;");
    if (!text.empty() && text.back() != '\n') text += '\n';
    if (run.status != 0) text += "-> " + std::to_string(run.status) + '\n';
    const bool is_counted =
        command.find("skypost-settings ") != std::string::npos || command.ends_with("; run");
    if (is_counted && !all.peers.requests().empty())
      text += "requests: " + std::to_string(all.peers.requests().size()) + '\n';
    return text;
  }

  // Executes one of these lines. ROOT is the appliance's folder; SECURED, FULL, SILENT and ECHO are ports of servers.
  //   enable NETWORK...|all    the only networks           set NAME=VALUE            sets one setting
  //   endpoint LINE            appended to the file        wgetrc LINE               replaces wget's settings
  //   report [TEXT]            what the data server sends  no_report, no_data_server
  //   KIND NETWORK             sets its server's reply     program PATH COMMAND      replaces a program by a script
  //   remove PATH              fail STATUS REASON          a run in which the upload to Windfinder fails
  //   begin NETWORK            a run, until that network's server has the request; "end" kills it
  void change(std::string line) {
    line = replaced(line, "ROOT", all.board.root());
    for (const auto& [name, port] : ports_) line = replaced(line, name, port);
    const std::string verb = line.substr(0, line.find(' '));
    const std::string rest = line.substr(std::min(verb.size() + 1, line.size()));
    const std::string path = rest.substr(0, rest.find(' '));
    if (verb == "enable") {
      if (rest != "all") all.board.switch_all_networks_off();
      if (rest == "all") all.board.settings = all_on_;
      for (const std::string& name : all_matches(rest, "[^ ]+"))
        EXPECT_TRUE(name == "all" || set_field(all.board.settings, name + "_enabled", "1")) << line;
    } else if (verb == "set") {
      const std::size_t equals = rest.find('=');
      EXPECT_TRUE(set_field(all.board.settings, rest.substr(0, equals), rest.substr(equals + 1))) << line;
    } else if (verb == "endpoint") {
      all.board.write(ENDPOINTS_PATH, all.board.read(ENDPOINTS_PATH) + rest + '\n');
    } else if (verb == "wgetrc") {
      all.board.write(WGET_SETTINGS_PATH, rest);
    } else if (verb == "report") {
      all.data->set_report(rest.empty() ? sim::lifelike_report(std::time(nullptr))
                                        : without_escapes(rest) + "\n");
    } else if (verb == "no_report") {
      all.data->set_behaviour(sim::data_server::behaviour::nothing);
    } else if (verb == "no_data_server") {
      all.data.reset();
    } else if (verb == "program" || verb == "remove") {
      std::filesystem::remove(all.board.path(path));  // it may be a link to one of this machine's programs
      if (verb == "remove") return;
      all.board.write(path, "#!/bin/sh\n" + rest.substr(path.size() + 1) + '\n');
      std::filesystem::permissions(all.board.path(path), std::filesystem::perms::owner_all);
    } else if (verb == "begin") {
      const int before = requests(rest);
      running_.emplace(all.board.root(), std::vector<std::string>{});
      EXPECT_TRUE(comes_true([&] { return requests(rest) > before; }, 10));
    } else if (verb == "end") {
      running_.reset();
    } else if (verb == "fail") {
      record_failure(std::stoi(rest), without_escapes(rest.substr(std::min(path.size() + 1, rest.size()))));
    } else {
      const std::map<std::string, sim::reply_kind> KINDS = {{"good", sim::reply_kind::good},
                                                            {"bad", sim::reply_kind::bad},
                                                            {"empty", sim::reply_kind::empty},
                                                            {"hang", sim::reply_kind::hang}};
      all.peers.set_reply(rest, KINDS.at(verb));
    }
    all.board.save_settings();
  }

 private:
  void TestBody() override {}

  // Leaves out lines that depend on the machine that runs the test, on the time, or on wget's version.
  static std::string without_what_differs(const std::string& output, const std::string& command) {
    const bool is_check = command.find("skypost-settings check") != std::string::npos;
    if (!is_check && command.find("skypost-settings try") == std::string::npos) return output;
    const char* const differing =
        is_check ? "^(?!.*: the ([a-z-]+ )?server \"|the data server |sensor_uv: |https?_proxy )"
                 : "^    (--|20|Incomplete|Length|Saving|  )";
    std::string text;
    for (const std::string& one : all_matches(output, "[^\n]+"))
      if (first_match(one, differing).empty()) text += one + '\n';
    return text;
  }

  const sim::full_server full_;
  const sim::tcp_server silent_{0, "silent server",
                                [](sim::connection& client) { client.wait_until_closed(); }};
  // An APRS server that refuses each login and quotes its passcode.
  const sim::tcp_server echo_{0, "APRS server", [](sim::connection& client) {
                                client.write("# hello\r\n");
                                const std::string login = client.read_line().value_or("");
                                client.write("# wrong: " + login.substr(login.find("pass")) + "\r\n");
                                client.wait_until_closed();
                              }};
  const std::map<std::string, std::string> ports_ = {
      {"SECURED", first_match(all.peers.endpoints(), "meteonews = [^:]*:([0-9]+)").at(1)},
      {"FULL", std::to_string(full_.port())},
      {"SILENT", std::to_string(silent_.port())},
      {"ECHO", std::to_string(echo_.port())}};
  const settings_record all_on_ = all.board.settings;
  std::optional<sim::running_program> running_;
};

// "# " begins with another appliance, "$ " is a command, "+ " changes something or counts requests.
class owners_tools : public ::testing::TestWithParam<const char*> {};

TEST_P(owners_tools, say_what_the_golden_text_does) {
  std::optional<owners_shell> shell;
  expect_session(std::string("end_to_end/golden/") + GetParam(), [&](const std::string& line) {
    if (line.starts_with('#')) {
      shell.reset();
      shell.emplace();
    }
    if (line.starts_with('+')) shell->change(line.substr(2));
    return line.starts_with('$') ? shell->shell(line.substr(2)) : std::string();
  });
}

INSTANTIATE_TEST_SUITE_P(session, owners_tools,
                         ::testing::Values("data_server", "news", "online_check", "shell", "status", "try"),
                         [](const auto& row) { return row.param; });

class status : public owners_shell {};

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
