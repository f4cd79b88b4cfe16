#include "common/file_start.h"

#include <fcntl.h>
#include <unistd.h>

#include "common/descriptor.h"

namespace skypost {

std::string file_start(const std::string& path, std::size_t count) {
  std::string text(count, '\0');
  const descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  const ssize_t length = file.is_open() ? read(file.number(), text.data(), count) : 0;
  text.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  return text;
}

}  // namespace skypost
