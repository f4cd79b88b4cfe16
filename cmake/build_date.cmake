# Sets SKYPOST_BUILD_DATE in seconds since the epoch; a correct clock is never earlier. It is SOURCE_DATE_EPOCH, else
# the time of the last commit, else 0, so that builds are reproducible.

if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(SKYPOST_BUILD_DATE $ENV{SOURCE_DATE_EPOCH})
else()
  execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    OUTPUT_VARIABLE SKYPOST_BUILD_DATE OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE ignored)
endif()
if(NOT SKYPOST_BUILD_DATE MATCHES "^[0-9]+$")
  set(SKYPOST_BUILD_DATE 0)
endif()
