// Windfinder and WindIt, two wind networks. A GET request: login, local time, then the known values, in °C,
// %, hPa, mm, and the wind in knots (Windfinder, over the last 15 minutes) or m/s (WindIt).

#include "base/debug.h"
#include "compose/command.h"
#include "compose/dates.h"
#include "compose/parameters.h"
#include "networks/networks.h"

namespace skypost {
namespace {

constexpr parameter WINDFINDER_PARAMETERS[] = {
    // clang-format off
    {"&airtemp=",   &LiveRecord::last15mtemp10,      TENTHS},
    {"&windspeed=", &LiveRecord::last15mwind10,      KNOTS},
    {"&gust=",      &LiveRecord::last15mmaxgust10,   KNOTS},
    {"&winddir=",   &LiveRecord::last15mwinddir,     WHOLE},
    {"&pressure=",  &LiveRecord::last15msealevel10,  TENTHS},
    {"&rain=",      &LiveRecord::last15mraintotal10, TENTHS},
    // clang-format on
};

constexpr parameter WINDIT_PARAMETERS[] = {
    // clang-format off
    {"&at=", &LiveRecord::temp10,               TENTHS},
    {"&h=",  &LiveRecord::hum,                  WHOLE},
    {"&ct=", &LiveRecord::indoortemp10,         TENTHS},
    {"&ch=", &LiveRecord::indoorhum,            WHOLE},
    {"&wt=", live_number::extra_temperature(0), TENTHS},
    {"&ws=", &LiveRecord::wind10,               TENTHS},
    {"&wc=", &LiveRecord::gust10,               TENTHS},
    {"&wg=", &LiveRecord::last15mmaxgust10,     TENTHS},
    {"&wd=", &LiveRecord::last15mwinddir,       WHOLE},
    {"&p=",  &LiveRecord::last15msealevel10,    TENTHS},
    {"&rd=", &LiveRecord::last15mraintotal10,   TENTHS},
    {"&ra=", &LiveRecord::last60mraintotal10,   TENTHS},
    {"&uv=", &LiveRecord::uv10,                 TENTHS},
    // clang-format on
};

void append_windfinder(text_buffer& query, const station& source) {
  append_parameter(query, "name=", source.settings.text(windfinder_name));
  append_parameter(query, "&password=", source.settings.text(windfinder_password));
  query.append_text("&date=");
  append_local_date(query, source);
  query.append_text("&time=");
  append_local_clock(query, source);
  append_known(query, source.live, WINDFINDER_PARAMETERS);
}

void append_windit(text_buffer& query, const station& source) {
  append_parameter(query, "id=", source.settings.text(windit_id));
  query.append_text("&d=");
  append_local_date(query, source);
  query.append_text("&t=");
  append_local_clock(query, source);
  query.append(":%02d", source.now.local.tm_sec);
  append_known(query, source.live, WINDIT_PARAMETERS);
  query.append_text("&clid=nb");
}

// Windfinder replies with a page, whose body is judged, or with plain text, of which at most one character means success.
int judge_windfinder(text_buffer& reply, const upload_spec& spec) {
  debug_print("\n<%s>\n", reply.c_str());
  if (const std::optional<std::string_view> body = html_body(reply)) {
    print_reply(*body);
    if (body->find("OK") != std::string_view::npos) return 0;
    return fail_with_reply(spec, *body);
  }
  if (strip_line_breaks(reply).length() <= 1) return 0;
  return fail_with_reply(spec, reply.view());
}

}  // namespace

constinit const http_network WINDFINDER = {sent_by_get<WINDFINDER>("windfinder"),
                                           endpoint::windfinder,
                                           "/wind-cgi/nimbulogload.pl",
                                           append_windfinder,
                                           {.debug_header = "\nWINDFINDER\n%s\n",
                                            .success = judge_windfinder,
                                            .failure_format = "upload to windfinder: %s",
                                            .no_response_text = "no response from windfinder"}};

constinit const http_network WINDIT = {sent_by_get<WINDIT>("windit"),
                                       endpoint::windit,
                                       "/nimbulog/nimbulogload",
                                       append_windit,
                                       {.debug_header = "\nWINDIT\n%s\n",
                                        .success = "OK",
                                        .failure_format = "upload to windit: %s",
                                        .no_response_text = "no response from windit"}};

}  // namespace skypost
