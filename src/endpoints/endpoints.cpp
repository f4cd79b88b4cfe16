#include "endpoints/endpoints.h"

#include <cstring>
#include <iterator>

#include "base/error_text.h"
#include "base/text.h"

namespace skypost {
namespace {

// Same order as enum endpoint; both come from endpoints.def.
struct endpoint_row {
  const char* name;
  endpoint_kind kind;
  const char* value;
};

constexpr endpoint_row ENDPOINTS[] = {
#define ENDPOINT(name, kind, value) {#name, endpoint_kind::kind, value},
#include "endpoints/endpoints.def"
};

const endpoint_row& row_of(endpoint row) { return ENDPOINTS[static_cast<std::size_t>(row)]; }

// What the owner says of a row.
struct override_row {
  char value[ENDPOINT_CAPACITY + 1];  // empty: the default
  char success_text[SUCCESS_TEXT_CAPACITY + 1];
  bool is_refused;
};
override_row overrides[std::size(ENDPOINTS)];

override_row& override_of(endpoint row) { return overrides[static_cast<std::size_t>(row)]; }

// What a row is while the owner's value is refused.
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
      break;
  }
  return "REFUSED";
}

template <std::size_t size>
void copy(char (&target)[size], std::string_view text) {
  std::memcpy(target, text.data(), text.size());
  target[text.size()] = '\0';
}

}  // namespace

const char* endpoint_name(endpoint row) { return row_of(row).name; }

endpoint_kind endpoint_kind_of(endpoint row) { return row_of(row).kind; }

std::optional<endpoint> endpoint_called(std::string_view name) {
  for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row)
    if (name == endpoint_name(endpoint{row})) return endpoint{row};
  return std::nullopt;
}

const char* endpoint_value(endpoint row) {
  if (is_refused(row)) return refused_value(row_of(row).kind);
  return override_of(row).value[0] != '\0' ? override_of(row).value : row_of(row).value;
}

std::string_view endpoint_success_text(endpoint row) {
  return is_refused(row) ? "" : override_of(row).success_text;
}

std::string_view path_in(std::string_view url) {
  constexpr std::string_view SCHEME_END = "://";
  const std::size_t scheme_end = url.find(SCHEME_END);
  return tail_of(url, url.find('/', scheme_end == url.npos ? 0 : scheme_end + SCHEME_END.size()));
}

bool is_refused(endpoint row) { return override_of(row).is_refused; }

int require_endpoints(std::span<const endpoint> rows) {
  for (const endpoint row : rows) {
    if (!is_refused(row)) continue;
    error_text.clear();
    error_text.append("error endpoint file: no valid value for %s, nothing was sent", endpoint_name(row));
    return -1;
  }
  return 0;
}

void reset_endpoints() { std::memset(overrides, 0, sizeof overrides); }

void override_endpoint(endpoint row, std::string_view value, std::string_view success_text) {
  copy(override_of(row).value, value);
  copy(override_of(row).success_text, success_text);
  override_of(row).is_refused = false;
}

void refuse_endpoint(endpoint row) { override_of(row).is_refused = true; }

}  // namespace skypost
