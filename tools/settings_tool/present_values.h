#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/report_values.h"

// What a report says of a sensor now.
namespace skypost {

// The rows of the live table in which the sensor that `setting` selects gives a number of this moment.
std::vector<const live_row*> present_values_of(const settings_field& setting);

// All of its rows, the totals and extremes too.
std::vector<const live_row*> values_of(const settings_field& setting);

// True when the uploader takes that word for a number.
bool is_number(const live_row& row, const std::string& word);

// The sensors, in the report's order, for which it has the key of at least one of the rows.
std::vector<std::string> sensors_with_one_of(const std::vector<const live_row*>& rows,
                                             std::string_view report);

}  // namespace skypost
