#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skypost {

// A parameter of a request. A record, many values with separators between them, is split into its fields.
struct request_parameter {
  std::string name;
  std::vector<std::string> fields;  // decoded; a value that is not a record is one field
  char separator = '\0';            // of a record
  // Where each field of a record comes from; empty for one that never changes, and none if that was not asked.
  std::vector<std::string> sources{};

  bool is_record() const { return separator != '\0'; }
  std::string value() const;  // with the separators
};

struct table_row {
  std::string name;
  std::string value;
  std::string source{};  // of a field
};

// Parameters as a table. A record has a row for each run of equal fields of one source, by their numbers, which start
// at 1: "val 11-13". What is empty after the last separator is no field, unless it has a source.
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
