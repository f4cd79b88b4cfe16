#include <gtest/gtest.h>

#include "base/error_text.h"
#include "common/wget_status.h"

namespace skypost::testing {
namespace {

// For a status without a meaning, the owner would see only "no response".
TEST(WgetStatusMeaning, IsThereForEveryStatusOfAFailure) {
  for (const int status : {1, 2, 3, 4, 5, 6, 7, 8, 126, 127})
    EXPECT_NE(wget_status_meaning(status), nullptr) << status;
  for (const int status : {NO_WGET_STATUS, 0, 9, 128, 1'000'000})
    EXPECT_EQ(wget_status_meaning(status), nullptr) << status;
}

}  // namespace
}  // namespace skypost::testing
