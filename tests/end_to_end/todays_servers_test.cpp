// Servers as they behave today, with the real wget. An APRS server refuses or discards what the program sends without
// the installed endpoint file.

#include <csignal>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/tcp_server.h"

namespace skypost::testing {
namespace {

using todays_servers = program;

// A redirect can lead wget to a host for which root's ~/.netrc has a password.
TEST_F(todays_servers, get_no_password_for_another_server) {
  enable_only({&windfinder_enabled});
  all.board.write("/.netrc", "machine localhost login root password secret\n");
  std::string target, seen;
  const sim::tcp_server server(0, "web server", [&](sim::connection& client) {
    const std::string request = client.read_line().value_or("");
    seen += request.substr(0, request.find('?')) + '\n';
    for (std::string line = "-"; !line.empty(); line = client.read_line().value_or(""))
      if (line.starts_with("Authorization: ")) seen += line + '\n';
    client.write(request.starts_with("GET /wind-cgi/")
                     ? "HTTP/1.1 302 Found\r\nLocation: " + target + "\r\n\r\n"
                     : "HTTP/1.1 401 Who\r\nWWW-Authenticate: Basic realm=\"x\"\r\n\r\n");
  });
  target = "http://localhost:" + std::to_string(server.port()) + "/other";
  all.board.write(ENDPOINTS_PATH, "windfinder = http://127.0.0.1:" + std::to_string(server.port()) + '\n');
  run_well();
  EXPECT_EQ(seen, "GET /wind-cgi/nimbulogload.pl\nGET /other HTTP/1.1\n");
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
