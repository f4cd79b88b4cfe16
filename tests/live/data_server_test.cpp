// The data server's client against a server of the test's own: what it takes for a report, how much of
// it, how long it waits, and what it says when there is none.

#include "live/data_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <string>
#include <thread>

#include "base/process_state.h"

namespace skypost::testing {
namespace {

report_buffer report;

// A socket bound to a free port of the loopback interface, and that port.
struct bound_socket {
  int descriptor = socket(AF_INET, SOCK_STREAM, 0);
  std::uint16_t port = 0;

  bound_socket() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), size), 0);
    EXPECT_EQ(getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size), 0);
    port = ntohs(address.sin_port);
  }
  ~bound_socket() { close(descriptor); }
  bound_socket(const bound_socket&) = delete;
  bound_socket& operator=(const bound_socket&) = delete;
};

// Listens on a free port and lets `talk` serve one client, whose socket it closes afterwards.
class one_client_server {
 public:
  explicit one_client_server(const std::function<void(int client)>& talk) {
    EXPECT_EQ(listen(listener_.descriptor, 1), 0);
    thread_ = std::thread([this, talk] {
      const int client = accept(listener_.descriptor, nullptr, nullptr);
      talk(client);
      close(client);
    });
  }
  ~one_client_server() { thread_.join(); }
  one_client_server(const one_client_server&) = delete;
  one_client_server& operator=(const one_client_server&) = delete;

  std::uint16_t port() const { return listener_.port; }

 private:
  bound_socket listener_;
  std::thread thread_;
};

void send_all(int client, const std::string& text) {
  for (std::size_t sent = 0; sent < text.size();) {
    const ssize_t count = send(client, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

// The descriptor that the next open would get.
int next_descriptor() {
  const int descriptor = dup(STDERR_FILENO);
  close(descriptor);
  return descriptor;
}

struct fetch_result {
  std::int32_t result;
  std::string errors;
};

// Fetches into a buffer full of other bytes; the flag says the opposite of what is to come.
fetch_result fetch(std::uint16_t port, std::int32_t stale_before) {
  std::memset(report, 'x', sizeof report);
  flags.live_data_stale = stale_before;
  ::testing::internal::CaptureStderr();
  const std::int32_t result = fetch_live_data(report, "127.0.0.1", port);
  return {result, ::testing::internal::GetCapturedStderr()};
}

void expect_report(const std::string& expected, const std::function<void(int client)>& talk) {
  const one_client_server server(talk);
  const auto [result, errors] = fetch(server.port(), 1);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(errors, "");
  EXPECT_EQ(report, expected);
  EXPECT_EQ(flags.live_data_stale, 0);
}

TEST(DataServer, TakesWhatComesUntilTheServerCloses) {
  std::string text;
  for (int i = 0; i < 200; ++i) text += "actual_th" + std::to_string(i) + "_temp_c 21.5\n";
  expect_report(text, [&](int client) { send_all(client, text); });
}

TEST(DataServer, PutsAReportTogetherThatComesInPieces) {
  expect_report("actual_th0_temp_c 21.5\n", [](int client) {
    for (const char* piece : {"actual_th0", "_temp_c 2", "1.5\n"}) {
      send_all(client, piece);
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  });
}

TEST(DataServer, StopsWaitingForAServerThatKeepsTheConnection) {
  const auto start = std::chrono::steady_clock::now();
  std::chrono::duration<double> waited{};
  const std::string text(32'768, '7');  // all that one call takes: only the next one waits
  expect_report(text, [&](int client) {
    send_all(client, text);
    char byte = 0;
    EXPECT_EQ(recv(client, &byte, 1, 0), 0) << "the client sends nothing, then closes";
    waited = std::chrono::steady_clock::now() - start;
  });
  EXPECT_GE(waited.count(), 4.9);
  EXPECT_LE(waited.count(), 9);
}

TEST(DataServer, CutsAReportThatIsLongerThanTheBuffer) {
  std::string text;
  while (text.size() < 1'000'000) text += std::to_string(text.size()) + " ";
  const one_client_server server([&](int client) { send_all(client, text); });
  const auto [result, errors] = fetch(server.port(), 1);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(flags.live_data_stale, 0);
  const std::string read(report, strnlen(report, sizeof report));
  EXPECT_GT(read.size(), 467'230U);
  EXPECT_LE(read.size(), 499'998U);
  EXPECT_TRUE(text.starts_with(read));
}

TEST(DataServer, SaysThatNothingCame) {
  const one_client_server server([](int) {});
  const auto [result, errors] = fetch(server.port(), 0);
  EXPECT_EQ(result, -1);
  EXPECT_TRUE(errors.starts_with("error read socket: ")) << errors;
  EXPECT_EQ(errors.find('\n'), std::string::npos);
  EXPECT_EQ(flags.live_data_stale, 1);
}

TEST(DataServer, SaysThatNobodyListens) {
  const bound_socket nobody;
  const int descriptor = next_descriptor();
  const auto [result, errors] = fetch(nobody.port, 0);
  EXPECT_EQ(result, -1);
  EXPECT_EQ(errors,
            "error connect socket 127.0.0.1:" + std::to_string(nobody.port) + " :Connection refused\n");
  EXPECT_EQ(flags.live_data_stale, 1);
  EXPECT_EQ(next_descriptor(), descriptor) << "the socket was left open";
}

}  // namespace
}  // namespace skypost::testing
