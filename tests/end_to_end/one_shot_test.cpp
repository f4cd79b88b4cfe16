#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <regex>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "run/run_list.h"
#include "sim/networks.h"
#include "sim/report.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;
using sim::alarm_call;
using sim::answer;
using sim::network_row;

std::vector<std::string> pull_files() {
  std::vector<std::string> names;
  for (const run_step& step : run_list())
    if (step.what->by == carrier::file) names.push_back(step.call.file);
  return names;
}

// The networks that a run on an ordinary board asks, in its order.
std::vector<const network_row*> asked_networks() {
  std::vector<const network_row*> networks;
  for (const network_row& network : sim::http_networks())
    if (network.which != sim::server::second) networks.push_back(&network);
  return networks;
}

// Every network accepts: texts with all that a shell or a URL would interpret have arrived as they
// are in the settings (the peers compare), over TCP and by mail too, and nobody is alarmed.
TEST_F(program, reaches_every_network_and_raises_no_alarm) {
  const sim::run_result run = run_well();

  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(all.board.alarms().empty());
  const auto requests_seen = all.peers.requests();
  const auto asked = asked_networks();
  ASSERT_EQ(requests_seen.size(), asked.size());
  for (std::size_t i = 0; i < asked.size(); ++i) {
    EXPECT_EQ(requests_seen[i].network, asked[i]) << requests_seen[i].network->name;
    EXPECT_EQ(requests_seen[i].fault, "") << asked[i]->name << ": " << requests_seen[i].request;
  }

  for (const std::string& name : pull_files()) {
    const std::string content = all.board.read(PULL_DIRECTORIES[0] + name);
    EXPECT_FALSE(content.empty()) << name;
    EXPECT_EQ(content, all.board.read(PULL_DIRECTORIES[1] + name)) << name;
  }

  for (const auto* server : {&*all.cwop, &*all.aprs}) {
    ASSERT_EQ(server->sessions().size(), 1U);
    EXPECT_TRUE(server->sessions()[0].accepted) << server->sessions()[0].packet;
  }

  ASSERT_EQ(all.mail.mails().size(), 1U);
  const sim::mail_seen mail = all.mail.mails()[0];
  EXPECT_EQ(mail.recipient, sim::MAIL_RECIPIENT);
  EXPECT_NE(
      mail.text.find(
          "\nto: observations@localhost\nfrom: station@example.org\nsubject: Nimbulog weather report\n"),
      std::string::npos)
      << mail.text;
  EXPECT_NE(mail.text.find("\nRaw Barom: "), std::string::npos) << mail.text;
}

TEST_F(program, reports_each_refusal_with_the_networks_own_text) {
  switch_aprs_off();
  all.peers.set_answer(answer::bad);
  run_well();

  const auto alarms = all.board.alarms();
  const auto asked = asked_networks();
  ASSERT_EQ(alarms.size(), asked.size());
  for (std::size_t i = 0; i < asked.size(); ++i) {
    ASSERT_EQ(alarms[i].size(), 3U);
    EXPECT_EQ(alarms[i][0], "skypost");
    EXPECT_EQ(alarms[i][1], asked[i]->name);
    const std::string expected = asked[i]->failure;
    if (expected.ends_with('*'))
      EXPECT_TRUE(alarms[i][2].starts_with(expected.substr(0, expected.size() - 1))) << alarms[i][2];
    else
      EXPECT_EQ(alarms[i][2], expected);
  }
}

TEST_F(program, reports_an_empty_answer_where_the_network_never_gives_one) {
  switch_aprs_off();
  all.peers.set_answer(answer::empty);
  run_well();

  std::vector<alarm_call> expected;
  for (const network_row* network : asked_networks())
    if (network->no_response != nullptr) expected.push_back({"skypost", network->name, network->no_response});
  EXPECT_EQ(all.board.alarms(), expected);
}

TEST_F(program, says_and_sends_nothing_without_a_data_server) {
  all.data.reset();
  const sim::run_result run = run_well();
  EXPECT_EQ(run.errors, "error connect socket 127.0.0.1:5558 :Connection refused\n");
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.board.alarms().empty());
}

TEST_F(program, says_and_sends_nothing_when_the_data_server_closes_without_a_byte) {
  all.data->set_behaviour(sim::data_server::behaviour::nothing);
  const sim::run_result run = run_well();
  EXPECT_EQ(run.errors, "error read socket: Success");
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.board.alarms().empty());
}

