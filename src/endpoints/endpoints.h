#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace skypost {

// Everything that the endpoint file can override: servers, mail addresses, and how stations log in to APRS servers.
enum class endpoint {
#define ENDPOINT(name, kind, value) name,
#include "endpoints/endpoints.def"
  COUNT
};

// "scheme://host[:port][/path]", "host[:port]", a host name, a mail address, a software name, an APRS path, and 1 to 10
// seconds.
enum class endpoint_kind { url, host_and_port, host, address, software, packet_path, seconds };

inline constexpr std::size_t ENDPOINT_CAPACITY = 127;
inline constexpr std::size_t SUCCESS_TEXT_CAPACITY = 60;

// The endpoint's name in the file.
const char* endpoint_name(endpoint which);

// The kind of value this endpoint takes.
endpoint_kind endpoint_kind_of(endpoint which);

// The endpoint of that name, in upper or lower case; nothing if there is none.
std::optional<endpoint> endpoint_called(std::string_view name);

// The effective value. It contains no shell metacharacters and nothing that would end a URL or a line. For a refused
// server it is a name under .invalid, which should never resolve.
const char* endpoint_value(endpoint which);

// The owner's text that marks a good reply of this server, in addition to the network's own test; empty if there is none.
std::string_view endpoint_success_text(endpoint which);

// The part of `url` from the first slash after the host; empty without one. The scheme may be missing.
std::string_view path_in(std::string_view url);

// True if the endpoint file has an invalid value for the endpoint, or cannot be read. Do not fall back to the
// built-in value: the owner may want another server, or an encrypted one.
bool is_refused(endpoint which);

// Returns 0, or -1 with the reason in `error_text` if one of the endpoints is refused.
int require_endpoints(std::span<const endpoint> needed);

// Resets every endpoint to its built-in value.
void reset_endpoints();

// Gives the endpoint a value of its kind, at most ENDPOINT_CAPACITY characters, and a success text, at most
// SUCCESS_TEXT_CAPACITY; empty for none. It is no longer refused.
void override_endpoint(endpoint which, std::string_view value, std::string_view success_text);

// Refuses the endpoint until it is overridden or reset.
void refuse_endpoint(endpoint which);

}  // namespace skypost
