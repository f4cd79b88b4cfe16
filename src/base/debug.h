#pragma once

#include <cstdint>

namespace skypost {

// 1 in debug mode, otherwise 0. Set once, by the command line.
extern std::int32_t debug_flag;

// printf to standard error, if the debug flag is set. On a terminal, control characters except LF become "?".
[[gnu::format(printf, 1, 2)]] void debug_print(const char* format, ...);

}  // namespace skypost
