#include "preview/missing_values.h"

#include <algorithm>
#include <cstring>

#include "live/live_table.h"
#include "live/report_parser.h"
#include "settings/field_descriptions.h"

namespace skypost {
namespace {

// In place of a value that is missing; any other one would do.
constexpr std::int32_t SOME_NUMBER = 1;
constexpr char SOME_TEXT[] = "x";

void put(live_text& place, std::string_view text) { place[text.copy(place, sizeof place - 1)] = '\0'; }

bool is_missing(const live_row& row, const LiveRecord& live) {
  if (row.text != nullptr) return std::strcmp(live.*row.text, row.absent_text) == 0;
  return row.number.of(live) == row.absent_number;
}

void fill(const live_row& row, LiveRecord& live) {
  if (!row.number.is_none()) row.number.set(live, SOME_NUMBER);
  if (row.text != nullptr) put(live.*row.text, SOME_TEXT);
}

void empty(const live_row& row, LiveRecord& live) {
  if (!row.number.is_none()) row.number.set(live, row.absent_number);
  if (row.text != nullptr) put(live.*row.text, row.absent_text);
}

// The key with the sensor in it, without the blank that ends some patterns.
std::string key_of(const live_row& row) {
  fixed_text<63> key;
  key.append_pattern(row.key,
                     row.sensor == nullptr ? std::string_view{} : station_settings.text(*row.sensor));
  return std::string(key.view().substr(0, key.view().find(' ')));
}

missing_value explained(const live_row& row, const char* report) {
  if (row.sensor != nullptr && station_settings.text(*row.sensor).empty())
    return {description_of(*row.sensor).name, "no sensor selected"};
  const char* const value = find_value(report, row);
  if (value == nullptr) return {key_of(row), "not in the report"};
  const std::string word(value, std::strcspn(value, " \t\r\n"));
  return {key_of(row), "\"" + word + "\" in the report"};
}

// Rows with one unselected sensor have one explanation.
void add(std::vector<missing_value>& list, missing_value value) {
  if (std::find(list.begin(), list.end(), value) == list.end()) list.push_back(std::move(value));
}

}  // namespace

std::string text_of(const outgoing& what, const station& from) {
  outgoing_text text;
  what.compose(text, from);
  return std::string(text.view());
}

std::vector<missing_value> missing_values(const outgoing& what, const station& from, const char* report) {
  LiveRecord complete = from.live;
  for (const live_row& row : LIVE_TABLE)
    if (is_missing(row, from.live)) fill(row, complete);
  const std::string full = text_of(what, {from.settings, complete, from.now, from.host});

  std::vector<missing_value> result;
  for (const live_row& row : LIVE_TABLE) {
    if (!is_missing(row, from.live)) continue;
    LiveRecord without = complete;
    empty(row, without);
    if (text_of(what, {from.settings, without, from.now, from.host}) != full)
      add(result, explained(row, report));
  }
  return result;
}

std::vector<missing_value> missing_outdoor_values(const LiveRecord& live, const char* report) {
  std::vector<missing_value> result;
  for (const live_row& row : LIVE_TABLE)
    for (const live_number& outdoor :
         {live_number(&LiveRecord::temp10), live_number(&LiveRecord::hum), live_number(&LiveRecord::dew10)})
      if (row.number == outdoor && !known(outdoor.of(live))) add(result, explained(row, report));
  return result;
}

}  // namespace skypost
