#include "common/plausibility.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "common/printable.h"

namespace skypost {
namespace {

constexpr std::int32_t UNSET_NUMBER = -1;
constexpr char WRONG_POSITION[] = ", so a wrong position is sent. ";

struct plausible_range {
  std::int32_t least;
  std::int32_t most;
  bool or_unset = false;
};

struct range_row {
  const settings_field& field;
  plausible_range range;
};

constexpr plausible_range SEXAGESIMAL = {0, 59, true};

// A flag that is not listed must be 0 or 1.
constexpr range_row RANGES[] = {
    // clang-format off
    {longitude_degrees, {0, 180, true}},
    {longitude_minutes, SEXAGESIMAL},
    {longitude_seconds, SEXAGESIMAL},
    {longitude_west,    {0, 1}},
    {latitude_degrees,  {0, 90, true}},
    {latitude_minutes,  SEXAGESIMAL},
    {latitude_seconds,  SEXAGESIMAL},
    {latitude_south,    {0, 1}},
    {idokep_enabled,    {0, 2}},
    {aprs_port,         {1, 65'535}},
    // clang-format on
};

constexpr const char* SENSOR_CLASSES[] = {"t", "th", "thb", "wind", "rain", "uv", "sol", "data"};

std::optional<plausible_range> range_of(const settings_field& field) {
  for (const range_row& row : RANGES)
    if (row.field.offset == field.offset) return row.range;
  if (field.kind == field_kind::flag) return plausible_range{0, 1};
  return std::nullopt;
}

bool is_control(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < ' ' || byte == 0x7f;
}

// "0 or 1", "0 to 59"
std::string in_words(const plausible_range& range) {
  return std::to_string(range.least) + (range.most == range.least + 1 ? " or " : " to ") +
         std::to_string(range.most);
}

std::string rest_goes_into(const settings_field& smaller) {
  return std::string("; the rest goes into ") + description_of(smaller).name;
}

// The finding about a number that is unset or out of range, otherwise empty.
std::string finding_of_number(const integer_field& field, const settings_record& settings,
                              const std::string& consequence) {
  const plausible_range range = range_of(field).value();
  const std::int64_t value = field.kind == field_kind::unsigned_integer
                                 ? std::int64_t{settings.unsigned_integer(field)}
                                 : settings.integer(field);
  if (value >= range.least && value <= range.most) return {};
  const std::string fault =
      value == UNSET_NUMBER ? "it is not set" : std::to_string(value) + " is out of range";
  return std::string(description_of(field).name) + ": " + fault + consequence + "Set it to " +
         in_words(range) + '.';
}

void check_coordinate(const coordinate& one, const settings_record& settings,
                      std::vector<std::string>& found) {
  const std::string degrees = description_of(one.degrees).name;
  if (settings.integer(one.degrees) == UNSET_NUMBER) {
    found.push_back(degrees + ": the " + one.name +
                    " is not set, so no valid position is sent. Set it in degrees, minutes and seconds.");
    return;
  }
  const std::size_t found_before = found.size();
  for (const integer_field* const part : {&one.degrees, &one.minutes, &one.seconds})
    if (const std::string finding = finding_of_number(*part, settings, WRONG_POSITION); !finding.empty())
      found.push_back(finding);
  if (found.size() != found_before) return;
  if (const std::string fault = fault_of_coordinate(one, settings); !fault.empty())
    found.push_back(degrees + ": " + fault + WRONG_POSITION + "Correct it.");
}

bool is_zero(const coordinate& one, const settings_record& settings) {
  return settings.integer(one.degrees) == 0 && settings.integer(one.minutes) == 0 &&
         settings.integer(one.seconds) == 0;
}

}  // namespace

std::string fault_of_digits(const field_description& row, std::string_view text) {
  const std::optional<plausible_range> range = range_of(row.field);
  std::string wanted = range ? in_words(*range) : "a whole number";
  std::string rest;
  for (const coordinate& one : POSITION) {
    if (row.field.offset == one.degrees.offset) {
      wanted = "whole degrees";
      rest = rest_goes_into(one.minutes);
    } else if (row.field.offset == one.minutes.offset) {
      wanted = "whole minutes";
      rest = rest_goes_into(one.seconds);
    } else if (row.field.offset == one.seconds.offset) {
      wanted = "whole seconds";
    }
  }
  return std::string(row.name) + " must be " + wanted +
         (row.field.is_secret() ? "" : ", not " + quoted(text)) + rest;
}

std::string fault_of_number(const field_description& row, std::int64_t number) {
  const std::optional<plausible_range> range = range_of(row.field);
  if (!range || (number >= range->least && number <= range->most) ||
      (range->or_unset && number == UNSET_NUMBER))
    return {};
  std::string_view meaning = row.meaning;
  if (range->or_unset) meaning = meaning.substr(0, meaning.find(';'));  // the rest explains -1
  return std::string(row.name) + " must be " + in_words(*range) +
         (range->or_unset ? ", or -1 for not set" : "") + " (" + std::string(meaning) + "), not " +
         std::to_string(number);
}

std::string fault_of_text(const field_description& row, std::string_view text) {
  if (std::any_of(text.begin(), text.end(), is_control))
    return std::string(row.name) + " must not contain line breaks or other control characters";
  if (row.group != std::string_view("sensors") || text.empty() || is_sensor_identifier(text)) return {};
  std::string classes;
  for (const char* const name : SENSOR_CLASSES) (classes += classes.empty() ? "" : ", ") += name;
  return std::string(row.name) + " must be a class of sensors (" + classes + ") and a number, or empty (" +
         row.meaning + "), not " + quoted(text);
}

bool is_sensor_identifier(std::string_view text) {
  const std::string_view number = text.substr(std::min(text.find_first_of("0123456789"), text.size()));
  const std::string_view name = text.substr(0, text.size() - number.size());
  return !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos &&
         std::find(std::begin(SENSOR_CLASSES), std::end(SENSOR_CLASSES), name) != std::end(SENSOR_CLASSES);
}

std::string fault_of_coordinate(const coordinate& one, const settings_record& settings) {
  const std::int32_t most = range_of(one.degrees).value().most;
  const std::int32_t minutes = settings.integer(one.minutes);
  const std::int32_t seconds = settings.integer(one.seconds);
  const std::string beyond = (minutes > 0 ? ' ' + std::to_string(minutes) + " minutes" : "") +
                             (seconds > 0 ? ' ' + std::to_string(seconds) + " seconds" : "");
  if (settings.integer(one.degrees) != most || beyond.empty()) return {};
  const std::string end = std::to_string(most) + " degrees";
  return std::string("a ") + one.name + " of " + end + beyond + " is more than " + end;
}

std::vector<std::string> faults_of_position(const settings_record& settings) {
  std::vector<std::string> found;
  for (const coordinate& one : POSITION) check_coordinate(one, settings, found);
  if (is_zero(POSITION[0], settings) && is_zero(POSITION[1], settings))
    found.push_back(std::string(description_of(latitude_degrees).name) +
                    ": latitude and longitude are 0, which is in the Atlantic" + WRONG_POSITION +
                    "Set both.");
  return found;
}

std::string fault_of_port(const settings_record& settings) {
  return finding_of_number(aprs_port, settings, ", so the server of APRS is not reached. ");
}

std::string fault_of_site_id(const field_description& row, std::string_view text) {
  if (row.field.offset != metoffice_site_id.offset || text.size() + 1 < metoffice_site_id.size) return {};
  return "site IDs given since June 2016 have 36 characters and do not fit; the Belgian successor of Met "
         "Office WOW takes Weather Underground's protocol: see skypost-endpoints(5)";
}

}  // namespace skypost
