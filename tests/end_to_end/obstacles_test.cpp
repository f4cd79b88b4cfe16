// What another user may have put in a file's place: the program neither follows it nor waits for it, reports it where it
// reports a file that cannot be opened, and goes on.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "support/small_disk.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

enum class obstacle { link, dangling_link, second_name, fifo, read_fifo, directory };

struct obstacle_case {
  obstacle what;
  const char* name;
  const char* reason;            // of a pull file that cannot be opened
  bool may_be_settings = false;  // a file is found there
};

const obstacle_case OBSTACLES[] = {
    // clang-format off
    {obstacle::link,          "link",                "Too many levels of symbolic links", true},
    {obstacle::dangling_link, "dangling link",       "Too many levels of symbolic links"},
    {obstacle::second_name,   "hard link",           "Too many links",                    true},
    {obstacle::fifo,          "FIFO",                "No such device or address"},
    {obstacle::read_fifo,     "FIFO that is read",   "No such device or address"},
    {obstacle::directory,     "directory",           "Is a directory"},
    // clang-format on
};

class obstacles : public program {
 protected:
  obstacles() { interpose("HASTE", "100"); }
  ~obstacles() override { close(reader_); }

  // Replaces the file at `place` by the obstacle. A link leads to a file that holds `content`.
  void put(obstacle what, const std::string& place, const std::string& content) {
    const fs::path path = all.board.path(place);
    fs::remove_all(path);
    all.board.write("/target", content);
    close(reader_);
    reader_ = -1;
    switch (what) {
      case obstacle::link:
        fs::create_symlink(target(), path);
        break;
      case obstacle::dangling_link:
        fs::create_symlink(dangling(), path);
        break;
      case obstacle::second_name:
        fs::create_hard_link(target(), path);
        break;
      case obstacle::fifo:
      case obstacle::read_fifo:
        EXPECT_EQ(mkfifo(path.c_str(), 0666), 0);
        if (what == obstacle::read_fifo) reader_ = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        break;
      case obstacle::directory:
        fs::create_directory(path);
    }
  }

  void expect_target_untouched(const std::string& content) const {
    EXPECT_EQ(all.board.read("/target"), content);
    EXPECT_FALSE(fs::exists(dangling()));
  }

 private:
  fs::path target() const { return all.board.root() / "target"; }
  fs::path dangling() const { return all.board.root() / "nowhere"; }

  int reader_ = -1;
};

TEST_F(obstacles, to_a_pull_file_are_reported_and_cost_the_other_steps_nothing) {
  enable_only({&meteoclimatic_enabled, &wetterspiegel_enabled, &idokep_enabled});
  for (const std::string directory : PULL_DIRECTORIES) {
    const std::string file = directory + "meteoclimatic.txt";
    for (const obstacle_case& one : OBSTACLES) {
      SCOPED_TRACE(one.name + (" in " + directory));
      all.board.write(directory + "wetterspiegel.txt", "old");
      put(one.what, file, "old");
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

// The gate is open, as if there were no such file.
TEST_F(obstacles, to_the_last_run_file_count_as_a_missing_one) {
  enable_only({&wetterarchiv_enabled, &idokep_enabled});
  for (const obstacle_case& one : OBSTACLES) {
    if (one.what == obstacle::second_name) continue;  // can be read all the same
    SCOPED_TRACE(one.name);
    const std::string just_now = std::to_string(std::time(nullptr));
    put(one.what, LAST_RUN_PATH, just_now);
    all.peers.forget_requests();
    EXPECT_EQ(run_well().errors, "");
    expect_target_untouched(just_now);
    EXPECT_EQ(requests("wetterarchiv"), 1);
    EXPECT_EQ(requests("idokep"), 1);
  }
  put(obstacle::second_name, LAST_RUN_PATH, "1");
  run_well();
  expect_target_untouched("1");
  EXPECT_TRUE(all.board.alarms().empty());
}

TEST_F(obstacles, to_the_settings_file_count_as_one_that_cannot_be_read) {
  enable_only({&idokep_enabled});
  const std::string settings = all.board.read(SETTINGS_PATH);
  for (const obstacle_case& one : OBSTACLES) {
    SCOPED_TRACE(one.name);
    put(one.what, SETTINGS_PATH, settings);
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
