#pragma once

#include <optional>
#include <string>

#include "live/live_table.h"

namespace skypost {

// The row's key with the sensor from `station_settings` filled in, without a trailing space.
std::string key_of(const live_row& row);

// The source of the row's value: its key in the report, or the setting that selects its sensor if none is selected.
std::string source_of(const live_row& row);

// Stores `number`, or `text` cut to fit, as the row's value in `live`.
void fill(const live_row& row, LiveRecord& live, std::int32_t number, const char* text);

// The word after the row's key in `report`; nullopt if the key is missing.
std::optional<std::string> word_for(const live_row& row, const char* report);

}  // namespace skypost
