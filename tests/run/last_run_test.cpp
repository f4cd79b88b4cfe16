#include "run/last_run.h"

#include <gtest/gtest.h>

#include <optional>

#include "base/paths.h"
#include "support/appliance_folder.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

constexpr long long NOW = 1'700'000'000;

TEST(LastRun, AgeIsThatOfTheFileOrOneThatOpensTheGate) {
  struct age_case {
    std::optional<std::string> file;
    long long age;
  };
  const age_case cases[] = {
      {std::nullopt, 9999},
      {"", 9999},
      {"soon", 9999},
      {"99999999999999999999", 9999},
      {"-9223372036854775808", 9999},
      {"1699999000", 1000},
      {" \n1699999500 seconds", 500},
      {"1700000050", -50},
      {"1700000100", -100},
      {"1700000101", 1000},
      {std::string(100, ' ') + "1699999500", 9999},  // only the first 100 bytes are read
  };
  for (const age_case& row : cases) {
    SCOPED_TRACE(row.file.value_or("no file"));
    const appliance_folder appliance;
    if (row.file) appliance.write(LAST_RUN_PATH, *row.file);
    EXPECT_EQ(last_run_age(NOW), row.age);
  }
}

TEST(LastRun, IsWrittenAsADecimalNumberAlone) {
  const appliance_folder appliance;
  appliance.write(LAST_RUN_PATH, "a longer text that was there before");
  write_last_run(NOW);
  EXPECT_EQ(read_whole_file(appliance.path(LAST_RUN_PATH)), "1700000000");
}

}  // namespace
}  // namespace skypost::testing
