#include "live/data_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>

#include "live/live_record.h"

namespace skypost {
namespace {

constexpr std::uint32_t READ_BUDGET = REPORT_CAPACITY - 1;  // the NUL needs the last byte
constexpr std::uint32_t CHUNK_SIZE = 32'768;
constexpr useconds_t PAUSE_AFTER_CHUNK = 100;  // microseconds

std::int64_t milliseconds_now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1'000LL + now.tv_nsec / 1'000'000;
}

// Reads the report from a connected socket. Returns its length in bytes. SO_RCVTIMEO limits a whole MSG_WAITALL
// recv(), however slowly bytes arrive, so none starts that could end after the deadline.
std::uint32_t read_report(int connection, const fetch_limits& limits, std::int64_t deadline,
                          report_buffer& report) {
  std::uint32_t length = 0;
  while (READ_BUDGET - length > CHUNK_SIZE && milliseconds_now() + limits.wait <= deadline) {
    const ssize_t received = recv(connection, report + length, CHUNK_SIZE, MSG_WAITALL);
    if (received < 0 && errno == EINTR) continue;  // the process was stopped and continued, for example
    if (received <= 0) break;
    usleep(PAUSE_AFTER_CHUNK);
    length += static_cast<std::uint32_t>(received);
  }
  report[length] = '\0';
  return length;
}

// Connects the socket and reads the report. Returns 0, or -1 after writing the reason.
int fetch_over(int connection, report_buffer& report, const char* host, std::uint16_t port, std::FILE* errors,
               const fetch_limits& limits) {
  const std::int64_t deadline = milliseconds_now() + limits.whole;
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = inet_addr(host);
  address.sin_port = htons(port);

  const timeval wait = {.tv_sec = limits.wait / 1'000, .tv_usec = limits.wait % 1'000 * 1'000};
  if (setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait) != 0 ||
      setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &wait, sizeof wait) != 0) {
    std::fprintf(errors, "error set socket options %s:%d: %s\n", host, port, std::strerror(errno));
    return -1;
  }
  int result = 0;
  do {
    result = connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  } while (result != 0 && errno == EINTR && milliseconds_now() < deadline);
  if (result != 0) {
    // When the time is up, connect() fails with EINPROGRESS, or with EALREADY if a signal has interrupted it before.
    const int reason = errno == EINPROGRESS || errno == EALREADY ? ETIMEDOUT : errno;
    std::fprintf(errors, "error connect socket %s:%d :%s\n", host, port, std::strerror(reason));
    return -1;
  }
  // recv() leaves errno alone if the server closes the connection; do not report an older error.
  errno = 0;
  if (read_report(connection, limits, deadline, report) == 0) {
    std::fprintf(errors, "error read socket: %s", std::strerror(errno));
    return -1;
  }
  return 0;
}

}  // namespace

int fetch_live_data(report_buffer& report, const char* host, std::uint16_t port, std::FILE* errors,
                    const fetch_limits& limits) {
  live_data_stale = 1;
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connection < 0) {
    std::fprintf(errors, "error make socket %s:%d: %s\n", host, port, std::strerror(errno));
    return -1;
  }
  const int result = fetch_over(connection, report, host, port, errors, limits);
  close(connection);
  if (result == 0) live_data_stale = 0;
  return result;
}

}  // namespace skypost
