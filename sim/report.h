#pragma once

#include <ctime>
#include <string>

namespace skypost::sim {

// The report of a station with twenty-odd sensors at `now`, on a spring day: about 3,000 keys, with every period and
// class of sensor. The day's extremes lie between midnight and `now`, local time.
std::string lifelike_report(std::time_t now);

}  // namespace skypost::sim
