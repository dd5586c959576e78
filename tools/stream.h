// Runs a reader over all texts of a command and prints what it makes of each.
#ifndef ORVEX_TOOLS_STREAM_H
#define ORVEX_TOOLS_STREAM_H

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

// One named value of a record.
struct Field {
    const char *key;
    nlohmann::ordered_json value;  // null: for people only
    std::string text;              // what a person reads; empty: in JSON only
};

// What a reader made of a text: fields, or a refusal.
struct Outcome {
    std::vector<Field> fields;
    std::string message;  // empty: accepted
    int code = 0;         // the library's result
    int error = 0;        // errno as the library left it, 0 for none
    bool no = false;      // accepted, but the answer is no: the exit status becomes 1
};

enum class Style {
    value,   // people see the texts of the fields alone, one a line
    record,  // people see "name: value" lines and an empty line between records
    json,    // one object a line
};

struct Options {
    std::vector<std::string> texts;
    bool json = false;
};

using Reader = std::function<Outcome(const std::string &text)>;

// Ends the output: returns `status`, or 1 behind a message when the output cannot be written. A
// reader that went away is no fault.
int finish_output(int status);

// Returns the exit status: 0 when every text was accepted, else 1.
int run_texts(const Options &options, Style human_style, const Reader &reader);

#endif
