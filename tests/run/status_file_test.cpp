// The status file as other programs read it, and what becomes of one that no run has written.

#include "run/status_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <ctime>
#include <string>

#include "base/error_text.h"
#include "base/paths.h"
#include "run/status_writer.h"
#include "support/appliance_folder.h"
#include "support/small_disk.h"
#include "transport/wget.h"

namespace skypost::testing {
namespace {

// Uploads that need no network.
int succeed() { return 0; }
int fail() {
  latest_exchange.wget_status = 4;
  error_text.clear();
  error_text.append_text("no response from anybody");
  return -1;
}
int fail_before_wget() { return -1; }

constexpr upload GOOD = {"good", carrier::http, nullptr, succeed};
constexpr upload FAILING = {"failing", carrier::http, nullptr, fail};
constexpr upload FAILING_BEFORE_WGET = {"failing_before_wget", carrier::http, nullptr, fail_before_wget};

class StatusFile : public ::testing::Test {
 protected:
  StatusFile() { appliance.write(STATUS_PATH, ""); }

  // A run with one upload, of the third step.
  static void run(const upload& upload) {
    begin_run_status();
    send_recorded(STEP_SWITCHES[2], upload);
    end_run_status(status_outcome::good);
  }

  const status_image& image() {
    std::int64_t size = 0;
    const int file = open_status_file(O_RDONLY, size);
    EXPECT_GE(file, 0);
    is_whole = read_status(file, size, image_);
    close(file);
    return image_;
  }
  const status_record& run_record() { return image().records[RUN_RECORD]; }
  const status_record& third_step() { return image().records[FIRST_STEP_RECORD + 2]; }

  std::string content() const { return appliance.read(STATUS_PATH); }

  appliance_folder appliance;
  bool is_whole = false;

