// `skypost-settings try`: sends what a run sends, tells what comes of it, and keeps no trace and no secret of it.

#include <httplib.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <set>
#include <thread>

#include "base/endpoints.h"
#include "base/paths.h"
#include "compose/md5.h"
#include "end_to_end/program.h"
#include "run/run_list.h"
#include "settings/field_descriptions.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

class trying : public program {
 protected:
  sim::run_result try_network(const std::string& name) {
    return all.board.run_tool(SETTINGS_PROGRAM, {"try", "--yes", name});
  }

  // Tries one and expects these parts, in this order, in what it prints.
  void expect_tried(const std::string& name, int status, const std::vector<std::string>& parts) {
    const sim::run_result run = try_network(name);
    EXPECT_EQ(run.status, status) << run.output << run.errors;
    EXPECT_EQ(run.errors, "");
    std::size_t place = 0;
    for (const std::string& part : parts) {
      const std::size_t found = run.output.find(part, place);
      ASSERT_NE(found, std::string::npos) << part << "\nis not in\n" << run.output;
      place = found + part.size();
    }
  }

  void put_server_at(const std::string& endpoint, int port) {
    all.board.write(ENDPOINTS_PATH, all.board.read(ENDPOINTS_PATH) + endpoint +
                                        " = http://127.0.0.1:" + std::to_string(port) + '\n');
  }
};

// All that the peers and the pull directories have got so far.
struct traffic {
  std::vector<std::string> requests, packets, mails, files;

  explicit traffic(const sim::world& all) {
    for (const sim::request_seen& seen : all.peers.requests()) {
      EXPECT_EQ(seen.fault, "") << seen.request;
      requests.push_back(std::string(seen.network->name) + ' ' + seen.request);
    }
    for (const auto* server : {&*all.cwop, &*all.aprs})
      packets.push_back(server->sessions().back().login + '\n' + server->sessions().back().packet);
    const std::string mail = all.mail.mails().back().text;
    mails.push_back(mail.substr(mail.find("\n\n")));  // the mail program adds lines to the header
    for (const char* const directory : PULL_DIRECTORIES)
      for (const auto& entry : fs::directory_iterator(all.board.path(directory)))
        files.push_back(entry.path().string() + '\n' + sim::read_file(entry.path()));
    std::sort(files.begin(), files.end());
  }
};

TEST_F(trying, sends_byte_for_byte_what_a_run_sends_and_keeps_no_trace) {
  interpose("HASTE", "20");
  interpose("TIME", std::to_string(std::time(nullptr)));
  all.board.write(LAST_RUN_PATH, "1");
  run_well();
  const traffic of_run(all);
  all.peers.forget_requests();
  for (const char* const directory : PULL_DIRECTORIES) {
    fs::remove_all(all.board.path(directory));
    fs::create_directories(all.board.path(directory));
  }
  all.board.write(LAST_RUN_PATH, "2");
  all.board.write(STATUS_PATH, "untouched");

  for (const run_step& step : run_list()) {
    const sim::run_result run = try_network(step.upload->id);
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
  }
  const traffic of_tries(all);
  EXPECT_EQ(of_tries.requests, of_run.requests);
  EXPECT_EQ(of_tries.packets, of_run.packets);
  EXPECT_EQ(of_tries.mails, of_run.mails);
  EXPECT_EQ(of_tries.files, of_run.files);
  EXPECT_EQ(all.mail.mails().size(), 2U);
  EXPECT_EQ(all.board.read(LAST_RUN_PATH), "2");
  EXPECT_EQ(all.board.read(STATUS_PATH), "untouched");
  EXPECT_TRUE(all.board.alarms().empty());
}

