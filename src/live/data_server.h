#pragma once

#include <cstdint>
#include <cstdio>

namespace skypost {

inline constexpr char DATA_SERVER_HOST[] = "127.0.0.1";
inline constexpr std::uint16_t DATA_SERVER_PORT = 5558;

// The data server's report, a NUL-terminated text.
inline constexpr std::uint32_t REPORT_CAPACITY = 500'000;
using report_buffer = char[REPORT_CAPACITY];

// Time limits of a fetch, in milliseconds.
struct fetch_limits {
  int wait = 5'000;    // for connect() and each recv()
  int whole = 60'000;  // from connect() to the end of the report
};

// Connects to the data server at `host` (an IPv4 address as text), which sends its report unasked and closes the
// connection, and stores what arrives within the limits. Returns 0 if anything arrived, otherwise -1 after writing
// the reason to `errors`. Sets `live_data_stale` to 1, and on success to 0. Only tests pass `limits`.
int fetch_live_data(report_buffer& report, const char* host, std::uint16_t port, std::FILE* errors = stderr,
                    const fetch_limits& limits = {});

}  // namespace skypost
