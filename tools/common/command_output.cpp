#include "common/command_output.h"

#include <cstdio>

namespace skypost {

std::string output_of(const char* command) {
  std::FILE* const pipe = popen(command, "re");
  if (pipe == nullptr) return {};
  char text[4'000];
  const std::size_t length = std::fread(text, 1, sizeof text, pipe);
  pclose(pipe);
  return {text, length};
}

}  // namespace skypost
