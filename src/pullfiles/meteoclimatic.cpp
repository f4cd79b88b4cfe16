// The file that Meteoclimatic fetches: "*KEY=value" lines, in °C, km/h, %, hPa, mm and W/m², local time.
// A missing current value leaves its key without a value, a missing extreme or total has no line.

#include "pullfiles/meteoclimatic.h"

#include <cstdint>

#include "base/value.h"

namespace skypost {
namespace {

struct keyed_line {
  const char* key;
  std::int32_t LiveRecord::*value;
  const value_form& form;
};

constexpr keyed_line CURRENT[] = {
    // clang-format off
    {"*TMP=",  &LiveRecord::temp10,             TENTHS},
    {"*WND=",  &LiveRecord::wind10,             KMH},
    {"*AZI=",  &LiveRecord::winddir,            WHOLE},
    {"*BAR=",  &LiveRecord::sealevel10,         TENTHS},
    {"*HUM=",  &LiveRecord::hum,                WHOLE},
    {"*SUN=",  &LiveRecord::solar10,            TENTHS},
    // clang-format on
};

// Of the day, the month and the year.
constexpr keyed_line EXTREMES[] = {
    // clang-format off
    {"*DHTM=", &LiveRecord::todaymaxtemp10,     TENTHS},
    {"*DLTM=", &LiveRecord::todaymintemp10,     TENTHS},
    {"*DHHM=", &LiveRecord::todaymaxhum,        WHOLE},
    {"*DLHM=", &LiveRecord::todayminhum,        WHOLE},
    {"*DHBR=", &LiveRecord::todaymaxsealevel10, TENTHS},
    {"*DLBR=", &LiveRecord::todayminsealevel10, TENTHS},
    {"*DGST=", &LiveRecord::todaymaxgust10,     KMH},
    {"*DPCP=", &LiveRecord::todayraintotal10,   TENTHS},
    {"*MHTM=", &LiveRecord::monthmaxtemp10,     TENTHS},
    {"*MLTM=", &LiveRecord::monthmintemp10,     TENTHS},
    {"*MHHM=", &LiveRecord::monthmaxhum,        WHOLE},
    {"*MLHM=", &LiveRecord::monthminhum,        WHOLE},
    {"*MHBR=", &LiveRecord::monthmaxsealevel10, TENTHS},
    {"*MLBR=", &LiveRecord::monthminsealevel10, TENTHS},
    {"*MGST=", &LiveRecord::monthmaxgust10,     KMH},
    {"*MPCP=", &LiveRecord::monthraintotal10,   TENTHS},
    {"*YHTM=", &LiveRecord::yearmaxtemp10,      TENTHS},
    {"*YLTM=", &LiveRecord::yearmintemp10,      TENTHS},
    {"*YHHM=", &LiveRecord::yearmaxhum,         WHOLE},
    {"*YLHM=", &LiveRecord::yearminhum,         WHOLE},
    {"*YHBR=", &LiveRecord::yearmaxsealevel10,  TENTHS},
    {"*YLBR=", &LiveRecord::yearminsealevel10,  TENTHS},
    {"*YGST=", &LiveRecord::yearmaxgust10,      KMH},
    {"*YPCP=", &LiveRecord::yearraintotal10,    TENTHS},
    // clang-format on
};

void append_head(text_buffer& text, const settings_record& settings, const std::tm& local) {
  text.append_text("*VER=DATA2\n*COD=");
  text.append_text(settings.text(meteoclimatic_station));
  text.append("\n*UPD=%02d/%02d/%04d %02d:%02d\n", local.tm_mday, local.tm_mon + 1, local.tm_year + 1900,
              local.tm_hour, local.tm_min);
}

void compose_meteoclimatic(text_buffer& text, const settings_record& settings, const LiveRecord& live,
                           const moment& now) {
  append_head(text, settings, now.local);
  for (const keyed_line& line : CURRENT) {
    text.append_text(line.key);
    append_or(text, "", live.*line.value, line.form);
    text.append_character('\n');
  }
  for (const keyed_line& line : EXTREMES) append_known(text, line.key, live.*line.value, line.form, "\n");
  text.append_text("*EOT*\n");
}

}  // namespace

constinit const pull_file METEOCLIMATIC_FILE = {compose_meteoclimatic, "METEOCLIMATIC"};

int write_meteoclimatic_file(const char* name) { return write_pull_file(METEOCLIMATIC_FILE, name); }

}  // namespace skypost
