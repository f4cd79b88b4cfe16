# Toolchain for static board programs: Debian's cross compiler with musl as the C library. The compiler is made for
# glibc, so musl's headers and start-up files are named here.

include(${CMAKE_CURRENT_LIST_DIR}/foreign.cmake)

set(SKYPOST_STATIC ON CACHE BOOL "")

# The compiler's include directories, without glibc's.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -E -x c++ -v /dev/null OUTPUT_QUIET ERROR_VARIABLE search_list)
string(REGEX MATCHALL "\n /[^\n]*/c\\+\\+/[^\n]*" cxx_headers "${search_list}")
string(REGEX MATCHALL "\n /[^\n]*/gcc[^\n]*/[0-9]+/include\n" own_headers "${search_list}")
string(APPEND CMAKE_CXX_FLAGS_INIT " -nostdinc")
foreach(folder IN LISTS cxx_headers own_headers)
  string(STRIP "${folder}" folder)
  string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${folder}")
endforeach()
string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${BOARD_FILES}/usr/include/${musl}")
# libstdc++ uses these two glibc names.
string(APPEND CMAKE_CXX_FLAGS_INIT " '-D__GLIBC_PREREQ(a,b)=0' -D__locale_t=locale_t")

# Keep the build path out of the program.
string(APPEND CMAKE_CXX_FLAGS_INIT " -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")

set(CMAKE_EXE_LINKER_FLAGS_INIT "-s -B${BOARD_FILES}/usr/lib/${musl} -L${BOARD_FILES}/usr/lib/${musl}")
