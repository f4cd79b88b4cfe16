#pragma once

#include <optional>
#include <string>

#include "live/live_table.h"

namespace skypost {

// A row's key with the sensor in it that the process's settings select, without the blank that ends some
// patterns.
std::string key_of(const live_row& row);

// The word after that key; nothing when the report lacks it.
std::optional<std::string> word_for(const live_row& row, const char* report);

}  // namespace skypost
