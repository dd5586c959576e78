#include <orvex/parse.h>

#include <cerrno>

#include "command.h"
#include "options.h"
#include "parse_text.h"

namespace {

constexpr Field value_field[] = {{"value"}};

int32_t limit = -1;

template <typename Value>
void accept(const Text &text, Receiver &receiver, Value value)
{
    receiver.begin(text).number(0, value);
    receiver.end(text);
}

void refuse(const Text &text, Receiver &receiver, const std::string &what, int code)
{
    const int error = errno;
    const std::string problem = error == ERANGE ? " is out of range" : " is not " + what;
    const std::string message = quoted(text) + problem;
    receiver.refuse(text, {.message = message, .code = code, .error = error});
}

template <typename Value, int parse(const char *, Value *)>
void read_integer(const Text &text, Receiver &receiver)
{
    Value value = 0;
    errno = 0;
    const int result = parse(text.value, &value);
    if (result == 0)
        accept(text, receiver, value);
    else
        refuse(text, receiver, "an integer", result);
}

void read_number(const Text &text, Receiver &receiver)
{
    int32_t value = 0;
    errno = 0;
    if (parse_number(text.value, &value, limit) == 1)
        accept(text, receiver, value);
    else
        refuse(text, receiver, "a number from 0 to " + std::to_string(limit - 1), 0);
}

void add_number_options(Options &options)
{
    options.number("--limit", "N", "Every number must be below N; required", 1, INT32_MAX,
                   [](uint64_t number) { limit = static_cast<int32_t>(number); });
}

const Command &prepare_number(const Command &self)
{
    if (limit < 0) throw UsageError("--limit is required: every number must be below it");
    return self;
}

}  // namespace

const Command integer_command = {
    .name = "integer",
    .summary = "Signed 32-bit integers: decimal, octal (017), hexadecimal (0x1f)",
    .examples = "orvex-parse integer 0x1f -12\n",
    .layout = Layout::values,
    .fields = value_field,
    .read = read_integer<int32_t, parse_integer>,
};

const Command quad_command = {
    .name = "quad",
    .summary = "Signed 64-bit integers",
    .examples = "orvex-parse quad -- -9223372036854775808\n",
    .layout = Layout::values,
    .fields = value_field,
    .read = read_integer<int64_t, parse_quad>,
};

const Command number_command = {
    .name = "number",
    .summary = "Decimal numbers from 0 to below a limit",
    .examples = "orvex-parse number --limit 4096 100\n",
    .layout = Layout::values,
    .fields = value_field,
    .add_options = add_number_options,
    .prepare = prepare_number,
    .read = read_number,
};
