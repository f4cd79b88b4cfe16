// Every field stands where the appliance's configuration pages write it.

#include "settings/fields.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>

#include "settings/record.h"
#include "settings/text_slots.h"

namespace skypost::testing {
namespace {

TEST(SettingsFields, TextsFillTheirSlots) {
  std::map<std::uint32_t, std::uint32_t> expected = {{4, 5}};
  for (const text_slot& slot : TEXT_SLOTS) expected[slot.offset] = slot.size;
  std::map<std::uint32_t, std::uint32_t> declared;
  for (const settings_field* field : SETTINGS_FIELDS)
    if (field->is_text()) declared[field->offset] = field->size;
  EXPECT_EQ(declared, expected);
}

// A field that is declared and not listed is neither defaulted nor shown to the owner.
TEST(SettingsFields, ListHoldsEveryFieldOnceUnderANameOfItsOwn) {
  std::set<std::string> names;
  for (const settings_field* field : SETTINGS_FIELDS) names.insert(field->name);
  EXPECT_EQ(names.size(), std::size(SETTINGS_FIELDS));
  const std::size_t integers = 2 * 4 + 2 + 2 + 1 + 25 + 2 + 1;  // position, rapid fire, marker, flags, APRS
  EXPECT_EQ(names.size(), std::size(TEXT_SLOTS) + 1 + integers);
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
