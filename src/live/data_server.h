#pragma once

#include <cstdint>
#include <cstdio>

namespace skypost {

inline constexpr char DATA_SERVER_HOST[] = "127.0.0.1";
inline constexpr std::uint16_t DATA_SERVER_PORT = 5558;

// The data server's report, a NUL-terminated text.
inline constexpr std::uint32_t REPORT_CAPACITY = 500'000;
using report_buffer = char[REPORT_CAPACITY];

// Time limits of a fetch, in milliseconds. Only tests change them.
struct fetch_limits {
  int wait = 5'000;    // for connect() and each recv()
  int whole = 60'000;  // from connect() to the end of the report
};
extern fetch_limits report_limits;

// Reads the report of the data server at `host` (an IPv4 address as text), which sends it unasked and closes.
// Uses what arrives within the limits. Returns 0 if anything arrived, otherwise -1 after writing the reason to
// `errors`. Sets `live_data_stale`, and clears it on success.
std::int32_t fetch_live_data(report_buffer& report, const char* host, std::uint16_t port,
                             std::FILE* errors = stderr);

}  // namespace skypost
