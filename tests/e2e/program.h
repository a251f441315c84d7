// tests/e2e/program.h -- one run of Quillgrove and its console.
#pragma once

#include "tests/e2e/process.h"

#include <string>
#include <vector>

/// How Quillgrove is started.
struct Launch {
    std::vector<std::string> arguments;
    std::string folder;   // working folder
    std::string display;  // value of DISPLAY, none when empty
    bool terminal = true; // the console is a terminal, without echo; else three pipes
};

class Program {
  public:
    explicit Program(const Launch &launch);
    ~Program(); // ends the program when it still runs
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    /// Waits for `text` on the console behind what the calls before have found.
    bool expect(const std::string &text, Duration timeout = Duration(20000));

    /// Types `text`; a line ends in "\n".
    void send(const std::string &text);

    /// The console's input ends: the end-of-file key of a terminal, the closed end of a pipe.
    void end_input();

    /// Reads to the end of the run. The exit status, 128 plus a deadly signal's number, or -1
    /// when the program still runs after `timeout`.
    int exit_status(Duration timeout = Duration(20000));

    /// Reads what is there now, for `time` at most while it comes.
    void listen(Duration time);

    /// Processor time that the run has taken so far, in seconds.
    double busy_seconds() const;

    /// All output so far, lines ended by a bare newline; with pipes, standard output alone.
    std::string output() const;

    /// Standard error so far; on a terminal it is part of the output.
    const std::string &errors() const {
        return complaints;
    }

  private:
    bool read_some(int timeout);
    void start_on_terminal(const Launch &launch);
    void start_on_pipes(const Launch &launch);

    pid_t child = -1;
    bool on_terminal = true;
    int to_program = -1;
    int from_program = -1;
    int from_errors = -1;
    std::string said;
    std::string complaints;
    size_t found = 0; // end of the last text that expect() met
};
