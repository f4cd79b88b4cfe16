// The endpoint file. Whatever it contains, no value can break out of its place in a command or a URL.

#include <cstdio>

#include "base/endpoints.h"
#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace skypost;
  if (size == 0) return 0;
  reset_endpoints();
  std::FILE* const file = fmemopen(const_cast<std::uint8_t*>(data), size, "r");
  fuzz::require(file != nullptr, "fmemopen");
  read_endpoints(file, "endpoints");
  std::fclose(file);

  for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row) {
    const std::string_view value = endpoint_value(static_cast<endpoint>(row));
    fuzz::require(!value.empty() && value.front() != '-', "a value that no program mistakes for an option");
    fuzz::require(value.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                                          ".:/@_+-") == std::string_view::npos,
                  "plain characters");
  }
  return 0;
}
