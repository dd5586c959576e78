#include "stream.h"

#include <orvex/parse.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "terminal.h"
#include "texts.h"

namespace {

using Json = nlohmann::ordered_json;

Json error_name(int error)
{
    switch (error) {
        case EINVAL: return "EINVAL";
        case ERANGE: return "ERANGE";
        case ENOSPC: return "ENOSPC";
        case PARSE_EAFNOSUPPORT: return "EAFNOSUPPORT";
        default: return nullptr;
    }
}

// Moves the values out of `outcome`.
Json json_record(const std::string &input, Outcome &outcome)
{
    Json record;
    record["input"] = input;
    if (!outcome.message.empty()) {
        record["error"] = outcome.message;
        record["code"] = outcome.code;
        record["errno"] = error_name(outcome.error);
        return record;
    }
    for (Field &field : outcome.fields)
        if (!field.value.is_null()) record[field.key] = std::move(field.value);
    return record;
}

// "prefix length:  16"
std::string format_line(const Field &field)
{
    std::string label = field.key;
    std::replace(label.begin(), label.end(), '_', ' ');
    label += ": ";
    label.resize(std::max(label.size(), size_t{15}), ' ');
    return label + field.text + '\n';
}

std::string format_outcome(const std::string &input, Outcome &outcome, Style style, bool first,
                           bool is_terminal)
{
    if (style == Style::json) {
        const Json record = json_record(input, outcome);
        return record.dump(-1, ' ', is_terminal, Json::error_handler_t::replace) + '\n';
    }
    if (!outcome.message.empty()) return {};
    std::string text = style == Style::record && !first ? "\n" : "";
    for (const Field &field : outcome.fields) {
        if (field.text.empty()) continue;
        text += style == Style::record ? format_line(field) : field.text + '\n';
    }
    return for_terminal(text, is_terminal);
}

// False when standard error is closed: nobody reads the refusals.
bool print_refusal(const Text &text, const std::string &message)
{
    const std::string place = text.line == 0 ? "" : "line " + std::to_string(text.line) + ": ";
    const std::string shown = for_terminal(message, is_error_terminal());
    return std::fprintf(stderr, "%s%s\n", place.c_str(), shown.c_str()) >= 0;
}

void use_large_buffers()
{
    static std::array<std::array<char, 65536>, 2> buffers;
    std::setvbuf(stdin, buffers[0].data(), _IOFBF, buffers[0].size());
    std::setvbuf(stdout, buffers[1].data(), _IOFBF, buffers[1].size());
}

int report_write_error(int status)
{
    if (errno == EPIPE) return status;
    print_problem(std::string("cannot write: ") + std::strerror(errno));
    return 1;
}

}  // namespace

int finish_output(int status)
{
    return std::fflush(stdout) == 0 ? status : report_write_error(status);
}

int run_texts(const Options &options, Style human_style, const Reader &reader)
{
    use_large_buffers();
    const Style style = options.json ? Style::json : human_style;
    const bool interactive = isatty(STDOUT_FILENO) != 0;
    int status = 0;
    bool first = true;
    Texts texts(options.texts);
    for (Text text; texts.next(text);) {
        Outcome outcome =
            text.fault != nullptr ? Outcome{{}, text.fault, -1, 0} : reader(text.value);
        if (!outcome.message.empty()) {
            status = 1;
            if (!print_refusal(text, outcome.message)) return finish_output(status);
        }
        if (outcome.is_no) status = 1;
        const std::string output = format_outcome(text.value, outcome, style, first, interactive);
        if (output.empty()) continue;
        first = false;
        if (std::fwrite(output.data(), 1, output.size(), stdout) != output.size() ||
            (interactive && std::fflush(stdout) != 0))
            return report_write_error(status);
    }
    if (std::ferror(stdin) != 0) {
        print_problem("cannot read standard input");
        status = 1;
    }
    return finish_output(status);
}
