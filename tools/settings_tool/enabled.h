#pragma once

#include <string>
#include <vector>

#include "common/networks.h"
#include "live/station.h"

// The run list under `station_settings`.
namespace skypost {

// The uploads that a run or rapid fire would make, in order.
std::vector<handed_out> enabled_uploads();

// The networks of the enabled uploads for which `has` is true: "AWEKAS, Wedaal". Empty if there are none.
template <typename condition>
std::string networks_where(condition has) {
  std::string names;
  std::string last;
  for (const handed_out& one : enabled_uploads())
    if (network_of(one.step) != last && has(one))
      names += (names.empty() ? "" : ", ") + (last = network_of(one.step));
  return names;
}

// The networks of the enabled uploads with this carrier.
std::string networks_by(carrier carried_by);

// This station with all values missing.
station station_without_values(const char* address = "");

}  // namespace skypost
