#include "settings_tool/settings_tool.h"

int main(int argument_count, char** arguments) {
  return skypost::run_tool(skypost::SETTINGS_TOOL, argument_count, arguments);
}
