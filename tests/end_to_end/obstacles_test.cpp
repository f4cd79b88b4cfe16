// Another user may put a link, a FIFO or a directory in a file's place. The program must not follow it or wait for it,
// but treat it like a file that cannot be opened, and go on.

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "support/small_disk.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

struct obstacle {
  const char* command;           // creates it at $place; $target is a file
  const char* reason;            // reported for a pull file
  bool may_be_settings = false;  // settings are read through it
  bool is_read = false;
};

const obstacle HARD_LINK = {"ln $target $place", "Too many links", true};
const obstacle OBSTACLES[] = {
    // clang-format off
    {"ln -s $target $place",         "Too many levels of symbolic links", true},
    {"ln -s $target.nowhere $place", "Too many levels of symbolic links"},
    HARD_LINK,
    {"mkfifo $place",                "No such device or address"},
    {"mkfifo $place",                "No such device or address", false, true},
    {"mkdir $place",                 "Is a directory"},
    // clang-format on
};

class obstacles : public program {
 protected:
  obstacles() { interpose("HASTE", "100"); }
  ~obstacles() override { close(reader_); }

  // Replaces the file at `place` by the obstacle. A link points to a file that holds `content`.
  void put(const obstacle& what, const std::string& place, const std::string& content) {
    const fs::path path = all.board.path(place);
    fs::remove_all(path);
    all.board.write("/target", content);
    const std::string names =
        "place=" + path.string() + " target=" + all.board.path("/target").string() + "; ";
    EXPECT_EQ(std::system((names + what.command).c_str()), 0);
    close(reader_);
    reader_ = what.is_read ? open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1;
  }

  void expect_target_untouched(const std::string& content) const {
    EXPECT_EQ(all.board.read("/target"), content);
    EXPECT_FALSE(fs::exists(all.board.root() / "target.nowhere"));
  }

 private:
  int reader_ = -1;  // the reading end of a FIFO
};

TEST_F(obstacles, to_a_pull_file_are_reported_and_cost_the_other_steps_nothing) {
  enable_only({&meteoclimatic_enabled, &wetterspiegel_enabled, &idokep_enabled});
  for (const std::string directory : PULL_DIRECTORIES) {
    const std::string file = directory + "meteoclimatic.txt";
    for (const obstacle& one : OBSTACLES) {
      SCOPED_TRACE(one.command + (" in " + directory));
      all.board.write(directory + "wetterspiegel.txt", "old");
      put(one, file, "old");
      all.board.forget_alarms();
      all.peers.forget_requests();
      EXPECT_EQ(run_well().errors, "");
      const std::vector<sim::alarm_call> expected = {
          {"skypost", "meteoclimatic",
           "error open file " + all.board.path(file).string() + ": " + one.reason + "\n"}};
      EXPECT_EQ(all.board.alarms(), expected);
      expect_target_untouched("old");
      EXPECT_NE(all.board.read(directory + "wetterspiegel.txt"), "old");
      EXPECT_EQ(requests("idokep"), 1);
    }
    fs::remove_all(all.board.path(file));
  }
}

// The gated step runs, as if there were no such file.
TEST_F(obstacles, to_the_last_run_file_count_as_a_missing_one) {
  enable_only({&wetterarchiv_enabled, &idokep_enabled});
  for (const obstacle& one : OBSTACLES) {
    if (one.command == HARD_LINK.command) continue;  // readable like any file
    SCOPED_TRACE(one.command);
    const std::string just_now = std::to_string(std::time(nullptr));
    put(one, LAST_RUN_PATH, just_now);
    all.peers.forget_requests();
    EXPECT_EQ(run_well().errors, "");
    expect_target_untouched(just_now);
    EXPECT_EQ(requests("wetterarchiv"), 1);
    EXPECT_EQ(requests("idokep"), 1);
  }
  put(HARD_LINK, LAST_RUN_PATH, "1");
  run_well();
  expect_target_untouched("1");
  EXPECT_TRUE(all.board.alarms().empty());
}

TEST_F(obstacles, to_the_settings_file_count_as_one_that_cannot_be_read) {
  enable_only({&idokep_enabled});
  const std::string settings = all.board.read(SETTINGS_PATH);
  for (const obstacle& one : OBSTACLES) {
    SCOPED_TRACE(one.command);
    put(one, SETTINGS_PATH, settings);
    all.board.forget_alarms();
    all.peers.forget_requests();
    const sim::run_result run = all.board.run();
    EXPECT_EQ(run.signal, 0);
    EXPECT_EQ(run.status, one.may_be_settings ? 0 : 1);
    EXPECT_EQ(requests("idokep"), one.may_be_settings ? 1 : 0);
    const std::vector<sim::alarm_call> expected = {{"skypost", "Can't read nimbulog settings file", ""}};
    EXPECT_EQ(all.board.alarms(), one.may_be_settings ? std::vector<sim::alarm_call>() : expected);
  }
}

TEST_F(obstacles, like_a_full_disk_leave_what_was_there_and_the_other_steps) {
  enable_only({&hetweeractueel_enabled, &meteoclimatic_enabled, &wetterarchiv_enabled, &idokep_enabled});
  const small_disk web_root(all.board.root() / "srv/www");
  const small_disk state(all.board.root() / "var/run/nimbulog");
  if (!web_root.is_mounted() || !state.is_mounted()) GTEST_SKIP() << "may not mount anything";
  const auto put_file_without_blocks = [&](const std::string& path, std::uintmax_t size) {
    all.board.write(path, "");
    fs::resize_file(all.board.path(path), size);
  };
  fs::create_directory(all.board.root() / "var/run/nimbulog/uploads");
  put_file_without_blocks("/srv/www/meteoclimatic.txt", 300);
  put_file_without_blocks(LAST_RUN_PATH, 5);
  web_root.fill();
  state.fill();
  EXPECT_EQ(run_well().errors, "");
  EXPECT_EQ(all.board.read("/srv/www/meteoclimatic.txt"), std::string(300, '\0'));
  EXPECT_FALSE(fs::exists(all.board.path("/srv/www/hetweeractueel.txt")));
  EXPECT_EQ(all.board.read(LAST_RUN_PATH), std::string(5, '\0'));
  EXPECT_TRUE(all.board.alarms().empty());
  EXPECT_EQ(requests("wetterarchiv") + requests("idokep"), 2);
}

}  // namespace
}  // namespace skypost::testing
