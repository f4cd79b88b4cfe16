#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace skypost {

// Stands for a number that the report does not have.
inline constexpr std::int32_t MISSING_VALUE = -9999;

constexpr bool known(std::int32_t value) { return value != MISSING_VALUE; }

// A word or a time of day from the report, truncated to fit.
using live_text = char[12];

// What the station reports, each value from the sensor that the settings select for it. If a name ends in 10,
// the number is in tenths of the unit beside it. A missing number is MISSING_VALUE (`height` and the times in
// seconds: 0), a missing compass word is empty, any other missing text is "---".
struct LiveRecord {
  // Now.
  std::int32_t temp10;          // °C
  std::int32_t hum;             // %
  std::int32_t dew10;           // °C
  std::int32_t press10;         // hPa, at the station
  std::int32_t height;          // m, of the pressure sensor
  std::int32_t altimeter10;     // hPa, altimeter setting
  std::int32_t sealevel10;      // hPa, at sea level
  std::int32_t winddir;         // degrees
  live_text winddirstr;         // compass word, German
  live_text winddirstren;       // compass word, English
  std::int32_t wind10;          // m/s
  std::int32_t gust10;          // m/s
  std::int32_t chill10;         // °C
  std::int32_t rain;            // mm/h, in tenths despite its name
  std::int32_t uv10;            // index
  std::int32_t solar10;         // W/m²
  std::int32_t indoortemp10;    // °C
  std::int32_t indoorhum;       // %
  std::int32_t extratemp10[6];  // °C

  // The last 15 minutes, 60 minutes and 24 hours.
  std::int32_t last15mraintotal10;  // mm
  std::int32_t last15mtemp10;       // °C
  std::int32_t last15msealevel10;   // hPa, at sea level
  std::int32_t last15mmaxgust10;    // m/s
  std::int32_t last15mwind10;       // m/s
  std::int32_t last15mwinddir;      // degrees
  std::int32_t last60mraintotal10;  // mm
  std::int32_t last24hraintotal10;  // mm
  std::int32_t last60mmaxsolar10;   // W/m²
  std::int32_t last60mmaxgust10;    // m/s
  std::int32_t last60mpresstrend;   // the server's code

  // The day so far, with the times of its extremes.
  std::int32_t todaytemp10;           // °C
  std::int32_t todaymaxtemp10;        // °C
  std::int32_t todaymaxtemptime;      // seconds since the epoch
  live_text todaymaxtemptimestr;      // HH:MM
  std::int32_t todaymintemp10;        // °C
  std::int32_t todaymintemptime;      // seconds since the epoch
  live_text todaymintemptimestr;      // HH:MM
  std::int32_t todaymaxdew10;         // °C
  live_text todaymaxdewtimestr;       // HH:MM
  std::int32_t todaymindew10;         // °C
  live_text todaymindewtimestr;       // HH:MM
  std::int32_t todayminchill10;       // °C
  live_text todayminchilltimestr;     // HH:MM
  std::int32_t todayhum;              // %
  std::int32_t todaymaxhum;           // %
  std::int32_t todaymaxhumtime;       // seconds since the epoch
  live_text todaymaxhumtimestr;       // HH:MM
  std::int32_t todayminhum;           // %
  std::int32_t todayminhumtime;       // seconds since the epoch
  live_text todayminhumtimestr;       // HH:MM
  std::int32_t todaymaxuv10;          // index
  live_text todaymaxuvtimestr;        // HH:MM
  std::int32_t todaymaxsolar10;       // W/m²
  live_text todaymaxsolartimestr;     // HH:MM
  std::int32_t todaymaxsealevel10;    // hPa, at sea level
  std::int32_t todaymaxsealeveltime;  // seconds since the epoch
  live_text todaymaxsealeveltimestr;  // HH:MM
  std::int32_t todayminsealevel10;    // hPa, at sea level
  std::int32_t todayminsealeveltime;  // seconds since the epoch
  live_text todayminsealeveltimestr;  // HH:MM
  std::int32_t todaymaxgust10;        // m/s
  live_text todaymaxgusttimestr;      // HH:MM
  std::int32_t todaymaxwind10;        // m/s
  live_text todaymaxwindtimestr;      // HH:MM
  std::int32_t todaymaxrainrate10;    // mm/h
  live_text todaymaxrainratetimestr;  // HH:MM
  std::int32_t todayraintotal10;      // mm

