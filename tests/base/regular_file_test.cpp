#include "base/regular_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <optional>
#include <thread>

#include "support/appliance_folder.h"
#include "support/small_disk.h"

namespace skypost::testing {
namespace {

constexpr char NAME[] = "/srv/www/file.txt";

class SharedFile : public ::testing::Test {
 protected:
  void replace(const std::string& text) const {
    const int file = open_shared_file(path.c_str());
    ASSERT_GE(file, 0);
    replace_content(file, path.c_str(), text);
  }

  appliance_folder appliance;
  std::string path = appliance.path(NAME);
};

TEST_F(SharedFile, StaysTheSameFileWithNothingOfALongerTextLeft) {
  appliance.write(NAME, std::string(20'000, 'x'));
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(path.c_str(), 33, 33), 0);
  }
  struct stat before {
  }, after{};
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  replace("short");
  ASSERT_EQ(stat(path.c_str(), &after), 0);
  EXPECT_EQ(sim::read_file(path), "short");
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_uid, before.st_uid);
}

TEST_F(SharedFile, IsNeverSeenEmptyByAReader) {
  replace("first");
  std::atomic<bool> is_over = false;
  int empty = 0;
  std::thread reader([&] {
    while (!is_over) empty += sim::read_file(path).empty() ? 1 : 0;
  });
  for (std::size_t i = 0; i < 200; ++i) replace(std::string(i % 2 == 0 ? 3'000 : 2'000, 'x'));
  is_over = true;
  reader.join();
  EXPECT_EQ(empty, 0);
}

// If a dangling link counted as missing, passwords would go to the built-in servers while the endpoint file's disk is
// not mounted.
TEST_F(SharedFile, CountsAsMissingOnlyIfNothingIsThere) {
  struct stat status {};
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  EXPECT_EQ(open_regular_file(path.c_str(), O_RDONLY, status), -1);
  EXPECT_EQ(errno, ENOENT);
  std::filesystem::create_symlink("nowhere", path);
  EXPECT_EQ(open_regular_file(path.c_str(), O_RDONLY, status), -1);
  EXPECT_EQ(errno, ELOOP);
}

// The disk has blocks of 4,096 bytes, none of them free.
TEST_F(SharedFile, KeepsTheOldTextOnAFullDisk) {
  const struct {
    std::optional<std::string> before;
    std::string text;
    bool is_written;
  } cases[] = {
      {std::string(4'000, 'o'), std::string(4'096, 'n'), true},
      {std::string(4'096, 'o'), std::string(4'097, 'n'), false},
      {std::string(100, 'o'), std::string(9'000, 'n'), false},
      {std::nullopt, "new", false},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.text.size());
    const small_disk disk(appliance.path(NAME).parent_path());
    if (!disk.is_mounted()) GTEST_SKIP() << "may not mount anything";
    if (one.before) appliance.write(NAME, *one.before);
    disk.fill();
    replace(one.text);
    EXPECT_EQ(std::filesystem::exists(path), one.before || one.is_written);
    EXPECT_EQ(appliance.read(NAME), one.is_written ? one.text : one.before.value_or(""));
  }
}

}  // namespace
}  // namespace skypost::testing
