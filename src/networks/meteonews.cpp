// MeteoNews. A form with the time in UTC and one parameter per known value: °C, %, hPa, m/s, mm, W/m². The
// user is the board's hardware address.

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstring>

#include "compose/command.h"
#include "compose/parameters.h"
#include "networks/networks.h"

namespace skypost {
namespace {

// Addresses shared by a whole series of boards.
constexpr const char* GENERIC_ADDRESSES[] = {"0E:AD:00:00:00:03", "00:01:C0:04:C5:2E", "00:30:E0:00:01:05"};

constexpr value_format WHOLE_UNITS_TRUNCATED{from_tenths_truncated, 0};
constexpr value_format FIVE_MINUTE_MEAN{hour_to_five_minutes, 1};

constexpr parameter PARAMETERS[] = {
    // clang-format off
    {"&ppnn=",    &LiveRecord::sealevel10,         TENTHS},
    {"&rh=",      &LiveRecord::hum,                WHOLE},
    {"&rrr=",     &LiveRecord::last60mraintotal10, FIVE_MINUTE_MEAN},
    {"&rrr_sum=", &LiveRecord::todayraintotal10,   TENTHS},
    {"&glo=",     &LiveRecord::solar10,            WHOLE_UNITS_TRUNCATED},
    {"&uv=",      &LiveRecord::uv10,               WHOLE_UNITS_TRUNCATED},
    {"&tt=",      &LiveRecord::temp10,             TENTHS},
    {"&dd=",      &LiveRecord::winddir,            WHOLE},
    {"&ff=",      &LiveRecord::wind10,             TENTHS},
    {"&fxx=",     &LiveRecord::last15mmaxgust10,   TENTHS},
    // clang-format on
};

bool is_generic(const char* hardware) {
  for (const char* const address : GENERIC_ADDRESSES)
    if (strcasecmp(hardware, address) == 0) return true;
  return false;
}

// In lower case, with '-' between the bytes.
void append_user(text_buffer& user, std::string_view address) {
  for (const char character : address) {
    const int lower = std::tolower(static_cast<unsigned char>(character));
    user.append_character(character == ':' ? '-' : static_cast<char>(lower));
  }
}

// Percent-encodes what would end the user or password in a URL, for older versions of wget also ';'. wget decodes it.
void append_url_word(text_buffer& command, std::string_view text) {
  constexpr std::string_view RESERVED = "@/:;?#&%[]";
  for (const char& character : text) {
    if (RESERVED.find(character) == std::string_view::npos)
      append_quoted(command, {&character, 1});
    else
      command.append("%%%02X", static_cast<unsigned>(character));
  }
}

void append_url_login(text_buffer& command, std::string_view user, std::string_view password) {
  append_url_word(command, user);
  command.append_character(':');
  append_url_word(command, password);
  command.append_character('@');
}

void append_login_options(text_buffer& command, std::string_view user, std::string_view password) {
  command.append_text("--http-user=\"");
  append_quoted(command, user);
  command.append_text("\" --http-password=\"");
  append_quoted(command, password);
  command.append_text("\" --no-check-certificate ");
}

// The time, rounded down to five minutes, then the values.
void append_form(text_buffer& form, const station& source) {
  const std::tm& utc = source.now.utc;
  form.append("time=%04d-%02d-%02d+%02d%%3A%02d%%3A00", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
              utc.tm_hour, utc.tm_min - utc.tm_min % 5);
  append_known(form, source.live, PARAMETERS);
}

// On an NSLU2, the login is in the URL, over plain http; all other boards use https.
void compose_meteonews(text_buffer& command, const station& source) {
  const char* const hardware = source.host.hardware_address;
  fixed_text<std::max<std::size_t>(HARDWARE_ADDRESS_CAPACITY, meteonews_mac.size)> user;
  append_user(user, is_generic(hardware) ? source.settings.text(meteonews_mac) : hardware);
  const std::string_view password = source.settings.text(meteonews_password);
  const bool is_nslu2 = source.host.platform != nullptr && std::strcmp(source.host.platform, "NSLU2") == 0;

  begin_post(command);
  if (!is_nslu2) append_login_options(command, user.view(), password);
  command.append_text("--post-data=\"");
  METEONEWS.append_parameters(command, source);
  command.append_text(is_nslu2 ? "\" \"http://" : "\" \"https://");
  if (is_nslu2) append_url_login(command, user.view(), password);
  command.append("%s\" 2>/dev/stdout | tail -n 1", endpoint_value(METEONEWS.server.in(source.settings)));
}

// The last line of wget's output is empty after a good upload, but also after errors such as 404 and 500. It
// names a refused connection or login.
int judge_meteonews(text_buffer& reply, const upload_spec& spec) {
  print_reply(reply.view());
  reply.cut_at('\n');
  for (const char* const word : {"failed", "ERROR", "Invalid"})
    if (strcasestr(reply.c_str(), word) != nullptr) return fail_with_reply(spec, reply.view());
  return 0;
}

}  // namespace

constinit const http_network METEONEWS = {
    {"meteonews", carrier::http, compose_meteonews, upload_to<METEONEWS>},
    endpoint::meteonews,
    "",
    append_form,
    {.debug_header = "\nMETEONEWS\n%s\n",
     .success = judge_meteonews,
     .failure_format = "upload to meteonews failed: %s",
     .no_response_text = "no response from meteonews",
     .is_pipeline = true}};

}  // namespace skypost
