// Fuzzes the endpoint file. An endpoint's value must always be bounded and stay in its place in a command, a URL or an
// APRS login, and a success text must be one line.

#include <cstdio>

#include "base/text.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace skypost;
  if (size == 0) return 0;
  reset_endpoints();
  std::FILE* const file = fmemopen(const_cast<std::uint8_t*>(data), size, "r");
  fuzz::require(file != nullptr, "fmemopen");
  read_endpoints(file, "endpoints");
  std::fclose(file);

  for (int i = 0; i < static_cast<int>(endpoint::COUNT); ++i) {
    const auto row = static_cast<endpoint>(i);
    const std::string_view value = endpoint_value(row);
    const endpoint_kind kind = endpoint_kind_of(row);
    const bool is_number = kind == endpoint_kind::seconds;
    const bool is_server =
        !is_number && kind != endpoint_kind::software && kind != endpoint_kind::packet_path;
    fuzz::require((is_number || !value.empty()) && value.size() <= ENDPOINT_CAPACITY,
                  "a value, and not too long");
    fuzz::require(!is_number || value.find_first_not_of("0123456789") == value.npos, "digits");
    fuzz::require(is_alphanumeric(value, is_server ? ".:/@_+-~" : "._-* "), "plain characters");
    fuzz::require(!is_server || value.front() != '-', "a value that no program takes for an option");
    // If one of the others is refused, nothing is sent at all.
    fuzz::require(!is_refused(row) || !is_server || value.ends_with(".invalid"), "a server that is none");
    const std::string_view text = endpoint_success_text(row);
    fuzz::require(
        text.size() <= SUCCESS_TEXT_CAPACITY && text.find_first_of("\r\n") == std::string_view::npos,
        "one line, and not too long");
    fuzz::require(text.empty() || (value.starts_with("http") && !is_refused(row)), "that of a URL");
  }
  return 0;
}
