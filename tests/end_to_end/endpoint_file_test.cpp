// Whatever is wrong with the endpoint file, no password may go to a built-in server instead.

#include <algorithm>
#include <filesystem>
#include <set>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "run/run_list.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

class endpoint_file : public program {
 protected:
  endpoint_file() {
    interpose("HASTE", "100");
    interpose("TRACE", all.board.root() / "trace");
    all.board.write(LAST_RUN_PATH, "1");
  }
};

TEST_F(endpoint_file, with_a_bad_line_for_every_name_has_nothing_sent) {
  std::string lines;
#define ENDPOINT(name, kind, value) lines += #name " = http://x\";id\n";
#include "endpoints/endpoints.def"
  all.board.write(ENDPOINTS_PATH, lines);
  all.board.settings.set_text(sender_address, "");
  all.board.save_settings();
  const std::string errors = run_well().errors;
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), std::count(lines.begin(), lines.end(), '\n'));
  std::set<std::string> expected, failed;
  for (const run_step& step : run_list())
    if (step.upload->by != carrier::file) expected.insert(step.name.text);
  for (const sim::alarm_call& call : all.board.alarms()) {
    EXPECT_NE(call[2], "") << call[1];
    failed.insert(call[1]);
  }
  EXPECT_EQ(failed, expected);
  EXPECT_TRUE(all.cwop->sessions().empty());
  EXPECT_TRUE(all.aprs->sessions().empty());
  const std::string commands = all.board.read("/trace");
  EXPECT_EQ(commands.find("wget"), std::string::npos) << commands;
  EXPECT_EQ(commands.find("sendmail"), std::string::npos) << commands;
  // A pull file needs no server.
  EXPECT_TRUE(std::filesystem::exists(all.board.path("/srv/www/wetterspiegel.txt")));
}

// All other uploads must be sent. Each case is added to a good endpoint file; its result is the uploads sent and the
// alarms. The settings name a sender, so the mail does not need mail_sender.
TEST_F(endpoint_file, with_one_bad_line_keeps_back_what_needs_it) {
  enable_only({&awekas_enabled, &sauerlandwetter_enabled, &cwop_enabled, &aprs_enabled, &borgervejr_enabled,
               &idokep_enabled});
  const std::string good = all.board.read(ENDPOINTS_PATH);
  expect_cases("end_to_end/golden/bad_endpoints", [&](const std::string& one) {
    all.board.write(ENDPOINTS_PATH, good + one + '\n');
    all.board.forget_alarms();
    all.peers.forget_requests();
    const std::size_t cwop = all.cwop->sessions().size();
    const std::size_t aprs = all.aprs->sessions().size();
    const std::size_t mails = all.mail.mails().size();
    run_well();
    std::string found = "sent:";
    for (const sim::request_seen& seen : all.peers.requests()) found += ' ' + std::string(seen.network->name);
    if (all.cwop->sessions().size() > cwop) found += " CWOP";
    if (all.aprs->sessions().size() > aprs) found += " APRS";
    if (all.mail.mails().size() > mails) found += " mail";
    for (const sim::alarm_call& call : all.board.alarms())
      found += "\n    alarm: " + call[1] + ": " + call[2];
    return found;
  });
}

}  // namespace
}  // namespace skypost::testing
