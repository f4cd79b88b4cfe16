// Fields must be where the appliance's configuration pages write them: with two offsets exchanged, a password would be
// sent as a name.

#include "settings/fields.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>

#include "common/field_descriptions.h"
#include "settings/record.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

// The golden text was checked against what the pages write: the offsets of integers, the slots of texts.
TEST(SettingsFields, AreWhereTheyBelong) {
  std::map<std::string, std::string> groups;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    const int offset = row.field.offset;
    std::string& text = groups[row.group];
    text += (text.empty() ? " " : ", ") + std::string(row.name) + ' ' + std::to_string(offset);
    if (row.field.is_text()) text += '-' + std::to_string(offset + row.field.size - 1);
  }
  std::string lines;
  for (const auto& [group, text] : groups) lines += group + ':' + text + '\n';
  expect_golden("settings/golden/fields", lines);
}

TEST(SettingsRecord, TruncatesATextThatDoesNotFitItsSlot) {
  settings_record record;
  std::memset(&record, 'x', sizeof record);
  record.set_text(sensor_temp, "wind12345");
  EXPECT_EQ(record.text(sensor_temp), "wind123");
  EXPECT_EQ(record.text(sensor_hum), "xxxxxxxx");
}

}  // namespace
}  // namespace skypost::testing
