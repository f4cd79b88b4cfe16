// The file that Meteoclimatic fetches: "*KEY=value" lines, in °C, km/h, %, hPa, mm and W/m², local time. A
// missing current value leaves its key empty; missing extremes and totals are omitted.

#include "compose/parameters.h"
#include "pullfiles/pullfiles.h"

namespace skypost {
namespace {

constexpr parameter CURRENT[] = {
    // clang-format off
    {"*TMP=",  &LiveRecord::temp10,             TENTHS},
    {"*WND=",  &LiveRecord::wind10,             KMH},
    {"*AZI=",  &LiveRecord::winddir,            WHOLE},
    {"*BAR=",  &LiveRecord::sealevel10,         TENTHS},
    {"*HUM=",  &LiveRecord::hum,                WHOLE},
    {"*SUN=",  &LiveRecord::solar10,            TENTHS},
    // clang-format on
};

// The extremes and totals of the day, the month and the year.
constexpr parameter EXTREMES[] = {
    // clang-format off
    {"*DHTM=", &LiveRecord::todaymaxtemp10,     TENTHS, "\n"},
    {"*DLTM=", &LiveRecord::todaymintemp10,     TENTHS, "\n"},
    {"*DHHM=", &LiveRecord::todaymaxhum,        WHOLE,  "\n"},
    {"*DLHM=", &LiveRecord::todayminhum,        WHOLE,  "\n"},
    {"*DHBR=", &LiveRecord::todaymaxsealevel10, TENTHS, "\n"},
    {"*DLBR=", &LiveRecord::todayminsealevel10, TENTHS, "\n"},
    {"*DGST=", &LiveRecord::todaymaxgust10,     KMH,    "\n"},
    {"*DPCP=", &LiveRecord::todayraintotal10,   TENTHS, "\n"},
    {"*MHTM=", &LiveRecord::monthmaxtemp10,     TENTHS, "\n"},
    {"*MLTM=", &LiveRecord::monthmintemp10,     TENTHS, "\n"},
    {"*MHHM=", &LiveRecord::monthmaxhum,        WHOLE,  "\n"},
    {"*MLHM=", &LiveRecord::monthminhum,        WHOLE,  "\n"},
    {"*MHBR=", &LiveRecord::monthmaxsealevel10, TENTHS, "\n"},
    {"*MLBR=", &LiveRecord::monthminsealevel10, TENTHS, "\n"},
    {"*MGST=", &LiveRecord::monthmaxgust10,     KMH,    "\n"},
    {"*MPCP=", &LiveRecord::monthraintotal10,   TENTHS, "\n"},
    {"*YHTM=", &LiveRecord::yearmaxtemp10,      TENTHS, "\n"},
    {"*YLTM=", &LiveRecord::yearmintemp10,      TENTHS, "\n"},
    {"*YHHM=", &LiveRecord::yearmaxhum,         WHOLE,  "\n"},
    {"*YLHM=", &LiveRecord::yearminhum,         WHOLE,  "\n"},
    {"*YHBR=", &LiveRecord::yearmaxsealevel10,  TENTHS, "\n"},
    {"*YLBR=", &LiveRecord::yearminsealevel10,  TENTHS, "\n"},
    {"*YGST=", &LiveRecord::yearmaxgust10,      KMH,    "\n"},
    {"*YPCP=", &LiveRecord::yearraintotal10,    TENTHS, "\n"},
    // clang-format on
};

void append_head(text_buffer& text, const station& source) {
  const std::tm& local = source.now.local;
  text.append_text("*VER=DATA2\n*COD=");
  text.append_text(source.settings.text(meteoclimatic_station));
  text.append("\n*UPD=%02d/%02d/%04d %02d:%02d\n", local.tm_mday, local.tm_mon + 1, local.tm_year + 1900,
              local.tm_hour, local.tm_min);
}

void compose_meteoclimatic(text_buffer& text, const station& source) {
  append_head(text, source);
  for (const parameter& line : CURRENT) {
    text.append_text(line.key);
    append_or(text, "", line.value.of(source.live), line.format);
    text.append_character('\n');
  }
  append_known(text, source.live, EXTREMES);
  text.append_text("*EOT*\n");
}

}  // namespace

constinit const pull_file METEOCLIMATIC = {
    written_as_file<METEOCLIMATIC>("meteoclimatic", compose_meteoclimatic), "meteoclimatic.txt",
    "METEOCLIMATIC"};

}  // namespace skypost
