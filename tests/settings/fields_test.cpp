// The fields are where the appliance's configuration pages write them.

#include "settings/fields.h"

#include <gtest/gtest.h>

#include <cstring>

#include "settings/record.h"

namespace skypost::testing {
namespace {

struct place {
  const settings_field* field;
  std::uint32_t offset;
  std::uint32_t size;  // bytes; of a text its slot, the NUL included
};

// In the order of the record, checked against what the web pages write, apart from the program's own list: two
// fields of one size with their offsets exchanged would send a password for a name.
constexpr place PLACES[] = {
    // clang-format off
    {&settings_version,                 4,   5},
    {&host_name,                       52,  64},
    {&sender_address,                 244, 128},
    {&longitude_degrees,              760,   4},
    {&longitude_minutes,              764,   4},
    {&longitude_seconds,              768,   4},
    {&longitude_west,                 772,   4},
    {&latitude_degrees,               776,   4},
    {&latitude_minutes,               780,   4},
    {&latitude_seconds,               784,   4},
    {&latitude_south,                 788,   4},
    {&awekas_enabled,                6476,   4},
    {&wedaal_enabled,                6480,   4},
    {&wetterpage24_enabled,          6484,   4},
    {&wetterspiegel_enabled,         6492,   4},
    {&wetterarchiv_enabled,          6496,   4},
    {&wetterarchiv_user,             6500, 128},
    {&wetterarchiv_password,         6628, 128},
    {&wunderground_enabled,          6756,   4},
    {&wunderground_id,               6760, 128},
    {&wunderground_password,         6888, 128},
    {&cwop_enabled,                  7016,   4},
    {&cwop_id,                       7020, 128},
    {&sensor_temp,                   7148,   8},
    {&sensor_hum,                    7156,   8},
    {&sensor_dew,                    7164,   8},
    {&sensor_press,                  7172,   8},
    {&sensor_rain,                   7180,   8},
    {&sensor_wind,                   7188,   8},
    {&wetterspiegel_id,              7260, 128},
    {&meteoclimatic_station,        17620,  64},
    {&meteoclimatic_enabled,        17684,   4},
    {&wunderground_rapid_enabled,   17688,   4},
    {&weatherbug_id,                17692, 128},
    {&weatherbug_num,               17820, 128},
    {&weatherbug_password,          17948, 128},
    {&weatherbug_enabled,           18076,   4},
    {&sensor_uv,                    18080,   8},
    {&sensor_indoor,                18088,   8},
    {&sensor_extra_temp0,           18096,   8},
    {&sensor_extra_temp1,           18104,   8},
    {&sensor_extra_temp2,           18112,   8},
    {&sensor_extra_temp3,           18120,   8},
    {&sensor_extra_temp4,           18128,   8},
    {&sensor_extra_temp5,           18136,   8},
    {&wunderground_rapid_interval,  18144,   4},
    {&hamweather_enabled,           18148,   4},
    {&hamweather_id,                18152, 128},
    {&hamweather_password,          18280, 128},
    {&awekas_user,                  18408, 128},
    {&awekas_password,              18536, 128},
    {&sensor_solar,                 18664,   8},
    {&byte_order_marker,            18936,   4},
    {&hetweeractueel_enabled,       21612,   4},
    {&windfinder_enabled,           27576,   4},
    {&windfinder_name,              27580, 128},
    {&windfinder_password,          27708, 128},
    {&regiowetter_enabled,          27964,   4},
    {&regiowetter_id,               27968, 128},
    {&wedaal_password,              28108, 128},
    {&wedaal_user,                  28236, 128},
    {&sauerlandwetter_enabled,      28364,   4},
    {&sauerlandwetter_password,     28368, 128},
    {&sauerlandwetter_id,           28496, 128},
    {&aprs_passcode,                29660,   4},
    {&aprs_port,                    29664,   4},
    {&aprs_enabled,                 29668,   4},
    {&aprs_call_sign,               29672, 128},
    {&aprs_host,                    29800, 128},
    {&borgervejr_enabled,           37840,   4},
    {&shnetz_enabled,               37872,   4},
    {&shnetz_password,              37876,  32},
    {&shnetz_id,                    37908,  32},
    {&meteonews_mac,                38012,  32},
    {&weatherflow_id,               38044,  32},
    {&weatherflow_password,         38076,  32},
    {&weatherflow_enabled,          38108,   4},
    {&weatherflow_rapid_interval,   38112,   4},
    {&weatherflow_rapid_enabled,    38116,   4},
    {&regiowetter_bw_id,            38152,  24},
    {&regiowetter_bw_account,       38176,  24},
    {&regiowetter_bw_enabled,       38200,   4},
    {&meteonews_enabled,            48236,   4},
    {&meteonews_password,           48240,  64},
    {&wetterring_enabled,           48304,   4},
    {&wetterring_secret,            48308,  64},
    {&anythingweather_enabled,      48372,   4},
    {&anythingweather_user,         48376,  64},
    {&anythingweather_password,     48440,  64},
    {&metoffice_site_id,            48504,  32},
    {&metoffice_site_key,           48536,  32},
    {&metoffice_enabled,            48568,   4},
    {&idokep_enabled,               48580,   4},
    {&idokep_user,                  48584,  64},
    {&idokep_password,              48648,  64},
    {&windit_enabled,               48716,   4},
    {&windit_id,                    48720,  64},
    {&aprs_pressure_kind,           48784,   4},
    // clang-format on
};

TEST(SettingsFields, AreWhereTheyBelong) {
  for (const place& row : PLACES) {
    EXPECT_EQ(row.field->offset, row.offset);
    EXPECT_EQ(row.field->size, row.size) << row.offset;
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
