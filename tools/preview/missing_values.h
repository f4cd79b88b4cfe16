#pragma once

#include <string>
#include <vector>

#include "compose/upload.h"

namespace skypost {

// A missing value. The name is its key in the report, or the setting that selects no sensor for it.
struct missing_value {
  std::string name;
  std::string reason;

  bool operator==(const missing_value&) const = default;
};

// Returns the missing values that the upload would send. `source` must be made from `report` and `station_settings`.
std::vector<missing_value> missing_values(const upload& upload, const station& source, const char* report);

// Returns the mandatory outdoor values that are missing from `live`.
std::vector<missing_value> missing_outdoor_values(const LiveRecord& live, const char* report);

}  // namespace skypost
