#pragma once

#include <string>
#include <vector>

#include "compose/outgoing.h"

namespace skypost {

// A value that is not there, by the key that the report would have it under or by the setting that selects
// no sensor, and why.
struct missing_value {
  std::string what;
  std::string reason;

  bool operator==(const missing_value&) const = default;
};

// What `what` would hand out if only it were known. `from` is made from `report` and the process's settings.
// Found by composing without each value in turn, so that it follows from the composer alone.
std::vector<missing_value> missing_values(const outgoing& what, const station& from, const char* report);

// Those of the three outdoor values without which nothing is sent that `live` lacks.
std::vector<missing_value> missing_outdoor_values(const LiveRecord& live, const char* report);

}  // namespace skypost
