#include <algorithm>
#include <iterator>
#include <ostream>

#include "common/errors.h"
#include "common/field_descriptions.h"
#include "common/printable.h"
#include "common/report_source.h"
#include "settings/record.h"
#include "settings_tool/commands.h"
#include "settings_tool/present_values.h"

namespace skypost {
namespace {

// A setting that selects a sensor, and the values that it supplies.
struct sensor_role {
  const field_description& setting;
  std::vector<const live_row*> values;

  // True if the same sensors fit both settings.
  bool takes_the_same_as(const sensor_role& other) const {
    return std::equal(
        values.begin(), values.end(), other.values.begin(), other.values.end(),
        [](const live_row* one, const live_row* two) { return std::string_view(one->key) == two->key; });
  }
};

std::vector<sensor_role> sensor_roles() {
  std::vector<sensor_role> roles;
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.group == std::string_view("sensors")) roles.push_back({row, present_values_of(row.field)});
  return roles;
}

// "temp_c" for the key "actual_th0_temp_c"
std::string quantity_of(const std::string& key, const std::string& sensor) {
  return key.substr(key.find(sensor) + sensor.size() + 1);
}

// Prints a sensor with the values that the uploader would read, and leaves it selected.
void print_sensor(std::ostream& out, const sensor_role& role, const std::string& sensor,
                  const std::string& report) {
  constexpr std::size_t WIDTH = 8;  // of the longest name and a space
  station_settings.set_text(role.setting.as_text(), sensor);
  out << "  " << sensor << std::string(WIDTH - sensor.size(), ' ');
  const char* separator = "";
  for (const live_row* const row : role.values) {
    const std::optional<std::string> word = word_for(*row, report.c_str());
    if (!word) continue;
    out << separator << quantity_of(key_of(*row), sensor) << ' '
        << (is_number(*row, *word) ? printable(*word) : quoted(*word) + " (not a number)");
    separator = ", ";
  }
  if (*separator == '\0') out << "(no present value)";
  out << '\n';
}

}  // namespace

int run_sensors(const words& all_arguments, std::ostream& out) {
  words arguments = all_arguments;
  const std::optional<std::string> report_path = take_file_option(arguments, "--report");
  if (!operands(arguments).empty()) throw usage_error("sensors takes no arguments");
  const std::string report = report_path ? read_report(*report_path) : fetch_report();

  const std::vector<sensor_role> roles = sensor_roles();
  for (auto role = roles.begin(); role != roles.end(); ++role) {
    out << role->setting.name << ": " << role->setting.meaning << '\n';
    // Roles with the same sensors share one list, printed after the last role.
    if (std::next(role) != roles.end() && role->takes_the_same_as(*std::next(role))) continue;
    const std::vector<std::string> sensors = sensors_with_one_of(values_of(role->setting.field), report);
    if (sensors.empty()) out << "  none in this report\n";
    for (const std::string& sensor : sensors) print_sensor(out, *role, sensor, report);
  }
  return 0;
}

}  // namespace skypost
