#include "live/data_server.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "live/live_record.h"
#include "sim/tcp_server.h"

namespace skypost::testing {
namespace {

// Ctrl-Z and fg, or a debugger, interrupt a system call that has a time limit. So does this signal.
void catch_signal() {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGUSR1, &action, nullptr);
}

// Fetches a report into a buffer full of other bytes, from a server that sends it in pieces; a signal comes before each.
std::string fetched(const std::vector<std::string>& pieces) {
  catch_signal();
  const sim::tcp_server server(0, "data server",
                               [&, fetching = pthread_self()](const sim::connection& client) {
                                 for (const std::string& piece : pieces) {
                                   std::this_thread::sleep_for(std::chrono::milliseconds(30));
                                   pthread_kill(fetching, SIGUSR1);
                                   std::this_thread::sleep_for(std::chrono::milliseconds(30));
                                   client.write(piece);
                                 }
                               });
  static report_buffer report;
  std::memset(report, 'x', sizeof report);
  live_data_stale = 1;
  EXPECT_EQ(fetch_live_data(report, "127.0.0.1", server.port()), 0);
  EXPECT_EQ(live_data_stale, 0);
  return {report, strnlen(report, sizeof report)};
}

TEST(DataServer, JoinsAReportThatComesInPiecesAndGoesOnAfterASignal) {
  const std::string long_piece(40'000, '7');
  EXPECT_EQ(fetched({"actual_th0", "_temp_c 2", "1.5\n", long_piece}),
            "actual_th0_temp_c 21.5\n" + long_piece);
}

TEST(DataServer, TruncatesAReportLongerThanTheBuffer) {
  std::string text;
  while (text.size() < 1'000'000) text += std::to_string(text.size()) + " ";
  const std::string report = fetched({text});
  EXPECT_GT(report.size(), 467'230U);
  EXPECT_LE(report.size(), 499'998U);
  EXPECT_TRUE(text.starts_with(report));
}

// A server that never accepts must cost the limit, not the system's two minutes, and leave the record stale.
TEST(DataServer, IsGivenUpIfItsQueueIsFull) {
  const sim::full_server server;
  static report_buffer report;
  ::testing::internal::CaptureStderr();
  live_data_stale = 0;
  catch_signal();
  std::thread interrupting([connecting = pthread_self()] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    pthread_kill(connecting, SIGUSR1);
  });
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(fetch_live_data(report, "127.0.0.1", server.port(), stderr, {.wait = 500}), -1);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  interrupting.join();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "error connect socket 127.0.0.1:" + std::to_string(server.port()) + " :Connection timed out\n");
  EXPECT_EQ(live_data_stale, 1);
}

}  // namespace
}  // namespace skypost::testing
