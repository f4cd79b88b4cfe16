// The defaults, value by value, and that they touch nothing else.

#include "settings/defaults.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <utility>

namespace skypost::testing {
namespace {

constexpr char OLD = 0x5a;

// The image of a record, into which the expected values are written by hand.
class image {
 public:
  void put(std::size_t offset, const std::string& bytes) { bytes_.replace(offset, bytes.size(), bytes); }
  void put_integer(std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) bytes_[offset + i] = static_cast<char>(value >> 8 * i & 0xff);
  }
  void put_integers(std::size_t first, std::size_t count, std::size_t stride, std::uint32_t value) {
    for (std::size_t i = 0; i < count; ++i) put_integer(first + i * stride, value);
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_ = std::string(65'536, OLD);
};

image expected_defaults() {
  constexpr std::uint32_t MINUS_ONE = 0xffff'ffff;
  image expected;
  for (const settings_field& field : SETTINGS_FIELDS) {
    if (field.is_text()) expected.put(field.offset, std::string(1, '\0'));
    if (field.kind == field_kind::flag) expected.put_integer(field.offset, 0);
  }

  constexpr std::pair<std::size_t, std::uint32_t> INTEGERS[] = {
      // clang-format off
      {    0, 0},         {  760, MINUS_ONE}, {  764, MINUS_ONE}, {  768, MINUS_ONE}, {  772,  0},
      {  776, MINUS_ONE}, {  780, MINUS_ONE}, {  784, MINUS_ONE}, {  788, 0},         {  792, MINUS_ONE},
      { 6456, 1},         {12256, 21},        {12264, 1},         {17608, 1},         {17612, 3},
      {17616, 4},         {18144, 30},        {18936, 1},         {29660, MINUS_ONE}, {29664, 14'580},
      {38112, 30},
      // clang-format on
  };
  for (const auto& [offset, value] : INTEGERS) expected.put_integer(offset, value);
  expected.put(4, std::string("4.9q") + '\0');
  char host_name[60] = "";
  gethostname(host_name, sizeof host_name);
  expected.put(52, std::string(host_name) + '\0');
  expected.put(244, std::string("root@localhost") + '\0');
  expected.put(19300, std::string(256, '\xff'));
  for (std::size_t i = 0; i < 64; ++i) expected.put(20584 + 8 * i, std::string("\0\0\0\0\0\0\xf0\x3f", 8));
  expected.put_integers(29928, 20, 132, MINUS_ONE);
  expected.put_integers(32568, 128, 40, MINUS_ONE);
  expected.put_integers(38236, 20, 500, MINUS_ONE);
  return expected;
}

TEST(Defaults, WriteTheirValuesAndNothingElse) {
  settings_record record;
  std::memset(&record, OLD, sizeof record);
  set_default_settings(record);
  const std::string expected = expected_defaults().bytes();
  for (std::size_t i = 0; i < SETTINGS_SIZE; ++i)
    ASSERT_EQ(record.bytes[i], static_cast<unsigned char>(expected[i])) << "at offset " << i;
}

}  // namespace
}  // namespace skypost::testing
