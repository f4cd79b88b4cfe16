#pragma once

#include <optional>
#include <string>

#include "live/live_table.h"

namespace skypost {

// The row's key with the sensor that the process's settings select, without a trailing space.
std::string key_of(const live_row& row);

// Where the owner finds the row's value: its key or, if no sensor is selected for it, the setting that would select one.
std::string source_of(const live_row& row);

// Puts a number, or a text, which may be cut to fit, where the row's value goes.
void fill(const live_row& row, LiveRecord& live, std::int32_t number, const char* text);

// The word after that key; nothing if the key is missing from the report.
std::optional<std::string> word_for(const live_row& row, const char* report);

}  // namespace skypost
