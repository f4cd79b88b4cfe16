#include "preview/preview_tool.h"

int main(int argument_count, char** arguments) {
  return skypost::run_tool(skypost::PREVIEW_TOOL, argument_count, arguments);
}
