#include "terminal.h"

#include <unistd.h>

#include <cstdio>

#include "parse_text.h"

namespace {

// Also those of ISO 6429 with the top bit set, which UTF-8 writes as two bytes.
bool is_control(const std::string &text, size_t at)
{
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x20 || byte == 0x7f) return byte != '\n';
    const auto before = static_cast<unsigned char>(at > 0 ? text[at - 1] : '\0');
    return byte >= 0x80 && byte < 0xa0 && (before == 0xc2 || before < 0x80);
}

}  // namespace

std::string for_terminal(std::string text, bool is_terminal)
{
    if (!is_terminal) return text;
    std::string shown;
    for (size_t i = 0; i < text.size(); ++i) {
        if (!is_control(text, i)) {
            shown += text[i];
            continue;
        }
        const auto byte = static_cast<uint8_t>(text[i]);
        shown += "\\x" + hexadecimal(&byte, 1);
    }
    return shown;
}

void print_problem(const std::string &problem)
{
    std::fprintf(stderr, "orvex-parse: %s\n", for_terminal(problem, is_error_terminal()).c_str());
}

bool is_error_terminal()
{
    static const bool is_terminal = isatty(STDERR_FILENO) != 0;
    return is_terminal;
}
