#pragma once

#include "settings/record.h"

namespace skypost::sim {

// A setting that selects a sensor, and the sensor of the simulated report that it selects.
struct selection {
  const text_field& setting;
  const char* sensor;
};

inline constexpr selection SENSORS[] = {
    // clang-format off
    {sensor_temp,        "th0"},
    {sensor_hum,         "th0"},
    {sensor_dew,         "th0"},
    {sensor_press,       "thb0"},
    {sensor_indoor,      "thb0"},
    {sensor_rain,        "rain0"},
    {sensor_wind,        "wind0"},
    {sensor_uv,          "uv0"},
    {sensor_solar,       "sol0"},
    {sensor_extra_temp0, "t0"},
    {sensor_extra_temp1, "t1"},
    {sensor_extra_temp2, "t2"},
    {sensor_extra_temp3, "t3"},
    {sensor_extra_temp4, "t4"},
    {sensor_extra_temp5, "t5"},
    // clang-format on
};

inline void select_sensors(settings_record& settings) {
  for (const auto& [setting, sensor] : SENSORS) settings.set_text(setting, sensor);
}

}  // namespace skypost::sim
