// borgervejr: a short e-mail with the current values, sent by the appliance's mail program.

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "base/error_text.h"
#include "base/paths.h"
#include "base/shell.h"
#include "channels/channels.h"
#include "compose/parameters.h"
#include "endpoints/endpoints.h"

namespace skypost {
namespace {

constexpr char LOGGER_PATH[] = "/usr/bin/logger";
constexpr value_format HUNDREDTHS{from_tenths, 2};

// The lines of the body, in order.
constexpr parameter BODY_LINES[] = {
    // clang-format off
    {"Humidity: ",  &LiveRecord::hum,              WHOLE,       "%\r\n"},
    {"Temp: ",      &LiveRecord::temp10,           TENTHS,      "C\r\n"},
    {"Raw Barom: ", &LiveRecord::press10,          HUNDREDTHS,  "hPa\r\n"},
    {"Solar: ",     &LiveRecord::solar10,          WHOLE_UNITS, "W/sqm\r\n"},
    {"Wind Dir: ",  &LiveRecord::winddir,          WHOLE,       "\r\n"},
    {"Wind Spd: ",  &LiveRecord::wind10,           WHOLE_UNITS, "mps\r\n"},
    {"Wind Gust: ", &LiveRecord::last15mmaxgust10, WHOLE_UNITS, "mps\r\n"},
    {"Tot Rain: ",  &LiveRecord::todayraintotal10, TENTHS,      "mm\r\n"},
    // clang-format on
};

// Room for two paths of maximum length, fully escaped.
using mail_command = fixed_text<2 * 2 * PATH_CAPACITY + 500>;
using date_text = char[200];

// Takes the first line only: a setting must not add headers.
std::string_view chosen_sender(const settings_record& settings) {
  const std::string_view sender = settings.text(sender_address);
  return head_of(sender, sender.find_first_of("\r\n"));
}

// The sender in the settings, or else the one in the endpoint file.
std::string_view sender_of(const settings_record& settings) {
  const std::string_view chosen = chosen_sender(settings);
  return chosen.empty() ? endpoint_value(endpoint::mail_sender) : chosen;
}

void append_path_word(text_buffer& command, const char* appliance_path) {
  append_shell_word(command, path_text(appliance_path).view());
}

void append_header(text_buffer& mail, const station& source) {
  date_text date;
  mail.append_text("date: ");
  mail.append_text({date, std::strftime(date, sizeof date, "%a, %d %b %Y %H:%M:%S %z", &source.now.local)});
  mail.append("\nto: %s\nfrom: ", endpoint_value(endpoint::borgervejr_recipient));
  mail.append_text(sender_of(source.settings));
  mail.append_text("\nsubject: Nimbulog weather report\n\n");
}

void append_body(text_buffer& mail, const station& source) {
  date_text date;
  mail.append_text({date, std::strftime(date, sizeof date, "%d/%m/%Y %H:%M:%S\r\n", &source.now.local)});
  append_known(mail, source.live, BODY_LINES);
}

// Header lines end in LF, body lines in CR LF.
void compose_mail(text_buffer& mail, const station& source) {
  append_header(mail, source);
  append_body(mail, source);
}

}  // namespace

constinit const upload BORGERVEJR = {"borgervejr", carrier::mail, compose_mail, send_mail_report};

std::span<const endpoint> mail_endpoints(const settings_record& settings) {
  static constexpr endpoint NEEDED[] = {endpoint::borgervejr_recipient, endpoint::mail_sender};
  return {NEEDED, chosen_sender(settings).empty() ? 2U : 1U};
}

void append_mail_command(text_buffer& command) {
  append_path_word(command, MAIL_PROGRAM_PATH);
  command.append_text(" -C ");
  append_path_word(command, MAIL_CONFIGURATION_PATH);
  command.append(" %s 2>&1 | %s", endpoint_value(endpoint::borgervejr_recipient), LOGGER_PATH);
}

int send_mail_report() {
  const std::optional<station> source = current_station();
  if (!source) return 0;
  if (require_endpoints(mail_endpoints(source->settings)) != 0) return -1;
  upload_text mail;
  compose_mail(mail, *source);
  mail_command command;
  append_mail_command(command);

  std::FILE* const pipe = popen(command.c_str(), "we");
  if (pipe == nullptr) {
    const int reason = errno;
    error_text.clear();
    latest_exchange.is_command_quoted = true;
    error_text.append("error pipe open: %s: %s", command.c_str(), std::strerror(reason));
    return -1;
  }
  // If the mail program fails, only the system log has the reason: the exit status is the logger's.
  std::fputs(mail.c_str(), pipe);
  pclose(pipe);
  const path_text program(MAIL_PROGRAM_PATH);
  if (access(program.c_str(), X_OK) != 0)
    doubt_upload("the mail program cannot be run: %s", std::strerror(errno));
  return 0;
}

}  // namespace skypost
