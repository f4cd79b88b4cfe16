// AnythingWeather. A POST request with name, password and a comma-separated record: local time, °F, %, inHg,
// mph, inches, W/m². Missing values are empty.

#include "base/debug.h"
#include "compose/command.h"
#include "compose/numbered_record.h"
#include "networks/networks.h"

namespace skypost {
namespace {

constexpr value_format EXACT_INHG{to_exact_inhg, 2};

constexpr numbered_field FIELDS[] = {
    // clang-format off
    field( 1, number_or("", &LiveRecord::temp10,           FAHRENHEIT)),
    field( 2, number_or("", &LiveRecord::dew10,            FAHRENHEIT)),
    field( 3, number_or("", &LiveRecord::hum,              WHOLE)),
    field( 4, number_or("", &LiveRecord::sealevel10,       EXACT_INHG)),
    field( 5, number_or("", &LiveRecord::winddir,          WHOLE)),
    field( 6, number_or("", &LiveRecord::wind10,           MPH)),
    field( 7, number_or("", &LiveRecord::todayraintotal10, INCHES)),
    field( 8, number_or("", &LiveRecord::solar10,          TENTHS)),
    field( 9, always("")),
    field(10, number_or("", &LiveRecord::last15mmaxgust10, MPH)),
    field(11, always("")),
    // clang-format on
};
static_assert(numbers_each_once(FIELDS, 11));

// The form is already percent-encoded: "%2D" and "%2C" are '-' and ',', "%0D" ends the record. "vsersion" is
// the network's spelling.
void append_form(text_buffer& form, const station& source) {
  const std::tm& local = source.now.local;
  append_parameter(form, "username=", source.settings.text(anythingweather_user));
  append_parameter(form, "&password=", source.settings.text(anythingweather_password));
  form.append("&vsersion=1&WXData=%04d%%2D%02d%%2D%02d+%02d:%02d:00%%2C", local.tm_year + 1900,
              local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min);
  append_fields(form, FIELDS, "%2C", source, append_url_value);
  form.append_text("%2C%0D");
}

// The status line that wget prints decides.
constexpr std::string_view SUCCESS = "200 OK";

// Printed in debug mode if the first line of the reply does not confirm the upload.
constexpr char CLOSING_LINE[] = "Reply: OK\n";

int fail_with_closing_line(const upload_spec& spec) {
  debug_print(CLOSING_LINE);
  return fail_without_response(spec);
}

// The status may follow lines about the connection, so it counts in any line. A failure text quotes the first line.
int judge_anythingweather(text_buffer& reply, const upload_spec& spec) {
  print_reply(reply.view());
  const std::string_view first_line = head_of(reply.view(), reply.view().find('\n'));
  if (first_line.find(SUCCESS) == std::string_view::npos) debug_print(CLOSING_LINE);
  if (reply.view().find(SUCCESS) != std::string_view::npos) return 0;
  return fail_with_reply(spec, first_line);
}

}  // namespace

constinit const http_network ANYTHINGWEATHER = {
    sent_by_post<ANYTHINGWEATHER>("anythingweather"),
    endpoint::anythingweather,
    "/feeds/load/WXDATAPOST.ASP",
    append_form,
    {.debug_header = "\nANYTHINGWEATHER\n%s\n",
     .success = judge_anythingweather,
     .failure_format = "upload to www.anythingweather.com failed: %s",
     .no_response_text = "no response from anythingweather",
     .judge_empty = fail_with_closing_line}};

}  // namespace skypost
