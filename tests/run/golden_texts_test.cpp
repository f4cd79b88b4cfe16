// Everything that a run can hand out, byte for byte, against the texts in golden/. A wrong unit, a value from
// the wrong field or one out of its order shows as a difference there.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "run/run_list.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// A command ends without a line feed; its file does not.
std::string as_in_file(const outgoing& what, const LiveRecord& live) {
  settings_record settings;
  fill_settings(settings);
  return composed(what, settings, live) + (what.by == carrier::http ? "\n" : "");
}

// Compares with the golden text. Where there is none, the text is left in a file of that name: once it has been
// checked against the network's own description, it belongs in golden/.
void expect_golden(const outgoing& what, const std::string& station, const LiveRecord& live) {
  const std::string name = std::string(what.id) + '.' + station;
  const std::string text = as_in_file(what, live);
  if (!std::filesystem::exists(TESTS_DIRECTORY "/golden/" + name)) {
    std::ofstream(::testing::TempDir() + name, std::ios::binary) << text;
    FAIL() << "tests/golden/" << name << " is missing; what would be in it: " << ::testing::TempDir() << name;
  }
  EXPECT_EQ(text, read_whole_file(TESTS_DIRECTORY "/golden/" + name));
}

class GoldenText : public ::testing::TestWithParam<const outgoing*> {};

TEST_P(GoldenText, OfAFullyEquippedStation) { expect_golden(*GetParam(), "full", fully_equipped_station()); }

TEST_P(GoldenText, OfAStationWithOnlyTheOutdoorValues) {
  expect_golden(*GetParam(), "sparse", sparse_station());
}

INSTANTIATE_TEST_SUITE_P(RunList, GoldenText, ::testing::ValuesIn(everything_handed_out()),
                         [](const auto& row) { return std::string(row.param->id); });

// The name of a golden text, of a preview, of a test.
TEST(RunList, GivesEachTextAnIdOfItsOwn) {
  std::set<std::string> ids;
  for (const outgoing* const what : everything_handed_out()) {
    EXPECT_TRUE(ids.insert(what->id).second) << what->id;
    EXPECT_EQ(std::string_view(what->id).find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"),
              std::string_view::npos)
        << what->id;
  }
}

}  // namespace
}  // namespace skypost::testing
