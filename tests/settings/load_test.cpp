#include "settings/load.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

#include "base/paths.h"
#include "settings/defaults.h"
#include "support/appliance_folder.h"
#include "support/other_order.h"

namespace skypost::testing {

// The most bytes that a read returns. Reads of plain files are otherwise never short.
std::size_t read_limit = std::numeric_limits<std::size_t>::max();
extern "C" ssize_t limited_read(int file, void* place, std::size_t count) __asm__("read");
ssize_t limited_read(int file, void* place, std::size_t count) {
  return syscall(SYS_read, file, place, std::min(count, read_limit));
}

namespace {

constexpr std::size_t MARKER = 18936;
constexpr std::int32_t NATIVE = 1;
constexpr std::int32_t FOREIGN = 0x01000000;

std::string bytes_of(std::int32_t number) { return {reinterpret_cast<const char*>(&number), sizeof number}; }

// Neighbouring bytes differ, so every shift and every reversed field shows.
std::string image_of(std::size_t size, std::int32_t marker = NATIVE) {
  std::string image(size, '\0');
  for (std::size_t i = 0; i < size; ++i) image[i] = static_cast<char>(i * 7 + i / 251);
  if (size >= MARKER + 4) image.replace(MARKER, 4, bytes_of(marker));
  return image;
}

// The record loaded from a native file. A short file is padded with zeros and gets free entries in the last array; in a
// file of unlisted size, everything from 20580 on moves up by 4 bytes.
std::string completed(std::string image, bool is_unlisted) {
  const bool is_short = image.size() < SETTINGS_SIZE;
  image.resize(SETTINGS_SIZE, '\0');
  for (std::size_t i = 0; is_short && i < 20; ++i) image.replace(38236 + 500 * i, 4, "\xff\xff\xff\xff");
  return is_unlisted ? image.substr(0, 20584) + image.substr(20580, SETTINGS_SIZE - 20584) : image;
}

class LoadSettings : public ::testing::Test {
 protected:
  LoadSettings() { std::memset(&record, 0x5a, sizeof record); }
  ~LoadSettings() override {
    unsetenv("NIMBULOGHW");
    read_limit = std::numeric_limits<std::size_t>::max();
  }

  std::int32_t load(const std::string& image, const char* platform = nullptr) {
    appliance.write(SETTINGS_PATH, image);
    platform != nullptr ? setenv("NIMBULOGHW", platform, 1) : unsetenv("NIMBULOGHW");
    return load_settings(record);
  }

  void expect_record(const std::string& expected) const {
    const auto [byte, other] = std::mismatch(record.bytes, record.bytes + SETTINGS_SIZE,
                                             reinterpret_cast<const unsigned char*>(expected.data()));
    EXPECT_EQ(byte - record.bytes, SETTINGS_SIZE) << "is the first offset that differs";
  }

  // Expects `former` with the defaults written over it.
  void expect_defaults_over(const std::string& former) const {
    settings_record expected;
    std::memcpy(expected.bytes, former.data(), SETTINGS_SIZE);
    set_default_settings(expected);
    expect_record({reinterpret_cast<const char*>(expected.bytes), SETTINGS_SIZE});
  }

  // Empty if there is none.
  std::string backup() const { return appliance.read(std::string(SETTINGS_PATH) + ".old"); }

  appliance_folder appliance;
  settings_record record;
};

TEST_F(LoadSettings, TellsLayoutsByTheirSizeAndTheBoard) {
  const struct {
    std::size_t size;
    const char* platform;
    bool is_unlisted;
  } cases[] = {
      {65'536, nullptr, false}, {65'536, "PLUG", false}, {38'264, nullptr, false}, {38'264, "PLUG", false},
      {38'692, "PLUG", false},  {38'692, nullptr, true}, {38'692, "X86", true},    {38'692, "NSLU2", true},
      {40'000, "PLUG", true},   {65'535, nullptr, true}, {65'537, nullptr, true},  {70'000, "A10", true},
      {20'581, nullptr, true},  {19'000, nullptr, true},
  };
  std::string expected_backup;
  for (const auto& [size, platform, is_unlisted] : cases) {
    SCOPED_TRACE(size);
    const std::string image = image_of(size);
    EXPECT_EQ(load(image, platform), 0);
    expect_record(completed(image, is_unlisted));
    if (is_unlisted) expected_backup = image;
    EXPECT_EQ(backup(), expected_backup);
  }
}

TEST_F(LoadSettings, ConvertsARecordOfTheOtherByteOrder) {
  std::string image = image_of(SETTINGS_SIZE);
  image.replace(17620, 20, std::string("ESCAT0800000008001A") + '\0');
  const std::string foreign = in_other_order(image);
  ASSERT_EQ(foreign.substr(MARKER, 4), bytes_of(FOREIGN));
  EXPECT_EQ(load(foreign), 0);
  expect_record(image);
  EXPECT_EQ(record.text(meteoclimatic_station), "ESCAT0800000008001A");
}

TEST_F(LoadSettings, ConvertsAnUnlistedSizeAfterTheShift) {
  const std::string image = image_of(40'000, FOREIGN);
  EXPECT_EQ(load(image), 0);
  expect_record(in_other_order(completed(image, true)));
}

// Only the NSLU2 wrote native records without a marker. A marker other than 1 means the other byte order even there.
TEST_F(LoadSettings, TakesARecordWithoutMarkerByTheBoard) {
  const std::string without = image_of(SETTINGS_SIZE, 0);
  for (const char* platform : {"X86", "PLUG", "A10", "NSLU"}) {
    EXPECT_EQ(load(without, platform), 0);
    expect_record(in_other_order(without));
  }
  EXPECT_EQ(load(without, "NSLU2"), 0);
  expect_record(without);
  const std::string two = image_of(SETTINGS_SIZE, 2);
  EXPECT_EQ(load(two, "NSLU2"), 0);
  expect_record(in_other_order(two));
}

TEST_F(LoadSettings, TakesAFileThatCannotBeBackedUp) {
  std::filesystem::create_directories(appliance.path(std::string(SETTINGS_PATH) + ".old/nimbulog.conf"));
  const std::string image = image_of(40'000);
  ::testing::internal::CaptureStderr();  // `cp` prints an error
  EXPECT_EQ(load(image), 0);
  ::testing::internal::GetCapturedStderr();
  expect_record(completed(image, true));
}

// If a useless file left the record as it was, each pass of rapid fire would shift it once more.
TEST_F(LoadSettings, SetsDefaultsForAUselessFile) {
  const std::string untouched(SETTINGS_SIZE, 0x5a);
  EXPECT_EQ(load_settings(record), -1);  // no file
  expect_defaults_over(untouched);
  std::memset(&record, 0x5a, sizeof record);
  EXPECT_EQ(load(""), -1);
  expect_defaults_over(untouched);
  std::filesystem::remove(appliance.path(SETTINGS_PATH));
  std::filesystem::create_directory(appliance.path(SETTINGS_PATH));
  EXPECT_EQ(load_settings(record), -1);
  EXPECT_EQ(backup(), "");
}

TEST_F(LoadSettings, SetsDefaultsForAShortReadOfAListedSize) {
  read_limit = 30'000;
  const std::string image = image_of(SETTINGS_SIZE);
  EXPECT_EQ(load(image), -1);
  expect_defaults_over(completed(image.substr(0, 30'000), false));
  EXPECT_EQ(backup(), "");

  read_limit = 38'264;  // the size of another layout
  EXPECT_EQ(load(image), 0);
  expect_record(completed(image.substr(0, 38'264), false));
}

}  // namespace
}  // namespace skypost::testing