// The first half holds the outdoor sensors and not the wind: what came is used.
TEST_F(program, sends_what_a_report_that_breaks_off_has_brought) {
  enable_only({&weatherbug_enabled});
  all.data->set_behaviour(sim::data_server::behaviour::part);
  run_well();
  ASSERT_EQ(all.peers.requests().size(), 1U);
  const std::string request = all.peers.requests()[0].request;
  EXPECT_NE(request.find("&tempf="), std::string::npos) << request;
  EXPECT_EQ(request.find("&winddir="), std::string::npos) << request;
}

TEST_F(program, warns_once_of_stale_data_and_sends_nothing) {
  const std::string report =
      std::regex_replace(sim::lifelike_report(std::time(nullptr)), std::regex("actual_th0_dew_c [^\n]*"),
                         "actual_th0_dew_c ---");
  all.data->set_report(report);
  const std::string old_file = "what the last run wrote";
  all.board.write("/srv/www/awekas.txt", old_file);
  run_well();

  ASSERT_EQ(all.board.alarms().size(), 1U);
  const alarm_call expected = {"skypost",
                               "No data upload to weather networks as sensor selected on weather network "
                               "page for outdoor temp, outdoor "
                               "humidity or outdoor dewpoint is not providing recent data.",
                               ""};
  EXPECT_EQ(all.board.alarms()[0], expected);
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.cwop->sessions().empty());
  EXPECT_TRUE(all.mail.mails().empty());
  EXPECT_EQ(all.board.read("/srv/www/awekas.txt"), old_file);

  all.board.forget_alarms();
  enable_only({});
  run_well();
  EXPECT_TRUE(all.board.alarms().empty());
}

// Whatever its parent did with the signal.
TEST_F(program, is_ended_by_the_alarm_of_a_network_that_hangs) {
  enable_only({&windfinder_enabled, &windit_enabled});
  all.peers.set_answer("windfinder", answer::hang);
  sigset_t alarm_signal;
  sigemptyset(&alarm_signal);
  sigaddset(&alarm_signal, SIGALRM);
  sigprocmask(SIG_BLOCK, &alarm_signal, nullptr);
  std::signal(SIGALRM, SIG_IGN);
  const sim::run_result run = all.board.run();
  std::signal(SIGALRM, SIG_DFL);
  sigprocmask(SIG_UNBLOCK, &alarm_signal, nullptr);
  EXPECT_EQ(run.signal, SIGALRM);
  EXPECT_NEAR(run.seconds, 15, 1);
  EXPECT_EQ(requests("windit"), 0);
  EXPECT_TRUE(all.board.alarms().empty());
}