 private:
  status_image image_{};
};

std::uint64_t number_at(const std::string& bytes, std::size_t place, std::size_t size) {
  std::uint64_t number = 0;
  for (std::size_t i = size; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
  return number;
}

// Other programs count on these offsets, and on the byte order.
TEST_F(StatusFile, IsLaidOutAsTheManualSays) {
  const auto now = static_cast<std::uint64_t>(std::time(nullptr));
  run(FAILING);
  const std::string bytes = content();
  ASSERT_EQ(bytes.size(), 16 + STATUS_RECORDS * 272);
  EXPECT_EQ(bytes.substr(0, 8), std::string("skypost\0", 8));
  EXPECT_EQ(number_at(bytes, 8, 4), 1U);
  EXPECT_EQ(number_at(bytes, 12, 4), STATUS_RECORDS);

  constexpr std::size_t RUN = 16;
  EXPECT_STREQ(&bytes[RUN], "skypost");
  EXPECT_GE(number_at(bytes, RUN + 48, 8), now);  // the last that came to its end
  EXPECT_EQ(number_at(bytes, RUN + 64, 4), 1U);
  EXPECT_EQ(number_at(bytes, RUN + 68, 4), 1U);

  constexpr std::size_t STEP = 16 + 3 * 272;
  EXPECT_STREQ(&bytes[STEP], STEP_SWITCHES[2].name.text);
  EXPECT_GE(number_at(bytes, STEP + 32, 8), now);
  EXPECT_GE(number_at(bytes, STEP + 40, 8), number_at(bytes, STEP + 32, 8));
  EXPECT_LE(number_at(bytes, STEP + 40, 8), now + 60);
  EXPECT_EQ(number_at(bytes, STEP + 48, 8), 0U);
  EXPECT_EQ(number_at(bytes, STEP + 56, 4), 1U);
  EXPECT_EQ(number_at(bytes, STEP + 60, 4), 4U);
  EXPECT_EQ(number_at(bytes, STEP + 64, 4), 1U);
  EXPECT_EQ(number_at(bytes, STEP + 68, 4), 2U);
  EXPECT_STREQ(&bytes[STEP + 72], "no response from anybody");

  const std::size_t last = bytes.size() - 272;
  EXPECT_STREQ(&bytes[last], RAPID_FIRE_SWITCHES[2].name.text);
  EXPECT_EQ(number_at(bytes, last + 60, 4), 0xffffffffU);  // no wget

  // Nothing of the failure stays, and the upload before is not taken for this one.
  begin_run_status();
  send_recorded(STEP_SWITCHES[0], FAILING);
  send_recorded(STEP_SWITCHES[2], FAILING_BEFORE_WGET);
  end_run_status(status_outcome::good);
  EXPECT_EQ(third_step().wget_status, NO_WGET_STATUS);
  run(GOOD);
  EXPECT_EQ(reason_in(third_step()), "");
  EXPECT_EQ(third_step().wget_status, NO_WGET_STATUS);
  EXPECT_EQ(third_step().failures, 0U);
  EXPECT_EQ(third_step().last_good, third_step().ended);
  EXPECT_EQ(third_step().run_number, 3U);
  EXPECT_EQ(run_record().run_number, 3U);
}

// What a run finds must neither be believed nor stop it.
TEST_F(StatusFile, IsStartedAnewWhereItIsAnothers) {
  run(FAILING);
  const std::string good = content();
  const auto with = [&](std::size_t place, char byte) {
    std::string bytes = good;
    bytes[place] = byte;
    return bytes;
  };
  const struct {
    const char* what;
    std::string content;
    bool is_whole;
  } cases[] = {
      {"this program's", good, true},
      {"empty", "", false},
      {"a text", "nothing of interest\n", false},
      {"zeros", std::string(good.size(), '\0'), false},
      {"junk", std::string(good.size(), '\xA5'), false},
      {"a byte short", good.substr(1), false},
      {"a byte longer", good + "x", false},
      {"twice as long", good + good, false},
      {"another magic", with(0, 'S'), false},
      {"another version", with(8, 2), false},
      {"another count", with(12, 1), false},
      {"another name", with(16 + 5 * 272, 'X'), false},
      {"a longer name", with(good.size() - 272 + std::strlen(RAPID_FIRE_SWITCHES[2].name.text), 'X'), false},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    appliance.write(STATUS_PATH, row.content);
    image();
    EXPECT_EQ(is_whole, row.is_whole);
    EXPECT_EQ(third_step().failures, row.is_whole ? 1U : 0U);
    run(FAILING);
    EXPECT_EQ(content().size(), good.size());
    EXPECT_EQ(third_step().failures, row.is_whole ? 2U : 1U);
    EXPECT_TRUE(is_whole);
  }
}

TEST_F(StatusFile, HasNoValueThatIsBelievedOutOfItsRange) {
  run(FAILING);
  const std::string good = content();
  constexpr std::size_t STEP = 16 + 3 * 272;
  const struct {
    std::size_t place;
    std::string bytes;
  } cases[] = {
      {32, std::string(8, '\xFF')}, {40, std::string(8, '\xFF')}, {48, std::string(8, '\x80')},
      {60, std::string("\0\1", 2)}, {60, "\xFE\xFF\xFF\xFF"},     {68, "\x05"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.place);
    std::string bytes = good;
    bytes.replace(STEP + row.place, row.bytes.size(), row.bytes);
    appliance.write(STATUS_PATH, bytes);
    EXPECT_EQ(third_step().begun, 0);
    EXPECT_EQ(reason_in(third_step()), "");
    EXPECT_NE(run_record().begun, 0);
  }
}

TEST_F(StatusFile, OnAFullDiskCostsTheRunNothing) {
  const small_disk disk(appliance.path(STATUS_PATH).parent_path());
  if (!disk.is_mounted()) GTEST_SKIP() << "may not mount anything";
  appliance.write(STATUS_PATH, "");
  disk.fill();
  for (int i = 0; i < 2; ++i) {
    begin_run_status();
    EXPECT_EQ(send_recorded(STEP_SWITCHES[2], GOOD), 0);
    end_run_status(status_outcome::good);
  }
  std::filesystem::remove(appliance.path(STATUS_PATH).parent_path() / "filler");
  run(FAILING);
  EXPECT_EQ(third_step().failures, 1U);
  EXPECT_TRUE(is_whole);
}

}  // namespace
}  // namespace skypost::testing
