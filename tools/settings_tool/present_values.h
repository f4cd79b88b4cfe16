#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "live/live_table.h"

// What a report says of a sensor now.
namespace skypost {

// The rows of the live table in which the sensor that `setting` selects gives a number of this moment.
std::vector<const live_row*> present_values_of(const settings_field& setting);

// A row's key with the sensor in it that the process's settings select, without the blank that ends some
// patterns.
std::string key_of(const live_row& row);

// The word behind that key; nothing when the report lacks it.
std::optional<std::string> word_for(const live_row& row, const std::string& report);

// True when the uploader takes that word for a number.
bool is_number(const live_row& row, const std::string& word);

// The sensors, in the report's order, for which it has the key of at least one of the rows.
std::vector<std::string> sensors_with_one_of(const std::vector<const live_row*>& rows,
                                             std::string_view report);

}  // namespace skypost
