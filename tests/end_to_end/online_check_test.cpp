// `skypost-settings check --online` connects to every server as a run would, but must not send values. Its findings are
// in golden/online_check.

#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "sim/networks.h"
#include "sim/tcp_server.h"

namespace skypost::testing {
namespace {

class online_check : public program {
 protected:
  // The findings about servers. Other findings depend on the machine that runs the test.
  std::vector<std::string> findings() {
    run_ = all.board.run_tool(SETTINGS_PROGRAM, {"check", "--online"});
    EXPECT_EQ(run_.errors, "");
    std::istringstream lines(run_.output);
    std::vector<std::string> found;
    for (std::string line; std::getline(lines, line);)
      if (line.find(": the server \"") != std::string::npos) found.push_back(line);
    return found;
  }

  void add_endpoint(const std::string& line) {
    all.board.write(ENDPOINTS_PATH, all.board.read(ENDPOINTS_PATH) + line + '\n');
  }

  sim::run_result run_;
};

std::string at_port(int port) { return "127.0.0.1:" + std::to_string(port); }

TEST_F(online_check, sends_nothing_but_a_login_line) {
  const std::vector<std::string> found = findings();
  EXPECT_EQ(found, std::vector<std::string>{}) << run_.output;
  std::size_t count = 0;
  for (const sim::request_seen& seen : all.peers.requests()) {
    EXPECT_TRUE(seen.request == "HEAD /" || seen.request == "GET /") << seen.request;
    count += seen.request == "HEAD /" ? 1 : 0;
  }
  // The second servers are not used, and MeteoNews demands a login.
  EXPECT_EQ(count, std::size_t(std::ranges::count(sim::http_networks(), sim::server::first,
                                                  &sim::network_row::which)));
  EXPECT_TRUE(comes_true([&] { return all.cwop->sessions().size() + all.aprs->sessions().size() == 2; }, 5));
  EXPECT_EQ(all.cwop->sessions().at(0).login, "User CW4242 pass -1 vers nimbulog 1.0");
  EXPECT_EQ(all.aprs->sessions().at(0).login, "User N0CALL-13 pass 12345 vers nimbulog 1.0");
  for (const auto* server : {&*all.cwop, &*all.aprs}) EXPECT_EQ(server->sessions().at(0).fate, "no packet");
  EXPECT_TRUE(all.mail.mails().empty());
}

// The check must not follow a redirection, and must not request the path in the endpoint file.
TEST_F(online_check, asks_each_server_once_for_its_front_page) {
  std::mutex mutex;
  std::vector<std::string> heads;
  const sim::tcp_server server(0, "web server", [&](sim::connection& client) {
    std::string head;
    for (std::optional<std::string> line; !(line = client.read_line()).value_or("").empty();)
      head += *line + '\n';
    client.write("HTTP/1.1 301 Moved\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n");
    const std::lock_guard lock(mutex);
    heads.push_back(head);
  });
  enable_only({&windfinder_enabled, &windit_enabled, &wetterring_enabled});
  for (const std::string name : {"windfinder", "windit", "wetterring"})
    add_endpoint(name + " = http://" + at_port(server.port()) + "/some/path");
  EXPECT_EQ(findings(), std::vector<std::string>{});
  const std::lock_guard lock(mutex);
  ASSERT_EQ(heads.size(), 1U);
  EXPECT_TRUE(heads[0].starts_with("HEAD / HTTP/1.1\n")) << heads[0];
  EXPECT_NE(heads[0].find("User-Agent: nimbulog\n"), std::string::npos) << heads[0];
  EXPECT_EQ(heads[0].find("Authorization"), std::string::npos) << heads[0];
}

// The C library would wait 20 seconds for a silent name server, for each name.
TEST_F(online_check, is_not_held_up_by_a_name_server_that_hangs) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can have a name server of its own";
  const int silent = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(53);
  ASSERT_EQ(bind(silent, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  all.board.write("/resolv.conf", "nameserver 127.0.0.1\nnameserver 127.0.0.2\n");
  enable_only({&windfinder_enabled, &windit_enabled, &aprs_enabled});
  add_endpoint("windfinder = http://windfinder.example\nwindit = https://windit.example");
  all.board.settings.set_text(aprs_host, "aprs.example");
  all.board.save_settings();
  const sim::run_result run = all.board.run_tool(
      "/usr/bin/unshare",
      {"-m", "sh", "-c",
       "mount --bind \"$SKYPOST_ROOT/resolv.conf\" /etc/resolv.conf && exec " SETTINGS_PROGRAM
       " check --online"});
  close(silent);
  EXPECT_LT(run.seconds, 18);
  for (const char* const words : {"wget says \"Resolving windfinder.example",
                                  "wget says \"Resolving windit.example", "no name server answers"})
    EXPECT_NE(run.output.find(words), std::string::npos) << run.output << run.errors;
}

// An https server whose certificate is made by openssl `commands`.
class tls_server {
 public:
  tls_server(const sim::folder& folder, const std::string& name, const std::string& commands) {
    const std::string certificate = folder.path("/" + name + ".pem");
    const std::string key = folder.path("/" + name + ".key");
    const std::string line = "set -e; cd \"" + folder.root().string() + "\"; name=" + name + "; " + commands;
    if (std::system(("( " + line + " ) 2>/dev/null").c_str()) != 0) throw std::runtime_error(line);
    server_ = std::make_unique<httplib::SSLServer>(certificate.c_str(), key.c_str());
    server_->Get(".*", [this](const httplib::Request&, httplib::Response&) { ++requests_; });
    port_ = server_->bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    while (!server_->is_running()) std::this_thread::yield();
  }
  ~tls_server() {
    server_->stop();
    thread_.join();
  }

  int port() const { return port_; }
  int requests() const { return requests_; }

 private:
  std::unique_ptr<httplib::SSLServer> server_;
  std::atomic<int> requests_ = 0;
  int port_ = 0;
  std::thread thread_;
};

TEST_F(online_check, tells_which_certificate_is_not_trusted) {
  constexpr char NEW_KEY[] =
      "openssl req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=$name ";
  const std::string authority = std::string(NEW_KEY) + "-x509 -days 2 -keyout $name.key -out $name.pem";
  const auto signed_for = [&](const std::string& address, const std::string& days) {
    return std::string(NEW_KEY) + "-keyout $name.key -out $name.csr; echo subjectAltName=IP:" + address +
           " > $name.ext; openssl x509 -req -in $name.csr -CA authority.pem -CAkey authority.key"
           " -CAcreateserial -extfile $name.ext -days " +
           days + " -out $name.pem";
  };
  const tls_server of_authority(all.board, "authority", authority);
  all.board.write(WGET_SETTINGS_PATH, all.board.read(WGET_SETTINGS_PATH) + "ca_certificate = " +
                                          (all.board.root() / "authority.pem").string() + '\n');
  const tls_server good(all.board, "good", signed_for("127.0.0.1", "2"));
  const tls_server expired(all.board, "expired", signed_for("127.0.0.1", "-1"));
  const tls_server wrong_name(all.board, "wrong", signed_for("127.0.0.2", "2"));
  const tls_server self_signed(all.board, "self", authority + " -addext subjectAltName=IP:127.0.0.1");

  enable_only({&idokep_enabled, &metoffice_enabled, &windfinder_enabled, &windit_enabled});
  const std::pair<const char*, const tls_server*> servers[] = {
      {"idokep", &good}, {"metoffice", &expired}, {"windfinder", &wrong_name}, {"windit", &self_signed}};
  for (const auto& [name, server] : servers)
    add_endpoint(std::string(name) + " = https://" + at_port(server->port()));
  std::vector<std::string> not_trusted;
  for (const std::string& finding : findings())
    if (finding.find(". Check the clock and ca-certificates, or set ") != std::string::npos)
      not_trusted.push_back(finding.substr(0, finding.find(':')));
  const std::vector<std::string> expected = {"Windfinder", "WindIt", "Met Office WOW"};
  EXPECT_EQ(not_trusted, expected);
  EXPECT_EQ(good.requests(), 1);
  EXPECT_EQ(expired.requests() + wrong_name.requests() + self_signed.requests(), 0);
}

}  // namespace
}  // namespace skypost::testing
