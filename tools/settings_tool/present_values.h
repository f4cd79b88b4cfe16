#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/report_values.h"

namespace skypost {

// The rows of the live table that take a current number from the sensor that `setting` selects.
std::vector<const live_row*> present_values_of(const settings_field& setting);

// All rows with a number from that sensor, including totals and extremes.
std::vector<const live_row*> values_of(const settings_field& setting);

// True if the uploader reads the word as a number.
bool is_number(const live_row& row, const std::string& word);

// The sensors for which the report has the key of at least one of the rows, in the report's order.
std::vector<std::string> sensors_with_one_of(const std::vector<const live_row*>& rows,
                                             std::string_view report);

}  // namespace skypost
