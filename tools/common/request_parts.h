#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skypost {

// A parameter of a request. A record, many values with a separator between them, is taken apart further.
struct request_parameter {
  std::string name;
  std::vector<std::string> fields;  // decoded; a value that is not a record is one field
  char separator = '\0';            // of a record

  bool is_record() const { return separator != '\0'; }
  std::string value() const;  // the whole of it
};

// Neighbouring fields of a record with the same value, by their numbers from 1 on.
struct field_run {
  std::size_t first;
  std::size_t last;
  std::string value;
};

// The fields of a record. An empty end after the last separator is not a field.
std::vector<field_run> runs_of(const request_parameter& record);

// A request taken apart. Texts are as the network reads them, decoded.
struct request_parts {
  std::string method;                         // "GET" or "POST"
  std::string server;                         // "https://example.org:8080"
  std::string path;                           // "/update.php"; empty when the URL has none
  std::vector<request_parameter> login;       // user and password of an HTTP login
  std::vector<request_parameter> parameters;  // of the query or the form, in their order
};

// Takes the command apart that sends a request.
request_parts take_apart(std::string_view command);

}  // namespace skypost