TEST_F(trying, says_where_to_and_what_came_of_it) {
  interpose("HASTE", "20");
  expect_tried("Windfinder", 0,
               {"Windfinder (windfinder)\n  GET http://127.0.0.1:", "/wind-cgi/nimbulogload.pl\n",
                "for real, which counts towards the network's limits.\n", "windfinder: ACCEPTED\n",
                "  Reply:\n    <html>\n    <body>\n    OK\n", "  Exit status of wget: 0\n"});
  expect_tried("awekas", 0,
               {"AWEKAS, file (awekas_pull)\n  file ", "/srv/www/", "AWEKAS (awekas_push)\n  GET ",
                "awekas_pull: WRITTEN. Whether", "awekas_push: ACCEPTED\n", "    OK\n"});
  expect_tried("borgervejr", 0, {sim::MAIL_RECIPIENT, "borgervejr: HANDED to the mail program."});
  expect_tried("CWOP", 0,
               {"  APRS packet 127.0.0.1:14580\n", "cwop: ACCEPTED. The server took the login;",
                "    # logresp CW4242 unverified, server SIMULATED\n"});
  expect_tried("APRS", 0, {"aprs: ACCEPTED. The server took the login;"});
  expect_tried("meteonews", 0, {"  POST https://127.0.0.1:", "ACCEPTED, as far as can be seen: "});

  all.peers.set_reply(sim::reply_kind::bad);
  expect_tried("windfinder", 1, {"windfinder: FAILED: upload to windfinder: ERR\n", "    ERR\n"});
  expect_tried("meteonews", 1,
               {"meteonews: FAILED: upload to meteonews failed: Username/Password Authentic"});
  all.board.settings.set_integer(aprs_passcode, 1);
  all.board.save_settings();
  expect_tried("aprs", 1, {"aprs: FAILED: unverified: packets are dropped by servers of the general pool\n"});
  EXPECT_TRUE(all.board.alarms().empty());
}

// Only then, and once: each request counts.
TEST_F(trying, asks_once_more_in_wgets_words_if_a_failed_network_said_nothing) {
  all.peers.set_reply("windfinder", sim::reply_kind::empty);
  expect_tried("windfinder", 1,
               {"FAILED: no response from windfinder\n  Exit status of wget: 0\n",
                "  The same request once more, in wget's words:\n", "200 OK\n"});
  EXPECT_EQ(requests("windfinder"), 2);
  all.peers.set_reply("metoffice", sim::reply_kind::bad);
  expect_tried("metoffice", 1,
               {"metoffice: FAILED: no response from metoffice\n",
                "  Exit status of wget: 8, the server answered with an error\n", "ERROR 403: Forbidden."});
  put_server_at("idokep", 1);
  expect_tried("idokep", 1,
               {"FAILED: no response from idokep\n", "  Exit status of wget: 4, the server was not reached\n",
                "Connection refused."});

  // With the settings for wget of a run.
  all.board.write(WGET_SETTINGS_PATH, "no such setting\n");
  expect_tried("idokep", 1, {"  Exit status of wget: 2, wget does not take its options: "});
  all.board.write(WGET_SETTINGS_PATH, "");

  all.peers.forget_requests();
  all.peers.set_reply("windfinder", sim::reply_kind::bad);
  expect_tried("windfinder", 1, {"FAILED"});
  EXPECT_EQ(requests("windfinder"), 1);
}

TEST_F(trying, is_ended_by_the_alarm_of_a_run) {
  interpose("CLOCK", "5");  // so the limit is three seconds
  all.peers.set_reply("windfinder", sim::reply_kind::hang);
  const sim::run_result run = try_network("windfinder");
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.output.ends_with("windfinder: ENDED BY ITS ALARM after 15 seconds\n")) << run.output;
  EXPECT_LT(run.seconds, 10);
  EXPECT_EQ(requests("windfinder"), 1);

  // What the server said until then is the reason.
  interpose("HASTE", "5");
  all.write_endpoints(false, "");
  expect_tried("aprs", 1, {"aprs: ENDED BY ITS ALARM", "# Invalid login: software name and version are not"});
}

