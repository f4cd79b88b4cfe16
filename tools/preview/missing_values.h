#pragma once

#include <string>
#include <vector>

#include "compose/upload.h"

namespace skypost {

// A missing value: its key in the report, or the setting that selects no sensor; and why.
struct missing_value {
  std::string name;
  std::string reason;

  bool operator==(const missing_value&) const = default;
};

// What would be sent if it were known. `source` is made from `report` and the process's settings. Derived from the
// composer alone, by composing without each value in turn.
std::vector<missing_value> missing_values(const upload& upload, const station& source, const char* report);

// Which mandatory outdoor values are missing from `live`.
std::vector<missing_value> missing_outdoor_values(const LiveRecord& live, const char* report);

}  // namespace skypost
