// SH-Netz: a GET request with one record of 92 fields, each followed by a semicolon, in the parameter
// "daten". °C, km/h, hPa, mm, W/m², local time. Missing values and fields this station never fills are sent
// as three hyphens.

#include "compose/dates.h"
#include "compose/numbered_record.h"
#include "compose/software.h"
#include "networks/networks.h"

namespace skypost {
namespace {

constexpr int FIELD_COUNT = 92;
constexpr char MISSING[] = "---";

void append_station_type(text_buffer& record, const station&) { record.append("NB%d", STATION_TYPE); }

// A part of the local date or time, in at least two digits.
template <int std::tm::*part, int first = 0>
void append_part(text_buffer& record, const station& source) {
  record.append("%02d", source.now.local.*part + first);
}

constexpr numbered_field FIELDS[] = {
    // clang-format off
    field ( 1,     setting(shnetz_id)),
    field ( 2,     digest_of(shnetz_password)),
    field ( 3,     always("Nimbulog")),
    field ( 4,     number_or(MISSING, &LiveRecord::temp10,             TENTHS)),
    field ( 5,     number_or(MISSING, &LiveRecord::todaytemp10,        TENTHS)),
    field ( 6,     number_or(MISSING, &LiveRecord::todaymintemp10,     TENTHS)),
    field ( 7,     word_or  ("",      &LiveRecord::todaymintemptimestr)),
    field ( 8,     number_or(MISSING, &LiveRecord::todaymaxtemp10,     TENTHS)),
    field ( 9,     word_or  ("",      &LiveRecord::todaymaxtemptimestr)),
    field (10,     number_or(MISSING, &LiveRecord::hum,                WHOLE)),
    field (11,     number_or(MISSING, &LiveRecord::todayhum,           WHOLE)),
    field (12,     number_or(MISSING, &LiveRecord::todayminhum,        WHOLE)),
    field (13,     word_or  ("",      &LiveRecord::todayminhumtimestr)),
    field (14,     number_or(MISSING, &LiveRecord::todaymaxhum,        WHOLE)),
    field (15,     word_or  ("",      &LiveRecord::todaymaxhumtimestr)),
    field (16,     always(MISSING)),
    field (17,     made_by(append_local_date)),
    field (18,     made_by(append_part<&std::tm::tm_year, 1900>)),
    field (19,     made_by(append_part<&std::tm::tm_mon, 1>)),
    field (20,     made_by(append_part<&std::tm::tm_mday>)),
    field (21,     made_by(append_part<&std::tm::tm_hour>)),
    field (22,     made_by(append_part<&std::tm::tm_min>)),
    field (23,     made_by(append_local_clock)),
    field (24,     made_by(append_station_type)),
    fields(25, 29, always(MISSING)),
    field (30,     number_or(MISSING, &LiveRecord::sealevel10,         TENTHS)),
    field (31,     always(MISSING)),
    field (32,     number_or(MISSING, &LiveRecord::todayminsealevel10, TENTHS)),
    field (33,     word_or  ("",      &LiveRecord::todayminsealeveltimestr)),
    field (34,     number_or(MISSING, &LiveRecord::todaymaxsealevel10, TENTHS)),
    field (35,     word_or  ("",      &LiveRecord::todaymaxsealeveltimestr)),
    field (36,     number_or(MISSING, &LiveRecord::winddir,            WHOLE)),
    field (37,     number_or(MISSING, &LiveRecord::last15mwinddir,     WHOLE)),
    field (38,     word_or  (MISSING, &LiveRecord::winddirstr)),
    field (39,     number_or(MISSING, &LiveRecord::wind10,             KMH)),
    field (40,     number_or(MISSING, &LiveRecord::last15mmaxgust10,   KMH)),
    fields(41, 44, always(MISSING)),
    field (45,     number_or(MISSING, &LiveRecord::todaymaxgust10,     KMH)),
    field (46,     word_or  ("",      &LiveRecord::todaymaxgusttimestr)),
    fields(47, 48, always(MISSING)),
    field (49,     number_or(MISSING, &LiveRecord::todayraintotal10,   TENTHS)),
    fields(50, 51, always(MISSING)),
    field (52,     number_or(MISSING, &LiveRecord::monthraintotal10,   TENTHS)),
    field (53,     number_or(MISSING, &LiveRecord::yearraintotal10,    TENTHS)),
    fields(54, 65, always(MISSING)),
    field (66,     number_or("",      &LiveRecord::uv10,               TENTHS)),  // the only number left empty
    field (67,     always(MISSING)),
    field (68,     number_or(MISSING, &LiveRecord::solar10,            TENTHS)),
    fields(69, 74, always(MISSING)),
    field (75,     number_or(MISSING, &LiveRecord::dew10,              TENTHS)),
    field (76,     number_or(MISSING, &LiveRecord::chill10,            TENTHS)),
    fields(77, 92, always(MISSING)),
    // clang-format on
};
static_assert(numbers_each_once(FIELDS, FIELD_COUNT));

void append_shnetz_record(text_buffer& query, const station& source) {
  append_record(query, "daten=", FIELDS, source);
}

}  // namespace

constinit const http_network SHNETZ = {sent_by_get<SHNETZ>("shnetz"),
                                       endpoint::shnetz,
                                       "/sh-netz/daten.php",
                                       append_shnetz_record,
                                       {.debug_header = "\nSH-NETZ (PUSH)\n%s\n",
                                        .success = {"OK", reply_mode::first_line},
                                        .failure_format = "upload to SH-Netz: %s",
                                        .no_response_text = "no response from SH-Netz"}};

}  // namespace skypost
