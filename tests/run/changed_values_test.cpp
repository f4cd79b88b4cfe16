// A changed value, setting, time or board may change only its own piece of an upload: networks read files by line and
// records by position.

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <string>

#include "support/golden.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// Starts as the station of the golden report.
struct test_station {
  test_station() { fill_settings(settings); }

  void change(const std::string& name, const std::string& value) {
    if (name == "time")
      now = moment_at(std::stol(value));
    else if (name == "year")
      now.local.tm_year = std::stoi(value) - 1900;
    else if (name == "minute")
      now.utc.tm_min = std::stoi(value);
    else if (name == "platform")
      platform = value;
    else if (name == "address")
      address = value;
    else
      EXPECT_TRUE(set_field(settings, name, value) || replace_value(report, name, value)) << name;
  }

  std::string text_of(const upload& what) const {
    const LiveRecord live = parsed(report);
    upload_text text;
    what.compose(text,
                 {settings, live, now, {platform.empty() ? nullptr : platform.c_str(), address.c_str()}});
    return text.c_str();
  }

  settings_record settings{};
  std::string report = full_report();
  moment now = spring_morning();
  std::string platform;
  std::string address = ORDINARY_BOARD.hardware_address;
};

// The part in which two texts differ, from separator to separator.
std::string difference(const std::string& before, const std::string& after) {
  if (before == after) return "";
  constexpr char SEPARATORS[] = "&;\r\n";
  const auto first = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first;
  const auto last = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend()).first.base();
  const std::size_t begin =
      before.find_last_of(SEPARATORS, static_cast<std::size_t>(first - before.begin()) - 1) + 1;
  const std::size_t rest =
      before.size() -
      std::min(before.find_first_of(SEPARATORS, static_cast<std::size_t>(last - before.begin())),
               before.size());
  const auto piece_of = [&](const std::string& text) {
    return replaced(text.substr(begin, text.size() - rest - begin), "\n", "\\n");
  };
  return piece_of(before) + " -> " + piece_of(after);
}

// Each case is an upload and the changes: values of the report, settings, the time or the board. Its result is the
// difference, if there is any.
TEST(ChangedValues, ChangeTheirPieceAndNothingElse) {
  const auto all = every_upload();
  const test_station unchanged;
  expect_cases("run/golden/changed_values", [&](const std::string& one) -> std::string {
    std::istringstream words(one);
    test_station changed;
    std::string id, name, value;
    words >> id;
    while (words >> name >> std::quoted(value))
      changed.change(name, replaced(replaced(value, "\\r", "\r"), "\\n", "\n"));
    const auto what = std::find_if(all.begin(), all.end(), [&](const upload* row) { return row->id == id; });
    if (what == all.end()) return "no such upload";
    return difference(unchanged.text_of(**what), changed.text_of(**what));
  });
}

}  // namespace
}  // namespace skypost::testing
