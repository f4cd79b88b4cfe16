#pragma once

#include <cstdint>
#include <iterator>

// Every field of the settings record that the program knows, once: its name, where it stands in
// the record, its type, and the network (or the part of the appliance) that it belongs to.
namespace skypost {

inline constexpr std::uint32_t SETTINGS_SIZE = 65'536;

enum class field_kind : std::uint8_t {
  text,
  secret_text,  // a password
  flag,         // 0 off, anything else on; off by default
  integer,      // signed
  unsigned_integer,
  secret_integer,
};

struct settings_field {
  const char* group;
  const char* name;
  std::uint32_t offset;
  std::uint32_t size;  // bytes; of a text its slot, the NUL included
  field_kind kind;

  constexpr bool is_text() const { return kind == field_kind::text || kind == field_kind::secret_text; }
  constexpr bool is_secret() const {
    return kind == field_kind::secret_text || kind == field_kind::secret_integer;
  }
};

// Typed handles: a text cannot be read as a number by mistake, nor the other way round.
struct text_field : settings_field {
  consteval text_field(const char* of_group, const char* called, std::uint32_t at, std::uint32_t slot,
                       field_kind of_kind = field_kind::text)
      : settings_field{of_group, called, at, slot, of_kind} {}
};

struct integer_field : settings_field {
  consteval integer_field(const char* of_group, const char* called, std::uint32_t at, field_kind of_kind)
      : settings_field{of_group, called, at, 4, of_kind} {}
};

inline constexpr field_kind FLAG = field_kind::flag;
inline constexpr field_kind INTEGER = field_kind::integer;
inline constexpr field_kind UNSIGNED = field_kind::unsigned_integer;
inline constexpr field_kind SECRET = field_kind::secret_text;

// clang-format off

inline constexpr text_field    settings_version{"record", "settings_version", 4, 5};
inline constexpr integer_field byte_order_marker{"record", "byte_order_marker", 18936, INTEGER};

inline constexpr text_field host_name{"appliance", "host_name", 52, 64};
inline constexpr text_field sender_address{"appliance", "sender_address", 244, 128};

inline constexpr integer_field longitude_degrees{"position", "longitude_degrees", 760, INTEGER};
inline constexpr integer_field longitude_minutes{"position", "longitude_minutes", 764, INTEGER};
inline constexpr integer_field longitude_seconds{"position", "longitude_seconds", 768, INTEGER};
inline constexpr integer_field longitude_west{"position", "longitude_west", 772, INTEGER};
inline constexpr integer_field latitude_degrees{"position", "latitude_degrees", 776, INTEGER};
inline constexpr integer_field latitude_minutes{"position", "latitude_minutes", 780, INTEGER};
inline constexpr integer_field latitude_seconds{"position", "latitude_seconds", 784, INTEGER};
inline constexpr integer_field latitude_south{"position", "latitude_south", 788, INTEGER};

inline constexpr text_field sensor_temp{"sensors", "sensor_temp", 7148, 8};
inline constexpr text_field sensor_hum{"sensors", "sensor_hum", 7156, 8};
inline constexpr text_field sensor_dew{"sensors", "sensor_dew", 7164, 8};
inline constexpr text_field sensor_press{"sensors", "sensor_press", 7172, 8};
inline constexpr text_field sensor_rain{"sensors", "sensor_rain", 7180, 8};
inline constexpr text_field sensor_wind{"sensors", "sensor_wind", 7188, 8};
inline constexpr text_field sensor_uv{"sensors", "sensor_uv", 18080, 8};
inline constexpr text_field sensor_indoor{"sensors", "sensor_indoor", 18088, 8};
inline constexpr text_field sensor_extra_temp[6] = {
    {"sensors", "sensor_extra_temp0", 18096, 8},
    {"sensors", "sensor_extra_temp1", 18104, 8},
    {"sensors", "sensor_extra_temp2", 18112, 8},
    {"sensors", "sensor_extra_temp3", 18120, 8},
    {"sensors", "sensor_extra_temp4", 18128, 8},
    {"sensors", "sensor_extra_temp5", 18136, 8},
};
inline constexpr text_field sensor_solar{"sensors", "sensor_solar", 18664, 8};

inline constexpr integer_field wunderground_enabled{"Weather Underground", "wunderground_enabled", 6756, FLAG};
inline constexpr text_field    wunderground_id{"Weather Underground", "wunderground_id", 6760, 128};
inline constexpr text_field    wunderground_password{"Weather Underground", "wunderground_password", 6888, 128, SECRET};
inline constexpr integer_field wunderground_rapid_enabled{"Weather Underground", "wunderground_rapid_enabled", 17688, FLAG};
inline constexpr integer_field wunderground_rapid_interval{"Weather Underground", "wunderground_rapid_interval", 18144, INTEGER};

inline constexpr integer_field weatherflow_enabled{"WeatherFlow", "weatherflow_enabled", 38108, FLAG};
inline constexpr text_field    weatherflow_id{"WeatherFlow", "weatherflow_id", 38044, 32};
inline constexpr text_field    weatherflow_password{"WeatherFlow", "weatherflow_password", 38076, 32, SECRET};
inline constexpr integer_field weatherflow_rapid_enabled{"WeatherFlow", "weatherflow_rapid_enabled", 38116, FLAG};
inline constexpr integer_field weatherflow_rapid_interval{"WeatherFlow", "weatherflow_rapid_interval", 38112, INTEGER};

inline constexpr integer_field metoffice_enabled{"Met Office WOW", "metoffice_enabled", 48568, FLAG};
inline constexpr text_field    metoffice_site_id{"Met Office WOW", "metoffice_site_id", 48504, 32};
inline constexpr text_field    metoffice_site_key{"Met Office WOW", "metoffice_site_key", 48536, 32, SECRET};

inline constexpr integer_field hamweather_enabled{"PWSweather", "hamweather_enabled", 18148, FLAG};
inline constexpr text_field    hamweather_id{"PWSweather", "hamweather_id", 18152, 128};
inline constexpr text_field    hamweather_password{"PWSweather", "hamweather_password", 18280, 128, SECRET};

inline constexpr integer_field weatherbug_enabled{"WeatherBug", "weatherbug_enabled", 18076, FLAG};
inline constexpr text_field    weatherbug_id{"WeatherBug", "weatherbug_id", 17692, 128};
inline constexpr text_field    weatherbug_num{"WeatherBug", "weatherbug_num", 17820, 128};
inline constexpr text_field    weatherbug_password{"WeatherBug", "weatherbug_password", 17948, 128, SECRET};

inline constexpr integer_field awekas_enabled{"AWEKAS", "awekas_enabled", 6476, FLAG};
inline constexpr text_field    awekas_user{"AWEKAS", "awekas_user", 18408, 128};
inline constexpr text_field    awekas_password{"AWEKAS", "awekas_password", 18536, 128, SECRET};

inline constexpr integer_field wedaal_enabled{"Wedaal", "wedaal_enabled", 6480, FLAG};
inline constexpr text_field    wedaal_user{"Wedaal", "wedaal_user", 28236, 128};
inline constexpr text_field    wedaal_password{"Wedaal", "wedaal_password", 28108, 128, SECRET};

inline constexpr integer_field windfinder_enabled{"Windfinder", "windfinder_enabled", 27576, FLAG};
inline constexpr text_field    windfinder_name{"Windfinder", "windfinder_name", 27580, 128};
inline constexpr text_field    windfinder_password{"Windfinder", "windfinder_password", 27708, 128, SECRET};

inline constexpr integer_field windit_enabled{"WindIt", "windit_enabled", 48716, FLAG};
inline constexpr text_field    windit_id{"WindIt", "windit_id", 48720, 64};

inline constexpr integer_field idokep_enabled{"Idokep", "idokep_enabled", 48580, FLAG};  // 2: the pro service
inline constexpr text_field    idokep_user{"Idokep", "idokep_user", 48584, 64};
inline constexpr text_field    idokep_password{"Idokep", "idokep_password", 48648, 64, SECRET};

inline constexpr integer_field wetterarchiv_enabled{"Wetterarchiv", "wetterarchiv_enabled", 6496, FLAG};
inline constexpr text_field    wetterarchiv_user{"Wetterarchiv", "wetterarchiv_user", 6500, 128};
inline constexpr text_field    wetterarchiv_password{"Wetterarchiv", "wetterarchiv_password", 6628, 128, SECRET};

inline constexpr integer_field anythingweather_enabled{"AnythingWeather", "anythingweather_enabled", 48372, FLAG};
inline constexpr text_field    anythingweather_user{"AnythingWeather", "anythingweather_user", 48376, 64};
inline constexpr text_field    anythingweather_password{"AnythingWeather", "anythingweather_password", 48440, 64, SECRET};

inline constexpr integer_field meteonews_enabled{"MeteoNews", "meteonews_enabled", 48236, FLAG};
inline constexpr text_field    meteonews_password{"MeteoNews", "meteonews_password", 48240, 64, SECRET};
inline constexpr text_field    meteonews_mac{"MeteoNews", "meteonews_mac", 38012, 32};

inline constexpr integer_field shnetz_enabled{"SH-Netz", "shnetz_enabled", 37872, FLAG};
inline constexpr text_field    shnetz_password{"SH-Netz", "shnetz_password", 37876, 32, SECRET};
inline constexpr text_field    shnetz_id{"SH-Netz", "shnetz_id", 37908, 32};

inline constexpr integer_field regiowetter_bw_enabled{"Regiowetter-BW", "regiowetter_bw_enabled", 38200, FLAG};
inline constexpr text_field    regiowetter_bw_id{"Regiowetter-BW", "regiowetter_bw_id", 38152, 24};
inline constexpr text_field    regiowetter_bw_account{"Regiowetter-BW", "regiowetter_bw_account", 38176, 24, SECRET};

inline constexpr integer_field regiowetter_enabled{"Regiowetter", "regiowetter_enabled", 27964, FLAG};
inline constexpr text_field    regiowetter_id{"Regiowetter", "regiowetter_id", 27968, 128};

inline constexpr integer_field sauerlandwetter_enabled{"Sauerlandwetter", "sauerlandwetter_enabled", 28364, FLAG};
inline constexpr text_field    sauerlandwetter_password{"Sauerlandwetter", "sauerlandwetter_password", 28368, 128, SECRET};
inline constexpr text_field    sauerlandwetter_id{"Sauerlandwetter", "sauerlandwetter_id", 28496, 128};

inline constexpr integer_field wetterring_enabled{"Wetterring", "wetterring_enabled", 48304, FLAG};
inline constexpr text_field    wetterring_secret{"Wetterring", "wetterring_secret", 48308, 64, SECRET};

inline constexpr integer_field wetterpage24_enabled{"Wetterpage24", "wetterpage24_enabled", 6484, FLAG};

inline constexpr integer_field meteoclimatic_enabled{"Meteoclimatic", "meteoclimatic_enabled", 17684, FLAG};
inline constexpr text_field    meteoclimatic_station{"Meteoclimatic", "meteoclimatic_station", 17620, 64};

inline constexpr integer_field wetterspiegel_enabled{"Wetterspiegel", "wetterspiegel_enabled", 6492, FLAG};
inline constexpr text_field    wetterspiegel_id{"Wetterspiegel", "wetterspiegel_id", 7260, 128};

inline constexpr integer_field hetweeractueel_enabled{"HetWeerActueel", "hetweeractueel_enabled", 21612, FLAG};

inline constexpr integer_field cwop_enabled{"CWOP", "cwop_enabled", 7016, FLAG};
inline constexpr text_field    cwop_id{"CWOP", "cwop_id", 7020, 128};

inline constexpr integer_field aprs_enabled{"APRS", "aprs_enabled", 29668, FLAG};
inline constexpr text_field    aprs_call_sign{"APRS", "aprs_call_sign", 29672, 128};
inline constexpr integer_field aprs_passcode{"APRS", "aprs_passcode", 29660, field_kind::secret_integer};
inline constexpr text_field    aprs_host{"APRS", "aprs_host", 29800, 128};
inline constexpr integer_field aprs_port{"APRS", "aprs_port", 29664, UNSIGNED};
inline constexpr integer_field aprs_pressure_kind{"APRS", "aprs_pressure_kind", 48784, UNSIGNED};  // 1: sea level

inline constexpr integer_field borgervejr_enabled{"borgervejr", "borgervejr_enabled", 37840, FLAG};

// All of them, group by group.
inline constexpr const settings_field* SETTINGS_FIELDS[] = {
    &settings_version, &byte_order_marker,
    &host_name, &sender_address,
    &longitude_degrees, &longitude_minutes, &longitude_seconds, &longitude_west,
    &latitude_degrees, &latitude_minutes, &latitude_seconds, &latitude_south,
    &sensor_temp, &sensor_hum, &sensor_dew, &sensor_press, &sensor_rain, &sensor_wind, &sensor_uv,
    &sensor_indoor, &sensor_extra_temp[0], &sensor_extra_temp[1], &sensor_extra_temp[2],
    &sensor_extra_temp[3], &sensor_extra_temp[4], &sensor_extra_temp[5], &sensor_solar,
    &wunderground_enabled, &wunderground_id, &wunderground_password, &wunderground_rapid_enabled,
    &wunderground_rapid_interval,
    &weatherflow_enabled, &weatherflow_id, &weatherflow_password, &weatherflow_rapid_enabled,
    &weatherflow_rapid_interval,
    &metoffice_enabled, &metoffice_site_id, &metoffice_site_key,
    &hamweather_enabled, &hamweather_id, &hamweather_password,
    &weatherbug_enabled, &weatherbug_id, &weatherbug_num, &weatherbug_password,
    &awekas_enabled, &awekas_user, &awekas_password,
    &wedaal_enabled, &wedaal_user, &wedaal_password,
    &windfinder_enabled, &windfinder_name, &windfinder_password,
    &windit_enabled, &windit_id,
    &idokep_enabled, &idokep_user, &idokep_password,
    &wetterarchiv_enabled, &wetterarchiv_user, &wetterarchiv_password,
    &anythingweather_enabled, &anythingweather_user, &anythingweather_password,
    &meteonews_enabled, &meteonews_password, &meteonews_mac,
    &shnetz_enabled, &shnetz_id, &shnetz_password,
    &regiowetter_bw_enabled, &regiowetter_bw_id, &regiowetter_bw_account,
    &regiowetter_enabled, &regiowetter_id,
    &sauerlandwetter_enabled, &sauerlandwetter_id, &sauerlandwetter_password,
    &wetterring_enabled, &wetterring_secret,
    &wetterpage24_enabled,
    &meteoclimatic_enabled, &meteoclimatic_station,
    &wetterspiegel_enabled, &wetterspiegel_id,
    &hetweeractueel_enabled,
    &cwop_enabled, &cwop_id,
    &aprs_enabled, &aprs_call_sign, &aprs_passcode, &aprs_host, &aprs_port, &aprs_pressure_kind,
    &borgervejr_enabled,
};
// clang-format on

consteval bool settings_fields_stand_apart() {
  for (std::size_t i = 0; i < std::size(SETTINGS_FIELDS); ++i) {
    const settings_field& one = *SETTINGS_FIELDS[i];
    if (one.offset + one.size > SETTINGS_SIZE) return false;
    for (std::size_t j = 0; j < i; ++j) {
      const settings_field& other = *SETTINGS_FIELDS[j];
      if (one.offset < other.offset + other.size && other.offset < one.offset + one.size) return false;
    }
  }
  return true;
}
static_assert(settings_fields_stand_apart());

}  // namespace skypost
