// Fields must be where the appliance's configuration pages write them: with two offsets exchanged, a password would be
// sent as a name.

#include "settings/fields.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "base/text.h"
#include "common/field_descriptions.h"
#include "settings/record.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

// The golden text was checked against what the pages write.
TEST(SettingsFields, AreWhereTheyBelong) {
  std::set<std::string> lines;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    fixed_text<80> line;
    line.append("%5d %3d %s\n", row.field.offset, row.field.size, row.name);
    lines.insert(line.c_str());
  }
  std::string text;
  for (const std::string& line : lines) text += line;
  expect_golden("settings/golden/fields", text);
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
