#include "settings/defaults.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <vector>

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

// Up to 8 adjacent changed bytes.
struct piece {
  std::uint32_t offset;
  std::string bytes;
};

std::vector<piece> changed_pieces(const settings_record& record) {
  const std::string image = little_endian_image(record);
  std::vector<piece> pieces;
  for (std::uint32_t i = 0; i < SETTINGS_SIZE; ++i) {
    if (image[i] == OLD) continue;
    if (pieces.empty() || pieces.back().offset + pieces.back().bytes.size() != i ||
        pieces.back().bytes.size() == 8)
      pieces.push_back({i, ""});
    pieces.back().bytes += image[i];
  }
  return pieces;
}

// Lines of an offset and its bytes in hexadecimal. Equal pieces at equal distances share a line.
std::string as_lines(const std::vector<piece>& pieces) {
  fixed_text<10'000> text;
  for (std::size_t i = 0, next = 0; i < pieces.size(); i = next) {
    const std::uint32_t distance = i + 1 < pieces.size() ? pieces[i + 1].offset - pieces[i].offset : 0;
    for (next = i + 1; next < pieces.size() && pieces[next].bytes == pieces[i].bytes &&
                       pieces[next].offset - pieces[next - 1].offset == distance;)
      ++next;
    text.append("%5u:", pieces[i].offset);
    for (const char byte : pieces[i].bytes) text.append(" %02x", static_cast<unsigned char>(byte));
    if (next - i > 1) text.append(", %zu times, every %u bytes", next - i, distance);
    text.append("\n");
  }
  return text.c_str();
}

TEST(Defaults, WriteTheirValuesAndNothingElse) {
  settings_record record;
  std::memset(&record, OLD, sizeof record);
  set_default_settings(record);
  char name[60] = "";
  gethostname(name, sizeof name);
  EXPECT_EQ(record.text(host_name), name);
  std::memset(record.bytes + host_name.offset, OLD, std::strlen(name) + 1);  // differs on each machine
  expect_golden("settings/golden/defaults", as_lines(changed_pieces(record)));
}

}  // namespace
}  // namespace skypost::testing
