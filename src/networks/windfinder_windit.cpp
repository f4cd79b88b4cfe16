// Windfinder and WindIt, two networks for wind. A GET request: login, local time, then what is known, in °C,
// %, hPa, mm, and the wind in knots (Windfinder, over the last 15 minutes) or m/s (WindIt).

#include "networks/windfinder_windit.h"

#include "base/local_time.h"
#include "base/process_state.h"
#include "live/live_parameter.h"
#include "transport/command.h"

namespace skypost {
namespace {

constexpr live_parameter WINDFINDER_PARAMETERS[] = {
    // clang-format off
    {"&airtemp=",   &LiveRecord::last15mtemp10,      TENTHS},
    {"&windspeed=", &LiveRecord::last15mwind10,      KNOTS},
    {"&gust=",      &LiveRecord::last15mmaxgust10,   KNOTS},
    {"&winddir=",   &LiveRecord::last15mwinddir,     WHOLE},
    {"&pressure=",  &LiveRecord::last15msealevel10,  TENTHS},
    {"&rain=",      &LiveRecord::last15mraintotal10, TENTHS},
    // clang-format on
};

constexpr live_parameter WINDIT_AIR_PARAMETERS[] = {
    // clang-format off
    {"&at=", &LiveRecord::temp10,       TENTHS},
    {"&h=",  &LiveRecord::hum,          WHOLE},
    {"&ct=", &LiveRecord::indoortemp10, TENTHS},
    {"&ch=", &LiveRecord::indoorhum,    WHOLE},
    // clang-format on
};

// Here stands "&wt=" with the first extra temperature, which no pointer to a member reaches.

constexpr live_parameter WINDIT_WIND_PARAMETERS[] = {
    // clang-format off
    {"&ws=", &LiveRecord::wind10,             TENTHS},
    {"&wc=", &LiveRecord::gust10,             TENTHS},
    {"&wg=", &LiveRecord::last15mmaxgust10,   TENTHS},
    {"&wd=", &LiveRecord::last15mwinddir,     WHOLE},
    {"&p=",  &LiveRecord::last15msealevel10,  TENTHS},
    {"&rd=", &LiveRecord::last15mraintotal10, TENTHS},
    {"&ra=", &LiveRecord::last60mraintotal10, TENTHS},
    {"&uv=", &LiveRecord::uv10,               TENTHS},
    // clang-format on
};

void compose_windfinder(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                        const moment& now) {
  begin_get(command, endpoint::windfinder, "/wind-cgi/nimbulogload.pl");
  append_parameter(command, "name=", settings.text(windfinder_name));
  append_parameter(command, "&password=", settings.text(windfinder_password));
  command.append_text("&date=");
  append_local_date(command, now);
  command.append_text("&time=");
  append_local_clock(command, now);
  append_known(command, live, WINDFINDER_PARAMETERS);
  end_get(command);
}

void compose_windit(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                    const moment& now) {
  begin_get(command, endpoint::windit, "/nimbulog/nimbulogload");
  append_parameter(command, "id=", settings.text(windit_id));
  command.append_text("&d=");
  append_local_date(command, now);
  command.append_text("&t=");
  append_local_clock(command, now);
  command.append(":%02d", now.local.tm_sec);
  append_known(command, live, WINDIT_AIR_PARAMETERS);
  append_known(command, "&wt=", live.extratemp10[0], TENTHS);
  append_known(command, live, WINDIT_WIND_PARAMETERS);
  command.append_text("&clid=nb");
  end_get(command);
}

// Windfinder answers with a page, of which the body counts, or with a bare text: then no more than one
// character is a good sign.
int judge_windfinder(text_buffer& reply, const upload_spec& spec) {
  debug_print("\n<%s>\n", reply.c_str());
  if (const std::optional<std::string_view> body = html_body(reply)) {
    print_reply(*body);
    if (body->find(spec.success_word) != std::string_view::npos) return 0;
    return fail_with_reply(spec, *body);
  }
  if (strip_line_breaks(reply).length() <= 1) return 0;
  return fail_with_reply(spec, reply.view());
}

}  // namespace

constinit const http_network WINDFINDER = {compose_windfinder,
                                           {.debug_header = "\nWINDFINDER\n%s\n",
                                            .success_word = "OK",
                                            .failure_format = "upload to windfinder: %s",
                                            .no_response_text = "no response from windfinder",
                                            .judge = judge_windfinder}};

constinit const http_network WINDIT = {compose_windit,
                                       {.debug_header = "\nWINDIT\n%s\n",
                                        .success_word = "OK",
                                        .failure_format = "upload to windit: %s",
                                        .no_response_text = "no response from windit",
                                        .judge = judge_reply}};

int upload_windfinder() { return upload_to(WINDFINDER); }

int upload_windit() { return upload_to(WINDIT); }

}  // namespace skypost
