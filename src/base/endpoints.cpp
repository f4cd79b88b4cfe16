#include "base/endpoints.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <iterator>
#include <string_view>

#include "base/error_text.h"
#include "base/paths.h"
#include "base/regular_file.h"

namespace skypost {
namespace {

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

bool is_software_word(std::string_view text) { return !text.empty() && is_alphanumeric(text, "._-"); }

// A name, with or without a version after one blank.
bool is_software(std::string_view text) {
  const std::size_t blank = text.find(' ');
  const std::string_view version = tail_of(text, blank);
  return is_software_word(head_of(text, blank)) && (version.empty() || is_software_word(tail_of(version, 1)));
}

bool is_packet_path(std::string_view text) {
  if (text.ends_with('*')) text = head_of(text, text.size() - 1);
  return !text.empty() && is_alphanumeric(text, "-");
}

// What a row can be, and what it is while the owner's value is refused.
struct endpoint_kind {
  bool (*fits)(std::string_view value);
  const char* refused;
  bool is_url = false;  // a path may follow, and after a blank a success text
};

namespace kinds {
// https, so that even a name server that resolves every name gets no password.
constexpr endpoint_kind url = {is_url, "https://refused.invalid", true};
constexpr endpoint_kind host_and_port = {is_host_and_port, "refused.invalid"};
constexpr endpoint_kind host = {is_host, "refused.invalid"};
constexpr endpoint_kind address = {is_address, "nobody@refused.invalid"};
constexpr endpoint_kind software = {is_software, "refused"};
constexpr endpoint_kind packet_path = {is_packet_path, "REFUSED"};
}  // namespace kinds

// Same order as enum endpoint; both come from endpoints.def.
struct endpoint_row {
  const char* name;
  const endpoint_kind& kind;
  const char* value;
};

constexpr endpoint_row ENDPOINTS[] = {
#define ENDPOINT(name, kind, value) {#name, kinds::kind, value},
#include "base/endpoints.def"
};

// The owner's overrides. Written by read_endpoints.
struct override_row {
  char value[ENDPOINT_CAPACITY + 1];  // empty: the default
  char success_text[SUCCESS_TEXT_CAPACITY + 1];
  bool is_refused;
};
override_row overrides[std::size(ENDPOINTS)];

bool is_printable(std::string_view text) {
  for (const char character : text)
    if (character < ' ' || character > '~') return false;
  return true;
}

constexpr std::string_view BLANKS = " \t\r\n";

std::string_view without_blanks_around(std::string_view text) {
  const std::size_t first = text.find_first_not_of(BLANKS);
  if (first == std::string_view::npos) return head_of(text, 0);
  return tail_of(head_of(text, text.find_last_not_of(BLANKS) + 1), first);
}

std::string_view first_word(std::string_view text) { return head_of(text, text.find_first_of(BLANKS)); }

// From the first slash after the host; empty without one.
std::string_view path_in(std::string_view url) {
  constexpr std::string_view SCHEME_END = "://";
  const std::size_t scheme_end = url.find(SCHEME_END);
  return tail_of(url, url.find('/', scheme_end == url.npos ? 0 : scheme_end + SCHEME_END.size()));
}

// Explains why a value is refused, or returns nullptr.
const char* fault_of(const endpoint_kind& kind, std::string_view value) {
  const std::string_view word = kind.fits(value) ? value : first_word(value);
  const std::string_view text = without_blanks_around(tail_of(value, word.size()));
  const std::string_view path = path_in(word);
  if (!kind.fits(head_of(word, word.size() - path.size()))) return "invalid value for this name";
  // A URL copied from a browser often ends in one.
  if (!path.empty() && path.find_first_not_of('/') == path.npos) return "remove the trailing slash";
  if (!kind.is_url && !path.empty()) return "this name takes no path";
  if (!kind.is_url && !text.empty()) return "unexpected text after the value";
  if (!is_alphanumeric(path, "._~/-")) return "a path can only contain letters, digits and . _ ~ / -";
  if (word.size() > ENDPOINT_CAPACITY) return "longer than 127 characters";
  if (!is_printable(text)) return "a success text can only contain printable ASCII characters";
  if (text.size() > SUCCESS_TEXT_CAPACITY) return "a success text has at most 60 characters";
  return nullptr;
}

template <std::size_t size>
void copy(char (&target)[size], std::string_view text) {
  std::memcpy(target, text.data(), text.size());
  target[text.size()] = '\0';
}

void take(override_row& row, const endpoint_kind& kind, std::string_view value) {
  const std::string_view word = kind.is_url ? first_word(value) : value;
  copy(row.value, word);
  copy(row.success_text, without_blanks_around(tail_of(value, word.size())));
  row.is_refused = false;
}

void refuse_all() {
  for (override_row& row : overrides) row.is_refused = true;
}

// Reads the next line without its comment and newline; false at end of file, and if the line cannot be read to its
// end. NUL is an ordinary character, so it cannot hide the rest of the line.
bool next_line(std::FILE* file, text_buffer& line) {
  line.clear();
  int character = std::getc(file);
  if (character == EOF) return false;
  bool is_comment = false;
  for (; character != EOF && character != '\n'; character = std::getc(file)) {
    is_comment = is_comment || character == '#';
    if (!is_comment) line.append_character(static_cast<char>(character));
  }
  return std::ferror(file) == 0;
}

const endpoint_row* row_called(std::string_view name) {
  for (const endpoint_row& row : ENDPOINTS)
    if (name == row.name) return &row;
  return nullptr;
}

// What comes after the "=".
std::string_view value_in(std::string_view rest) { return without_blanks_around(tail_of(rest, 1)); }

// Explains why a line is invalid, or returns nullptr. `row` is the one that it names, if any.
const char* fault_of_line(const text_buffer& line, const endpoint_row* row, std::string_view rest) {
  if (line.was_cut()) return "too long";
  if (!rest.starts_with('=')) return "expected \"name = value\"";
  return row == nullptr ? "unknown name" : fault_of(row->kind, value_in(rest));
}

// Applies one line. An invalid one that begins with a known name refuses the row: the owner wants another server than
// the built-in one, which must get no password.
void read_line(const text_buffer& line, const char* path, int number, std::FILE* errors) {
  const std::string_view text = without_blanks_around(line.view());
  if (text.empty() && !line.was_cut()) return;
  const std::string_view name = head_of(text, text.find_first_of(" \t\r\n="));
  const std::string_view rest = without_blanks_around(tail_of(text, name.size()));
  const endpoint_row* const row = row_called(name);
  const char* const fault = fault_of_line(line, row, rest);
  if (row == nullptr) {
    std::fprintf(errors, "Error: %s line %d: %s; the line is skipped\n", path, number, fault);
  } else if (fault == nullptr) {
    take(overrides[row - ENDPOINTS], row->kind, value_in(rest));
  } else {
    overrides[row - ENDPOINTS].is_refused = true;
    std::fprintf(errors, "Error: %s line %d: %s; uploads that use %s fail unless a later line sets it\n",
                 path, number, fault, row->name);
  }
}

void complain_of_file(const char* path, std::FILE* errors) {
  std::fprintf(errors, "Error: %s: %s; all uploads fail\n", path, std::strerror(errno));
}

}  // namespace

const char* endpoint_value(endpoint row) {
  const auto index = static_cast<std::size_t>(row);
  if (overrides[index].is_refused) return ENDPOINTS[index].kind.refused;
  return overrides[index].value[0] != '\0' ? overrides[index].value : ENDPOINTS[index].value;
}

void append_url(text_buffer& command, endpoint server, const char* path) {
  const std::string_view url = endpoint_value(server);
  command.append_text(url);
  if (path_in(url).empty()) command.append_text(path);
}

std::string_view endpoint_success_text(endpoint row) {
  return is_refused(row) ? "" : overrides[static_cast<std::size_t>(row)].success_text;
}

bool is_refused(endpoint row) { return overrides[static_cast<std::size_t>(row)].is_refused; }

int require_endpoints(std::span<const endpoint> rows) {
  for (const endpoint row : rows) {
    if (!is_refused(row)) continue;
    error_text.clear();
    error_text.append("error endpoint file: no valid value for %s, nothing was sent", endpoint_name(row));
    return -1;
  }
  return 0;
}

const char* endpoint_name(endpoint row) { return ENDPOINTS[static_cast<std::size_t>(row)].name; }

void reset_endpoints() { std::memset(overrides, 0, sizeof overrides); }

void read_endpoints(std::FILE* file, const char* path, std::FILE* errors) {
  fixed_text<511> line;
  for (int number = 1; next_line(file, line); ++number) read_line(line, path, number, errors);
  if (std::ferror(file) == 0) return;
  complain_of_file(path, errors);
  refuse_all();
}

void load_endpoints(std::FILE* errors) {
  reset_endpoints();
  const path_text path(ENDPOINTS_PATH);
  struct stat status {};
  const int descriptor = open_regular_file(path.c_str(), O_RDONLY, status);
  std::FILE* const file = descriptor < 0 ? nullptr : fdopen(descriptor, "r");
  if (file == nullptr) {
    if (errno == ENOENT) return;
    complain_of_file(path.c_str(), errors);
    refuse_all();
    return;
  }
  read_endpoints(file, path.c_str(), errors);
  std::fclose(file);
}

}  // namespace skypost
