// Sessions with a server in this process: when one counts as a success, what is tried again, where, and
// what the owner is told.

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "base/endpoints.h"
#include "base/process_state.h"
#include "channels/aprs.h"
#include "support/no_descriptors.h"
#include "support/station.h"

namespace {

bool is_send_refused = false;

}  // namespace

// Stands in for the C library's: no server can be relied on to break a connection at the right moment.
extern "C" ssize_t send(int connection, const void* bytes, size_t count, int flags) {
  if (!is_send_refused) return sendto(connection, bytes, count, flags, nullptr, 0);
  errno = EPIPE;
  return -1;
}

namespace skypost::testing {
namespace {

// Reads one packet of every client and answers: with the replies in turn, then with the last of them over
// and over. An empty reply closes the connection.
class aprs_server {
 public:
  explicit aprs_server(std::vector<std::string> replies, const char* address = "127.0.0.1",
                       std::uint16_t port = 0)
      : replies_(std::move(replies)), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = inet_addr(address);
    place.sin_port = htons(port);
    const int yes = 1;
    setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    EXPECT_EQ(bind(listener_, reinterpret_cast<sockaddr*>(&place), sizeof place), 0) << std::strerror(errno);
    socklen_t length = sizeof place;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&place), &length);
    port_ = ntohs(place.sin_port);
    listen(listener_, 5);
    thread_ = std::thread([this] { serve(); });
  }
  ~aprs_server() { stop(); }
  aprs_server(const aprs_server&) = delete;
  aprs_server& operator=(const aprs_server&) = delete;

  std::uint16_t port() const { return port_; }

  // What each client sent. Ends the server.
  const std::vector<std::string>& received() {
    stop();
    return received_;
  }

 private:
  void stop() {
    if (!thread_.joinable()) return;
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
  }

  void serve() {
    for (int client = 0; (client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0; close(client)) {
      constexpr timeval LIMIT = {.tv_sec = 5, .tv_usec = 0};
      setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &LIMIT, sizeof LIMIT);
      received_.push_back(read_packet(client));
      const std::string& reply = replies_[std::min(received_.size(), replies_.size()) - 1];
      if (reply.empty()) continue;
      sendto(client, reply.data(), reply.size(), MSG_NOSIGNAL, nullptr, 0);
      read_packet(client);  // until the client has closed
    }
  }

  static std::string read_packet(int client) {
    std::string packet;
    char bytes[1'000];
    for (ssize_t count = 0;
         !packet.ends_with("eNB49\r\n") && (count = read(client, bytes, sizeof bytes)) > 0;)
      packet.append(bytes, static_cast<std::size_t>(count));
    return packet;
  }

  std::vector<std::string> replies_;
  std::vector<std::string> received_;
  int listener_;
  std::uint16_t port_ = 0;
  std::thread thread_;
};

std::ptrdiff_t open_descriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return std::distance(begin(all), end(all));
}

// A port of this machine that nobody listens on.
std::uint16_t free_port() {
  aprs_server server({""});
  server.received();
  return server.port();
}

// One message for each attempt at 127.0.0.1.
std::string five_times(const std::string& what, const std::string& reason) {
  std::string text;
  for (int attempt = 1; attempt <= 5; ++attempt)
    text.append("error ")
        .append(what)
        .append(" (")
        .append(std::to_string(attempt))
        .append(") \"127.0.0.1\": ")
        .append(reason)
        .append(", ");
  return text;
}

class AprsSession : public ::testing::Test {
 protected:
  void SetUp() override {
    aprs_pauses = {.before_attempt = 0, .before_reading = 0};
    flags = {};
    is_send_refused = false;
    fill_settings(station_settings);
    live_record = fully_equipped_station();
    error_text.clear();
    error_text.append_text("left by another network");
    descriptors_ = open_descriptors();
  }

  void TearDown() override {
    EXPECT_EQ(open_descriptors(), descriptors_);
    aprs_pauses = {};
    reset_endpoints();
  }

  static int session(std::vector<const char*> servers, std::uint16_t port, const char* call_sign = "N0CALL") {
    servers.push_back(nullptr);
    return aprs_session(servers.data(), port, call_sign, -1, true);
  }

  static std::string error() { return error_text.c_str(); }

 private:
  std::ptrdiff_t descriptors_ = 0;
};

TEST_F(AprsSession, SucceedsWhenTheServerNamesTheStation) {
  aprs_server server({"# aprsc\r\n# logresp N0CALL unverified, server TEST\r\n"});
  EXPECT_EQ(session({"127.0.0.1"}, server.port()), 0);
  EXPECT_EQ(error(), "");
  ASSERT_EQ(server.received().size(), 1U);
  const std::string sent = server.received().front();
  EXPECT_TRUE(sent.starts_with("User N0CALL pass -1 vers nimbulog\r\nN0CALL>APRS,TCPXX*:@")) << sent;
}

TEST_F(AprsSession, IsTriedAgainUntilTheServerNamesTheStation) {
  aprs_server server({"# no N0-CALL\n", "", "ok N0CALL"});
  EXPECT_EQ(session({"127.0.0.1", "127.0.0.2"}, server.port()), 0);
  EXPECT_EQ(error(), "");
  EXPECT_EQ(server.received().size(), 3U);
}

TEST_F(AprsSession, FailsAfterFiveAttemptsWithoutTheCallSign) {
  aprs_server server({"# hello\r\nn0call\n"});
  EXPECT_EQ(session({"127.0.0.1"}, server.port()), -1);
  EXPECT_EQ(error(), five_times("data transfer", "# hello\r,n0call,"));
  EXPECT_EQ(server.received().size(), 5U);
}

