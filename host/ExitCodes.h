#pragma once

namespace host {

// What `corvala` returns to the shell.
enum ExitCode : int {
    kExit_Success = 0,
    // A file could not be read or written, or a named clip or panel does not exist.
    kExit_Failure = 1,
    // The command line itself is wrong; the usage was printed.
    kExit_Usage = 2,
};

} // namespace host
