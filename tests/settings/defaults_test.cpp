#include "settings/defaults.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>

#include "base/text.h"
#include "support/golden.h"
#include "support/other_order.h"

namespace skypost::testing {
namespace {

constexpr char OLD = 0x5a;

// The record as a little-endian board writes it.
std::string little_endian_image(const settings_record& record) {
  const std::string image(reinterpret_cast<const char*>(record.bytes), SETTINGS_SIZE);
  if (std::endian::native == std::endian::little) return image;
  std::string little = in_other_order(image);
  // Integers of other programs that no board converts.
  for (const std::size_t offset : {17608U, 17612U, 17616U})
    std::reverse(&little[offset], &little[offset] + 4);
  return little;
}

// Lines of an offset and up to 16 changed bytes in hexadecimal.
std::string changed_bytes(const settings_record& record) {
  const std::string image = little_endian_image(record);
  std::string text;
  for (std::uint32_t i = 0; i < SETTINGS_SIZE; ++i) {
    if (image[i] == OLD) continue;
    fixed_text<20> piece;
    if (i % 16 == 0 || image[i - 1] == OLD) piece.append("\n%5u:", i);
    piece.append(" %02x", static_cast<unsigned char>(image[i]));
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
