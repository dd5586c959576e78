// Reads all texts of a command and prints the outcomes.
#ifndef ORVEX_TOOLS_STREAM_H
#define ORVEX_TOOLS_STREAM_H

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

// One named value of a record.
struct Field {
    const char *key;
    nlohmann::ordered_json value;  // null: not in JSON
    std::string text;              // for people; empty: only in JSON
};

// The outcome of reading a text: fields, or the message of a refusal.
struct Outcome {
    std::vector<Field> fields;
    std::string message;  // empty: accepted
    int code = 0;         // the library's result
    int error = 0;        // errno after the call, 0 when unchanged
    bool is_no = false;   // accepted, and the value is "no": the exit status becomes 1
};

enum class Style {
    value,   // the texts of the fields, one a line
    record,  // "name: value" lines, and an empty line between records
    json,    // one object a line
};

struct Options {
    std::vector<std::string> texts;
    bool json = false;
};

using Reader = std::function<Outcome(const std::string &text)>;

// Flushes the output. Returns `status`, or 1 after a message when the output cannot be written. A
// pipe that the other end closed is no fault.
int finish_output(int status);

// Returns the exit status: 0 when every text was accepted, else 1.
int run_texts(const Options &options, Style human_style, const Reader &reader);

#endif
