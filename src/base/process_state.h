#pragma once

#include <cstdint>

#include "base/text.h"

namespace skypost {

// The run's flags, 0 or 1. The command line sets the first two, once. While
// `live_data_stale` is 1 nobody may send the live record: the data server client sets it before every
// fetch and clears it after a good one, the parser sets it again when an outdoor value is missing.
struct run_flags {
  std::int32_t rapid_fire_flag;
  std::int32_t debug_flag;
  std::int32_t live_data_stale;
};
extern run_flags flags;

inline constexpr std::size_t ERROR_TEXT_CAPACITY = 10'000;

// Why the last failing network failed, for report_failure to read. Each rapid-fire pass empties it.
extern text_buffer error_text;

// The hardware address of eth0, as 00:1A:2B:3C:4D:5E; empty when unknown. Written once at start-up.
extern text_buffer hardware_address;

// Writes a formatted text to standard error when the debug flag is set.
[[gnu::format(printf, 1, 2)]] void debug_print(const char* format, ...);

}  // namespace skypost
