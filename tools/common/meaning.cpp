#include "common/meaning.h"

#include <algorithm>
#include <iterator>

#include "common/printable.h"

namespace skypost {
namespace {

struct range_row {
  const settings_field& field;
  meant_range range;
};

constexpr meant_range SEXAGESIMAL = {0, 59, true};

// Flags that are not here take 0 and 1.
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

bool is_control(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < ' ' || byte == 0x7f;
}

// "0 or 1", "0 to 59, or -1 when it is not set"
std::string in_words(const meant_range& range) {
  return std::to_string(range.least) + (range.most == range.least + 1 ? " or " : " to ") +
         std::to_string(range.most) + (range.or_unset ? ", or -1 when it is not set" : "");
}

}  // namespace

std::optional<meant_range> meant_range_of(const settings_field& field) {
  for (const range_row& row : RANGES)
    if (row.field.offset == field.offset) return row.range;
  if (field.kind == field_kind::flag) return meant_range{0, 1};
  return std::nullopt;
}

std::string finding_of_number(const integer_field& field, const settings_record& settings,
                              const std::string& consequence) {
  const meant_range range = meant_range_of(field).value();
  const std::int64_t value = field.kind == field_kind::unsigned_integer
                                 ? std::int64_t{settings.unsigned_integer(field)}
                                 : settings.integer(field);
  if (value >= range.least && value <= range.most) return {};
  const std::string fault =
      value == UNSET_NUMBER ? "it is not set" : std::to_string(value) + " is out of range";
  return std::string(description_of(field).name) + ": " + fault + consequence + "Set it to " +
         std::to_string(range.least) + " to " + std::to_string(range.most) + '.';
}

std::string fault_of_whole(const coordinate& one, const settings_record& settings) {
  const std::int32_t most = meant_range_of(one.degrees).value().most;
  const std::int32_t minutes = settings.integer(one.minutes);
  const std::int32_t seconds = settings.integer(one.seconds);
  const std::string beyond = (minutes > 0 ? ' ' + std::to_string(minutes) + " minutes" : "") +
                             (seconds > 0 ? ' ' + std::to_string(seconds) + " seconds" : "");
  if (settings.integer(one.degrees) != most || beyond.empty()) return {};
  const std::string end = std::to_string(most) + " degrees";
  return std::string("a ") + one.name + " of " + end + beyond + " is more than " + end;
}

bool is_sensor_identifier(std::string_view text) {
  const std::string_view number = text.substr(std::min(text.find_first_of("0123456789"), text.size()));
  const std::string_view name = text.substr(0, text.size() - number.size());
  return !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos &&
         std::find(std::begin(SENSOR_CLASSES), std::end(SENSOR_CLASSES), name) != std::end(SENSOR_CLASSES);
}

std::string fault_of_number(const field_description& row, std::int64_t number) {
  const std::optional<meant_range> range = meant_range_of(row.field);
  if (!range || (number >= range->least && number <= range->most) ||
      (range->or_unset && number == UNSET_NUMBER))
    return {};
  std::string_view meaning = row.meaning;
  if (range->or_unset) meaning = meaning.substr(0, meaning.find(';'));  // which has been said
  return std::string(row.name) + " takes " + in_words(*range) + " (" + std::string(meaning) + "), not " +
         std::to_string(number);
}

std::string fault_of_text(const field_description& row, std::string_view text) {
  if (std::any_of(text.begin(), text.end(), is_control))
    return std::string(row.name) + " takes no line breaks or other control characters";
  if (row.group != std::string_view("sensors") || text.empty() || is_sensor_identifier(text)) return {};
  std::string classes;
  for (const char* const name : SENSOR_CLASSES) (classes += name) += ", ";
  return std::string(row.name) + " takes a class of sensors (" + classes.substr(0, classes.size() - 2) +
         ") and a number, or nothing (" + row.meaning + "), not " + quoted(text);
}

}  // namespace skypost
