#include "stream.h"

#include <orvex/parse.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

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

Json json_record(const std::string &input, const Outcome &outcome)
{
    Json record = {{"input", input}};
    if (!outcome.message.empty()) {
        record["error"] = outcome.message;
        record["code"] = outcome.code;
        record["errno"] = error_name(outcome.error);
        return record;
    }
    for (const Field &field : outcome.fields)
        if (!field.value.is_null()) record[field.key] = field.value;
    return record;
}

// "prefix length:  16"
std::string labelled(const Field &field)
{
    std::string label = field.key;
    std::replace(label.begin(), label.end(), '_', ' ');
    label += ": ";
    label.resize(std::max(label.size(), size_t{15}), ' ');
    return label + field.text + '\n';
}

std::string formatted(const std::string &input, const Outcome &outcome, Style style, bool first)
{
    if (style == Style::json)
        return json_record(input, outcome).dump(-1, ' ', false, Json::error_handler_t::replace) +
               '\n';
    if (!outcome.message.empty()) return {};
    std::string text = style == Style::record && !first ? "\n" : "";
    for (const Field &field : outcome.fields) {
        if (field.text.empty()) continue;
        text += style == Style::record ? labelled(field) : field.text + '\n';
    }
    return text;
}

void report(const Text &text, const std::string &message)
{
    if (text.line != 0) std::fprintf(stderr, "line %zu: ", text.line);
    std::fprintf(stderr, "%s\n", message.c_str());
}

// A reader that goes away is no fault of ours.
int end_of_output(int status)
{
    if (errno == EPIPE) return status;
    std::fprintf(stderr, "orvex-parse: cannot write: %s\n", std::strerror(errno));
    return 1;
}

}  // namespace

int run_texts(const Options &options, Style human_style, const Reader &reader)
{
    std::signal(SIGPIPE, SIG_IGN);
    const Style style = options.json ? Style::json : human_style;
    const bool interactive = isatty(STDOUT_FILENO) != 0;
    int status = 0;
    bool first = true;
    Texts texts(options.texts);
    for (Text text; texts.next(text);) {
        const Outcome outcome =
            text.fault != nullptr ? Outcome{{}, text.fault, -1, 0} : reader(text.value);
        if (!outcome.message.empty()) {
            report(text, outcome.message);
            status = 1;
        }
        const std::string output = formatted(text.value, outcome, style, first);
        if (output.empty()) continue;
        first = false;
        if (std::fwrite(output.data(), 1, output.size(), stdout) != output.size() ||
            (interactive && std::fflush(stdout) != 0))
            return end_of_output(status);
    }
    if (std::ferror(stdin) != 0) {
        std::fprintf(stderr, "orvex-parse: cannot read standard input\n");
        status = 1;
    }
    return std::fflush(stdout) == 0 ? status : end_of_output(status);
}
