#include "preview/missing_values.h"

#include <algorithm>
#include <cstring>

#include "common/composing.h"
#include "common/printable.h"
#include "common/report_values.h"

namespace skypost {
namespace {

// Stand-ins for missing values; any would do.
constexpr std::int32_t SOME_NUMBER = 1;
constexpr char SOME_TEXT[] = "x";

bool is_missing(const live_row& row, const LiveRecord& live) {
  if (row.text != nullptr) return std::strcmp(live.*row.text, row.missing_text) == 0;
  return row.number.of(live) == row.missing_number;
}

missing_value explained(const live_row& row, const char* report) {
  if (row.has_sensor() && station_settings.text(row.sensor).empty())
    return {source_of(row), "no sensor selected"};
  const std::optional<std::string> word = word_for(row, report);
  return {source_of(row), word ? quoted(*word) + " in the report" : "not in the report"};
}

// Rows of the same unselected sensor share one explanation.
void add(std::vector<missing_value>& list, missing_value value) {
  if (std::find(list.begin(), list.end(), value) == list.end()) list.push_back(std::move(value));
}

}  // namespace

std::vector<missing_value> missing_values(const upload& upload, const station& source, const char* report) {
  LiveRecord complete = source.live;
  for (const live_row& row : LIVE_TABLE)
    if (is_missing(row, source.live)) fill(row, complete, SOME_NUMBER, SOME_TEXT);
  const std::string full = text_of(upload, {source.settings, complete, source.now, source.host});

  std::vector<missing_value> result;
  for (const live_row& row : LIVE_TABLE) {
    if (!is_missing(row, source.live)) continue;
    LiveRecord without = complete;
    fill(row, without, row.missing_number, row.missing_text);
    if (text_of(upload, {source.settings, without, source.now, source.host}) != full)
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
