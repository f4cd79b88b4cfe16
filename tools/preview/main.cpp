#include <iostream>

#include "preview/preview_tool.h"

int main(int argument_count, char** arguments) {
  const std::vector<std::string> words(arguments + (argument_count > 0 ? 1 : 0), arguments + argument_count);
  const int status = skypost::run_preview_tool(words, std::cout, std::cerr);
  if (std::cout.flush()) return status;
  std::cerr << "Error: what was to be shown could not be written\n";
  return 1;
}
