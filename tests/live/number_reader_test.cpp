#include "live/number_reader.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <map>
#include <sstream>
#include <string>

#include "support/golden.h"

namespace skypost::testing {
namespace {

// Each line of the golden text has the kind of scan, then texts and their numbers.
TEST(NumberReader, ReadsNumbersAndNothingElse) {
  constexpr std::int32_t UNTOUCHED = -77;
  const std::map<std::string, number_scan> forms = {{"tenths", number_scan::tenths},
                                                    {"integer", number_scan::integer},
                                                    {"integer_tenths", number_scan::integer_tenths},
                                                    {"rounded", number_scan::rounded}};
  std::istringstream lines(read_whole_file(TESTS_DIRECTORY "/live/golden/numbers"));
  std::ostringstream found;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string form, text, number;
    words >> form;
    found << form;
    while (words >> std::quoted(text) >> number) {
      std::int32_t value = UNTOUCHED;
      read_number(forms.at(form), text.c_str(), value);
      found << ' ' << std::quoted(text) << ' ' << (value == UNTOUCHED ? "none" : std::to_string(value))
            << ';';
    }
    found << '\n';
  }
  expect_golden("live/golden/numbers", found.str());
}

}  // namespace
}  // namespace skypost::testing
