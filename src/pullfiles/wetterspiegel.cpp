// The file that Wetterspiegel fetches: "key: value" lines, in °C, m/s, hPa, mm and %, local time. Missing
// values are omitted; -1 marks values that this station does not measure.

#include "compose/parameters.h"
#include "pullfiles/pullfiles.h"

namespace skypost {
namespace {

// Each value with the fixed lines that follow it.
constexpr parameter WIND_TO_HUMIDITY[] = {
    // clang-format off
    {"dd: ",  &LiveRecord::winddir,    WHOLE,       "\n"},
    {"ff: ",  &LiveRecord::wind10,     TENTHS,      "\n"},
    {"fx: ",  &LiveRecord::gust10,     TENTHS,      "\n"},
    {"pp: ",  &LiveRecord::sealevel10, TENTHS,      "\n"},
    {"RR1: ", &LiveRecord::rain,       WHOLE_UNITS, "\nRR6: -1\nRR12: -1\n"},
    {"UU: ",  &LiveRecord::hum,        WHOLE,       "\n"},
    // clang-format on
};

void compose_wetterspiegel(text_buffer& text, const station& source) {
  const std::tm& local = source.now.local;
  text.append_text("Wetterspiegel-id: ");
  text.append_text(source.settings.text(wetterspiegel_id));
  text.append("\nDatum: %04d-%02d-%02d\n", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
  text.append("Std: %02d\n", local.tm_hour);
  append_known(text, source.live, {"temp: ", &LiveRecord::temp10, TENTHS, "\n"});
  text.append_text("wx: -1\nn: 9\nALT 1: -1\nALT 2: -1\n");
  append_known(text, source.live, WIND_TO_HUMIDITY);
  text.append_text("SS: -1\nSN: -1\n");
}

}  // namespace

constinit const pull_file WETTERSPIEGEL = {
    written_as_file<WETTERSPIEGEL>("wetterspiegel", compose_wetterspiegel), "wetterspiegel.txt"};

}  // namespace skypost
