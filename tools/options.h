// The options of a command: how they are read, and what is said about them.
#ifndef ORVEX_TOOLS_OPTIONS_H
#define ORVEX_TOOLS_OPTIONS_H

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// Wrong usage: the program ends with status 2.
class UsageError : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
};

struct Option {
    std::string name;        // "--prefix"
    std::string_view value;  // what its value is called, "N"; empty for a flag
    std::string_view help;
    std::function<void(const std::string &value)> set;
    std::vector<std::string> choices = {};  // the words that the value may be; empty: any text
    char letter = '\0';                     // of its short form
};

class Options {
   public:
    // `usual` is how many options there are at most, as a rule.
    explicit Options(size_t usual) { options_.reserve(usual); }

    // Names of values and helps are string literals: most starts of the program print none of them.
    void flag(std::string name, std::string_view help, std::function<void()> set,
              char letter = '\0');
    // `choices` are words that the value may be, for completion only.
    void value(std::string name, std::string_view value, std::string_view help,
               std::function<void(const std::string &)> set, std::vector<std::string> choices = {});

    // As `value`, and other words are wrong usage.
    void choice(std::string name, std::string_view value, std::string_view help,
                std::vector<std::string> choices, std::function<void(const std::string &)> set);

    // A decimal number from `min` to `max`.
    void number(std::string name, std::string_view value, std::string_view help, uint64_t min,
                uint64_t max, std::function<void(uint64_t)> set);

    // Reads the arguments from the second on, sets the options, and returns the texts. An argument
    // of "-" and a digit is a text, and so is every one after "--".
    [[nodiscard]] std::vector<char *> parse(int argc, char **argv) const;

    // As `parse`, but stops at the first argument that is no option; returns its index.
    [[nodiscard]] int parse_leading(int argc, char **argv) const;

    [[nodiscard]] const std::vector<Option> &all() const { return options_; }

   private:
    [[nodiscard]] bool parse_next(int argc, char **argv) const;
    [[noreturn]] void refuse(const std::string &argument) const;

    std::vector<Option> options_;
};

// Throws UsageError when the value of an option is none of the choices.
void check_choice(const std::string &option, const std::vector<std::string> &choices,
                  const std::string &value);

// ", did you mean 'word'?" for the word that is nearest to `text`, or nothing when none is near.
std::string did_you_mean(const std::string &text, const std::vector<std::string> &words);

#endif
