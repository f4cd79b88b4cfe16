#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/field_descriptions.h"
#include "settings/record.h"

// Checks whether the values of settings make sense. Faults are texts for the owner, empty if there is none.
namespace skypost {

// The fault of a text that is not a number: "cwop_enabled must be 0 or 1, not "yes"". Does not quote a secret.
std::string fault_of_digits(const field_description& row, std::string_view text);

// What the setting must be instead of an implausible number or text.
std::string fault_of_number(const field_description& row, std::int64_t number);
std::string fault_of_text(const field_description& row, std::string_view text);

// True if the text names a sensor as reports do, by class and number: "th0".
bool is_sensor_identifier(std::string_view text);

struct coordinate {
  const char* name;
  const integer_field& degrees;
  const integer_field& minutes;
  const integer_field& seconds;
};

inline constexpr coordinate POSITION[] = {
    {"latitude", latitude_degrees, latitude_minutes, latitude_seconds},
    {"longitude", longitude_degrees, longitude_minutes, longitude_seconds},
};

// The fault of a coordinate whose parts are each in range: "a latitude of 90 degrees 59 minutes is more than
// 90 degrees".
std::string fault_of_coordinate(const coordinate& one, const settings_record& settings);

// The faults that send a wrong position, or none. Each line names the setting, the fault and the remedy.
std::vector<std::string> faults_of_position(const settings_record& settings);

// Such a line if aprs_port is impossible.
std::string fault_of_port(const settings_record& settings);

// The fault of a site ID of Met Office WOW that does not fit, or not whole; empty if it may be whole.
std::string fault_of_site_id(const field_description& row, std::string_view text);

}  // namespace skypost
