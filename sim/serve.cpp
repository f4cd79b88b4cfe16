// Holds the simulated appliance and its networks up for a script. Prints the appliance's folder; then, for
// each line that it is sent, how many reports the data server has given and how many requests came. Goes
// with the end of its input.
//
//   serve [good|bad|empty]    how the networks answer
//   serve hang                Weather Underground never answers, WeatherFlow does; all others are off

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

void set_up(world& all, const std::string& how) {
  all.peers.set_answer(answer_named(how));
  if (how == "hang") {
    all.board.switch_all_networks_off();
    for (const integer_field* enabled : {&wunderground_enabled, &weatherflow_enabled})
      all.board.settings.set_integer(*enabled, 1);
    all.peers.set_answer("weather underground", answer::hang);
  }
}

void serve(const std::string& how) {
  world all;
  set_up(all, how);
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
    skypost::sim::serve(count > 1 ? arguments[1] : "good");
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "serve: %s\n", fault.what());
    return 1;
  }
}
