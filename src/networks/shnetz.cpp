// SH-Netz: a GET request with one record of 92 fields, each closed by a semicolon, in its parameter
// "daten". °C, km/h, hPa, mm, W/m², local time. The fields that a station like this one does not fill
// hold three hyphens, as a missing value does.

#include "networks/shnetz.h"

#include "networks/password_digest.h"
#include "networks/record_request.h"

namespace skypost {
namespace {

constexpr int FIELD_COUNT = 92;
constexpr char MISSING[] = "---";

void append_year(text_buffer& record, const record_source& from) {
  record.append("%04d", from.now.local.tm_year + 1900);
}

void append_month(text_buffer& record, const record_source& from) {
  record.append("%02d", from.now.local.tm_mon + 1);
}

void append_day(text_buffer& record, const record_source& from) {
  record.append("%02d", from.now.local.tm_mday);
}

void append_hour(text_buffer& record, const record_source& from) {
  record.append("%02d", from.now.local.tm_hour);
}

void append_minute(text_buffer& record, const record_source& from) {
  record.append("%02d", from.now.local.tm_min);
}

constexpr numbered_field FIELDS[] = {
    // clang-format off
    field ( 1,     setting(shnetz_id)),
    field ( 2,     made_by(append_digest<shnetz_password>)),
    field ( 3,     always("Nimbulog")),
    field ( 4,     number_or(MISSING, &LiveRecord::temp10,             TENTHS)),
    field ( 5,     number_or(MISSING, &LiveRecord::todaytemp10,        TENTHS)),
    field ( 6,     number_or(MISSING, &LiveRecord::todaymintemp10,     TENTHS)),
    field ( 7,     unchanged(         &LiveRecord::todaymintemptimestr)),
    field ( 8,     number_or(MISSING, &LiveRecord::todaymaxtemp10,     TENTHS)),
    field ( 9,     unchanged(         &LiveRecord::todaymaxtemptimestr)),
    field (10,     number_or(MISSING, &LiveRecord::hum,                WHOLE)),
    field (11,     number_or(MISSING, &LiveRecord::todayhum,           WHOLE)),
    field (12,     number_or(MISSING, &LiveRecord::todayminhum,        WHOLE)),
    field (13,     unchanged(         &LiveRecord::todayminhumtimestr)),
    field (14,     number_or(MISSING, &LiveRecord::todaymaxhum,        WHOLE)),
    field (15,     unchanged(         &LiveRecord::todaymaxhumtimestr)),
    field (16,     always(MISSING)),
    field (17,     made_by(write_local_date)),
    field (18,     made_by(append_year)),
    field (19,     made_by(append_month)),
    field (20,     made_by(append_day)),
    field (21,     made_by(append_hour)),
    field (22,     made_by(append_minute)),
    field (23,     made_by(write_local_clock)),
    field (24,     always("NB49")),  // the type of station
    fields(25, 29, always(MISSING)),
    field (30,     number_or(MISSING, &LiveRecord::sealevel10,         TENTHS)),
    field (31,     always(MISSING)),
    field (32,     number_or(MISSING, &LiveRecord::todayminsealevel10, TENTHS)),
    field (33,     unchanged(         &LiveRecord::todayminsealeveltimestr)),
    field (34,     number_or(MISSING, &LiveRecord::todaymaxsealevel10, TENTHS)),
    field (35,     unchanged(         &LiveRecord::todaymaxsealeveltimestr)),
    field (36,     number_or(MISSING, &LiveRecord::winddir,            WHOLE)),
    field (37,     number_or(MISSING, &LiveRecord::last15mwinddir,     WHOLE)),
    field (38,     text_or  (MISSING, &LiveRecord::winddirstr)),
    field (39,     number_or(MISSING, &LiveRecord::wind10,             KMH)),
    field (40,     number_or(MISSING, &LiveRecord::last15mmaxgust10,   KMH)),
    fields(41, 44, always(MISSING)),
    field (45,     number_or(MISSING, &LiveRecord::todaymaxgust10,     KMH)),
    field (46,     unchanged(         &LiveRecord::todaymaxgusttimestr)),
    fields(47, 48, always(MISSING)),
    field (49,     number_or(MISSING, &LiveRecord::todayraintotal10,   TENTHS)),
    fields(50, 51, always(MISSING)),
    field (52,     number_or(MISSING, &LiveRecord::monthraintotal10,   TENTHS)),
    field (53,     number_or(MISSING, &LiveRecord::yearraintotal10,    TENTHS)),
    fields(54, 65, always(MISSING)),
    field (66,     number_or("",      &LiveRecord::uv10,               TENTHS)),  // the one that stays empty
    field (67,     always(MISSING)),
    field (68,     number_or(MISSING, &LiveRecord::solar10,            TENTHS)),
    fields(69, 74, always(MISSING)),
    field (75,     number_or(MISSING, &LiveRecord::dew10,              TENTHS)),
    field (76,     number_or(MISSING, &LiveRecord::chill10,            TENTHS)),
    fields(77, 92, always(MISSING)),
    // clang-format on
};
static_assert(numbers_each_once(FIELDS, FIELD_COUNT));

void compose_shnetz(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                    const moment& now) {
  append_record_request(command, endpoint::shnetz, "/sh-netz/daten.php", "daten=", FIELDS, settings, live,
                        now);
}

}  // namespace

constinit const http_network SHNETZ = {compose_shnetz,
                                       {.debug_header = "\nSH-NETZ (PUSH)\n%s\n",
                                        .mode = reply_mode::first_line,
                                        .success_word = "OK",
                                        .failure_format = "upload to SH-Netz: %s",
                                        .no_response_text = "no response from SH-Netz",
                                        .judge = judge_reply}};

int upload_shnetz() { return upload_to(SHNETZ); }

}  // namespace skypost
