// Sauerlandwetter: a GET request with one record of 54 fields, each followed by a semicolon, in the parameter
// "val". °C, km/h, hPa, mm, W/m², local time. Missing values and fields this station never fills are sent as
// two hyphens.

#include "compose/dates.h"
#include "compose/numbered_record.h"
#include "networks/networks.h"

namespace skypost {
namespace {

constexpr int FIELD_COUNT = 54;

constexpr numbered_field FIELDS[] = {
    // clang-format off
    fields( 1,  2, always("")),
    field ( 3,     setting(sauerlandwetter_id)),
    field ( 4,     digest_of(sauerlandwetter_password)),
    field ( 5,     always("v1.0")),
    field ( 6,     made_by(append_local_date)),
    field ( 7,     made_by(append_local_clock)),
    field ( 8,     number_or("--", &LiveRecord::temp10,             TENTHS)),
    field ( 9,     number_or("--", &LiveRecord::todaymintemp10,     TENTHS)),
    field (10,     number_or("--", &LiveRecord::todaymaxtemp10,     TENTHS)),
    field (11,     number_or("--", &LiveRecord::monthmaxtemp10,     TENTHS)),
    field (12,     number_or("--", &LiveRecord::monthmintemp10,     TENTHS)),
    fields(13, 17, always("--")),
    field (18,     number_or("--", &LiveRecord::hum,                WHOLE)),
    field (19,     number_or("--", &LiveRecord::dew10,              TENTHS)),
    field (20,     number_or("--", &LiveRecord::chill10,            TENTHS)),
    field (21,     number_or("--", &LiveRecord::last60mraintotal10, TENTHS)),
    fields(22, 25, always("--")),
    field (26,     number_or("--", &LiveRecord::todayraintotal10,   TENTHS)),
    field (27,     number_or("--", &LiveRecord::monthraintotal10,   TENTHS)),
    field (28,     number_or("--", &LiveRecord::yearraintotal10,    TENTHS)),
    fields(29, 31, always("--")),
    field (32,     number_or("--", &LiveRecord::wind10,             KMH)),
    field (33,     number_or("--", &LiveRecord::winddir,            WHOLE)),
    field (34,     number_or("--", &LiveRecord::last15mwind10,      KMH)),
    field (35,     number_or("--", &LiveRecord::last15mwinddir,     WHOLE)),
    field (36,     number_or("--", &LiveRecord::todaymaxwind10,     KMH)),
    field (37,     number_or("--", &LiveRecord::todaymaxgust10,     KMH)),
    field (38,     number_or("--", &LiveRecord::sealevel10,         TENTHS)),
    field (39,     number_or("--", &LiveRecord::last60mpresstrend,  WHOLE)),  // the server's code
    fields(40, 48, always("--")),
    field (49,     number_or("--", &LiveRecord::solar10,            TENTHS)),
    field (50,     number_or("--", &LiveRecord::last60mmaxsolar10,  TENTHS)),
    field (51,     number_or("--", &LiveRecord::todaymaxsolar10,    TENTHS)),
    field (52,     always("--")),
    field (53,     number_or("--", &LiveRecord::uv10,               TENTHS)),
    field (54,     always("--")),
    // clang-format on
};
static_assert(numbers_each_once(FIELDS, FIELD_COUNT));

void append_sauerlandwetter_record(text_buffer& query, const station& source) {
  append_record(query, "val=", FIELDS, source);
}

// An empty reply means success.
int accept_empty_reply(const upload_spec&) {
  print_reply("OK");
  return 0;
}

}  // namespace

constinit const http_network SAUERLANDWETTER = {sent_by_get<SAUERLANDWETTER>("sauerlandwetter"),
                                                endpoint::sauerlandwetter,
                                                "/wpas2/post.php",
                                                append_sauerlandwetter_record,
                                                {.debug_header = "\nSAUERLANDWETTER\n%s\n",
                                                 .success = "erfolgreich",
                                                 .failure_format = "upload to sauerlandwetter failed: %s",
                                                 .no_response_text = "",
                                                 .judge_empty = accept_empty_reply}};

}  // namespace skypost
