/* What bench/python.py holds a column against: the C function in a C loop. */
#include <orvex/parse.h>
#include <string.h>

/* Reads `count` texts, each with its NUL, and returns how many are addresses. */
size_t parse_loop(const char *texts, size_t count);

size_t parse_loop(const char *texts, size_t count)
{
    size_t accepted = 0;
    for (; count > 0; --count) {
        uint32_t family = 0, length;
        uint8_t address[16];
        int seen;
        if (parse_ipaddr(&family, texts, 0, address, sizeof address, &seen, &length, NULL, NULL, 0,
                         NULL, 0) == 0)
            ++accepted;
        texts += strlen(texts) + 1;
    }
    return accepted;
}
