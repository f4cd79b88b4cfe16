#pragma once

#include <ctime>

namespace skypost {

// One instant, broken down once as local time and once as UTC, so that every date in one upload
// tells the same time. `tm_year` and `tm_mon` count as the C library does: from 1900 and from 0.
struct moment {
  std::time_t seconds;  // since the epoch
  std::tm local;
  std::tm utc;
};

// Breaks `seconds` since the epoch down. Fields that the C library cannot fill are 0.
moment moment_at(std::time_t seconds);

// The moment of the call.
moment current_moment();

}  // namespace skypost
