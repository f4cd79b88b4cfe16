#include "settings/defaults.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <map>
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

// Each line has up to 8 adjacent changed bytes in hexadecimal, and the offsets at which they are.
std::string changed_bytes(const settings_record& record) {
  const std::string image = little_endian_image(record);
  std::map<std::string, std::string> offsets;
  for (std::size_t i = 0; i < SETTINGS_SIZE; ++i) {
    if (image[i] == OLD) continue;
    const std::size_t first = i;
    fixed_text<30> bytes;
    for (; i < SETTINGS_SIZE && i < first + 8 && image[i] != OLD; ++i)
      bytes.append("%02x ", static_cast<unsigned char>(image[i]));
    offsets[bytes.c_str()] += ' ' + std::to_string(first) + ';';
    --i;
  }
  std::string lines;
  for (const auto& [bytes, places] : offsets) lines += bytes + "at" + places + '\n';
  return lines;
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
