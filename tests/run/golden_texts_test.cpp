// Compares everything that a run can send with the texts in golden/, so a wrong unit, field or order shows.

#include <gtest/gtest.h>

#include <string>

#include "networks/networks.h"
#include "run/run_list.h"
#include "support/golden.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// A command's golden text ends with a line feed, the command does not.
std::string as_in_file(const upload& what, const LiveRecord& live) {
  settings_record settings;
  fill_settings(settings);
  return composed(what, settings, live) + (what.by == carrier::http ? "\n" : "");
}

class GoldenText : public ::testing::TestWithParam<const upload*> {};

TEST_P(GoldenText, OfAFullyEquippedStation) {
  expect_golden("golden/" + std::string(GetParam()->id) + ".full",
                as_in_file(*GetParam(), fully_equipped_station()));
}

TEST_P(GoldenText, OfAStationWithOnlyTheOutdoorValues) {
  expect_golden("golden/" + std::string(GetParam()->id) + ".sparse",
                as_in_file(*GetParam(), sparse_station()));
}

INSTANTIATE_TEST_SUITE_P(RunList, GoldenText, ::testing::ValuesIn(every_upload()),
                         [](const auto& row) { return std::string(row.param->id); });

// The success text of each network, and the failures reported without it.
TEST(GoldenTexts, OfTheReplies) {
  std::string texts;
  for (const upload* const what : every_upload()) {
    if (what->by != carrier::http) continue;
    const upload_spec& reply = static_cast<const http_network*>(what)->reply;
    constexpr const char* MODES[] = {"with blanks for line feeds", "in the first line", "as it is"};
    const std::string wanted =
        reply.success.judge != nullptr
            ? "judged in its own way"
            : reply.success.success_word + std::string(", ") + MODES[static_cast<int>(reply.success.mode)];
    texts += std::string(what->id) + "\n    debug:   " + replaced(reply.debug_header, "\n", "\\n") +
             "\n    success: " + wanted + "\n    failure: " + reply.failure_format +
             "\n    nothing: " + reply.no_response_text + '\n';
  }
  expect_golden("golden/replies", texts);
}

}  // namespace
}  // namespace skypost::testing