  // The month.
  std::int32_t monthmaxtemp10;      // °C
  std::int32_t monthmintemp10;      // °C
  std::int32_t monthmaxdew10;       // °C
  std::int32_t monthmindew10;       // °C
  std::int32_t monthminchill10;     // °C
  std::int32_t monthmaxhum;         // %
  std::int32_t monthminhum;         // %
  std::int32_t monthmaxuv10;        // index
  std::int32_t monthmaxsolar10;     // W/m²
  std::int32_t monthmaxsealevel10;  // hPa, at sea level
  std::int32_t monthminsealevel10;  // hPa, at sea level
  std::int32_t monthmaxgust10;      // m/s
  std::int32_t monthmaxrainrate10;  // mm/h
  std::int32_t monthraintotal10;    // mm

  // The year.
  std::int32_t yearmaxtemp10;      // °C
  std::int32_t yearmintemp10;      // °C
  std::int32_t yearmaxdew10;       // °C
  std::int32_t yearmindew10;       // °C
  std::int32_t yearminchill10;     // °C
  std::int32_t yearmaxhum;         // %
  std::int32_t yearminhum;         // %
  std::int32_t yearmaxuv10;        // index
  std::int32_t yearmaxsolar10;     // W/m²
  std::int32_t yearmaxsealevel10;  // hPa, at sea level
  std::int32_t yearminsealevel10;  // hPa, at sea level
  std::int32_t yearmaxgust10;      // m/s
  std::int32_t yearmaxrainrate10;  // mm/h
  std::int32_t yearraintotal10;    // mm

  // The sun.
  live_text sunrise;  // the server's text
  live_text sunset;   // the server's text
};

// Identifies one number of the record: a member, or an element of `extratemp10`, which no pointer to member can
// identify. It takes two bytes, because pointers to members would make the tables 3 to 9 KB larger.
class live_number {
 public:
  consteval live_number() = default;  // none
  consteval live_number(std::int32_t LiveRecord::*member) {
    LiveRecord live{};
    point_to(live.*member, live);
  }
  static consteval live_number extra_temperature(int i) {
    LiveRecord live{};
    live_number result;
    result.point_to(live.extratemp10[i], live);
    return result;
  }

  constexpr bool is_none() const { return index_ < 0; }
  constexpr bool operator==(const live_number&) const = default;

  std::int32_t of(const LiveRecord& live) const {
    std::int32_t value = 0;
    std::memcpy(&value, reinterpret_cast<const char*>(&live) + offset(), sizeof value);
    return value;
  }
  void set(LiveRecord& live, std::int32_t value) const {
    std::memcpy(reinterpret_cast<char*>(&live) + offset(), &value, sizeof value);
  }

 private:
  // Marks a number of the empty record `live`, and counts the words before the mark.
  consteval void point_to(std::int32_t& number, LiveRecord& live) {
    number = 1;
    const auto content = std::bit_cast<std::array<std::int32_t, sizeof live / sizeof number>>(live);
    for (index_ = 0; content[static_cast<std::size_t>(index_)] == 0;) ++index_;
  }
  std::size_t offset() const { return sizeof(std::int32_t) * static_cast<std::size_t>(index_); }

  std::int16_t index_ = -1;
};

// This process's live record. In the uploader, only load_live_record writes it.
extern LiveRecord live_record;

// 1 while the live record must not be sent, otherwise 0. fetch_live_data sets it, and clears it on success;
// load_live_record sets it again if an outdoor value is missing.
extern std::int32_t live_data_stale;

}  // namespace skypost
