#include "common/network_names.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "common/networks.h"
#include "status/record.h"
#include "support/golden.h"

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
  expect_cases("tools/golden/network_names", [](const std::string& name) {
    std::string named;
    for (const row_names& row : ROW_NAMES)
      if (is_row_name(name, row) || is_network_name(name, row))
        named += (named.empty() ? "" : ", ") + std::string(row.row);
    return named;
  });
}

}  // namespace
}  // namespace skypost::testing
