// The texts of a command: its arguments, or the lines of standard input.
#ifndef ORVEX_TOOLS_TEXTS_H
#define ORVEX_TOOLS_TEXTS_H

#include <cstddef>
#include <string>
#include <vector>

struct Text {
    std::string value;
    size_t line = 0;              // the line of standard input; 0 for an argument
    const char *fault = nullptr;  // why the text cannot be passed to the library
};

class Texts {
   public:
    // Without an argument, or with "-" alone, the texts are the lines of standard input.
    explicit Texts(const std::vector<std::string> &arguments);

    // Reads the next text into `text`; false after the last one.
    bool next(Text &text);

   private:
    bool next_line(Text &text);

    const std::vector<std::string> &arguments_;
    bool from_input_;
    size_t next_ = 0;
};

#endif
