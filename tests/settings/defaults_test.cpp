// The defaults, value by value, and that they touch nothing else.

#include "settings/defaults.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "settings/text_slots.h"

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

std::string host_name_of_this_machine() {
  char name[60];
  return gethostname(name, sizeof name) == 0 ? name : "";
}

image expected_defaults() {
  constexpr std::uint32_t MINUS_ONE = 0xffff'ffff;
  constexpr std::uint32_t NETWORK_FLAGS[] = {6476,  6480,  6484,  6492,  6496,  6756,  7016,  17684, 18076,
                                             18148, 21612, 27576, 27964, 28364, 29668, 37840, 37872, 38108,
                                             38200, 48236, 48304, 48372, 48568, 48580, 48716, 17688, 38116};
  image expected;
  for (const text_slot& slot : TEXT_SLOTS) expected.put(slot.offset, std::string(1, '\0'));
  for (const std::uint32_t offset : NETWORK_FLAGS) expected.put_integer(offset, 0);

  expected.put_integer(0, 0);
  expected.put(4, std::string("4.9q") + '\0');
  expected.put(52, host_name_of_this_machine() + '\0');
  expected.put(244, std::string("root@localhost") + '\0');
  expected.put(760, std::string(12, '\xff'));
  expected.put(776, std::string(12, '\xff'));
  expected.put_integer(772, 0);
  expected.put_integer(788, 0);
  expected.put_integer(792, MINUS_ONE);
  expected.put_integer(6456, 1);
  expected.put_integer(12256, 21);
  expected.put_integer(12264, 1);
  expected.put_integer(17608, 1);
  expected.put_integer(17612, 3);
  expected.put_integer(17616, 4);
  expected.put_integer(18144, 30);
  expected.put_integer(18936, 1);
  expected.put(19300, std::string(256, '\xff'));
  for (std::size_t i = 0; i < 64; ++i) expected.put(20584 + 8 * i, std::string("\0\0\0\0\0\0\xf0\x3f", 8));
  expected.put_integer(29660, MINUS_ONE);
  expected.put_integer(29664, 14580);
  expected.put_integer(38112, 30);
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
