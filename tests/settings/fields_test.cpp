// The fields are where the appliance's configuration pages write them.

#include "settings/fields.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>

#include "settings/record.h"

namespace skypost::testing {
namespace {

// Fields of one size that follow one another.
struct run_of_fields {
  std::uint32_t offset;  // of the first
  std::uint32_t size;    // of each, in bytes; of a text its slot, the NUL included
  std::initializer_list<const settings_field*> fields;
};

// In the order of the record, checked against what the web pages write, apart from the program's own list: two
// fields of one size with their offsets exchanged would send a password for a name.
const run_of_fields RUNS[] = {
    // clang-format off
    {    4,   5, {&settings_version}},
    {   52,  64, {&host_name}},
    {  244, 128, {&sender_address}},
    {  760,   4, {&longitude_degrees, &longitude_minutes, &longitude_seconds, &longitude_west, &latitude_degrees,
                  &latitude_minutes, &latitude_seconds, &latitude_south}},
    { 6476,   4, {&awekas_enabled, &wedaal_enabled, &wetterpage24_enabled}},
    { 6492,   4, {&wetterspiegel_enabled, &wetterarchiv_enabled}},
    { 6500, 128, {&wetterarchiv_user, &wetterarchiv_password}},
    { 6756,   4, {&wunderground_enabled}},
    { 6760, 128, {&wunderground_id, &wunderground_password}},
    { 7016,   4, {&cwop_enabled}},
    { 7020, 128, {&cwop_id}},
    { 7148,   8, {&sensor_temp, &sensor_hum, &sensor_dew, &sensor_press, &sensor_rain, &sensor_wind}},
    { 7260, 128, {&wetterspiegel_id}},
    {17620,  64, {&meteoclimatic_station}},
    {17684,   4, {&meteoclimatic_enabled, &wunderground_rapid_enabled}},
    {17692, 128, {&weatherbug_id, &weatherbug_num, &weatherbug_password}},
    {18076,   4, {&weatherbug_enabled}},
    {18080,   8, {&sensor_uv, &sensor_indoor, &sensor_extra_temp0, &sensor_extra_temp1, &sensor_extra_temp2,
                  &sensor_extra_temp3, &sensor_extra_temp4, &sensor_extra_temp5}},
    {18144,   4, {&wunderground_rapid_interval, &hamweather_enabled}},
    {18152, 128, {&hamweather_id, &hamweather_password, &awekas_user, &awekas_password}},
    {18664,   8, {&sensor_solar}},
    {18936,   4, {&byte_order_marker}},
    {21612,   4, {&hetweeractueel_enabled}},
    {27576,   4, {&windfinder_enabled}},
    {27580, 128, {&windfinder_name, &windfinder_password}},
    {27964,   4, {&regiowetter_enabled}},
    {27968, 128, {&regiowetter_id}},
    {28108, 128, {&wedaal_password, &wedaal_user}},
    {28364,   4, {&sauerlandwetter_enabled}},
    {28368, 128, {&sauerlandwetter_password, &sauerlandwetter_id}},
    {29660,   4, {&aprs_passcode, &aprs_port, &aprs_enabled}},
    {29672, 128, {&aprs_call_sign, &aprs_host}},
    {37840,   4, {&borgervejr_enabled}},
    {37872,   4, {&shnetz_enabled}},
    {37876,  32, {&shnetz_password, &shnetz_id}},
    {38012,  32, {&meteonews_mac, &weatherflow_id, &weatherflow_password}},
    {38108,   4, {&weatherflow_enabled, &weatherflow_rapid_interval, &weatherflow_rapid_enabled}},
    {38152,  24, {&regiowetter_bw_id, &regiowetter_bw_account}},
    {38200,   4, {&regiowetter_bw_enabled}},
    {48236,   4, {&meteonews_enabled}},
    {48240,  64, {&meteonews_password}},
    {48304,   4, {&wetterring_enabled}},
    {48308,  64, {&wetterring_secret}},
    {48372,   4, {&anythingweather_enabled}},
    {48376,  64, {&anythingweather_user, &anythingweather_password}},
    {48504,  32, {&metoffice_site_id, &metoffice_site_key}},
    {48568,   4, {&metoffice_enabled}},
    {48580,   4, {&idokep_enabled}},
    {48584,  64, {&idokep_user, &idokep_password}},
    {48716,   4, {&windit_enabled}},
    {48720,  64, {&windit_id}},
    {48784,   4, {&aprs_pressure_kind}},
    // clang-format on
};

TEST(SettingsFields, AreWhereTheyBelong) {
  for (const run_of_fields& run : RUNS) {
    std::uint32_t offset = run.offset;
    for (const settings_field* const field : run.fields) {
      EXPECT_EQ(field->offset, offset);
      EXPECT_EQ(field->size, run.size) << offset;
      offset += run.size;
    }
  }
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
