#include "base/paths.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace skypost::testing {
namespace {

TEST(Paths, NameNothingElseWhenTheyAreTruncated) {
  std::string root;
  while (root.size() < PATH_CAPACITY) root += "/.";  // every prefix names a directory
  setenv("SKYPOST_ROOT", root.c_str(), 1);
  const path_text path(SETTINGS_PATH);
  unsetenv("SKYPOST_ROOT");
  EXPECT_TRUE(path.was_cut());
  EXPECT_EQ(open(path.c_str(), O_RDONLY | O_CLOEXEC), -1);
  EXPECT_EQ(errno, ENAMETOOLONG);
}

}  // namespace
}  // namespace skypost::testing
