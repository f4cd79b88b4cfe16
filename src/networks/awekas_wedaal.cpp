// The push to AWEKAS and Wedaal, which also fetch a file. A GET request with one parameter, a record of
// fields each followed by ';': user, MD5 of the password, local date and time, then °C, %, hPa, mm, km/h,
// W/m². Missing values are empty.

#include "compose/dates.h"
#include "compose/numbered_record.h"
#include "compose/software.h"
#include "networks/networks.h"

namespace skypost {
namespace {

void append_station_type(text_buffer& record, const station&) { record.append("NB_%d", STATION_TYPE); }

constexpr numbered_field AWEKAS_FIELDS[] = {
    // clang-format off
    field ( 1,     setting(awekas_user)),
    field ( 2,     digest_of(awekas_password)),
    field ( 3,     made_by(append_local_date)),
    field ( 4,     made_by(append_local_clock)),
    field ( 5,     number_or("", &LiveRecord::temp10,           TENTHS)),
    field ( 6,     number_or("", &LiveRecord::hum,              WHOLE)),
    field ( 7,     number_or("", &LiveRecord::sealevel10,       TENTHS)),
    field ( 8,     number_or("", &LiveRecord::todayraintotal10, TENTHS)),
    field ( 9,     number_or("", &LiveRecord::wind10,           KMH)),
    field (10,     number_or("", &LiveRecord::winddir,          WHOLE)),
    fields(11, 13, always("")),
    field (14,     always("de")),
    field (15,     always("")),
    field (16,     number_or("", &LiveRecord::last15mmaxgust10, KMH)),
    field (17,     number_or("", &LiveRecord::solar10,          TENTHS)),
    field (18,     number_or("", &LiveRecord::uv10,             TENTHS)),
    fields(19, 21, always("")),
    field (22,     number_or("", &LiveRecord::rain,             TENTHS)),
    field (23,     made_by(append_station_type)),
    // clang-format on
};
static_assert(numbers_each_once(AWEKAS_FIELDS, 23));

constexpr numbered_field WEDAAL_FIELDS[] = {
    // clang-format off
    field ( 1,     setting(wedaal_user)),
    field ( 2,     digest_of(wedaal_password)),
    field ( 3,     number_or("", &LiveRecord::temp10,           TENTHS)),
    field ( 4,     number_or("", &LiveRecord::hum,              WHOLE)),
    field ( 5,     number_or("", &LiveRecord::sealevel10,       TENTHS)),
    field ( 6,     number_or("", &LiveRecord::todayraintotal10, TENTHS)),
    field ( 7,     number_or("", &LiveRecord::wind10,           KMH)),
    field ( 8,     number_or("", &LiveRecord::winddir,          WHOLE)),
    field ( 9,     made_by(append_local_clock)),
    field (10,     made_by(append_local_date)),
    field (11,     always("0.0")),
    field (12,     number_or("", &LiveRecord::todaymaxgust10,   KMH)),
    field (13,     time_or  ("", &LiveRecord::todaymaxgusttimestr, &LiveRecord::todaymaxgust10)),
    field (14,     number_or("", &LiveRecord::todaymintemp10,   TENTHS)),
    field (15,     number_or("", &LiveRecord::todaymaxtemp10,   TENTHS)),
    field (16,     always("")),
    field (17,     number_or("", &LiveRecord::monthmintemp10,   TENTHS)),
    field (18,     number_or("", &LiveRecord::monthmaxtemp10,   TENTHS)),
    field (19,     number_or("", &LiveRecord::monthmaxgust10,   KMH)),
    field (20,     number_or("", &LiveRecord::monthraintotal10, TENTHS)),
    field (21,     number_or("", &LiveRecord::yearmintemp10,    TENTHS)),
    field (22,     number_or("", &LiveRecord::yearmaxtemp10,    TENTHS)),
    field (23,     number_or("", &LiveRecord::yearmaxgust10,    KMH)),
    field (24,     number_or("", &LiveRecord::yearraintotal10,  TENTHS)),
    // clang-format on
};
static_assert(numbers_each_once(WEDAAL_FIELDS, 24));

void append_awekas_record(text_buffer& query, const station& source) {
  append_record(query, "val=", AWEKAS_FIELDS, source);
}

void append_wedaal_record(text_buffer& query, const station& source) {
  append_record(query, "val=", WEDAAL_FIELDS, source);
}

}  // namespace

constinit const http_network AWEKAS_PUSH = {sent_by_get<AWEKAS_PUSH>("awekas_push"),
                                            endpoint::awekas,
                                            "/extern/eingabe_pruefung.php",
                                            append_awekas_record,
                                            {.debug_header = "\nAWEKAS (PUSH)\n%s\n",
                                             .success = {"OK", reply_mode::first_line},
                                             .failure_format = "upload to awekas: %s",
                                             .no_response_text = "no response from awekas"}};

constinit const http_network WEDAAL_PUSH = {sent_by_get<WEDAAL_PUSH>("wedaal_push"),
                                            endpoint::wedaal,
                                            "/get_wetter.php",
                                            append_wedaal_record,
                                            {.debug_header = "\nWEDAAL (PUSH)\n%s\n",
                                             .success = {"OK", reply_mode::first_line},
                                             .failure_format = "upload to wedaal: %s",
                                             .no_response_text = "no response from wedaal"}};

}  // namespace skypost
