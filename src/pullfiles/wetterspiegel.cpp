// The file that Wetterspiegel fetches: "key: value" lines, in °C, m/s, hPa, mm and %, local time. A
// missing value has no line; -1 stands for what a station like this one does not measure.

#include "pullfiles/wetterspiegel.h"

#include "base/value.h"

namespace skypost {
namespace {

void compose_wetterspiegel(text_buffer& text, const settings_record& settings, const LiveRecord& live,
                           const moment& now) {
  const std::tm& local = now.local;
  text.append_text("Wetterspiegel-id: ");
  text.append_text(settings.text(wetterspiegel_id));
  text.append("\nDatum: %04d-%02d-%02d\n", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
  text.append("Std: %02d\n", local.tm_hour);
  append_known(text, "temp: ", live.temp10, TENTHS, "\n");
  text.append_text("wx: -1\nn: 9\nALT 1: -1\nALT 2: -1\n");
  append_known(text, "dd: ", live.winddir, WHOLE, "\n");
  append_known(text, "ff: ", live.wind10, TENTHS, "\n");
  append_known(text, "fx: ", live.gust10, TENTHS, "\n");
  append_known(text, "pp: ", live.sealevel10, TENTHS, "\n");
  append_known(text, "RR1: ", live.rain, WHOLE_UNITS, "\nRR6: -1\nRR12: -1\n");
  append_known(text, "UU: ", live.hum, WHOLE, "\n");
  text.append_text("SS: -1\nSN: -1\n");
}

}  // namespace

constinit const pull_file WETTERSPIEGEL_FILE = {compose_wetterspiegel};

int write_wetterspiegel_file(const char* name) { return write_pull_file(WETTERSPIEGEL_FILE, name); }

}  // namespace skypost
