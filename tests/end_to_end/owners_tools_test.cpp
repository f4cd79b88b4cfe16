// Golden sessions of the owner's tools with each kind of server. They show the number of requests, because no server
// may get more than it must.

#include <filesystem>
#include <map>
#include <optional>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/tcp_server.h"
#include "support/golden.h"
#include "support/pattern.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> words_of(const std::string& line) { return all_matches(line, "[^ ]+"); }

// The appliance of a golden session.
class owners_session : public program {
 public:
  // Executes one of these lines. ROOT is the appliance's folder; SECURED, FULL, SILENT and ECHO are ports of servers.
  //   only SWITCH...           switches all others off     set NAME=VALUE            sets one setting
  //   endpoint LINE            appended to the file        wgetrc LINE               replaces wget's settings
  //   interpose WHAT VALUE     see program.h               reply NETWORK KIND        sets its server's reply
  //   data KIND                what the data server sends  program PATH COMMAND     replaces a program by a script
  //   remove PATH
  void change(std::string line) {
    line = replaced(line, "ROOT", all.board.root());
    for (const auto& [name, port] : ports_) line = replaced(line, name, port);
    const std::vector<std::string> words = words_of(line);
    const std::string rest = line.substr(words[0].size() + 1);
    if (words[0] == "only") {
      all.board.switch_all_networks_off();
      for (const std::string& name : words_of(rest))
        EXPECT_TRUE(name == "none" || set_field(all.board.settings, name, "1")) << line;
    } else if (words[0] == "set") {
      const std::size_t equals = rest.find('=');
      EXPECT_TRUE(set_field(all.board.settings, rest.substr(0, equals), rest.substr(equals + 1))) << line;
    } else if (words[0] == "endpoint") {
      all.board.write(ENDPOINTS_PATH, all.board.read(ENDPOINTS_PATH) + rest + '\n');
    } else if (words[0] == "wgetrc") {
      all.board.write(WGET_SETTINGS_PATH, rest);
    } else if (words[0] == "interpose") {
      interpose(words.at(1), words.at(2));
    } else if (words[0] == "reply") {
      const std::map<std::string, sim::reply_kind> KINDS = {
          {"bad", sim::reply_kind::bad}, {"empty", sim::reply_kind::empty}, {"hang", sim::reply_kind::hang}};
      all.peers.set_reply(words.at(1), KINDS.at(words.at(2)));
    } else if (words[0] == "program" || words[0] == "remove") {
      fs::remove(all.board.path(words.at(1)));  // it may be a link to one of this machine's programs
      if (words[0] == "remove") return;
      all.board.write(words.at(1), "#!/bin/sh\n" + rest.substr(words[1].size() + 1) + '\n');
      fs::permissions(all.board.path(words.at(1)), fs::perms::owner_all);
    } else if (rest == "nothing") {
      all.data->set_behaviour(sim::data_server::behaviour::nothing);
    } else if (rest == "empty") {
      all.data->set_report(std::string("\0actual_th0_temp_c 5", 20));
    } else {
      EXPECT_EQ(line, "data none");
      all.data.reset();
    }
    all.board.save_settings();
  }

  // Runs one of the owner's tools; returns its output, its exit status and the number of requests.
  std::string run(const std::string& line) {
    std::vector<std::string> words = words_of(line);
    const std::string name = words.at(0);
    words.erase(words.begin());
    all.peers.forget_requests();
    const sim::run_result run =
        all.board.run_tool(name == "skypost-preview" ? PREVIEW_PROGRAM : SETTINGS_PROGRAM, words);
    EXPECT_LT(run.seconds, 15);
    EXPECT_TRUE(all.board.alarms().empty());
    std::string text;
    for (const std::string& one : all_matches(run.output, "[^\n]+"))
      if (first_match(one, of_this_machine(line)).empty()) text += one + '\n';
    text = replaced(text + run.errors, all.board.root(), "ROOT");
    for (const auto& [port_name, port] : ports_) text = replaced(text, ':' + port, ':' + port_name);
    return with_matches_as(text, ":[3-6][0-9]{4}", ":PORT") + "-> " + std::to_string(run.status) +
           ", requests: " + std::to_string(all.peers.requests().size()) + '\n';
  }

 private:
  void TestBody() override {}

  // Matches lines that depend on the machine that runs the test, on the time, or on wget's version.
  static const char* of_this_machine(const std::string& line) {
    return line.find(" check") != std::string::npos
               ? "^(?!.*: the ([a-z-]+ )?server \"|the data server |sensor_uv: |https?_proxy )"
               : "^    (--|20|Incomplete|Length|Saving|  )";
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
};

class owners_tools : public ::testing::TestWithParam<const char*> {};

TEST_P(owners_tools, say_what_the_golden_text_does) {
  std::optional<owners_session> session;
  expect_session(std::string("end_to_end/golden/") + GetParam(), [&](const std::string& line) {
    if (line.starts_with('$')) return session->run(line.substr(2));
    if (line.starts_with('#'))
      session.emplace();
    else
      session->change(line.substr(2));
    return std::string();
  });
}

INSTANTIATE_TEST_SUITE_P(session, owners_tools, ::testing::Values("data_server", "online_check", "try"),
                         [](const auto& row) { return row.param; });

}  // namespace
}  // namespace skypost::testing
