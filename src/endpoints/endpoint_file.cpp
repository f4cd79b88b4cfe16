#include "endpoints/endpoint_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

#include "base/paths.h"
#include "base/regular_file.h"
#include "base/text.h"
#include "endpoints/endpoints.h"

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

// A name, optionally followed by one space and a version.
bool is_software(std::string_view text) {
  const std::size_t blank = text.find(' ');
  const std::string_view version = tail_of(text, blank);
  return is_software_word(head_of(text, blank)) && (version.empty() || is_software_word(tail_of(version, 1)));
}

bool is_packet_path(std::string_view text) {
  if (text.ends_with('*')) text = head_of(text, text.size() - 1);
  return !text.empty() && is_alphanumeric(text, "-");
}

bool is_seconds(std::string_view text) {
  return text == "10" || (text.size() == 1 && text[0] >= '1' && text[0] <= '9');
}

bool fits(endpoint_kind kind, std::string_view value) {
  switch (kind) {
    case endpoint_kind::url:
      return is_url(value);
    case endpoint_kind::host_and_port:
      return is_host_and_port(value);
    case endpoint_kind::host:
      return is_host(value);
    case endpoint_kind::address:
      return is_address(value);
    case endpoint_kind::software:
      return is_software(value);
    case endpoint_kind::packet_path:
      return is_packet_path(value);
    case endpoint_kind::seconds:
      return is_seconds(value);
  }
  return false;
}

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

// The text after the "=". A URL may have a path, and a success text after a space.
struct value_parts {
  std::string_view value;
  std::string_view path;  // the end of `value`, from its slash on
  std::string_view success_text;
};

value_parts parts_of(endpoint_kind kind, std::string_view text) {
  const std::string_view value = fits(kind, text) ? text : first_word(text);
  return {value, path_in(value), without_blanks_around(tail_of(text, value.size()))};
}

// Explains why a value is refused, or returns nullptr.
const char* fault_of_value(endpoint_kind kind, const value_parts& parts) {
  const auto& [value, path, success_text] = parts;
  const bool is_url = kind == endpoint_kind::url;
  if (!fits(kind, head_of(value, value.size() - path.size()))) return "invalid value for this name";
  // URLs copied from a browser often end in a slash.
  if (!path.empty() && path.find_first_not_of('/') == path.npos) return "remove the trailing slash";
  if (!is_url && !path.empty()) return "this name takes no path";
  if (kind == endpoint_kind::software && !success_text.empty())
    return "expected a name, and a version after one blank";
  if (!is_url && !success_text.empty()) return "unexpected text after the value";
  if (!is_alphanumeric(path, "._~/-")) return "a path can only contain letters, digits and . _ ~ / -";
  if (value.size() > ENDPOINT_CAPACITY) return "longer than 127 characters";
  if (!is_printable(success_text)) return "a success text can only contain printable ASCII characters";
  if (success_text.size() > SUCCESS_TEXT_CAPACITY) return "a success text has at most 60 characters";
  return nullptr;
}

// Reads the next line, dropping its comment and its end: LF, CR LF, or a lone CR. Returns false at end of file or on a
// read error. NUL is an ordinary character, so it cannot hide the rest of the line.
bool next_line(std::FILE* file, text_buffer& line) {
  line.clear();
  int character = std::getc(file);
  if (character == EOF) return false;
  bool is_comment = false;
  for (; character != EOF && character != '\n' && character != '\r'; character = std::getc(file)) {
    is_comment = is_comment || character == '#';
    if (!is_comment) line.append_character(static_cast<char>(character));
  }
  if (character == '\r') {
    const int next = std::getc(file);
    if (next != '\n' && next != EOF) std::ungetc(next, file);
  }
  return std::ferror(file) == 0;
}

// `rest` is the line after the name. Overrides the named endpoint; returns nullptr, or what is wrong with the line.
const char* apply(const text_buffer& line, std::optional<endpoint> named, std::string_view rest) {
  if (line.was_cut()) return "too long";
  if (!rest.starts_with('=')) return "expected \"name = value\"";
  if (!named) return "unknown name";
  const endpoint_kind kind = endpoint_kind_of(*named);
  const value_parts parts = parts_of(kind, without_blanks_around(tail_of(rest, 1)));
  const char* const fault = fault_of_value(kind, parts);
  if (fault == nullptr) override_endpoint(*named, parts.value, parts.success_text);
  return fault;
}

// An invalid line that starts with a known name refuses that endpoint: the owner meant some other server, so the
// built-in one must not get the password.
void read_line(const text_buffer& line, const char* path, int number, std::FILE* errors) {
  constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
  std::string_view text = line.view();
  if (number == 1 && text.starts_with(BYTE_ORDER_MARK)) text.remove_prefix(BYTE_ORDER_MARK.size());
  text = without_blanks_around(text);
  if (text.empty() && !line.was_cut()) return;
  const std::string_view name = head_of(text, text.find_first_of(" \t\r\n=:"));
  const std::optional<endpoint> named = endpoint_called(name);
  const char* const fault = apply(line, named, without_blanks_around(tail_of(text, name.size())));
  if (fault == nullptr) return;
  if (named) {
    refuse_endpoint(*named);
    std::fprintf(errors, "Error: %s line %d: %s; uploads that use %s fail unless a later line sets it\n",
                 path, number, fault, endpoint_name(*named));
  } else {
    std::fprintf(errors, "Error: %s line %d: %s; the line is skipped\n", path, number, fault);
  }
}

void refuse_all(const char* path, std::FILE* errors) {
  std::fprintf(errors, "Error: %s: %s; all uploads fail\n", path, std::strerror(errno));
  for (int i = 0; i < static_cast<int>(endpoint::COUNT); ++i) refuse_endpoint(endpoint{i});
}

// True if `path` does not exist only because its directory is a dangling link.
bool is_directory_lost(const path_text& path) {
  fixed_text<PATH_CAPACITY> directory;
  directory.append_text(head_of(path.view(), path.view().rfind('/')));
  struct stat found {};
  return lstat(directory.c_str(), &found) == 0 && stat(directory.c_str(), &found) != 0;
}

}  // namespace

void read_endpoints(std::FILE* file, const char* path, std::FILE* errors) {
  fixed_text<511> line;
  for (int number = 1; next_line(file, line); ++number) read_line(line, path, number, errors);
  if (std::ferror(file) != 0) refuse_all(path, errors);
}

void load_endpoints(std::FILE* errors) {
  reset_endpoints();
  const path_text path(ENDPOINTS_PATH);
  struct stat found {};
  const int descriptor = open_regular_file(path.c_str(), O_RDONLY, found);
  if (descriptor < 0 && errno == ENOENT && !is_directory_lost(path)) return;
  std::FILE* const file = descriptor < 0 ? nullptr : fdopen(descriptor, "r");
  if (file == nullptr) {
    refuse_all(path.c_str(), errors);
    if (descriptor >= 0) close(descriptor);
    return;
  }
  read_endpoints(file, path.c_str(), errors);
  std::fclose(file);
}

}  // namespace skypost
