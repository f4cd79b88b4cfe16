#pragma once

#include <optional>
#include <string>

#include "live/live_table.h"

namespace skypost {

// The row's key with the sensor that the process's settings select, without a trailing space.
std::string key_of(const live_row& row);

// The word after that key; nothing if the key is missing from the report.
std::optional<std::string> word_for(const live_row& row, const char* report);

}  // namespace skypost
