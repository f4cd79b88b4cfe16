// No other test notices a lost hardening flag, so this one inspects the program itself.

#include "end_to_end/program.h"
#include "support/pattern.h"

namespace skypost::testing {
namespace {

#ifdef __x86_64__
constexpr bool ON_X86_64 = true;
#else
constexpr bool ON_X86_64 = false;
#endif

// Cleared variables leave no trace and stack probes no reliable one, so neither is listed.
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
    {"calls and jumps land where they may",    R"(x86 feature: IBT, SHSTK)",                                            ON_X86_64},
    {"a search path of its own",               R"(\((RPATH|RUNPATH)\))",                                                false},
    {"a library besides the C library's",      R"(\(NEEDED\) +Shared library: \[(?!libc\.so|libm\.so|ld-linux))",       false},
    // clang-format on
};

TEST_F(program, is_hardened_when_released) {
#ifndef IS_HARDENED
  GTEST_SKIP() << "not a release build";
#endif
  const auto readelf = [&](const std::vector<std::string>& arguments) {
    const sim::run_result run = all.board.run_tool("/usr/bin/readelf", arguments);
    EXPECT_EQ(run.status, 0);
    return run.output;
  };
  // Symbols are read from our own object files, because libcrypto contains some of these too.
  const std::string found = readelf({"-W", "--file-header", "--segments", "--dynamic", SKYPOST_PROGRAM}) +
                            readelf({"-W", "--syms", "--notes", SKYPOST_CORE});
  for (const auto& one : PROMISES)
    EXPECT_EQ(!first_match(found, one.pattern).empty(), one.is_there) << one.what;
}

}  // namespace
}  // namespace skypost::testing
