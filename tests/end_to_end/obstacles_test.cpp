// Another user may put a link, a FIFO or a directory in a file's place. The program must not follow it or wait for it,
// but treat it like a file that cannot be opened, and go on.

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "base/paths.h"
#include "end_to_end/program.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

using obstacles = program;

// Each case is the program's file, and the commands that put something in its place; a link's target has the file's
// content. The result is the exit status, what is sent and written, the alarms, and whether the target has changed.
TEST_F(obstacles, are_not_followed_and_cost_the_other_steps_nothing) {
  interpose("HASTE", "100");
  enable_only({&meteoclimatic_enabled, &hetweeractueel_enabled, &wetterarchiv_enabled, &idokep_enabled});
  const std::string settings = all.board.read(SETTINGS_PATH);
  const std::string just_now = std::to_string(std::time(nullptr));  // holds back Wetterarchiv
  expect_cases("end_to_end/golden/obstacles", [&](const std::string& one) {
    const std::string name = one.substr(0, one.find(' '));
    const fs::path place = all.board.path(name);
    const fs::path target = all.board.path("/target");
    all.board.write(SETTINGS_PATH, settings);
    all.board.write(LAST_RUN_PATH, "1");
    all.board.write("/target", name == SETTINGS_PATH ? settings : just_now);
    for (const char* const removed : {"/srv/www", "/var/run/nimbulog/uploads"})
      for (const auto& entry : fs::directory_iterator(all.board.path(removed))) fs::remove_all(entry);
    all.board.forget_alarms();
    all.peers.forget_requests();
    fs::remove_all(place);
    const std::string put =
        "place=" + place.string() + " target=" + target.string() + one.substr(one.find(' '));
    EXPECT_EQ(std::system(put.c_str()), 0) << put;
    const std::string content = sim::read_file(target);
    const int reader = one.ends_with("reader") ? open(place.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1;

    const sim::run_result run = all.board.run();
    close(reader);
    EXPECT_EQ(run.signal, 0) << one;
    std::string found = std::to_string(run.status) + run.errors;
    for (const sim::request_seen& seen : all.peers.requests())
      found += std::string(", ") + seen.network->name;
    if (fs::exists(all.board.path("/srv/www/hetweeractueel.txt"))) found += ", hetweeractueel";
    for (const sim::alarm_call& call : all.board.alarms())
      found += "; " + call[1] + ": " + replaced(replaced(call[2], all.board.root(), ""), "\n", "");
    if (sim::read_file(target) != content) found += ", TARGET CHANGED";
    if (fs::exists(target.string() + ".nowhere")) found += ", TARGET MADE";
    fs::remove_all(place);
    return found;
  });
}

}  // namespace
}  // namespace skypost::testing