TEST_F(trying, needs_no_network_that_is_switched_on) {
  enable_only({});
  expect_tried("windfinder", 0,
               {"  Switched off: windfinder_enabled is 0, so a run does not send it.\n", "ACCEPTED"});
  EXPECT_EQ(requests("windfinder"), 1);
  EXPECT_EQ(requests(), 1);
}

TEST_F(trying, sends_nothing_that_cannot_be_good) {
  const std::string endpoints = all.board.read(ENDPOINTS_PATH);
  const settings_record settings = all.board.settings;
  const struct {
    const char* name;
    std::function<void()> spoil;
    const char* reason;
  } ROWS[] = {
      {"windfinder", [&] { all.board.settings.set_text(sensor_temp, "th9"); },
       "NOT SENT: outdoor value missing: actual_th9_temp_c (not in the report)\n"},
      {"windfinder", [&] { all.board.settings.set_text(windfinder_name, ""); },
       "NOT SENT: windfinder_name is not set\n"},
      {"aprs", [&] { all.board.settings.set_integer(aprs_passcode, -1); },
       "NOT SENT: aprs_passcode is not set\n"},
      {"aprs", [&] { all.board.settings.set_text(aprs_host, ""); }, "NOT SENT: aprs_host is not set\n"},
      {"awekas_push", [&] { all.board.settings.set_text(awekas_user, "a"); },
       "NOT SENT: awekas_user needs two characters or more\n"},
      {"windfinder", [&] { all.board.write(ENDPOINTS_PATH, endpoints + "windfinder = http://x\";id\n"); },
       "NOT SENT: no valid value for windfinder in "},
      {"borgervejr", [&] { all.board.write(ENDPOINTS_PATH, endpoints + "borgervejr_recipient = x\n"); },
       "NOT SENT: no valid value for borgervejr_recipient in "},
      {"windit", [&] { all.board.write(ENDPOINTS_PATH, endpoints + "windit = http://windit.invalid\n"); },
       "NOT SENT: the network's server is not known: set windit in "},
  };
  for (const auto& row : ROWS) {
    SCOPED_TRACE(row.reason);
    row.spoil();
    all.board.save_settings();
    expect_tried(row.name, 1, {row.reason});
    all.board.settings = settings;
    all.board.save_settings();
    all.board.write(ENDPOINTS_PATH, endpoints);
  }
  // The file of a network that pushes nothing is no mistake.
  all.board.settings.set_text(awekas_user, "");
  all.board.save_settings();
  expect_tried("awekas", 0, {"NOT SENT: awekas_user needs two characters or more\n", "awekas_pull: WRITTEN"});
  EXPECT_EQ(requests(), 0);
  EXPECT_TRUE(all.aprs->sessions().empty());
  EXPECT_TRUE(all.mail.mails().empty());

  all.data.reset();
  EXPECT_EQ(try_network("windfinder").errors,
            "Error: the data server at 127.0.0.1:5558 does not answer (connect: Connection refused)\n");
}

TEST_F(trying, asks_first_and_only_at_a_terminal) {
  const sim::run_result run = all.board.run_tool(SETTINGS_PROGRAM, {"try", "windfinder"});
  EXPECT_EQ(run.status, 2);
  EXPECT_TRUE(run.errors.starts_with("Error: no terminal to ask at;")) << run.errors;
  for (const auto& [answer, count] : {std::pair<std::string, int>{"", 0}, {"n", 0}, {"yes", 0}, {"y", 1}}) {
    SCOPED_TRACE(answer);
    all.peers.forget_requests();
    const sim::run_result asked =
        all.board.run_tool("/bin/sh", {"-c", "(sleep 1; echo '" + answer + "'; sleep 1) | script -qec \"" +
                                                 SETTINGS_PROGRAM + " try windfinder\" /dev/null"});
    EXPECT_NE(asked.output.find("Send it? [y/N] "), std::string::npos) << asked.output;
    EXPECT_EQ(requests("windfinder"), count) << asked.output;
  }
}

