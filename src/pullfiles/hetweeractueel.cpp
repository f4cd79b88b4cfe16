// The file that HetWeerActueel fetches: 92 assignments `$name = "value";` between the lines "BOF" and "EOF",
// in °C, %, hPa, mm, km/h and W/m². Missing values, and the times of missing extremes, are three hyphens.

#include "compose/dates.h"
#include "compose/numbered_record.h"
#include "pullfiles/pullfiles.h"

namespace skypost {
namespace {

constexpr int LINE_COUNT = 94;
constexpr char MISSING[] = "---";

// DD-MM-YY. The year counts from 2000; from 2100 it has three digits.
void append_date(text_buffer& text, const std::tm& date) {
  text.append("%02d-%02d-%02d", date.tm_mday, date.tm_mon + 1, date.tm_year - 100);
}

void append_short_local_date(text_buffer& text, const station& source) {
  append_date(text, source.now.local);
}

void append_short_utc_date(text_buffer& text, const station& source) { append_date(text, source.now.utc); }

void append_utc_clock(text_buffer& text, const station& source) {
  text.append("%02d:%02d", source.now.utc.tm_hour, source.now.utc.tm_min);
}

void append_tendency(text_buffer& text, const station& source) {
  switch (source.live.last60mpresstrend) {
    case 0:
      text.append_text("Steady");
      break;
    case 1:
      text.append_text("Raising");
      break;
    case -1:
      text.append_text("Falling");
      break;
    default:
      text.append_text(MISSING);
  }
}

struct assignment {
  int number;
  const char* variable;  // nullptr: no assignment
  field_content content;
};

constexpr assignment LINES[] = {
    // clang-format off
    { 1, nullptr,                always("BOF")},
    { 2, "date",                 made_by(append_short_local_date)},
    { 3, "time",                 made_by(append_local_clock)},
    { 4, "stationDate",          made_by(append_short_local_date)},
    { 5, "stationTime",          made_by(append_local_clock)},
    { 6, "utcdate",              made_by(append_short_utc_date)},
    { 7, "utctime",              made_by(append_utc_clock)},
    { 8, "tempUnit",             always("\xB0" "C")},  // the degree sign in ISO 8859-1
    { 9, "humUnit",              always("%")},
    {10, "barUnit",              always("hPa")},
    {11, "rainUnit",             always("mm")},
    {12, "rateUnit",             always("mm/h")},
    {13, "windUnit",             always("km/h")},
    {14, "sunriseTime",          word_or  (MISSING, &LiveRecord::sunrise)},
    {15, "sunsetTime",           word_or  (MISSING, &LiveRecord::sunset)},
    {16, "outsideTemp",          number_or(MISSING, &LiveRecord::temp10,             TENTHS)},
    {17, "hiOutsideTemp",        number_or(MISSING, &LiveRecord::todaymaxtemp10,     TENTHS)},
    {18, "hiOutsideTempTime",    time_or  (MISSING, &LiveRecord::todaymaxtemptimestr,     &LiveRecord::todaymaxtemp10)},
    {19, "lowOutsideTemp",       number_or(MISSING, &LiveRecord::todaymintemp10,     TENTHS)},
    {20, "lowOutsideTempTime",   time_or  (MISSING, &LiveRecord::todaymintemptimestr,     &LiveRecord::todaymintemp10)},
    {21, "hiMonthlyOutsideTemp", number_or(MISSING, &LiveRecord::monthmaxtemp10,     TENTHS)},
    {22, "lowMonthlyOutsideTemp", number_or(MISSING, &LiveRecord::monthmintemp10,    TENTHS)},
    {23, "hiYearlyOutsideTemp",  number_or(MISSING, &LiveRecord::yearmaxtemp10,      TENTHS)},
    {24, "lowYearlyOutsideTemp", number_or(MISSING, &LiveRecord::yearmintemp10,      TENTHS)},
    {25, "outsideHumidity",      number_or(MISSING, &LiveRecord::hum,                WHOLE)},
    {26, "lowHumidity",          number_or(MISSING, &LiveRecord::todayminhum,        WHOLE)},
    {27, "lowHumidityTime",      time_or  (MISSING, &LiveRecord::todayminhumtimestr,      &LiveRecord::todayminhum)},
    {28, "hiHumidity",           number_or(MISSING, &LiveRecord::todaymaxhum,        WHOLE)},
    {29, "hiHumidityTime",       time_or  (MISSING, &LiveRecord::todaymaxhumtimestr,      &LiveRecord::todaymaxhum)},
    {30, "hiMonthlyHumidity",    number_or(MISSING, &LiveRecord::monthmaxhum,        WHOLE)},
    {31, "lowMonthlyHumidity",   number_or(MISSING, &LiveRecord::monthminhum,        WHOLE)},
    {32, "hiYearlyHumidity",     number_or(MISSING, &LiveRecord::yearmaxhum,         WHOLE)},
    {33, "lowYearlyHumidity",    number_or(MISSING, &LiveRecord::yearminhum,         WHOLE)},
    {34, "outsideDewPt",         number_or(MISSING, &LiveRecord::dew10,              TENTHS)},
    {35, "hiDewpoint",           number_or(MISSING, &LiveRecord::todaymaxdew10,      TENTHS)},
    {36, "hiDewpointTime",       time_or  (MISSING, &LiveRecord::todaymaxdewtimestr,      &LiveRecord::todaymaxdew10)},
    {37, "lowDewpoint",          number_or(MISSING, &LiveRecord::todaymindew10,      TENTHS)},
    {38, "lowDewpointTime",      time_or  (MISSING, &LiveRecord::todaymindewtimestr,      &LiveRecord::todaymindew10)},
    {39, "hiMonthlyDewpoint",    number_or(MISSING, &LiveRecord::monthmaxdew10,      TENTHS)},
    {40, "lowMonthlyDewpoint",   number_or(MISSING, &LiveRecord::monthmindew10,      TENTHS)},
    {41, "hiYearlyDewpoint",     number_or(MISSING, &LiveRecord::yearmaxdew10,       TENTHS)},
    {42, "lowYearlyDewpoint",    number_or(MISSING, &LiveRecord::yearmindew10,       TENTHS)},
    {43, "windSpeed",            number_or(MISSING, &LiveRecord::gust10,             KMH)},
    {44, "wind10Avg",            number_or(MISSING, &LiveRecord::wind10,             KMH)},
    {45, "hiWindSpeed",          number_or(MISSING, &LiveRecord::todaymaxgust10,     KMH)},
    {46, "hiWindSpeedTime",      time_or  (MISSING, &LiveRecord::todaymaxgusttimestr,     &LiveRecord::todaymaxgust10)},
    {47, "hiMonthlyWindSpeed",   number_or(MISSING, &LiveRecord::monthmaxgust10,     KMH)},
    {48, "hiYearlyWindSpeed",    number_or(MISSING, &LiveRecord::yearmaxgust10,      KMH)},
    {49, "windDir",              number_or(MISSING, &LiveRecord::winddir,            WHOLE)},
    {50, "windDirection",        word_or  (MISSING, &LiveRecord::winddirstren)},
    {51, "windChill",            number_or(MISSING, &LiveRecord::chill10,            TENTHS)},
    {52, "lowWindchill",         number_or(MISSING, &LiveRecord::todayminchill10,    TENTHS)},
    {53, "lowWindchillTime",     time_or  (MISSING, &LiveRecord::todayminchilltimestr,    &LiveRecord::todayminchill10)},
    {54, "lowMonthlyWindchill",  number_or(MISSING, &LiveRecord::monthminchill10,    TENTHS)},
    {55, "lowYearlyWindchill",   number_or(MISSING, &LiveRecord::yearminchill10,     TENTHS)},
    // The temperature is sent as the heat index.
    {56, "outsideHeatIndex",     number_or(MISSING, &LiveRecord::temp10,             TENTHS)},
    {57, "hiHeatIndex",          number_or(MISSING, &LiveRecord::todaymaxtemp10,     TENTHS)},
    {58, "hiHeatIndexTime",      time_or  (MISSING, &LiveRecord::todaymaxtemptimestr,     &LiveRecord::todaymaxtemp10)},
    {59, "hiMonthlyHeatIndex",   number_or(MISSING, &LiveRecord::monthmaxtemp10,     TENTHS)},
    {60, "hiYearlyHeatIndex",    number_or(MISSING, &LiveRecord::yearmaxtemp10,      TENTHS)},
    {61, "thw",                  always(MISSING)},
    {62, "hiTHSWindex",          always(MISSING)},
    {63, "hiMonthlyTHSWindex",   always(MISSING)},
    {64, "hiYearlyTHSWindex",    always(MISSING)},
    {65, "barTrend",             made_by(append_tendency)},
    {66, "barometer",            number_or(MISSING, &LiveRecord::sealevel10,         TENTHS)},
    {67, "lowBarometer",         number_or(MISSING, &LiveRecord::todayminsealevel10, TENTHS)},
    {68, "lowBarometerTime",     time_or  (MISSING, &LiveRecord::todayminsealeveltimestr, &LiveRecord::todayminsealevel10)},
    {69, "hiBarometer",          number_or(MISSING, &LiveRecord::todaymaxsealevel10, TENTHS)},
    {70, "hiBarometerTime",      time_or  (MISSING, &LiveRecord::todaymaxsealeveltimestr, &LiveRecord::todaymaxsealevel10)},
    {71, "lowMonthlyBarometer",  number_or(MISSING, &LiveRecord::monthminsealevel10, TENTHS)},
    {72, "hiMonthlyBarometer",   number_or(MISSING, &LiveRecord::monthmaxsealevel10, TENTHS)},
    {73, "lowYearlyBarometer",   number_or(MISSING, &LiveRecord::yearminsealevel10,  TENTHS)},
    {74, "hiYearlyBarometer",    number_or(MISSING, &LiveRecord::yearmaxsealevel10,  TENTHS)},
    {75, "stormRain",            always(MISSING)},
    {76, "dailyRain",            number_or(MISSING, &LiveRecord::todayraintotal10,   TENTHS)},
    {77, "monthlyRain",          number_or(MISSING, &LiveRecord::monthraintotal10,   TENTHS)},
    {78, "totalRain",            number_or(MISSING, &LiveRecord::yearraintotal10,    TENTHS)},
    {79, "rainRate",             number_or(MISSING, &LiveRecord::rain,               TENTHS)},
    {80, "hiRainRate",           number_or(MISSING, &LiveRecord::todaymaxrainrate10, TENTHS)},
    {81, "hiRainRateTime",       time_or  (MISSING, &LiveRecord::todaymaxrainratetimestr, &LiveRecord::todaymaxrainrate10)},
    {82, "hiMonthlyRainRate",    number_or(MISSING, &LiveRecord::monthmaxrainrate10, TENTHS)},
    {83, "hiYearlyRainRate",     number_or(MISSING, &LiveRecord::yearmaxrainrate10,  TENTHS)},
    {84, "solarRad",             number_or(MISSING, &LiveRecord::solar10,            TENTHS)},
    {85, "hiSolarRad",           number_or(MISSING, &LiveRecord::todaymaxsolar10,    TENTHS)},
    {86, "hiSolarRadTime",       time_or  (MISSING, &LiveRecord::todaymaxsolartimestr,    &LiveRecord::todaymaxsolar10)},
    {87, "hiMonthlySolarRad",    number_or(MISSING, &LiveRecord::monthmaxsolar10,    TENTHS)},
    {88, "hiYearlySolarRad",     number_or(MISSING, &LiveRecord::yearmaxsolar10,     TENTHS)},
    {89, "uv",                   number_or(MISSING, &LiveRecord::uv10,               TENTHS)},
    {90, "hiUV",                 number_or(MISSING, &LiveRecord::todaymaxuv10,       TENTHS)},
    {91, "hiUVTime",             time_or  (MISSING, &LiveRecord::todaymaxuvtimestr,       &LiveRecord::todaymaxuv10)},
    {92, "hiMonthlyUV",          number_or(MISSING, &LiveRecord::monthmaxuv10,       TENTHS)},
    {93, "hiYearlyUV",           number_or(MISSING, &LiveRecord::yearmaxuv10,        TENTHS)},
    {94, nullptr,                always("EOF")},
    // clang-format on
};

static_assert(numbers_each_once(LINES, LINE_COUNT));

void compose_hetweeractueel(text_buffer& text, const station& source) {
  for (const assignment& row : LINES) {
    if (row.variable != nullptr) text.append("$%s = \"", row.variable);
    append_content(text, row.content, source, append_unchanged);
    text.append_text(row.variable != nullptr ? "\";\n" : "\n");
  }
}

}  // namespace

constinit const pull_file HETWEERACTUEEL = {
    written_as_file<HETWEERACTUEEL>("hetweeractueel", compose_hetweeractueel), "hetweeractueel.txt",
    "HETWEERACTUEEL"};

}  // namespace skypost
