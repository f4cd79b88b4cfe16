#include <sstream>
#include <utility>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "support/golden.h"
#include "support/pattern.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// interposed_calls.cpp also aborts the program if it leaves a descriptor or a child.
class failing_calls : public program {
 protected:
  static constexpr int CALL_NEVER_CAME = 99;

  // `calls` is NAME:N or NAME:N-M, as in interposed_calls.cpp.
  sim::run_result run_failing(const std::string& calls) {
    all.board.forget_alarms();
    all.board.write(LAST_RUN_PATH, "1");
    all.board.write("/trace", "");
    all.peers.forget_requests();
    interpose("HASTE", "100");
    interpose("TRACE", all.board.root() / "trace");
    interpose("FAIL", calls);
    return all.board.run();
  }
};

// Each case is the calls that fail and the switches that are on. Idokep, the last step, is always on and shows that the
// run went on. The first `popen` is for the hardware address, the first `read` and the third `open64` for the settings,
// the fourth for the status page, the first `socket` and `connect` for the data server.
TEST_F(failing_calls, are_reported_by_name_and_the_run_goes_on) {
  expect_cases("end_to_end/golden/failing_calls", [&](const std::string& one) {
    std::istringstream words(one);
    std::string calls, enabled;
    words >> calls;
    enable_only({&idokep_enabled});
    while (words >> enabled) EXPECT_TRUE(set_field(all.board.settings, enabled, "1"));
    all.board.save_settings();

    const sim::run_result run = run_failing(calls);
    EXPECT_EQ(run.signal, 0) << one;
    std::string found = std::to_string(run.status) + ", Idokep " + std::to_string(requests("idokep"));
    if (!run.errors.empty()) found += "\n    prints " + replaced(run.errors, "\n", "\\n");
    for (const sim::alarm_call& call : all.board.alarms())
      found += "\n    alarm " + call[1] + ": " + replaced(call[2], "\n", "\\n");
    found = replaced(found, all.board.root(), "ROOT");
    return with_matches_as(found, "http://127.0.0.1:.*\"", "http://...");
  });
}

// The calls of the C library that can fail.
const std::string CALLS[] = {
    // clang-format off
    "open64", "fstat64", "read", "fallocate64", "write", "ftruncate64", "close", "fopen64", "fread", "getc", "fclose",
    "socket", "setsockopt", "connect", "recv", "send", "gethostbyname",
    "popen", "fgets", "fputs", "pclose", "system", "time", "setenv", "sigaction", "sigprocmask",
    // clang-format on
};

class each_call : public failing_calls, public ::testing::WithParamInterface<std::string> {};

// Whichever call fails, the run must reach its last step, lose no step but the current one, and leave nothing open.
TEST_P(each_call, may_fail_at_any_time) {
  const std::string& name = GetParam();
  // If one of these fails, the endpoint file cannot be read and no upload is sent.
  const bool reads_endpoints = name == "open64" || name == "fstat64" || name == "getc";
  enable_only({&awekas_enabled, &meteonews_enabled, &windfinder_enabled, &hetweeractueel_enabled,
               &wetterarchiv_enabled, &wunderground_enabled, &aprs_enabled, &borgervejr_enabled,
               &idokep_enabled});
  all.peers.set_reply("windfinder", sim::reply_kind::bad);
  // With a status page, each run also records what it does.
  all.board.write(STATUS_PATH, "");
  interpose("HASTE", "100");
  run_well();

  int number = 1;
  // getc is called thousands of times, so the steps grow.
  for (;; number += name == "getc" && number >= 10 ? number : 1) {
    SCOPED_TRACE(number);
    const sim::run_result run = run_failing(name + ':' + std::to_string(number));
    ASSERT_EQ(run.signal, 0);
    ASSERT_LT(number, 1'000'000) << "the program exits before its calls are counted";
    if (run.status == CALL_NEVER_CAME) break;
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(run.seconds, 10);
    const bool has_report = !run.errors.starts_with("error ");
    const std::string commands = all.board.read("/trace");
    const bool reached_last_step =
        commands.find("/sendws.php") != std::string::npos || commands.find("\"idokep\"") != std::string::npos;
    EXPECT_EQ(reached_last_step, has_report) << run.errors;
    EXPECT_TRUE(has_report || all.peers.requests().empty());
    // Windfinder fails in any case, and the failing call costs one step; more networks reject half a report.
    EXPECT_LE(all.board.alarms().size(), name == "recv" ? 6U : reads_endpoints ? 8U : 2U);
  }
  EXPECT_GT(number, 1) << "the program never makes this call";
}

INSTANTIATE_TEST_SUITE_P(failing, each_call, ::testing::ValuesIn(CALLS),
                         [](const auto& row) { return row.param; });

}  // namespace
}  // namespace skypost::testing
