#include "endpoints/endpoints.h"

#include <strings.h>

#include <cstring>
#include <iterator>

#include "base/error_text.h"
#include "base/text.h"

namespace skypost {
namespace {

// In the order of enum endpoint, which comes from endpoints.def too.
struct built_in {
  const char* name;
  endpoint_kind kind;
  const char* value;
};

constexpr built_in ENDPOINTS[] = {
#define ENDPOINT(name, kind, value) {#name, endpoint_kind::kind, value},
#include "endpoints/endpoints.def"
};

const built_in& built_in_of(endpoint which) { return ENDPOINTS[static_cast<std::size_t>(which)]; }

// The owner's override of one endpoint.
struct owners_value {
  char value[ENDPOINT_CAPACITY + 1];  // empty: the built-in value
  char success_text[SUCCESS_TEXT_CAPACITY + 1];
  bool is_refused;
};
owners_value overrides[std::size(ENDPOINTS)];

owners_value& override_of(endpoint which) { return overrides[static_cast<std::size_t>(which)]; }

// Replaces a refused value in texts that are composed anyway, such as previews.
const char* refused_value(endpoint_kind kind) {
  switch (kind) {
    case endpoint_kind::url:
      return "http://refused.invalid";
    case endpoint_kind::host_and_port:
    case endpoint_kind::host:
      return "refused.invalid";
    case endpoint_kind::address:
      return "nobody@refused.invalid";
    case endpoint_kind::software:
      return "refused";
    case endpoint_kind::packet_path:
      return "REFUSED";
    case endpoint_kind::seconds:
      break;
  }
  return "";
}

template <std::size_t size>
void copy(char (&target)[size], std::string_view text) {
  std::memcpy(target, text.data(), text.size());
  target[text.size()] = '\0';
}

}  // namespace

const char* endpoint_name(endpoint which) { return built_in_of(which).name; }

endpoint_kind endpoint_kind_of(endpoint which) { return built_in_of(which).kind; }

std::optional<endpoint> endpoint_called(std::string_view name) {
  for (int i = 0; i < static_cast<int>(endpoint::COUNT); ++i) {
    const std::string_view candidate = endpoint_name(endpoint{i});
    if (candidate.size() == name.size() && strncasecmp(candidate.data(), name.data(), name.size()) == 0)
      return endpoint{i};
  }
  return std::nullopt;
}

const char* endpoint_value(endpoint which) {
  if (is_refused(which)) return refused_value(built_in_of(which).kind);
  return override_of(which).value[0] != '\0' ? override_of(which).value : built_in_of(which).value;
}

std::string_view endpoint_success_text(endpoint which) {
  return is_refused(which) ? "" : override_of(which).success_text;
}

std::string_view path_in(std::string_view url) {
  constexpr std::string_view SCHEME_END = "://";
  const std::size_t scheme_end = url.find(SCHEME_END);
  return tail_of(url, url.find('/', scheme_end == url.npos ? 0 : scheme_end + SCHEME_END.size()));
}

bool is_refused(endpoint which) { return override_of(which).is_refused; }

int require_endpoints(std::span<const endpoint> needed) {
  for (const endpoint which : needed) {
    if (!is_refused(which)) continue;
    error_text.clear();
    error_text.append("error endpoint file: no valid value for %s, nothing was sent", endpoint_name(which));
    return -1;
  }
  return 0;
}

void reset_endpoints() { std::memset(overrides, 0, sizeof overrides); }

void override_endpoint(endpoint which, std::string_view value, std::string_view success_text) {
  copy(override_of(which).value, value);
  copy(override_of(which).success_text, success_text);
  override_of(which).is_refused = false;
}

void refuse_endpoint(endpoint which) { override_of(which).is_refused = true; }

}  // namespace skypost