// Where wget, which is in the background there, would have its messages in a file, and some networks are judged by them.
TEST_F(trying, hears_wget_at_a_terminal_too) {
  put_server_at("idokep", 1);
  const auto try_at_terminal = [&](const std::string& name) {
    return all.board
        .run_tool("/bin/sh", {"-c", "cd " + all.board.root().string() + " && script -qec \"" +
                                        SETTINGS_PROGRAM + " try --yes " + name + "\" /dev/null"})
        .output;
  };
  EXPECT_NE(try_at_terminal("anythingweather").find("anythingweather: ACCEPTED\r\n"), std::string::npos);
  EXPECT_NE(try_at_terminal("idokep").find("Connection refused."), std::string::npos);
  EXPECT_FALSE(fs::exists(all.board.path("/wget-log")));
}

// Replies with what it was asked, as it came and decoded, and with a digest.
class echo_server {
 public:
  explicit echo_server(const std::string& digest) {
    const auto echo = [digest](const httplib::Request& request, httplib::Response& response) {
      const std::string asked = request.target + '\n' + request.body + '\n';
      response.set_content(asked + httplib::detail::decode_url(asked, true) + digest, "text/plain");
    };
    server_.Get(".*", echo);
    server_.Post(".*", echo);
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();
  }
  ~echo_server() {
    server_.stop();
    thread_.join();
  }

  // Lines of the endpoint file that put every network here.
  std::string endpoints() const {
    const std::string host = "127.0.0.1:" + std::to_string(port_) + '\n';
    std::string lines;
#define ENDPOINT(name, kind, value)                                                  \
  if (endpoint_kind::kind == endpoint_kind::url) lines += #name " = http://" + host; \
  if (endpoint_kind::kind == endpoint_kind::host_and_port) lines += #name " = " + host;
#include "base/endpoints.def"
    return lines;
  }

 private:
  httplib::Server server_;
  int port_ = 0;
  std::thread thread_;
};

TEST_F(trying, shows_a_long_reply_once) {
  const echo_server server("");
  all.board.write(ENDPOINTS_PATH, server.endpoints());
  expect_tried("wunderground", 1, {"wunderground: FAILED: ", " ...\n  Reply:\n"});
}

// Not even of a server that says it back, nor if the command could not be run.
TEST_F(trying, tells_no_secret) {
  constexpr char SECRET[] = "Zq\"1&x #%`<\\|";  // nothing changes its first two characters
  md5_text digest;
  md5_hex(SECRET, digest);
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_secret() && row.field.is_text()) all.board.settings.set_text(row.as_text(), SECRET);
  all.board.save_settings();
  all.board.write(PROCESSOR_PATH, "Hardware : Linksys NSLU2\n");  // so MeteoNews needs no TLS
  const echo_server server(digest.c_str());
  all.board.write(ENDPOINTS_PATH, server.endpoints());

  const auto expect_none_told = [&](const std::string& name) {
    const std::string output = try_network(name).output;
    EXPECT_EQ(output.find("Zq"), std::string::npos) << output;
    EXPECT_EQ(output.find(digest.c_str()), std::string::npos) << output;
    return output;
  };
  for (const run_step& step : run_list()) {
    if (step.upload->carried_by != carrier::http) continue;
    const std::string output = expect_none_told(step.upload->id);
    // These two have none, and MeteoNews' is in a header.
    const std::set<std::string> without = {"windit", "regiowetter", "meteonews"};
    EXPECT_TRUE(without.contains(step.upload->id) || output.find("***") != std::string::npos) << output;
  }
  interpose("FAIL", "popen:2");
  for (const char* const name : {"windfinder", "weather underground"}) expect_none_told(name);
}

}  // namespace
}  // namespace skypost::testing
