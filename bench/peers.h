// Loops that a program without the library would have.
#ifndef ORVEX_BENCH_PEERS_H
#define ORVEX_BENCH_PEERS_H

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bench {

// Reads `count` numbers up to `most` with one of `delimiters` between them.
inline bool strtoul_groups(const char *at, int base, const char *delimiters, unsigned long most,
                           uint16_t *groups, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        char *end = nullptr;
        errno = 0;
        const unsigned long number = std::strtoul(at, &end, base);
        if (end == at || errno != 0 || number > most) return false;
        groups[i] = static_cast<uint16_t>(number);
        if (i + 1 == count) return *end == '\0';
        if (*end == '\0' || std::strchr(delimiters, *end) == nullptr) return false;
        at = end + 1;
    }
    return false;
}

// Writes bytes in hexadecimal or decimal, each but the last followed by what `delimiter` returns.
template <bool hexadecimal, typename Delimiter>
size_t snprintf_bytes(char *buf, size_t size, const uint8_t *bytes, size_t count,
                      const Delimiter &delimiter)
{
    size_t length = 0;
    for (size_t i = 0; i < count; ++i) {
        const char *const suffix = i + 1 < count ? delimiter(i) : "";
        const int written =
            hexadecimal ? std::snprintf(buf + length, size - length, "%2.2x%s", bytes[i], suffix)
                        : std::snprintf(buf + length, size - length, "%d%s", bytes[i], suffix);
        length += static_cast<size_t>(written);
    }
    return length;
}

}  // namespace bench

#endif
