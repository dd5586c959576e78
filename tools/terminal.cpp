#include "terminal.h"

#include <unistd.h>

#include <cstdint>
#include <cstdio>

#include "hexadecimal.h"

namespace {

bool is_between(unsigned byte, unsigned first, unsigned last)
{
    return byte >= first && byte <= last;
}

// Whether a character that is this byte, or begins with it, is a control character. Those of ISO
// 6429 with the top bit set are one byte, or two in UTF-8.
bool is_control(unsigned byte, unsigned next)
{
    if (byte < 0x20) return byte != '\n';
    if (byte == 0xc2) return is_between(next, 0x80, 0x9f);
    return is_between(byte, 0x7f, 0x9f);
}

// How many bytes follow the first one of a character of UTF-8.
unsigned bytes_after(unsigned first)
{
    if (first >= 0xf0) return 3;
    if (first >= 0xe0) return 2;
    return first >= 0xc2 ? 1 : 0;
}

}  // namespace

std::string for_terminal(std::string_view text)
{
    std::string shown;
    unsigned rest_of_character = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<uint8_t>(text[i]);
        const auto next = static_cast<uint8_t>(i + 1 < text.size() ? text[i + 1] : '\0');
        if (rest_of_character > 0 && is_between(byte, 0x80, 0xbf)) {
            --rest_of_character;
            shown += text[i];
        } else if (is_control(byte, next)) {
            rest_of_character = 0;
            shown += "\\x";
            append_hex_byte(shown, byte);
        } else {
            rest_of_character = bytes_after(byte);
            shown += text[i];
        }
    }
    return shown;
}

void print_problem(const std::string &problem)
{
    const bool is_terminal = isatty(STDERR_FILENO) != 0;
    const std::string shown = is_terminal ? for_terminal(problem) : problem;
    std::fprintf(stderr, "orvex-parse: %s\n", shown.c_str());
}
