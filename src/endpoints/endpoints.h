#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace skypost {

// The rows of the endpoint file: servers, mail addresses, and what APRS servers are told.
enum class endpoint {
#define ENDPOINT(name, kind, value) name,
#include "endpoints/endpoints.def"
  COUNT
};

// "scheme://host[:port][/path]", "host[:port]", a host name, a mail address, a software name and an APRS path.
enum class endpoint_kind { url, host_and_port, host, address, software, packet_path };

inline constexpr std::size_t ENDPOINT_CAPACITY = 127;
inline constexpr std::size_t SUCCESS_TEXT_CAPACITY = 60;

// The row's name in the endpoint file.
const char* endpoint_name(endpoint row);

// What a value of the row must be.
endpoint_kind endpoint_kind_of(endpoint row);

// The row of that name; nothing if there is none.
std::optional<endpoint> endpoint_called(std::string_view name);

// The value in effect, of the row's kind. It contains no character that is special to the shell, and none that ends a
// URL or a line. If the row is refused, it is a name that never resolves.
const char* endpoint_value(endpoint row);

// The text that marks a good reply of this server, in addition to the network's own test; empty if there is none.
std::string_view endpoint_success_text(endpoint row);

// The part of `url` from the first slash after the host; empty without one. The scheme may be missing.
std::string_view path_in(std::string_view url);

// True if the endpoint file has an invalid value for the row, or cannot be read. The default must not be used then:
// the owner may want another server, or an encrypted one.
bool is_refused(endpoint row);

// Returns 0, or -1 with the reason in `error_text` if one of the rows is refused.
int require_endpoints(std::span<const endpoint> rows);

// Resets every row to its default.
void reset_endpoints();

// Gives the row a value of its kind, at most ENDPOINT_CAPACITY characters, and a success text, at most
// SUCCESS_TEXT_CAPACITY; empty for none. It is no longer refused.
void override_endpoint(endpoint row, std::string_view value, std::string_view success_text);

// From now on the row has no valid value, until it is overridden or reset.
void refuse_endpoint(endpoint row);

}  // namespace skypost
