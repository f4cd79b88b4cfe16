#include "common/request_parts.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace skypost::testing {
namespace {

// All parts in one text.
std::string in_one_text(const request_parts& parts) {
  std::string text = parts.method + ' ' + parts.server + ' ' + parts.path;
  for (const request_parameter& part : parts.login) text += " [" + part.name + ':' + part.value() + ']';
  for (const request_parameter& parameter : parts.parameters) {
    text += " <" + parameter.name;
    for (const std::string& field : parameter.fields) text += '|' + field;
    text += '>';
  }
  return text;
}

TEST(RequestParts, AreWhatTheNetworkReads) {
  expect_cases("tools/golden/request_parts",
               [](const std::string& command) { return in_one_text(take_apart(command)); });
}

}  // namespace
}  // namespace skypost::testing
