#include "settings/defaults.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "base/text.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

constexpr unsigned char OLD = 0x5a;

// Lines of an offset and up to 16 changed bytes in hexadecimal.
std::string changed_bytes(const settings_record& record) {
  std::string text;
  for (std::uint32_t i = 0; i < SETTINGS_SIZE; ++i) {
    if (record.bytes[i] == OLD) continue;
    fixed_text<20> piece;
    if (i % 16 == 0 || record.bytes[i - 1] == OLD) piece.append("\n%5u:", i);
    piece.append(" %02x", record.bytes[i]);
    text += piece.view();
  }
  return text.substr(1) + '\n';
}

TEST(Defaults, WriteTheirValuesAndNothingElse) {
  settings_record record;
  std::memset(&record, OLD, sizeof record);
  set_default_settings(record);
  char name[60] = "";
  gethostname(name, sizeof name);
  EXPECT_EQ(record.text(host_name), name);
  std::memset(record.bytes + host_name.offset, OLD, std::strlen(name) + 1);  // differs on each machine
  expect_golden("settings/golden/defaults", changed_bytes(record));
}

}  // namespace
}  // namespace skypost::testing
