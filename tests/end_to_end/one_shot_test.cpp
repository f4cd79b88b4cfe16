#include <fnmatch.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <utility>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/networks.h"
#include "sim/report.h"
#include "support/pattern.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;
using sim::alarm_call;
using sim::reply_kind;

// The networks that a run on an ordinary board uploads to, in order.
std::vector<const sim::network_row*> asked_networks() {
  std::vector<const sim::network_row*> networks;
  for (const sim::network_row& network : sim::http_networks())
    if (network.which != sim::server::second) networks.push_back(&network);
  return networks;
}

// The settings' texts are full of shell and URL syntax; the peers check that they arrive unchanged, also by TCP and
// mail. An NSLU2 uploads to MeteoNews over plain HTTP; Idokep's mode 2 is its pro service.
TEST_F(program, reaches_every_network_and_raises_no_alarm) {
  interpose("HASTE", "20");  // more would be too fast for APRS on a busy machine
  for (const bool has_second_servers : {true, false}) {
    SCOPED_TRACE(has_second_servers);
    all.board.write(PROCESSOR_PATH, has_second_servers ? "Hardware : Linksys NSLU2\n" : "x86\n");
    all.write_endpoints(has_second_servers);
    all.board.settings.set_integer(idokep_enabled, has_second_servers ? 2 : 1);
    all.board.save_settings();
    all.board.write(LAST_RUN_PATH, "1");
    all.peers.forget_requests();
    EXPECT_EQ(run_well().errors, "");
    EXPECT_EQ(all.board.alarms(), std::vector<alarm_call>());
    EXPECT_EQ(requests(), static_cast<int>(asked_networks().size()));
    const auto seen = all.peers.requests();
    const auto is_second = [](const auto& one) { return one.network->which == sim::server::second; };
    EXPECT_EQ(std::count_if(seen.begin(), seen.end(), is_second), has_second_servers ? 3 : 0);
    const std::size_t runs = has_second_servers ? 1 : 2;
    for (const auto* server : {&*all.cwop, &*all.aprs}) {
      ASSERT_EQ(server->sessions().size(), runs);
      EXPECT_TRUE(server->sessions().back().is_relayed()) << server->sessions().back().fate;
    }
    ASSERT_EQ(all.mail.mails().size(), runs);
    EXPECT_EQ(all.mail.mails().back().recipient, sim::MAIL_RECIPIENT);
  }
}

TEST_F(program, reports_each_bad_or_empty_answer_with_the_networks_own_text) {
  interpose("HASTE", "20");  // more would be too fast for APRS on a busy machine
  const std::pair<reply_kind, std::vector<std::string>> cases[] = {{reply_kind::bad, {}},
                                                                   {reply_kind::empty, {"-d"}}};
  for (const auto& [how, arguments] : cases) {
    SCOPED_TRACE(how == reply_kind::bad ? "bad" : "empty");
    all.peers.set_reply(how);
    all.board.write(LAST_RUN_PATH, "1");
    all.board.forget_alarms();
    EXPECT_EQ(run_well(arguments).errors.empty(), arguments.empty());
    std::vector<alarm_call> expected;
    for (const sim::network_row* network : asked_networks())
      if (const char* const text = how == reply_kind::bad ? network->failure : network->no_response)
        expected.push_back({"skypost", network->name, text});
    const auto matches = [](const alarm_call& call, const alarm_call& pattern) {
      return call[0] == pattern[0] && call[1] == pattern[1] &&
             fnmatch(pattern[2].c_str(), call[2].c_str(), FNM_NOESCAPE) == 0;
    };
    EXPECT_TRUE(std::ranges::equal(all.board.alarms(), expected, matches))
        << ::testing::PrintToString(all.board.alarms());
  }
}

TEST_F(program, says_and_sends_nothing_when_the_data_server_closes_without_a_byte) {
  all.data->set_behaviour(sim::data_server::behaviour::nothing);
  EXPECT_EQ(run_well().errors, "error read socket: Success");
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.board.alarms().empty());
}

TEST_F(program, warns_once_of_stale_data_and_sends_nothing) {
  all.data->set_report(with_matches_as(sim::lifelike_report(std::time(nullptr)), "actual_th0_dew_c [^\n]*",
                                       "actual_th0_dew_c ---"));
  const std::string old_file = "what the last run wrote";
  all.board.write("/srv/www/awekas.txt", old_file);
  run_well();
  const std::vector<alarm_call> expected = {
      {"skypost",
       "No data upload to weather networks as sensor selected on weather network page for outdoor temp, "
       "outdoor humidity or outdoor dewpoint is not providing recent data.",
       ""}};
  EXPECT_EQ(all.board.alarms(), expected);
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.cwop->sessions().empty());
  EXPECT_TRUE(all.mail.mails().empty());
  EXPECT_EQ(all.board.read("/srv/www/awekas.txt"), old_file);

  enable_only({});
  run_well();
  EXPECT_EQ(all.board.alarms(), expected);
}

// The session's two pauses are the only time that a slow server has.
TEST_F(program, hears_an_aprs_server_that_answers_after_three_seconds) {
  enable_only({&aprs_enabled});
  interpose("HASTE", "3");
  all.aprs->reply_after(std::chrono::seconds(1));
  run_well();
  EXPECT_TRUE(all.board.alarms().empty());
  EXPECT_EQ(all.aprs->sessions().size(), 1U);
}

TEST_F(program, tells_the_resolvers_own_reason_of_an_aprs_server_without_an_address) {
  enable_only({&aprs_enabled});
  interpose("HASTE", "100");
  all.board.settings.set_text(aprs_host, "aprs.invalid");
  all.board.save_settings();
  run_well();
  const auto alarms = all.board.alarms();
  ASSERT_EQ(alarms.size(), 1U);
  const std::string start = "error socket open (1) \"aprs.invalid\": ";
  EXPECT_TRUE(alarms[0][2] == start + "Unknown host, " ||
              alarms[0][2] == start + "Host name lookup failure, ")
      << alarms[0][2];
}

TEST_F(program, outlives_a_mail_program_that_is_missing_or_reads_nothing) {
  enable_only({&borgervejr_enabled, &idokep_enabled});
  fs::remove(all.board.path(MAIL_PROGRAM_PATH));
  run_well();
  fs::create_symlink("/bin/true", all.board.path(MAIL_PROGRAM_PATH));
  run_well();
  EXPECT_EQ(requests("idokep"), 2);
  EXPECT_TRUE(all.board.alarms().empty());
}

}  // namespace
}  // namespace skypost::testing