TEST_F(AprsSession, FailsWhenTheServerCloses) {
  aprs_server server({""});
  EXPECT_EQ(session({"127.0.0.1"}, server.port()), -1);
  EXPECT_EQ(error(), five_times("socket read", "Success"));
}

TEST_F(AprsSession, FailsWhenNothingCanBeWritten) {
  aprs_server server({"N0CALL"});
  is_send_refused = true;
  EXPECT_EQ(session({"127.0.0.1"}, server.port()), -1);
  EXPECT_EQ(error(), five_times("socket write", "Broken pipe"));
}

TEST_F(AprsSession, ReadsAThousandBytes) {
  aprs_server server({std::string(1'000, '#') + "N0CALL"});
  EXPECT_EQ(session({"127.0.0.1"}, server.port()), -1);
  EXPECT_EQ(error(), five_times("data transfer", std::string(1'000, '#')));

  aprs_server one_less({std::string(994, '#') + "N0CALL"});
  EXPECT_EQ(session({"127.0.0.1"}, one_less.port()), 0);
}

TEST_F(AprsSession, LeavesAServerThatRefusesAtOnce) {
  EXPECT_EQ(session({"127.0.0.1", "127.0.0.2"}, free_port()), -1);
  EXPECT_EQ(error(),
            "error socket open (1) \"127.0.0.1\": Connection refused, "
            "error socket open (1) \"127.0.0.2\": Connection refused, ");
}

// An IPv6 address is a name that has no IPv4 address, known without asking a name server.
TEST_F(AprsSession, GoesOnBehindAServerWithoutAddress) {
  aprs_server server({"N0CALL"});
  EXPECT_EQ(session({"::1", "127.0.0.1"}, server.port()), 0);
  EXPECT_EQ(error(), "");

  aprs_server strange({"who?"});
  EXPECT_EQ(session({"::1", "127.0.0.1"}, strange.port()), -1);
  EXPECT_TRUE(error().starts_with("error socket open (1) \"::1\": ")) << error();
  EXPECT_TRUE(error().ends_with(", " + five_times("data transfer", "who?"))) << error();
}

TEST_F(AprsSession, EndsWhenThereIsNoSocket) {
  const no_descriptors limit;
  EXPECT_EQ(session({"127.0.0.1", "127.0.0.2"}, 1), -1);
  EXPECT_EQ(error(), "error socket init: Too many open files, ");
}

TEST_F(AprsSession, CutsMessagesThatOutgrowTheirRoom) {
  aprs_server server({std::string(1'000, '#')});
  EXPECT_EQ(session({"127.0.0.1", "127.0.0.1"}, server.port()), -1);
  const std::string whole = five_times("data transfer", std::string(1'000, '#'));
  EXPECT_EQ(error(), (whole + whole).substr(0, 10'000));
  EXPECT_EQ(server.received().size(), 10U);
}

TEST_F(AprsSession, SendsNoCallSignWithALineBreak) {
  aprs_server server({"N0CALL"});
  for (const char* call_sign : {"N0CALL\r\nN0CALL>APRS:hi", "N0CALL\n", "\rN0CALL"}) {
    EXPECT_EQ(session({"127.0.0.1"}, server.port(), call_sign), -1);
    EXPECT_EQ(error(), "error call sign: it holds a line break, nothing was sent");
  }
  EXPECT_EQ(server.received().size(), 0U);
}

TEST_F(AprsSession, SendsNoStaleData) {
  aprs_server server({"N0CALL"});
  flags.live_data_stale = 1;
  EXPECT_EQ(session({"127.0.0.1"}, server.port()), 0);
  EXPECT_EQ(error(), "");
  EXPECT_EQ(server.received().size(), 0U);
}

TEST_F(AprsSession, TellsWhatItDoes) {
  aprs_server server({"N0CALL\n"});
  flags.debug_flag = 1;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(session({"127.0.0.1"}, server.port()), 0);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "\nCWOP (127.0.0.1)\n" + server.received().at(0) + "\nReply: N0CALL\n\n");
}

TEST_F(AprsSession, OfAprsTakesAllFromTheSettings) {
  // A call sign that fills its slot: the host name stands right behind it.
  std::memset(station_settings.bytes + aprs_call_sign.offset, 'A', aprs_call_sign.size);
  const std::string call_sign(aprs_call_sign.size, 'A');
  aprs_server server({call_sign});
  station_settings.set_integer(aprs_port, server.port());
  EXPECT_EQ(upload_aprs(), 0) << error();
  ASSERT_EQ(server.received().size(), 1U);
  const std::string sent = server.received().front();
  EXPECT_TRUE(sent.starts_with("User " + call_sign + " pass 12345 vers nimbulog\r\n" + call_sign + ">APRS,"))
      << sent;
  EXPECT_EQ(sent.find("L456"), std::string::npos);
}

TEST_F(AprsSession, OfCwopGoesFromTheFirstServerToTheSecond) {
  std::FILE* const file = std::tmpfile();
  std::fputs("cwop_first = 127.0.77.1\ncwop_second = 127.0.77.2\n", file);
  std::rewind(file);
  read_endpoints(file);
  std::fclose(file);
  aprs_server second({"N0CALL"}, "127.0.77.2", 14'580);
  EXPECT_EQ(upload_cwop(), 0) << error();
  ASSERT_EQ(second.received().size(), 1U);
  const std::string sent = second.received().front();
  EXPECT_TRUE(sent.starts_with("User N0CALL pass -1 vers nimbulog\r\n")) << sent;
  EXPECT_NE(sent.find("L456eNB49"), std::string::npos) << sent;
}

}  // namespace
}  // namespace skypost::testing
