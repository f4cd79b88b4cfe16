// Servers as they behave today, with the real wget. Met Office WOW is judged by wget's exit status; an APRS server
// refuses or discards what the program sends without the installed endpoint file.

#include <csignal>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/tcp_server.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

class todays_servers : public program {
 protected:
  // A server that sends the same reply to every request.
  sim::tcp_server answering(const std::string& reply) {
    return {0, "web server", [this, reply](sim::connection& client) {
              latest_request_ = client.read_line().value_or("");
              while (!client.read_line().value_or("").empty()) {
              }
              client.write("HTTP/1.1 " + reply);
            }};
  }

  // Makes a run with the endpoint at that port, `rest` after it. Returns the reason for the alarm script, "" for none.
  std::string failure_at(std::uint16_t port, const std::string& endpoint, const std::string& rest = "") {
    all.board.write(ENDPOINTS_PATH, endpoint + " = http://127.0.0.1:" + std::to_string(port) + rest + '\n');
    all.board.forget_alarms();
    run_well();
    const auto alarms = all.board.alarms();
    EXPECT_LE(alarms.size(), 1U);
    return alarms.empty() ? "" : alarms.at(0).at(2);
  }

  std::string latest_request_;
};

TEST_F(todays_servers, tell_metoffice_good_from_bad_by_the_status) {
  enable_only({&metoffice_enabled});
  const std::pair<std::string, std::string> cases[] = {
      // the server's reply; the failure, if any
      {"200 OK\r\nContent-Length: 2\r\n\r\n{}", ""},
      {"403 No\r\nContent-Length: 3\r\n\r\nbad", "no response from metoffice"},
  };
  for (const auto& [reply, reason] : cases)
    EXPECT_EQ(failure_at(answering(reply).port(), "metoffice"), reason) << reply;
  EXPECT_EQ(failure_at(1, "metoffice"), "no response from metoffice");  // nothing listens there
}

// Met Office WOW's successor in Belgium, by the line in the manual.
TEST_F(todays_servers, take_weatherflows_request_at_another_path_and_with_another_reply) {
  enable_only({&weatherflow_enabled});
  const std::pair<std::string, std::string> cases[] = {
      {"200 OK\r\n\r\n{\"id\":7,\"type\":\"Feature\"}", ""},
      {"200 OK\r\n\r\n{\"type\":\"Point\"}", "upload to weatherflow failed: {\"type\":\"Point\"}"},
      {"403 No\r\n\r\n{\"type\":\"Feature\"}", "no response from weatherflow"},
  };
  for (const auto& [reply, reason] : cases)
    EXPECT_EQ(failure_at(answering(reply).port(), "weatherflow",
                         "/api/v2/send/weatherunderground \"type\":\"Feature\""),
              reason);
  EXPECT_TRUE(latest_request_.starts_with("GET /api/v2/send/weatherunderground?"));
  EXPECT_NE(latest_request_.find("&baromin="), std::string::npos) << latest_request_;
}

// A redirect can lead wget to a host for which root's ~/.netrc has a password.
TEST_F(todays_servers, get_no_password_for_another_server) {
  enable_only({&windfinder_enabled});
  all.board.write("/.netrc", "machine localhost login root password secret\n");
  const std::string installed = all.board.read(WGET_SETTINGS_PATH);
  for (const bool reads_netrc : {false, true}) {
    all.board.write(WGET_SETTINGS_PATH, reads_netrc ? replaced(installed, "netrc = off", "") : installed);
    bool has_password = false;
    std::string target;
    const sim::tcp_server server(0, "web server", [&](sim::connection& client) {
      const bool is_first = client.read_line().value_or("").starts_with("GET /wind-cgi/");
      for (std::string line = "-"; !line.empty(); line = client.read_line().value_or(""))
        if (line.starts_with("Authorization: ")) has_password = true;
      client.write(is_first ? "HTTP/1.1 302 Found\r\nLocation: " + target + "\r\n\r\n"
                            : "HTTP/1.1 401 Who\r\nWWW-Authenticate: Basic realm=\"x\"\r\n\r\n");
    });
    target = "http://localhost:" + std::to_string(server.port()) + "/";
    failure_at(server.port(), "windfinder");
    EXPECT_EQ(has_password, reads_netrc);
  }
}

TEST_F(todays_servers, refuse_an_aprs_login_without_a_version_and_the_run_ends_there) {
  enable_only({&aprs_enabled, &weatherbug_enabled, &idokep_enabled});
  interpose("CLOCK", "5");
  interpose("HASTE", "5");
  all.write_endpoints(false, "");
  const sim::run_result run = all.board.run();
  EXPECT_EQ(run.signal, SIGALRM);
  EXPECT_TRUE(all.board.alarms().empty());
  EXPECT_EQ(requests(), 0);
  const auto sessions = all.aprs->sessions();
  ASSERT_FALSE(sessions.empty());
  EXPECT_EQ(sessions[0].reply,
            "# Invalid login: software name and version are not separated by a space\r\n"
            "# Invalid login string, too few arguments");
}

// With only the first entry or without a passcode, the upload counts as successful, but the server discards it.
TEST_F(todays_servers, relay_an_aprs_packet_only_with_both_entries_and_a_passcode) {
  enable_only({&aprs_enabled, &weatherbug_enabled, &idokep_enabled});
  interpose("HASTE", "100");
  all.write_endpoints(false, "aprs_software = nimbulog 1.0\n");
  run_well();
  EXPECT_EQ(all.aprs->sessions().back().fate, "discarded: path TCPXX*");
  all.write_endpoints();
  run_well();
  EXPECT_EQ(all.aprs->sessions().back().fate, "relayed");
  all.board.settings.set_integer(aprs_passcode, -1);
  all.board.save_settings();
  run_well();
  EXPECT_EQ(all.aprs->sessions().back().fate, "discarded: station not verified");
  EXPECT_TRUE(all.board.alarms().empty());
  EXPECT_EQ(requests("idokep"), 3);
}

}  // namespace
}  // namespace skypost::testing
