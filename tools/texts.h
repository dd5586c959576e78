// The texts of a command: its arguments, or the lines of standard input.
#ifndef ORVEX_TOOLS_TEXTS_H
#define ORVEX_TOOLS_TEXTS_H

#include <cstddef>
#include <string_view>
#include <vector>

class Output;

struct Text {
    const char *value = nullptr;  // terminated
    size_t length = 0;
    size_t number = 0;            // of the line or the argument, from 1
    bool is_cut = false;          // only the start of a line that is too long
    bool had_cr = false;          // a CR came before the line end
    const char *fault = nullptr;  // why the text cannot be passed to the library

    [[nodiscard]] std::string_view view() const { return {value, length}; }
};

class Texts {
   public:
    // Without an argument, or with "-" alone, the texts are those of standard input, with
    // `separator` after each. `output` is flushed before the program may have to wait for input.
    Texts(std::vector<char *> arguments, char separator, Output &output);

    [[nodiscard]] bool are_lines() const { return from_input_; }
    [[nodiscard]] bool are_several() const { return from_input_ || arguments_.size() > 1; }

    // Reads the next text into `text`, where it stays until the next call; false after the last.
    bool next(Text &text);

    // Whether standard input could not be read to its end.
    [[nodiscard]] bool failed() const { return failed_; }

   private:
    bool next_line(Text &text);
    bool fill();

    std::vector<char *> arguments_;
    bool from_input_;
    char separator_;
    Output &output_;
    bool failed_ = false;
    bool is_at_end_ = false;  // of standard input
    size_t count_ = 0;
    std::vector<char> buffer_;
    size_t begin_ = 0;  // of what is not read yet
    size_t end_ = 0;
};

#endif
