#pragma once
// Where the system ends the process (a fatal message, the menu's exit), the library throws
// ProcessEnd instead of calling exit(), so that the desktop program and the command line end
// cleanly at their top level and a test can see that the process would have ended.

#include <stdexcept>

namespace korvel {

class ProcessEnd : public std::runtime_error {
  public:
    explicit ProcessEnd(int exit_code = 1)
        : std::runtime_error("process end"), exit_code_(exit_code) {}
    int exit_code() const { return exit_code_; }

  private:
    int exit_code_;
};

[[noreturn]] inline void end_process(int exit_code = 1) {
    throw ProcessEnd(exit_code);
}

}  // namespace korvel
