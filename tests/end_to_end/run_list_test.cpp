#include <ctime>
#include <filesystem>
#include <sstream>
#include <utility>

#include "base/paths.h"
#include "common/field_descriptions.h"
#include "end_to_end/program.h"
#include "run/run_list.h"
#include "support/golden.h"
#include "support/pattern.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

// Every step that can fail does: the networks refuse uploads, the second pull directory is missing, and no APRS server
// listens.
class run_list_steps : public program {
 protected:
  run_list_steps() {
    all.peers.set_reply(sim::reply_kind::bad);
    all.cwop.reset();
    all.aprs.reset();
    fs::remove_all(all.board.root() / "var/run/nimbulog/uploads");
    interpose("HASTE", "100");
    interpose("TRACE", all.board.root() / "trace");
  }

  // Traces a run that begins `age` seconds after the last one.
  std::string trace_of_a_run(std::time_t age) {
    all.board.write(LAST_RUN_PATH, std::to_string(std::time(nullptr) - age));
    return trace_of_next_run();
  }

  std::string trace_of_next_run() {
    all.board.write("/trace", "");
    run_well();
    std::istringstream calls(all.board.read("/trace"));
    std::string trace;
    for (std::string call; std::getline(calls, call);) trace += in_short(call);
    return trace.empty() ? trace : trace.substr(1) + '\n';
  }

 private:
  std::string in_short(const std::string& call) const {
    // The start.
    if (call == "popen /sbin/ifconfig eth0 2>/dev/null" || call == "alarm 0" || call == "recv") return {};
    if (call.starts_with("alarm ")) return '\n' + call + ':';
    if (const auto part = first_match(call, "^system .* skypost \"([^\"]*)\""); !part.empty())
      return " !" + part[1];
    if (const auto part = first_match(call, "https?://127.0.0.1:\\d+([^?\"]*)"); !part.empty())
      return " wget" + part[1];
    if (call.starts_with("pause ")) return ' ' + call;
    if (call.starts_with("write ")) return ' ' + call.substr(6 + all.board.root().string().size());
    if (call.find("/opt/sbin/sendmail") != std::string::npos) return " mail";
    return " ?" + call;
  }
};

// Each line has a switch, in the order of a run, then the limits that it sets and what is done under them: an upload is
// shown by the path of its URL, a file by its path, a failure by its name, a pause in milliseconds.
constexpr char STEPS[] = "end_to_end/golden/steps";

TEST_F(run_list_steps, are_taken_in_their_order_under_their_limits_and_names) {
  const std::string steps = read_whole_file(std::string(TESTS_DIRECTORY "/") + STEPS);
  const auto without = [&](const char* pattern) { return with_matches_as(steps, pattern, ""); };
  EXPECT_EQ(trace_of_a_run(1'000), without("[a-z_0-9]+_enabled "));
  EXPECT_EQ(trace_of_next_run(), without("wetterarchiv_enabled .*\n|[a-z_0-9]+_enabled "));
  EXPECT_NEAR(std::stod(all.board.read(LAST_RUN_PATH)), static_cast<double>(std::time(nullptr)), 30);
}

// A switch must start its own network, file or mail and nothing else. The simulation knows the switch of each network.
TEST_F(run_list_steps, are_set_going_by_their_own_switch_alone) {
  std::string steps;
  const integer_field* enabled = nullptr;
  for (const run_step& step : run_list()) {
    // The pushes to AWEKAS and Wedaal have the switches of the files before them.
    if (std::exchange(enabled, step.enabled) == step.enabled) continue;
    SCOPED_TRACE(step.name.text);
    enable_only({enabled});
    all.peers.forget_requests();
    const std::string trace = trace_of_a_run(enabled == &wetterarchiv_enabled ? 1'000 : 500);
    steps += description_of(*enabled).name + (' ' + trace);
    EXPECT_EQ(requests(), trace.find("wget") == std::string::npos ? 0 : 1);
    for (const sim::request_seen& seen : all.peers.requests()) {
      EXPECT_EQ(seen.network->enabled, enabled) << seen.network->name;
      EXPECT_NE(seen.network->which, sim::server::second) << seen.network->name;
    }
  }
  expect_golden(STEPS, steps);
  EXPECT_EQ(all.mail.mails().size(), 1U);
}

TEST_F(run_list_steps, set_no_limit_while_they_are_off_and_keep_the_gate_all_the_same) {
  enable_only({});
  EXPECT_EQ(trace_of_a_run(1'000), "alarm 15: /var/run/nimbulog/aerolan.last\n");
  EXPECT_EQ(trace_of_next_run(), "");
}

TEST_F(run_list_steps, push_to_awekas_and_wedaal_only_with_a_user_of_two_characters) {
  enable_only({&awekas_enabled, &wedaal_enabled});
  all.board.settings.set_text(awekas_user, "a");
  all.board.save_settings();
  EXPECT_EQ(trace_of_a_run(500),
            "alarm 15: /srv/www/awekas.txt /var/run/nimbulog/uploads/awekas.txt !awekas-pull\n"
            "alarm 15: /srv/www/wedaal.txt /var/run/nimbulog/uploads/wedaal.txt !wedaal-pull "
            "wget/get_wetter.php !wedaal-push\n");
}

}  // namespace
}  // namespace skypost::testing
