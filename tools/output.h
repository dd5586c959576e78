// What the program writes: results to standard output, refusals to standard error.
#ifndef ORVEX_TOOLS_OUTPUT_H
#define ORVEX_TOOLS_OUTPUT_H

#include <optional>
#include <string>
#include <string_view>

// Collects what is written, up to a limit, or until the program may have to wait for input. When
// both files are the same, such as a terminal, results and refusals keep their order.
class Output {
   public:
    Output();

    [[nodiscard]] bool is_terminal() const { return is_terminal_; }
    [[nodiscard]] bool is_error_terminal() { return error_file().is_terminal; }

    // Where results are appended; call `ended_record` after each.
    std::string &results() { return results_; }
    void ended_record();

    // Appends a line to standard error, its control characters escaped on a terminal.
    void refuse(std::string_view place, std::string_view message);

    // Writes everything now.
    void flush();

    // False when a file could not be written: nobody reads what would follow.
    [[nodiscard]] bool is_open() const { return is_open_; }

    // Writes everything. Returns `status`, or 1 after a message when standard output could not be
    // written. A pipe that the other end closed is no fault.
    int finish(int status);

   private:
    struct ErrorFile {
        bool is_terminal;
        bool is_standard_output;  // both are the same file
    };

    // What standard error is, asked at the first refusal: most runs of the program have none.
    const ErrorFile &error_file();
    void write(int file, std::string &text);

    bool is_terminal_;
    std::optional<ErrorFile> error_file_;
    bool is_open_ = true;
    int error_ = 0;  // errno of a failed write to standard output
    std::string results_;
    std::string refusals_;
};

#endif
