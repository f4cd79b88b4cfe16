#include "run/start_up.h"

int main(int argument_count, char** arguments) { return skypost::run_skypost(argument_count, arguments); }
