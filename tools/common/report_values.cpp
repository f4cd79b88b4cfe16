#include "common/report_values.h"

#include <cstring>

#include "base/text.h"
#include "live/report_parser.h"
#include "settings/record.h"

namespace skypost {

std::string key_of(const live_row& row) {
  fixed_text<63> key;
  key.append_pattern(row.key,
                     row.sensor == nullptr ? std::string_view{} : station_settings.text(*row.sensor));
  return std::string(key.view().substr(0, key.view().find(' ')));
}

std::optional<std::string> word_for(const live_row& row, const char* report) {
  const char* const value = find_value(report, row, station_settings);
  if (value == nullptr) return std::nullopt;
  return std::string(value, std::strcspn(value, " \t\n\v\f\r"));
}

}  // namespace skypost
