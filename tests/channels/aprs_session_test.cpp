#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/debug.h"
#include "base/error_text.h"
#include "channels/channels.h"
#include "endpoints/endpoints.h"
#include "sim/tcp_server.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// Reads two lines from each client and sends it the next reply; the last reply is repeated, an empty one closes.
class replying_server {
 public:
  explicit replying_server(std::vector<std::string> replies, std::uint16_t port = 0,
                           const char* address = "127.0.0.1")
      : replies_(std::move(replies)) {
    server_.emplace(
        port, "APRS server", [this](sim::connection& client) { talk(client); }, address);
  }

  std::uint16_t port() const { return server_->port(); }

  // Stops the server and returns what each client sent.
  const std::vector<std::string>& received() {
    server_.reset();
    return received_;
  }

 private:
  void talk(sim::connection& client) {
    std::string& text = received_.emplace_back();
    for (int line = 0; line < 2; ++line) text += client.read_line().value_or("nothing") + "\r\n";
    const std::string& reply = replies_[std::min(received_.size(), replies_.size()) - 1];
    if (reply.empty()) return;
    client.write(reply);
    client.wait_until_closed();
  }

  std::vector<std::string> replies_;
  std::vector<std::string> received_;
  std::optional<sim::tcp_server> server_;
};

// The error text after five attempts at 127.0.0.1.
std::string five_times(const std::string& what, const std::string& reason) {
  std::string text;
  for (const char* attempt : {"1", "2", "3", "4", "5"})
    text.append("error " + what + " (" + attempt + ") \"127.0.0.1\": " + reason + ", ");
  return text;
}

class AprsSession : public ::testing::Test {
 protected:
  void SetUp() override {
    aprs_pauses = {.before_attempt = 0, .before_reading = 0};
    live_data_stale = debug_flag = 0;
    fill_settings(station_settings);
    live_record = fully_equipped_station();
    error_text.clear();
    error_text.append_text("left by another network");
  }

  void TearDown() override {
    aprs_pauses = {};
    reset_endpoints();
  }

  static int session(std::uint16_t port, const char* call_sign = "N0CALL", bool is_cwop = true) {
    const char* const servers[] = {"127.0.0.1", nullptr};
    errno = EDOM;  // as left by another network
    latest_exchange = {};
    return aprs_session(servers, port, call_sign, -1, is_cwop);
  }
};

// CWOP's own servers call every station unverified, and take its packets.
TEST_F(AprsSession, IsTriedAgainUntilTheServerNamesTheStation) {
  constexpr char UNVERIFIED[] = "# aprsc\r\n# logresp N0CALL unverified, server TEST\r\n";
  const std::string long_reply(1'000, '#');
  const struct {
    std::vector<std::string> replies;
    std::size_t attempts;
    std::string error;  // "": success
    const char* doubt = "";
    bool is_cwop = true;
  } cases[] = {
      {{UNVERIFIED}, 1, ""},
      {{UNVERIFIED}, 1, "", "unverified: most servers drop the packet", false},
      {{"# no N0-CALL\n", "", "ok N0CALL"}, 3, ""},
      {{"# hello\r\nn0call\n"}, 5, five_times("data transfer", "# hello\r,n0call,")},
      {{""}, 5, five_times("socket read", "Success")},
      {{long_reply + "N0CALL"}, 5, five_times("data transfer", long_reply)},
      {{long_reply.substr(6) + "N0CALL"}, 1, ""},
  };
  for (const auto& row : cases) {
    replying_server server(row.replies);
    EXPECT_EQ(session(server.port(), "N0CALL", row.is_cwop), row.error.empty() ? 0 : -1);
    EXPECT_EQ(error_text.view(), row.error);
    EXPECT_STREQ(latest_exchange.doubt, row.doubt);
    EXPECT_EQ(server.received().size(), row.attempts);
  }
}

TEST_F(AprsSession, SendsNoCallSignWithALineBreak) {
  replying_server server({"N0CALL"});
  for (const char* call_sign : {"N0CALL\n", "\rN0CALL"}) {
    EXPECT_EQ(session(server.port(), call_sign), -1);
    EXPECT_EQ(error_text.view(), "error call sign: contains a line break, nothing was sent");
  }
  EXPECT_TRUE(server.received().empty());
}

TEST_F(AprsSession, OfAprsTakesAllFromTheSettings) {
  // A call sign that fills its slot has no NUL; reading on would append the host name.
  std::memset(station_settings.bytes + aprs_call_sign.offset, 'A', aprs_call_sign.size);
  const std::string call_sign(aprs_call_sign.size, 'A');
  replying_server server({call_sign});
  station_settings.set_integer(aprs_port, server.port());
  debug_flag = 1;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(upload_aprs(), 0) << error_text.c_str();
  const std::string sent = server.received().at(0);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "\nAPRS (" +
                                                          std::string(station_settings.text(aprs_host)) +
                                                          ")\n" + sent + "\nReply: " + call_sign + "\n");
  EXPECT_TRUE(sent.starts_with("User " + call_sign + " pass 12345 vers nimbulog\r\n" + call_sign + ">APRS,"))
      << sent;
  EXPECT_EQ(sent.find("L456"), std::string::npos);
}

TEST_F(AprsSession, OfCwopGoesFromTheFirstServerToTheSecond) {
  read_endpoint_lines("cwop_first = 127.0.77.1\ncwop_second = 127.0.77.2\n");
  replying_server second({"who?"}, 14'580, "127.0.77.2");
  EXPECT_EQ(upload_cwop(), -1);
  EXPECT_TRUE(
      error_text.view().starts_with("error socket open (1) \"127.0.77.1\": Connection refused, "
                                    "error data transfer (1) \"127.0.77.2\": who?, "))
      << error_text.c_str();
  const std::string sent = second.received().at(0);
  EXPECT_TRUE(sent.starts_with("User N0CALL pass -1 vers nimbulog\r\n")) << sent;
  EXPECT_NE(sent.find("L456eNB49"), std::string::npos) << sent;
}

// A server that swallows the connection must not cost the run, as the system's own limit of two minutes would: the
// second one gets its turn in time.
TEST_F(AprsSession, LeavesAServerThatDoesNotAccept) {
  read_endpoint_lines("aprs_connect_seconds = 1\n");
  const sim::full_server full;
  replying_server second({"N0CALL"}, full.port(), "127.0.0.2");
  const char* const servers[] = {"127.0.0.1", "127.0.0.2", nullptr};
  EXPECT_EQ(aprs_session(servers, full.port(), "N0CALL", -1, true), 0) << error_text.c_str();
  // Ctrl-Z and fg, or a debugger, interrupt a connect() that has a time limit.
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGUSR1, &action, nullptr);
  std::thread interrupting([connecting = pthread_self()] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    pthread_kill(connecting, SIGUSR1);
  });
  EXPECT_EQ(session(full.port()), -1);
  EXPECT_EQ(error_text.view(), "error socket open (1) \"127.0.0.1\": Connection timed out, ");
  interrupting.join();
}

// Stale data are not sent, so a refused endpoint is no failure.
TEST_F(AprsSession, NeedsNoEndpointsForStaleData) {
  read_endpoint_lines("aprs_software = x/y\n");
  live_data_stale = 1;
  EXPECT_EQ(upload_cwop() + upload_aprs(), 0);
}

}  // namespace
}  // namespace skypost::testing
