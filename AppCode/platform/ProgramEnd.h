#pragma once
#include <exception>

namespace qln {

// The original ends the process from deep inside a routine ("End"). We unwind to main
// instead, so open files close and tests can observe the end.
struct ProgramEnd : std::exception {
    explicit ProgramEnd(int exitCode = 0) : code(exitCode) {}
    const char *what() const noexcept override { return "program end"; }
    int code;
};

[[noreturn]] inline void gpProgram_end(int exitCode = 0) { throw ProgramEnd(exitCode); }

} // namespace qln
