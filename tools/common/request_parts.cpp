#include "common/request_parts.h"

#include <algorithm>
#include <charconv>

namespace skypost {
namespace {

// Removes `text` up to and including the first of `marks`, or all of it, and returns what preceded the mark.
std::string_view cut_at(std::string_view& text, std::string_view marks) {
  const std::string_view head = text.substr(0, text.find_first_of(marks));
  text.remove_prefix(std::min(head.size() + 1, text.size()));
  return head;
}

// Decodes escapes such as "%41"; anything else is left alone.
std::string percent_decoded(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned char byte = 0;
    const char* const digits = text.data() + i + 1;
    if (text[i] == '%' && i + 2 < text.size() &&
        std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
      result += static_cast<char>(byte);
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

// In queries and forms, + means a space.
std::string form_decoded(std::string_view text) {
  std::string blanks(text);
  std::replace(blanks.begin(), blanks.end(), '+', ' ');
  return percent_decoded(blanks);
}

// Every record has at least ten separators; other values are unlikely to have as many of one kind.
char separator_of(std::string_view value) {
  constexpr std::ptrdiff_t OF_A_RECORD = 10;
  for (const char separator : {';', ','})
    if (std::count(value.begin(), value.end(), separator) >= OF_A_RECORD) return separator;
  return '\0';
}

request_parameter parameter_from(std::string_view pair) {
  request_parameter result;
  result.name = form_decoded(cut_at(pair, "="));
  const std::string value = form_decoded(pair);
  result.separator = separator_of(value);
  std::size_t start = 0;
  while (result.is_record()) {
    const std::size_t end = value.find(result.separator, start);
    if (end == std::string::npos) break;
    result.fields.push_back(value.substr(start, end - start));
    start = end + 1;
  }
  result.fields.push_back(value.substr(start));
  return result;
}

std::vector<request_parameter> parameters_from(std::string_view pairs) {
  std::vector<request_parameter> result;
  while (!pairs.empty()) result.push_back(parameter_from(cut_at(pairs, "&")));
  return result;
}

void read_url(request_parts& parts, std::string_view url) {
  const std::string_view scheme = url.substr(0, url.find("//") + 2);
  std::string_view rest = url.substr(scheme.size());
  const std::string_view authority = rest.substr(0, rest.find_first_of("/?"));
  rest.remove_prefix(authority.size());
  parts.path = cut_at(rest, "?");
  if (!rest.empty()) parts.parameters = parameters_from(rest);

  std::string_view host = authority;
  if (authority.find('@') != std::string_view::npos) {
    std::string_view login = cut_at(host, "@");
    parts.login.push_back({"(login) user", {percent_decoded(cut_at(login, ":"))}});
    parts.login.push_back({"(login) password", {percent_decoded(login)}});
  }
  parts.server = std::string(scheme) + std::string(host);
}

bool strip_option(std::string_view& word, std::string_view option) {
  if (!word.starts_with(option)) return false;
  word.remove_prefix(option.size());
  return true;
}

}  // namespace

std::vector<std::string> shell_words(std::string_view command) {
  std::vector<std::string> words;
  std::string word;
  bool is_quoted = false;
  for (std::size_t i = 0; i < command.size(); ++i) {
    if (command[i] == '"') {
      is_quoted = !is_quoted;
    } else if (command[i] == ' ' && !is_quoted) {
      words.push_back(std::move(word));
      word.clear();
    } else {
      if (command[i] == '\\' && i + 1 < command.size()) ++i;
      word += command[i];
    }
  }
  words.push_back(std::move(word));
  return words;
}

std::string request_parameter::value() const {
  std::string whole = fields.front();
  for (std::size_t i = 1; i < fields.size(); ++i) whole += separator + fields[i];
  return whole;
}

std::vector<table_row> rows_of(const std::vector<request_parameter>& parameters) {
  std::vector<table_row> rows;
  for (const request_parameter& parameter : parameters) {
    if (!parameter.is_record()) {
      rows.push_back({parameter.name, parameter.value()});
      continue;
    }
    const std::vector<std::string>& fields = parameter.fields;
    std::vector<std::string> sources = parameter.sources;
    sources.resize(fields.size());
    const bool is_end = fields.back().empty() && sources.back().empty();
    const std::size_t count = fields.size() - (is_end ? 1 : 0);
    for (std::size_t first = 0, end = 1; first < count; first = end++) {
      while (end < count && fields[end] == fields[first] && sources[end] == sources[first]) ++end;
      const std::string last = end == first + 1 ? "" : '-' + std::to_string(end);
      rows.push_back(
          {parameter.name + ' ' + std::to_string(first + 1) + last, fields[first], sources[first]});
    }
  }
  return rows;
}

request_parts take_apart(std::string_view command) {
  request_parts parts;
  parts.method = "GET";
  for (const std::string& text : shell_words(command)) {
    std::string_view word = text;
    if (strip_option(word, "--http-user=")) {
      parts.login.push_back({"(login) user", {std::string(word)}});
    } else if (strip_option(word, "--http-password=")) {
      parts.login.push_back({"(login) password", {std::string(word)}});
    } else if (strip_option(word, "--post-data=")) {
      parts.method = "POST";
      parts.parameters = parameters_from(word);
    } else if (word.starts_with("http://") || word.starts_with("https://")) {
      read_url(parts, word);
    }
  }
  return parts;
}

}  // namespace skypost
