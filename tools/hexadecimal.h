#ifndef ORVEX_TOOLS_HEXADECIMAL_H
#define ORVEX_TOOLS_HEXADECIMAL_H

#include <cstdint>
#include <string>

// Appends a byte as two hexadecimal digits.
inline void append_hex_byte(std::string &out, uint8_t byte)
{
    static constexpr char digits[] = "0123456789abcdef";
    const char pair[] = {digits[byte >> 4], digits[byte & 15]};
    out.append(pair, sizeof pair);
}

#endif
