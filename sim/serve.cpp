// Holds the simulated appliance and its networks up for a script. Prints the appliance's folder; then, for
// each line that it is sent, how many reports the data server has given and how many requests came. Goes
// with the end of its input.
//
//   serve [good|bad|empty]    how the networks answer

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

#include "sim/world.h"

namespace skypost::sim {
namespace {

answer answer_named(const std::string& name) {
  if (name == "bad") return answer::bad;
  return name == "empty" ? answer::empty : answer::good;
}

void serve(answer how) {
  world all;
  all.peers.set_answer(how);
  for (const integer_field* field : {&wunderground_rapid_enabled, &weatherflow_rapid_enabled,
                                     &wunderground_rapid_interval, &weatherflow_rapid_interval})
    all.board.settings.set_integer(*field, 1);
  all.board.save_settings();

  std::cout << all.board.root().string() << std::endl;
  for (std::string line; std::getline(std::cin, line);)
    std::cout << all.data->clients() << ' ' << all.peers.requests().size() << std::endl;
}

}  // namespace
}  // namespace skypost::sim

int main(int count, char** arguments) {
  try {
    skypost::sim::serve(skypost::sim::answer_named(count > 1 ? arguments[1] : "good"));
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "serve: %s\n", fault.what());
    return 1;
  }
}
