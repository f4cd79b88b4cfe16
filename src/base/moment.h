#pragma once

#include <ctime>

namespace skypost {

// One instant as local time and as UTC. An upload takes all its dates from one moment, so they agree. tm_year counts from
// 1900 and tm_mon from 0.
struct moment {
  std::time_t seconds;  // since the epoch
  std::tm local;
  std::tm utc;
};

// Breaks down a time in seconds since the epoch; if the C library cannot, the fields are 0.
moment moment_at(std::time_t seconds);

moment current_moment();

}  // namespace skypost
