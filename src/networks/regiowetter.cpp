// Regiowetter-BW and Regiowetter: a GET request with one record of 23 fields in the parameter "Data" or
// "val". °C, km/h, hPa, mm, W/m², local time. Both start with the station ID. Regiowetter-BW writes "na" for
// missing values, ends with an account text, and has a semicolon after every field; Regiowetter leaves
// missing values empty and has semicolons only between fields.

#include "compose/dates.h"
#include "compose/numbered_record.h"
#include "networks/networks.h"

namespace skypost {
namespace {

constexpr int FIELD_COUNT = 23;

// The year without leading zeros.
void append_bw_date(text_buffer& record, const station& source) {
  const std::tm& local = source.now.local;
  record.append("%02d.%02d.%d", local.tm_mday, local.tm_mon + 1, local.tm_year + 1900);
}

constexpr numbered_field BW_FIELDS[] = {
    // clang-format off
    field ( 1,     setting(regiowetter_bw_id)),
    field ( 2,     number_or("na", &LiveRecord::temp10,             TENTHS)),
    field ( 3,     number_or("na", &LiveRecord::todaymintemp10,     TENTHS)),
    field ( 4,     number_or("na", &LiveRecord::todaymaxtemp10,     TENTHS)),
    field ( 5,     number_or("na", &LiveRecord::hum,                WHOLE)),
    field ( 6,     number_or("na", &LiveRecord::sealevel10,         TENTHS)),
    fields( 7,  8, always("na")),
    field ( 9,     number_or("na", &LiveRecord::wind10,             KMH)),
    field (10,     number_or("na", &LiveRecord::winddir,            WHOLE)),
    field (11,     number_or("na", &LiveRecord::last15mmaxgust10,   KMH)),
    field (12,     number_or("na", &LiveRecord::last15mwinddir,     WHOLE)),
    field (13,     number_or("na", &LiveRecord::todayraintotal10,   TENTHS)),
    field (14,     number_or("na", &LiveRecord::last60mraintotal10, TENTHS)),
    field (15,     number_or("na", &LiveRecord::rain,               TENTHS)),
    field (16,     number_or("na", &LiveRecord::monthraintotal10,   TENTHS)),
    fields(17, 18, always("na")),
    field (19,     number_or("na", &LiveRecord::uv10,               TENTHS)),
    field (20,     always("na")),
    field (21,     made_by(append_bw_date)),
    field (22,     made_by(append_local_clock)),
    field (23,     setting(regiowetter_bw_account)),
    // clang-format on
};
static_assert(numbers_each_once(BW_FIELDS, FIELD_COUNT));

constexpr numbered_field FIELDS[] = {
    // clang-format off
    field ( 1,     setting(regiowetter_id)),
    field ( 2,     number_or("", &LiveRecord::temp10,           TENTHS)),
    field ( 3,     number_or("", &LiveRecord::dew10,            TENTHS)),
    field ( 4,     number_or("", &LiveRecord::hum,              WHOLE)),
    field ( 5,     number_or("", &LiveRecord::last15mwind10,    KMH)),
    field ( 6,     number_or("", &LiveRecord::last15mwinddir,   WHOLE)),
    field ( 7,     number_or("", &LiveRecord::last60mmaxgust10, KMH)),
    field ( 8,     number_or("", &LiveRecord::uv10,             TENTHS)),
    field ( 9,     number_or("", &LiveRecord::solar10,          TENTHS)),
    field (10,     number_or("", &LiveRecord::todayraintotal10, TENTHS)),
    field (11,     number_or("", &LiveRecord::sealevel10,       TENTHS)),
    field (12,     number_or("", &LiveRecord::chill10,          TENTHS)),
    fields(13, 22, always("")),
    field (23,     number_or("", &LiveRecord::rain,             TENTHS)),
    // clang-format on
};
static_assert(numbers_each_once(FIELDS, FIELD_COUNT));

void append_bw_record(text_buffer& query, const station& source) {
  append_record(query, "Data=", BW_FIELDS, source);
}

void append_regiowetter_record(text_buffer& query, const station& source) {
  append_record(query, "val=", FIELDS, source, "");
}

}  // namespace

constinit const http_network REGIOWETTER_BW = {sent_by_get<REGIOWETTER_BW>("regiowetter_bw"),
                                               endpoint::regiowetter_bw,
                                               "/data/nimbulog/get_nimbulog.php",
                                               append_bw_record,
                                               {.debug_header = "\nREGIOWETTER-BW\n%s\n",
                                                .success = {"Success", reply_mode::breaks_to_blanks},
                                                .failure_format = "upload to regiowetter-bw failed: %s",
                                                .no_response_text = "no response from regiowetter-bw"}};

constinit const http_network REGIOWETTER = {sent_by_get<REGIOWETTER>("regiowetter"),
                                            endpoint::regiowetter,
                                            "/admin/jobs/nimbulog.asp",
                                            append_regiowetter_record,
                                            {.debug_header = "\nREGIOWETTER\n%s\n",
                                             .success = "success",
                                             .failure_format = "upload to regiowetter failed: %s",
                                             .no_response_text = "no response from regiowetter"}};

}  // namespace skypost
