#include "common/network_names.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "common/networks.h"
#include "status/record.h"

namespace skypost::testing {
namespace {

// The upload's constant is spelt like its id, or a name of one of them would not be understood.
TEST(NetworkNames, UnderstandTheNamesOfEveryRow) {
  ASSERT_EQ(std::size(ROW_NAMES), STATUS_RECORDS - FIRST_STEP_RECORD);
  for (std::size_t row = 0; row < std::size(ROW_NAMES); ++row)
    EXPECT_TRUE(is_row_name(RECORD_NAMES[FIRST_STEP_RECORD + row], ROW_NAMES[row])) << ROW_NAMES[row].row;
  for (const handed_out& one : all_handed_out()) {
    EXPECT_TRUE(is_row_name(one.upload.id, one.names)) << one.upload.id;
    EXPECT_TRUE(is_network_name(network_of(one.step), one.names)) << one.upload.id;
  }
}

TEST(NetworkNames, AreThoseThatAnOwnerWrites) {
  const struct {
    const char* name;
    const char* rows;
  } CASES[] = {
      // clang-format off
      {"awekas",                         "awekas-pull, awekas-push, "},
      {"Awekas PUSH",                    "awekas-push, "},
      {"weather4u",                      "HAMweather/weather4u, "},
      {"hamweather",                     "HAMweather/weather4u, "},
      {"pwsweather",                     "HAMweather/weather4u, "},
      {"sh_netz",                        "SH-Netz, "},
      {"regiowetter",                    "regiowetter, "},
      {"wow",                            ""},
      {"met office-WOW",                 "metoffice, "},
      {"wunderground",                   "weather underground, weather underground rapid fire, "},
      {"weather underground rapid fire", "weather underground rapid fire, "},
      {"wunderground-rapid",             "weather underground rapid fire, "},
      {"windit rapid fire",              "windit rapid fire, "},
      {"",                               ""},
      {"/",                              ""},
      {"skypost",                        ""},
      // clang-format on
  };
  for (const auto& [name, rows] : CASES) {
    std::string named;
    for (const row_names& row : ROW_NAMES)
      if (is_row_name(name, row) || is_network_name(name, row)) named += std::string(row.row) + ", ";
    EXPECT_EQ(named, rows) << name;
  }
}

}  // namespace
}  // namespace skypost::testing
