// Servers as they behave today, with the real wget. Met Office WOW is judged by wget's exit status; an APRS server
// refuses or discards what the program sends without the installed endpoint file.

#include <csignal>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/tcp_server.h"

namespace skypost::testing {
namespace {

using todays_servers = program;

// A server that sends the same reply to every request.
sim::tcp_server answering(const std::string& reply) {
  return {0, "web server", [reply](sim::connection& client) {
            while (!client.read_line().value_or("").empty()) {
            }
            client.write("HTTP/1.1 " + reply);
          }};
}

TEST_F(todays_servers, tell_metoffice_good_from_bad_by_the_status) {
  enable_only({&metoffice_enabled});
  const std::string lines = all.board.read(ENDPOINTS_PATH);
  const std::pair<std::string, std::string> cases[] = {
      // the server's reply; the failure, if any
      {"200 OK\r\nContent-Length: 2\r\n\r\n{}", ""},
      {"200 OK\r\nContent-Length: 0\r\n\r\n", ""},
      {"204 No Content\r\n\r\n", ""},
      {"400 Bad\r\nContent-Length: 3\r\n\r\nbad", "no response from metoffice"},
      {"401 Who\r\nContent-Length: 0\r\n\r\n", "no response from metoffice"},
      {"403 No\r\nContent-Length: 3\r\n\r\nbad", "no response from metoffice"},
      {"403 No\r\nContent-Length: 0\r\n\r\n", "no response from metoffice"},
      {"429 Slow\r\nContent-Length: 0\r\n\r\n", "no response from metoffice"},
  };
  for (const auto& [reply, reason] : cases) {
    SCOPED_TRACE(reply);
    const sim::tcp_server server = answering(reply);
    all.board.write(ENDPOINTS_PATH,
                    lines + "metoffice = http://127.0.0.1:" + std::to_string(server.port()) + '\n');
    all.board.forget_alarms();
    run_well();
    std::vector<sim::alarm_call> expected;
    if (!reason.empty()) expected.push_back({"skypost", "metoffice", reason});
    EXPECT_EQ(all.board.alarms(), expected);
  }
  // Nothing listens on this port.
  all.board.write(ENDPOINTS_PATH, lines + "metoffice = http://127.0.0.1:1\n");
  all.board.forget_alarms();
  run_well();
  const std::vector<sim::alarm_call> expected = {{"skypost", "metoffice", "no response from metoffice"}};
  EXPECT_EQ(all.board.alarms(), expected);
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
