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

void compose_windfinder(text_buffer& command, const station& source) {
  begin_get(command, endpoint::windfinder, "/wind-cgi/nimbulogload.pl");
  append_parameter(command, "name=", source.settings.text(windfinder_name));
  append_parameter(command, "&password=", source.settings.text(windfinder_password));
  command.append_text("&date=");
  append_local_date(command, source);
  command.append_text("&time=");
  append_local_clock(command, source);
  append_known(command, source.live, WINDFINDER_PARAMETERS);
  end_get(command);
}

void compose_windit(text_buffer& command, const station& source) {
  begin_get(command, endpoint::windit, "/nimbulog/nimbulogload");
  append_parameter(command, "id=", source.settings.text(windit_id));
  command.append_text("&d=");
  append_local_date(command, source);
  command.append_text("&t=");
  append_local_clock(command, source);
  command.append(":%02d", source.now.local.tm_sec);
  append_known(command, source.live, WINDIT_PARAMETERS);
  command.append_text("&clid=nb");
  end_get(command);
}

// Windfinder replies with a page, whose body is judged, or with plain text, where at most one character means
// success.
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

constinit const http_network WINDFINDER = {"windfinder",
                                           compose_windfinder,
                                           upload_windfinder,
                                           {.server = endpoint::windfinder,
                                            .debug_header = "\nWINDFINDER\n%s\n",
                                            .success = judge_windfinder,
                                            .failure_format = "upload to windfinder: %s",
                                            .no_response_text = "no response from windfinder"}};

constinit const http_network WINDIT = {"windit",
                                       compose_windit,
                                       upload_windit,
                                       {.server = endpoint::windit,
                                        .debug_header = "\nWINDIT\n%s\n",
                                        .success = "OK",
                                        .failure_format = "upload to windit: %s",
                                        .no_response_text = "no response from windit"}};

int upload_windfinder() { return upload_to(WINDFINDER); }

int upload_windit() { return upload_to(WINDIT); }

}  // namespace skypost
