// What the release build promises of the finished program, read back from it.

#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <string>

namespace skypost::testing {
namespace {

// Of the program, and then the symbols of its own object files, since libcrypto's have some of them, too.
std::string readelf() {
  std::FILE* const pipe = popen("readelf --wide --file-header --segments --dynamic " SKYPOST_PROGRAM
                                " && readelf --wide --syms " SKYPOST_CORE,
                                "r");
  std::string text;
  for (int character = std::getc(pipe); character != EOF; character = std::getc(pipe))
    text += static_cast<char>(character);
  return pclose(pipe) == 0 ? text : std::string();
}

constexpr struct {
  const char* what;
  const char* pattern;
  bool is_there;
} PROMISES[] = {
    // clang-format off
    {"position independent",                   R"(Type: +DYN )",                                                        true},
    {"an executable, not a library",           R"(\(FLAGS_1\) .*\bPIE\b)",                                              true},
    {"every symbol bound at start",            R"(\(FLAGS_1\) .*\bNOW\b)",                                              true},
    {"tables read-only from then on",          R"(\n +GNU_RELRO )",                                                     true},
    {"a stack that cannot be run",             R"(\n +GNU_STACK .* RW +0x)",                                            true},
    {"memory both written and run",            R"(\n +[A-Z_]+( +0x[0-9a-f]+){5} RWE )",                                 false},
    {"relocations in the code",                R"(\(TEXTREL\))",                                                        false},
    {"stack protector",                        R"( UND __stack_chk_fail\n)",                                            true},
    {"checked C library calls",                R"( UND __vsnprintf_chk\n)",                                             true},
    {"a search path of its own",               R"(\((RPATH|RUNPATH)\))",                                                false},
    {"a library besides the C library's",      R"(\(NEEDED\) +Shared library: \[(?!libc\.so|libm\.so|ld-linux))",       false},
    // clang-format on
};

TEST(hardening, is_in_the_released_program) {
#ifndef IS_HARDENED
  GTEST_SKIP() << "not a release build";
#endif
  const std::string found = readelf();
  ASSERT_NE(found, "");
  for (const auto& one : PROMISES)
    EXPECT_EQ(std::regex_search(found, std::regex(one.pattern)), one.is_there) << one.what;
}

}  // namespace
}  // namespace skypost::testing