// The ages that open it are a unit test's; here is the way from the file to the file.
TEST_F(program, opens_the_gate_of_wetterarchiv_by_the_last_run) {
  enable_only({&wetterarchiv_enabled});
  const std::time_t now = std::time(nullptr);
  const std::string recent = std::to_string(now - 500);
  all.board.write(LAST_RUN_PATH, recent);
  run_well();
  EXPECT_EQ(requests("wetterarchiv"), 0);
  EXPECT_EQ(all.board.read(LAST_RUN_PATH), recent);

  all.board.write(LAST_RUN_PATH, std::to_string(now - 1'000));
  run_well();
  EXPECT_EQ(requests("wetterarchiv"), 1);
  EXPECT_NEAR(std::stod(all.board.read(LAST_RUN_PATH)), static_cast<double>(now), 30);
}

// With every digit the same: the times of two runs differ.
std::string without_times(const std::string& text) {
  return std::regex_replace(text, std::regex("\\d"), "9");
}

TEST_F(program, sends_writes_and_reports_the_same_in_debug_mode) {
  switch_aprs_off();
  for (const char* const name : {"wedaal-push", "metoffice", "anythingweather"})
    all.peers.set_answer(name, answer::bad);
  all.peers.set_answer("windit", answer::empty);

  std::string seen[2];
  const std::vector<std::string> arguments[2] = {{}, {"-d"}};
  for (int i = 0; i < 2; ++i) {
    all.board.write(LAST_RUN_PATH, "");
    all.peers.forget_requests();
    all.board.forget_alarms();
    const sim::run_result run = run_well(arguments[i]);
    EXPECT_EQ(run.errors.empty(), i == 0);
    for (const sim::request_seen& request : all.peers.requests())
      seen[i] += without_times(request.request) + '\n';
    for (const alarm_call& call : all.board.alarms())
      for (const std::string& argument : call) seen[i] += without_times(argument) + '\n';
    for (const std::string& name : pull_files())
      seen[i] += without_times(all.board.read(PULL_DIRECTORIES[1] + name));
    seen[i] += std::to_string(all.mail.mails().size() - static_cast<std::size_t>(i));
  }
  EXPECT_EQ(seen[0], seen[1]);
}

TEST_F(program, sends_meteonews_over_plain_http_on_an_nslu2) {
  enable_only({&meteonews_enabled});
  all.board.write(PROCESSOR_PATH, "Hardware : Linksys NSLU2\n");
  all.write_endpoints(true);
  run_well();
  EXPECT_EQ(requests("meteonews"), 1);
  EXPECT_TRUE(all.board.alarms().empty());
}

TEST_F(program, sends_idokep_to_the_pro_service_in_mode_2) {
  enable_only({});
  all.board.settings.set_integer(idokep_enabled, 2);
  all.board.save_settings();
  run_well();
  ASSERT_EQ(requests("idokep"), 1);
  EXPECT_STREQ(all.peers.requests()[0].network->endpoint, "idokep_pro");
  EXPECT_TRUE(all.board.alarms().empty());
}

TEST_F(program, pushes_to_awekas_and_wedaal_only_with_a_user_of_two_characters) {
  enable_only({&awekas_enabled, &wedaal_enabled});
  all.board.settings.set_text(awekas_user, "a");
  all.board.save_settings();
  run_well();
  EXPECT_EQ(requests("awekas-push"), 0);
  EXPECT_EQ(requests("wedaal-push"), 1);
  EXPECT_NE(all.board.read("/srv/www/awekas.txt"), "");
}

TEST_F(program, reports_a_pull_directory_that_is_missing) {
  enable_only({&wetterpage24_enabled, &hetweeractueel_enabled});
  const fs::path second = all.board.root() / "var/run/nimbulog/uploads";
  fs::remove_all(second);
  run_well();
  const std::string tail = ": No such file or directory\n";
  const std::vector<alarm_call> expected = {
      {"skypost", "hetweeractueel", "error open file " + (second / "hetweeractueel.txt").string() + tail},
      {"skypost", "wetterpage24", "error open file " + (second / "wetterpage24.txt").string() + tail}};
  EXPECT_EQ(all.board.alarms(), expected);
  EXPECT_TRUE(fs::exists(all.board.root() / "srv/www/wetterpage24.txt"));
}

TEST_F(program, reports_aprs_servers_that_refuse_and_goes_on) {
  enable_only({&cwop_enabled, &aprs_enabled, &weatherbug_enabled});
  all.cwop.reset();
  all.aprs.reset();
  run_well();
  const std::string refused = "error socket open (1) \"127.0.0.1\": Connection refused, ";
  const std::vector<alarm_call> expected = {{"skypost", "CWOP", refused + refused},
                                            {"skypost", "APRS", refused}};
  EXPECT_EQ(all.board.alarms(), expected);
  EXPECT_EQ(requests("weatherbug"), 1);
}

// Both pauses of a session are real here: a slow server still has its say.
TEST_F(program, hears_an_aprs_server_that_answers_after_three_seconds) {
  enable_only({&aprs_enabled});
  all.aprs->answer_after(std::chrono::seconds(3));
  run_well();
  EXPECT_TRUE(all.board.alarms().empty());
  EXPECT_EQ(all.aprs->sessions().size(), 1U);
}

TEST_F(program, tells_the_resolvers_own_reason_of_an_aprs_server_without_an_address) {
  enable_only({&aprs_enabled});
  all.board.settings.set_text(aprs_host, "aprs.invalid");
  all.board.save_settings();
  run_well();
  const auto alarms = all.board.alarms();
  ASSERT_EQ(alarms.size(), 1U);
  EXPECT_TRUE(alarms[0][2] == "error socket open (1) \"aprs.invalid\": Unknown host, " ||
              alarms[0][2] == "error socket open (1) \"aprs.invalid\": Host name lookup failure, ")
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
