#include "settings_tool/present_values.h"

#include <algorithm>
#include <cstring>

#include "common/plausibility.h"
#include "live/report_parser.h"
#include "settings/record.h"

namespace skypost {
namespace {

constexpr std::string_view NOW = "actual_";
constexpr char BLANKS[] = " \t\n\v\f\r";

// The sensor in `key`; empty if the key does not match the row's pattern.
std::string_view sensor_in(std::string_view key, const live_row& row) {
  const std::string_view pattern = row.key;
  const std::size_t place = pattern.find("%s");
  std::string_view end = pattern.substr(place + 2);
  if (end.ends_with(' ')) end.remove_suffix(1);
  if (key.size() < place + end.size() || !key.starts_with(pattern.substr(0, place)) || !key.ends_with(end))
    return {};
  return key.substr(place, key.size() - end.size() - place);
}

}  // namespace

std::vector<const live_row*> values_of(const settings_field& setting) {
  std::vector<const live_row*> rows;
  for (const live_row& row : LIVE_TABLE)
    if (row.kind == value_kind::number && row.sensor.offset == setting.offset) rows.push_back(&row);
  return rows;
}

std::vector<const live_row*> present_values_of(const settings_field& setting) {
  std::vector<const live_row*> rows = values_of(setting);
  std::erase_if(rows, [](const live_row* row) { return !std::string_view(row->key).starts_with(NOW); });
  return rows;
}

bool is_number(const live_row& row, const std::string& word) {
  std::int32_t number = MISSING_VALUE;
  read_number(row.scan, word.c_str(), number);
  return known(number);
}

std::vector<std::string> sensors_with_one_of(const std::vector<const live_row*>& rows,
                                             std::string_view report) {
  std::vector<std::string> sensors;
  while (!report.empty()) {
    const std::string_view word = report.substr(0, report.find_first_of(BLANKS));
    report.remove_prefix(std::min(word.size() + 1, report.size()));
    for (const live_row* const row : rows) {
      const std::string_view sensor = sensor_in(word, *row);
      if (is_sensor_identifier(sensor) && sensor.size() < row->sensor.size &&
          std::find(sensors.begin(), sensors.end(), sensor) == sensors.end())
        sensors.emplace_back(sensor);
    }
  }
  return sensors;
}

}  // namespace skypost
