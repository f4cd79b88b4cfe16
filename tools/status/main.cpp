#include "status/status_tool.h"

int main(int argument_count, char** arguments) { return skypost::show_status(argument_count, arguments); }
