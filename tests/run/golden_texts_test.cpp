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

// What counts as success, and the title in debug mode. What is reported instead is in sim/networks.cpp.
TEST(GoldenTexts, OfTheReplies) {
  constexpr const char* MODES[] = {"with blanks for line feeds", "in the first line", "as it is"};
  std::string texts;
  for (const upload* const what : every_upload()) {
    if (what->by != carrier::http) continue;
    const upload_spec& reply = static_cast<const http_network*>(what)->reply;
    texts += what->id + (": " + replaced(reply.debug_header, "\n", "\\n")) + ", ";
    texts += reply.success.judge != nullptr ? "judged in its own way"
                                            : reply.success.success_word + std::string(", ") +
                                                  MODES[static_cast<int>(reply.success.mode)];
    texts += '\n';
  }
  expect_golden("golden/replies", texts);
}

}  // namespace
}  // namespace skypost::testing
