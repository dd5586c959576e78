// Writes the fields of one result, in the form that the user chose.
#ifndef ORVEX_TOOLS_RECORD_H
#define ORVEX_TOOLS_RECORD_H

#include <charconv>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

enum class Audience { everyone, people, programs };

// What a command's records can hold, in the order of output.
struct Field {
    const char *name;
    Audience audience = Audience::everyone;
};

bool is_shown_to(const Field &field, Audience audience);

// How people see records: the values alone, a line each, or lines of names and values.
enum class Layout { values, names_and_values };

enum class Format {
    people,
    json,
    tsv,
    field,  // the value of one field
    only,   // the text itself
    quiet,
};

struct Form {
    Format format = Format::people;
    std::string field;  // of Format::field
    bool only_valid = false;
    char terminator = '\n';
    bool for_terminal = false;
};

class Record {
   public:
    Record(std::string &out, const Form &form, std::span<const Field> fields, Layout layout);

    [[nodiscard]] bool is_for_people() const { return format_ == Format::people; }

    // Fields are written in the order of the command's list; each may be left out.
    void text(size_t field, std::string_view value);
    void truth(size_t field, bool value);
    void bytes(size_t field, std::span<const uint8_t> value);

    // JSON has only numbers up to 2^53 that every reader takes as they are; larger ones are texts.
    template <std::integral Number>
    void number(size_t field, Number value)
    {
        if (!open(field)) return;
        append_number(value);
        close();
    }

    // A list of numbers and texts.
    void open_list(size_t field);
    void item(int32_t value);
    void item(std::string_view value);
    void close_list();

    void begin();
    void end();

   private:
    bool open(size_t field);
    void close();
    void append_text(std::string_view value);
    void separate_item();

    template <std::integral Number>
    void append_number(Number value)
    {
        constexpr int64_t largest = int64_t{1} << 53;
        char digits[24];
        char *const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        const bool is_large = std::cmp_greater(value, largest) || std::cmp_less(value, -largest);
        const bool is_quoted = format_ == Format::json && is_large;
        if (is_quoted) out_ += '"';
        out_.append(digits, end);
        if (is_quoted) out_ += '"';
    }

    std::string &out_;
    Format format_;
    Layout layout_;
    char terminator_;
    bool for_terminal_;
    std::vector<std::string> prefixes_;  // written before each field's value
    std::vector<bool> is_shown_;
    size_t column_ = 0;  // of TSV
    bool list_is_open_ = false;
    bool list_has_item_ = false;
};

// Appends a text as a cell of TSV: TAB, line ends and backslashes are escaped, for a terminal
// control characters first.
void append_cell(std::string &out, std::string_view text, bool is_for_terminal);

#endif
