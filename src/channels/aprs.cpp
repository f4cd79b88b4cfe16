// CWOP and APRS: one session with an APRS-IS server. The program sends a login line and a weather packet with position and
// UTC time; the reply contains the call sign if the server accepted the login.

#include <netdb.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "base/debug.h"
#include "base/error_text.h"
#include "channels/channels.h"
#include "compose/software.h"
#include "compose/value.h"
#include "endpoints/endpoints.h"
#include "transport/reply_listener.h"

namespace skypost {
namespace {

constexpr std::int32_t CWOP_PASSCODE = -1;  // CWOP stations are not verified
constexpr char CWOP_PATH[] = "TCPXX*";      // the path in their packets
constexpr int ATTEMPTS = 5;                 // per server
constexpr std::size_t APRS_REPLY_CAPACITY = 1'000;

struct packet_piece {
  char letter;
  live_number value;
  double (*convert)(std::int32_t value);
};

// The values of three digits, in the order of the packet.
constexpr packet_piece PIECES[] = {
    // clang-format off
    {'_', &LiveRecord::winddir,            to_itself},
    {'/', &LiveRecord::wind10,             to_mph},
    {'g', &LiveRecord::last15mmaxgust10,   to_mph},
    {'t', &LiveRecord::temp10,             to_fahrenheit},
    {'r', &LiveRecord::last60mraintotal10, to_hundredths_inch},
    {'p', &LiveRecord::last24hraintotal10, to_hundredths_inch},
    {'P', &LiveRecord::todayraintotal10,   to_hundredths_inch},
    // clang-format on
};

// A letter and `width` digits, or dots if the value is missing.
void append_piece(text_buffer& text, char letter, int width, std::int32_t value,
                  double (*convert)(std::int32_t)) {
  if (known(value))
    text.append("%c%0*lld", letter, width, to_nearest(convert(value)));
  else
    text.append("%c%.*s", letter, width, ".....");
}

// The settings hold seconds of arc, the packet hundredths of a minute.
long long to_hundredths_of_minute(std::int32_t seconds) { return to_nearest(seconds * 100.0 / 60.0); }

void append_position(text_buffer& text, const settings_record& settings) {
  text.append("z%02d%02d.%02lld%c", settings.integer(latitude_degrees), settings.integer(latitude_minutes),
              to_hundredths_of_minute(settings.integer(latitude_seconds)),
              settings.is_on(latitude_south) ? 'S' : 'N');
  text.append("/%03d%02d.%02lld%c", settings.integer(longitude_degrees), settings.integer(longitude_minutes),
              to_hundredths_of_minute(settings.integer(longitude_seconds)),
              settings.is_on(longitude_west) ? 'W' : 'E');
}

// W/m² in three digits; lower-case l adds 1000.
void append_luminosity(text_buffer& text, std::int32_t solar10) {
  if (!known(solar10)) return;
  if (solar10 <= 9'999)
    text.append("L%03d", solar10 / 10);
  else
    text.append("l%03d", solar10 / 10 - 1'000);
}

void append_values(text_buffer& text, const station& source, bool cwop) {
  const LiveRecord& live = source.live;
  for (const packet_piece& piece : PIECES)
    append_piece(text, piece.letter, 3, piece.value.of(live), piece.convert);
  const bool at_sea_level = source.settings.unsigned_integer(aprs_pressure_kind) == 1;
  append_piece(text, 'b', 5, at_sea_level ? live.sealevel10 : live.altimeter10, to_itself);
  append_piece(text, 'h', 2, live.hum == 100 ? 0 : live.hum, to_itself);  // two digits: 00 is 100 %
  if (cwop) append_luminosity(text, live.solar10);
}

// The station that logs in, and its kind.
struct aprs_login {
  std::string_view call_sign;
  std::int32_t passcode;
  bool cwop;
};

aprs_login login_at_cwop(const settings_record& settings) {
  return {settings.text(cwop_id), CWOP_PASSCODE, true};
}

aprs_login login_at_aprs(const settings_record& settings) {
  return {settings.text(aprs_call_sign), settings.integer(aprs_passcode), false};
}

void append_packet(text_buffer& text, const station& source, const aprs_login& login) {
  const std::tm& utc = source.now.utc;
  text.append_text("User ");
  text.append_text(login.call_sign);
  text.append(" pass %d vers %s\r\n", login.passcode, endpoint_value(endpoint::aprs_software));
  text.append_text(login.call_sign);
  text.append(">APRS,%s:@%02d%02d%02d", login.cwop ? CWOP_PATH : endpoint_value(endpoint::aprs_path),
              utc.tm_mday, utc.tm_hour, utc.tm_min);
  append_position(text, source.settings);
  append_values(text, source, login.cwop);
  text.append("eNB%d\r\n", STATION_TYPE);
}

void compose_cwop(text_buffer& text, const station& source) {
  append_packet(text, source, login_at_cwop(source.settings));
}

void compose_aprs(text_buffer& text, const station& source) {
  append_packet(text, source, login_at_aprs(source.settings));
}

// What all attempts have in common.
struct aprs_task {
  std::uint32_t port;
  const char* call_sign;
  bool cwop;
  const upload_text& text;
};

enum class outcome { sent, try_again, next_server, give_up };

void pause_for(unsigned milliseconds) {
  const timespec length = {.tv_sec = milliseconds / 1'000,
                           .tv_nsec = static_cast<long>(milliseconds % 1'000) * 1'000'000};
  nanosleep(&length, nullptr);
}

void add_failure(const char* action, int attempt, const char* host, const char* reason) {
  error_text.append("error %s (%d) \"%s\": %s, ", action, attempt, host, reason);
}

// Limits how long connect() waits, if the endpoint file sets a limit. When the time is up, connect() fails with
// EINPROGRESS, or with EALREADY if a signal has interrupted it before.
void limit_connect(int connection) {
  const timeval limit = {.tv_sec = std::strtol(endpoint_value(endpoint::aprs_connect_seconds), nullptr, 10),
                         .tv_usec = 0};
  if (limit.tv_sec > 0) setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
}

// Returns nullptr on success, otherwise the reason.
const char* connect_to(int connection, const char* host, std::uint32_t port) {
  constexpr int SEE_ERRNO = -1;  // glibc's NETDB_INTERNAL; musl has no such constant and never sets it
  sockaddr_in address{};
  if (resolve_host(address, host, port) != 0)
    return h_errno == SEE_ERRNO ? std::strerror(errno) : hstrerror(h_errno);
  limit_connect(connection);
  int result = 0;
  do {
    result = connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  } while (result != 0 && errno == EINTR);
  if (result == 0) return nullptr;
  return std::strerror(errno == EINPROGRESS || errno == EALREADY ? ETIMEDOUT : errno);
}

// Reads what the server has sent so far, in one read. Returns false if nothing has arrived.
bool receive_reply(int connection, text_buffer& reply) {
  // If the server just closes the connection, errno is not set; clear it, or an older error would be reported.
  errno = 0;
  const ssize_t count = read(connection, reply.storage(), reply.capacity());
  if (count < 1) return false;
  reply.set_length(static_cast<std::size_t>(count));
  return true;
}

outcome converse(int connection, const aprs_task& task, const char* host, int attempt) {
  if (const char* const reason = connect_to(connection, host, task.port)) {
    add_failure("socket open", attempt, host, reason);
    return outcome::next_server;
  }
  debug_print("\n%s (%s)\n%s\n", task.cwop ? "CWOP" : "APRS", host, task.text.c_str());
  if (send(connection, task.text.c_str(), task.text.length(), MSG_NOSIGNAL) < 0) {
    add_failure("socket write", attempt, host, std::strerror(errno));
    return outcome::try_again;
  }
  pause_for(aprs_pauses.before_reading);
  fixed_text<APRS_REPLY_CAPACITY> reply;
  if (!receive_reply(connection, reply)) {
    add_failure("socket read", attempt, host, std::strerror(errno));
    return outcome::try_again;
  }
  tell_reply(reply.view());
  debug_print("Reply: %s\n", reply.c_str());
  if (std::strstr(reply.c_str(), task.call_sign) != nullptr) {
    // CWOP's own servers call every station unverified, but accept its packet.
    if (!task.cwop && std::strstr(reply.c_str(), " unverified") != nullptr)
      doubt_upload("unverified: most servers drop the packet");
    return outcome::sent;
  }
  add_failure("data transfer", attempt, host, newlines_to_commas(reply).c_str());
  return outcome::try_again;
}

outcome attempt_at(const char* host, const aprs_task& task, int attempt) {
  pause_for(aprs_pauses.before_attempt);
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connection < 0) {
    error_text.append("error socket init: %s, ", std::strerror(errno));
    return outcome::give_up;
  }
  const outcome result = converse(connection, task, host, attempt);
  close(connection);
  return result;
}

outcome try_server(const char* host, const aprs_task& task) {
  outcome result = outcome::try_again;
  for (int attempt = 1; attempt <= ATTEMPTS && result == outcome::try_again; ++attempt)
    result = attempt_at(host, task, attempt);
  return result;
}

bool send_to_one_of(const char* const* servers, const aprs_task& task) {
  for (; *servers != nullptr; ++servers) {
    const outcome result = try_server(*servers, task);
    if (result == outcome::sent) return true;
    if (result == outcome::give_up) return false;
  }
  return false;
}

// A NUL-terminated copy of a setting; a full slot has no NUL.
using setting_text = fixed_text<std::max({cwop_id.size, aprs_call_sign.size, aprs_host.size})>;

int session_of(const char* const* servers, std::uint32_t port, const aprs_login& login,
               std::span<const endpoint> needed) {
  if (live_data_stale == 0 && require_endpoints(needed) != 0) return -1;
  setting_text call_sign;
  call_sign.append_text(login.call_sign);
  return aprs_session(servers, port, call_sign.c_str(), login.passcode, login.cwop);
}

}  // namespace

constinit const upload CWOP = {"cwop", carrier::aprs, compose_cwop, upload_cwop};
constinit const upload APRS = {"aprs", carrier::aprs, compose_aprs, upload_aprs};

constinit aprs_pause_lengths aprs_pauses;

int resolve_host(sockaddr_in& address, const char* host, std::uint32_t port) {
  const hostent* const found = gethostbyname(host);
  if (found == nullptr || found->h_addrtype != AF_INET || found->h_addr_list[0] == nullptr) return -1;
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  std::memcpy(&address.sin_addr, found->h_addr_list[0], sizeof address.sin_addr);
  return 0;
}

text_buffer& newlines_to_commas(text_buffer& text) {
  text.replace_all('\n', ',');
  return text;
}

int aprs_session(const char* const* servers, std::uint32_t port, const char* call_sign, std::int32_t passcode,
                 bool cwop) {
  error_text.clear();
  const std::optional<station> source = current_station();
  if (!source) return 0;
  if (std::strpbrk(call_sign, "\r\n") != nullptr) {
    // The server would take the rest for another line.
    error_text.append_text("error call sign: contains a line break, nothing was sent");
    return -1;
  }
  upload_text text;
  append_packet(text, *source, {call_sign, passcode, cwop});
  if (!send_to_one_of(servers, {port, call_sign, cwop, text})) return -1;
  error_text.clear();
  return 0;
}

int upload_cwop() {
  const char* const servers[] = {endpoint_value(endpoint::cwop_first), endpoint_value(endpoint::cwop_second),
                                 nullptr};
  return session_of(servers, CWOP_PORT, login_at_cwop(station_settings), CWOP_ENDPOINTS);
}

int upload_aprs() {
  setting_text host;
  host.append_text(station_settings.text(aprs_host));
  const char* const servers[] = {host.c_str(), nullptr};
  return session_of(servers, station_settings.unsigned_integer(aprs_port), login_at_aprs(station_settings),
                    APRS_ENDPOINTS);
}

}  // namespace skypost
