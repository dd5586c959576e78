#include <orvex/parse.h>

#include <cerrno>

#include "commands.h"

namespace {

struct NumberOptions : Options {
    int32_t limit = 0;
};

template <typename Value>
Outcome accepted(Value value)
{
    return {{{"value", value, std::to_string(value)}}, {}, 0, 0};
}

Outcome refused(const std::string &text, const std::string &what, int code)
{
    const std::string problem = errno == ERANGE ? "is out of range" : "is not " + what;
    return {{}, "'" + text + "' " + problem, code, errno};
}

template <typename Value, int parse(const char *, Value *)>
Outcome read_integer(const std::string &text)
{
    Value value = 0;
    errno = 0;
    const int result = parse(text.c_str(), &value);
    return result == 0 ? accepted(value) : refused(text, "an integer", result);
}

Outcome read_number(const std::string &text, int32_t limit)
{
    int32_t value = 0;
    errno = 0;
    if (parse_number(text.c_str(), &value, limit) == 1) return accepted(value);
    return refused(text, "a number from 0 to " + std::to_string(int64_t{limit} - 1), 0);
}

}  // namespace

void add_number_commands(CLI::App &app, Job &job)
{
    static NumberOptions options;
    add_command(app, "integer", "Signed 32-bit integers: decimal, octal (017), hexadecimal (0x1f)",
                options)
        ->callback([&job] {
            job = [] {
                return run_texts(options, Style::value, read_integer<int32_t, parse_integer>);
            };
        });
    add_command(app, "quad", "Signed 64-bit integers", options)->callback([&job] {
        job = [] { return run_texts(options, Style::value, read_integer<int64_t, parse_quad>); };
    });
    CLI::App *const number =
        add_command(app, "number", "Decimal numbers from 0 to below a limit", options);
    number->add_option("--limit", options.limit, "Every number must be below this")->required();
    number->callback([&job] {
        job = [] {
            return run_texts(options, Style::value, [](const std::string &text) {
                return read_number(text, options.limit);
            });
        };
    });
}
