// The alarm script must get its arguments unchanged, whatever characters they contain.

#include "run/failure.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "base/error_text.h"
#include "sim/appliance.h"

namespace skypost::testing {
namespace {

TEST(ReportFailure, PassesThreeUnalteredArguments) {
  const sim::appliance board;
  setenv("SKYPOST_ROOT", board.root().c_str(), 1);
  std::string all_bytes;
  for (int byte = 1; byte < 256; ++byte) all_bytes += static_cast<char>(byte);
  std::vector<std::string> texts = {"", all_bytes, std::string(10'000, '"')};
  for (std::size_t length = 1; length <= 128; ++length)
    for (const char* const foreign : {"$(touch x)", "\";`id`\\", "'\n&|<>*"})
      texts.push_back((std::string(length, '.') + foreign).substr(length % 10, length));
  for (const std::string& text : texts) {
    board.forget_alarms();
    error_text.clear();
    error_text.append_text(text);
    report_failure("weather `under` $(ground)");
    const std::vector<sim::alarm_call> expected = {{"skypost", "weather `under` $(ground)", text}};
    EXPECT_EQ(board.alarms(), expected);
  }
  unsetenv("SKYPOST_ROOT");
}

}  // namespace
}  // namespace skypost::testing
