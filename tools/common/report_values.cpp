#include "common/report_values.h"

#include <cstring>

#include "base/text.h"
#include "common/field_descriptions.h"
#include "live/report_parser.h"
#include "settings/record.h"

namespace skypost {

std::string key_of(const live_row& row) {
  fixed_text<63> key;
  key.append_pattern(row.key, station_settings.text(row.sensor));
  return std::string(key.view().substr(0, key.view().find(' ')));
}

std::string source_of(const live_row& row) {
  if (row.has_sensor() && station_settings.text(row.sensor).empty()) return description_of(row.sensor).name;
  return key_of(row);
}

void fill(const live_row& row, LiveRecord& live, std::int32_t number, const char* text) {
  if (!row.number.is_none()) row.number.set(live, number);
  if (row.text == nullptr) return;
  live_text& place = live.*row.text;
  place[std::string_view(text).copy(place, sizeof place - 1)] = '\0';
}

std::optional<std::string> word_for(const live_row& row, const char* report) {
  const char* const value = find_value(report, row, station_settings);
  if (value == nullptr) return std::nullopt;
  return std::string(value, std::strcspn(value, " \t\n\v\f\r"));
}

}  // namespace skypost
