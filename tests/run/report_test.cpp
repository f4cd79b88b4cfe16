// The alarm script is given exactly what failed and why, whatever characters that holds.

#include "run/report.h"

#include <gtest/gtest.h>

#include <string>

#include "base/process_state.h"
#include "support/appliance_folder.h"

namespace skypost::testing {
namespace {

std::string script_arguments_for(const std::string& name, const std::string& text) {
  const appliance_folder appliance;
  appliance.write_alarm_script();
  error_text.clear();
  error_text.append_text(text);
  report_failure(name.c_str());
  return appliance.alarms();
}

TEST(ReportFailure, PassesThreeUnalteredArguments) {
  std::string all_bytes;
  for (int byte = 1; byte < 256; ++byte) all_bytes += static_cast<char>(byte);
  const std::string texts[] = {
      "",        "upload to awekas: ERROR", "say \"no\" & run $(touch /tmp/x) or `id`; \\\" '\n last line",
      all_bytes, std::string(10'000, '"'),  std::string(10'000, 'x'),
  };
  for (const std::string& text : texts) {
    const std::string expected = std::string("skypost") + '\0' + "awekas-push" + '\0' + text + '\0';
    EXPECT_EQ(script_arguments_for("awekas-push", text), expected);
  }
}

TEST(ReportFailure, SurvivesAMissingScript) {
  const appliance_folder appliance;
  report_failure("windfinder");
  EXPECT_EQ(appliance.alarms(), "");
}

}  // namespace
}  // namespace skypost::testing
