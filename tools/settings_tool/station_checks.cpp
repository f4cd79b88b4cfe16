// Checks the settings file, the report and the clock.

#include <string_view>

#include "common/field_descriptions.h"
#include "common/printable.h"
#include "settings/load.h"
#include "settings_tool/checks.h"
#include "settings_tool/present_values.h"

namespace skypost {
namespace {

constexpr char LISTED[] = "\"skypost-settings sensors\" lists them.";

// True for the three sensors without which nothing is sent.
bool is_outdoor(const settings_field& field) {
  for (const settings_field* const sensor : {&sensor_temp, &sensor_hum, &sensor_dew})
    if (field.offset == sensor->offset) return true;
  return false;
}

// The faults in the current values of a selected sensor. The report needs only one of these values, because not every
// station measures them all.
findings faults_of_values(const field_description& setting, const std::string& report) {
  findings faults;
  std::string missing;
  bool has_one = false;
  for (const live_row* const row : present_values_of(setting.field)) {
    const std::optional<std::string> word = word_for(*row, report.c_str());
    if (!word && missing.empty()) missing = key_of(*row);
    if (!word) continue;
    has_one = true;
    if (!is_number(*row, *word))
      faults.push_back("the report's " + quoted(key_of(*row)) + " is " + quoted(*word) +
                       ", which is not a number");
  }
  if (!has_one) faults.push_back("there is no " + quoted(missing) + " in the report");
  return faults;
}

void check_values(const checked_appliance& appliance, bool outdoor, findings& found) {
  if (appliance.report.empty()) return;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (row.group != std::string_view("sensors") || is_outdoor(row.field) != outdoor ||
        station_settings.text(row.as_text()).empty())
      continue;
    for (const std::string& fault : faults_of_values(row, appliance.report))
      found.push_back(std::string(row.name) + ": " + fault +
                      (outdoor ? ", so nothing at all is sent." : ", so this value is not sent.") +
                      " Check the sensor or select another: " + LISTED);
  }
}

std::string date_of(std::time_t time) {
  std::tm utc{};
  char date[40];
  gmtime_r(&time, &utc);
  return {date, std::strftime(date, sizeof date, "%Y-%m-%d %H:%M UTC", &utc)};
}

}  // namespace

void check_layout(const checked_appliance& appliance, findings& found) {
  for (const std::string& fault : faults_of_layout(appliance.file)) found.push_back(fault);
}

void check_outdoor_selection(const checked_appliance&, findings& found) {
  for (const text_field* const sensor : {&sensor_temp, &sensor_hum, &sensor_dew})
    if (station_settings.text(*sensor).empty())
      found.push_back(std::string(description_of(*sensor).name) +
                      ": no sensor is selected, so nothing at all is sent. Select one: " + LISTED);
}

void check_data_server(const checked_appliance& appliance, findings& found) {
  if (appliance.report.empty())
    found.push_back(appliance.report_fault +
                    ", so nothing at all is sent. Make sure that the appliance's data server is running.");
}

void check_outdoor_values(const checked_appliance& appliance, findings& found) {
  check_values(appliance, true, found);
}

void check_other_values(const checked_appliance& appliance, findings& found) {
  check_values(appliance, false, found);
}

void check_clock(const checked_appliance& appliance, findings& found) {
  if (appliance.now < appliance.built)
    found.push_back(
        "clock: " + date_of(appliance.now) + " is earlier than this program's build, " +
        date_of(appliance.built) +
        ", so networks get wrong times and https certificates are rejected. Set the clock, at every"
        " boot if it has no battery.");
}

}  // namespace skypost
