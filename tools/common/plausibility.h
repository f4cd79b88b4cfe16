#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/field_descriptions.h"
#include "run/run_list.h"

// Which of the values that a setting can hold make sense. Faults are texts for the owner, empty if there is none.
namespace skypost {

// What a text that is not a number must be instead: "cwop_enabled must be 0 or 1, not "yes"", or without `text`, since a
// secret is not repeated.
std::string fault_of_digits(const field_description& row, std::string_view text);

// What the setting must be instead of this number or text.
std::string fault_of_number(const field_description& row, std::int64_t number);
std::string fault_of_text(const field_description& row, std::string_view text);

// True for a sensor as reports name it, a class and a number: "th0".
bool is_sensor_identifier(std::string_view text);

// Half of the position.
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

// Why a coordinate whose parts are all plausible is not: "a latitude of 90 degrees 59 minutes is more than
// 90 degrees".
std::string fault_of_coordinate(const coordinate& one, const settings_record& settings);

// Why `networks` ("CWOP, APRS") get a wrong position, or none. Each is a line: the setting, what is wrong with it,
// and what to do.
std::vector<std::string> faults_of_position(const settings_record& settings, const std::string& networks);

// The same for an impossible aprs_port. CWOP's port is fixed.
std::string fault_of_port(const run_step& step, const settings_record& settings);

// The setting with the call sign of an APRS step, if it contains a line break, so that nothing is sent; otherwise
// nullptr.
const text_field* broken_call_sign(const run_step& step, const settings_record& settings);

}  // namespace skypost
