#include "base/endpoints.h"

#include <cerrno>
#include <cstring>
#include <iterator>
#include <string_view>

#include "base/paths.h"

namespace skypost {
namespace {

enum class endpoint_kind { url, host_and_port, host, address };

// Same order as enum endpoint; both come from endpoints.def.
struct endpoint_row {
  const char* name;
  endpoint_kind kind;
  const char* value;
};

constexpr endpoint_row ENDPOINTS[] = {
#define ENDPOINT(name, kind, value) {#name, endpoint_kind::kind, value},
#include "base/endpoints.def"
};

// The owner's overrides; empty means the default. Written by read_endpoints.
char overrides[std::size(ENDPOINTS)][ENDPOINT_CAPACITY + 1];

bool is_host(std::string_view text) {
  return !text.empty() && is_alphanumeric(text, ".-") && is_alphanumeric(head_of(text, 1)) &&
         is_alphanumeric(tail_of(text, text.size() - 1));
}

bool is_port(std::string_view text) {
  unsigned port = 0;
  for (const char character : text) {
    if (character < '0' || character > '9' || port > 65'535) return false;
    port = port * 10 + static_cast<unsigned>(character - '0');
  }
  return port >= 1 && port <= 65'535;
}

bool is_host_and_port(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return is_host(text);
  return is_host(head_of(text, colon)) && is_port(tail_of(text, colon + 1));
}

bool is_url(std::string_view text) {
  for (const std::string_view scheme : {"http://", "https://"})
    if (text.starts_with(scheme)) return is_host_and_port(tail_of(text, scheme.size()));
  return false;
}

bool is_address(std::string_view text) {
  const std::size_t at = text.find('@');
  if (at == std::string_view::npos || at == 0) return false;
  const std::string_view mailbox = head_of(text, at);
  return is_alphanumeric(mailbox, "._+-") && is_alphanumeric(head_of(mailbox, 1)) &&
         is_host(tail_of(text, at + 1));
}

bool fits_its_place(endpoint_kind kind, std::string_view value) {
  if (value.size() > ENDPOINT_CAPACITY) return false;
  switch (kind) {
    case endpoint_kind::url:
      return is_url(value);
    case endpoint_kind::host_and_port:
      return is_host_and_port(value);
    case endpoint_kind::host:
      return is_host(value);
    case endpoint_kind::address:
      return is_address(value);
  }
  return false;
}

// Explains why a value was rejected. A URL copied from a browser often ends in a slash.
const char* fault_of(endpoint_kind kind, std::string_view value) {
  if (value.ends_with('/') && fits_its_place(kind, head_of(value, value.size() - 1)))
    return "remove the trailing slash";
  return "invalid value for this name";
}

std::string_view without_blanks_around(std::string_view text) {
  constexpr std::string_view BLANKS = " \t\r\n";
  const std::size_t first = text.find_first_not_of(BLANKS);
  if (first == std::string_view::npos) return {};
  return tail_of(head_of(text, text.find_last_not_of(BLANKS) + 1), first);
}

// Reads the next line without its comment and newline; false at end of file. NUL is an ordinary character, so
// it cannot hide the rest of the line.
bool next_line(std::FILE* file, text_buffer& line) {
  line.clear();
  int character = std::getc(file);
  if (character == EOF) return false;
  bool is_comment = false;
  for (; character != EOF && character != '\n'; character = std::getc(file)) {
    is_comment = is_comment || character == '#';
    if (!is_comment) line.append_character(static_cast<char>(character));
  }
  return true;
}

// Applies one line; returns an error message, or nullptr.
const char* read_line(std::string_view line) {
  line = without_blanks_around(line);
  if (line.empty()) return nullptr;
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return "expected \"name = value\"";
  const std::string_view name = without_blanks_around(head_of(line, equals));
  const std::string_view value = without_blanks_around(tail_of(line, equals + 1));
  for (std::size_t i = 0; i < std::size(ENDPOINTS); ++i) {
    if (name != ENDPOINTS[i].name) continue;
    if (!fits_its_place(ENDPOINTS[i].kind, value)) return fault_of(ENDPOINTS[i].kind, value);
    std::memcpy(overrides[i], value.data(), value.size());
    overrides[i][value.size()] = '\0';
    return nullptr;
  }
  return "unknown name";
}

}  // namespace

const char* endpoint_value(endpoint row) {
  const char* const overriding = overrides[static_cast<std::size_t>(row)];
  return overriding[0] != '\0' ? overriding : ENDPOINTS[static_cast<std::size_t>(row)].value;
}

const char* endpoint_name(endpoint row) { return ENDPOINTS[static_cast<std::size_t>(row)].name; }

void reset_endpoints() { std::memset(overrides, 0, sizeof overrides); }

void read_endpoints(std::FILE* file, const char* path, std::FILE* errors) {
  fixed_text<511> line;
  for (int number = 1; next_line(file, line); ++number)
    if (const char* const fault = line.was_cut() ? "too long" : read_line(line.view()))
      std::fprintf(errors, "Error: %s line %d: %s\n", path, number, fault);
  if (std::ferror(file) != 0) std::fprintf(errors, "Error: %s: %s\n", path, std::strerror(errno));
}

void load_endpoints(std::FILE* errors) {
  reset_endpoints();
  const path_text path(ENDPOINTS_PATH);
  std::FILE* const file = std::fopen(path.c_str(), "re");
  if (file == nullptr) {
    if (errno != ENOENT) std::fprintf(errors, "Error: %s: %s\n", path.c_str(), std::strerror(errno));
    return;
  }
  read_endpoints(file, path.c_str(), errors);
  std::fclose(file);
}

}  // namespace skypost
