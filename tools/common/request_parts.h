#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skypost {

// A parameter of a request. If it is a record (many values with separators between them), it is split into fields.
struct request_parameter {
  std::string name;
  std::vector<std::string> fields;  // decoded; a value that is not a record is one field
  char separator = '\0';            // of a record
  // The source of each field of a record, empty for a constant field. name_sources() adds them.
  std::vector<std::string> sources{};

  bool is_record() const { return separator != '\0'; }
  std::string value() const;  // with the separators
};

struct table_row {
  std::string name;
  std::string value;
  std::string source{};  // of a record's field
};

// Returns parameters as a table. A record gets one row for each run of equal fields with one source, numbered from 1:
// "val 11-13". An empty field after the last separator is left out unless it has a source.
std::vector<table_row> rows_of(const std::vector<request_parameter>& parameters);

// The parts of a request, decoded as the network reads them.
struct request_parts {
  std::string method;                         // "GET" or "POST"
  std::string server;                         // "https://example.org:8080"
  std::string path;                           // "/update.php"; empty if the URL has none
  std::vector<request_parameter> login;       // "(login) user" and "(login) password"
  std::vector<request_parameter> parameters;  // of the query or form, in order
};

// Splits a command into words as the shell does.
std::vector<std::string> shell_words(std::string_view command);

// Parses the command that sends a request.
request_parts take_apart(std::string_view command);

}  // namespace skypost
