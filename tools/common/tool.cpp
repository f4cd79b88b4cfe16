#include "common/tool.h"

#include <iostream>

#include "common/errors.h"
#include "common/printable.h"

namespace skypost {

int run_tool(const tool& program, words arguments, std::ostream& out, std::ostream& errors) {
  if (take_option(arguments, "--help")) {
    program.print_help(out);
    return 0;
  }
  if (take_option(arguments, "--version")) {
    out << program.name << " " SKYPOST_VERSION "\n";
    return 0;
  }
  try {
    return program.run(arguments, out);
  } catch (const usage_error& fault) {
    errors << "Error: " << printable(fault.what()) << "\nTry '" << program.name << " --help'.\n";
    return fault.status;
  } catch (const tool_error& fault) {
    errors << "Error: " << printable(fault.what()) << '\n';
    return fault.status;
  }
}

int run_tool(const tool& program, int argument_count, char** arguments) {
  const words all(arguments + (argument_count > 0 ? 1 : 0), arguments + argument_count);
  const int status = run_tool(program, all, std::cout, std::cerr);
  if (std::cout.flush()) return status;
  std::cerr << "Error: cannot write to standard output\n";
  return 1;
}

}  // namespace skypost
