// The fields are where the appliance's configuration pages write them.

#include "settings/fields.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>

#include "settings/record.h"

namespace skypost::testing {
namespace {

struct place {
  std::uint32_t offset;
  std::uint32_t size;  // bytes; of a text its slot, the NUL included
};

// Worked out apart from the program's own list.
constexpr place PLACES[] = {
    // clang-format off
    // texts and their slots
    {    4,   5}, {   52,  64}, {  244, 128},
    { 6500, 128}, { 6628, 128}, { 6760, 128}, { 6888, 128}, { 7020, 128},
    { 7148,   8}, { 7156,   8}, { 7164,   8}, { 7172,   8}, { 7180,   8}, { 7188,   8},
    { 7260, 128}, {17620,  64}, {17692, 128}, {17820, 128}, {17948, 128},
    {18080,   8}, {18088,   8}, {18096,   8}, {18104,   8}, {18112,   8}, {18120,   8}, {18128,   8}, {18136,   8},
    {18152, 128}, {18280, 128}, {18408, 128}, {18536, 128}, {18664,   8},
    {27580, 128}, {27708, 128}, {27968, 128}, {28108, 128}, {28236, 128}, {28368, 128}, {28496, 128},
    {29672, 128}, {29800, 128},
    {37876,  32}, {37908,  32}, {38012,  32}, {38044,  32}, {38076,  32}, {38152,  24}, {38176,  24},
    {48240,  64}, {48308,  64}, {48376,  64}, {48440,  64}, {48504,  32}, {48536,  32}, {48584,  64}, {48648,  64},
    {48720,  64},
    // integers: position, flags, rapid fire, byte order, APRS
    {  760, 4}, {  764, 4}, {  768, 4}, {  772, 4}, {  776, 4}, {  780, 4}, {  784, 4}, {  788, 4},
    { 6476, 4}, { 6480, 4}, { 6484, 4}, { 6492, 4}, { 6496, 4}, { 6756, 4}, { 7016, 4}, {17684, 4}, {18076, 4},
    {18148, 4}, {21612, 4}, {27576, 4}, {27964, 4}, {28364, 4}, {29668, 4}, {37840, 4}, {37872, 4}, {38108, 4},
    {38200, 4}, {48236, 4}, {48304, 4}, {48372, 4}, {48568, 4}, {48580, 4}, {48716, 4},
    {17688, 4}, {18144, 4}, {38112, 4}, {38116, 4},
    {18936, 4},
    {29660, 4}, {29664, 4}, {48784, 4},
    // clang-format on
};

TEST(SettingsFields, AreWhereTheyBelong) {
  std::map<std::uint32_t, std::uint32_t> declared;
  for (const settings_field& field : SETTINGS_FIELDS) declared[field.offset] = field.size;
  for (const place& field : PLACES) EXPECT_EQ(declared[field.offset], field.size) << field.offset;
}

TEST(SettingsRecord, TextWithoutNulEndsWithItsSlot) {
  settings_record record;
  std::memset(&record, 'x', sizeof record);
  EXPECT_EQ(record.text(sensor_temp), "xxxxxxxx");
  EXPECT_EQ(record.text(windit_id).size(), 64u);
}

TEST(SettingsRecord, CutsATextThatDoesNotFitItsSlot) {
  settings_record record;
  std::memset(&record, 'x', sizeof record);
  record.set_text(sensor_temp, "wind12345");
  EXPECT_EQ(record.text(sensor_temp), "wind123");
  EXPECT_EQ(record.text(sensor_hum), "xxxxxxxx");
}

}  // namespace
}  // namespace skypost::testing
