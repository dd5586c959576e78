/* The parser, not rebuilt, asks whatever platform library the program brings. */
#include <orvex/parse.h>
#include <string.h>

extern char other_platform_format[64];

int main(void)
{
    uint32_t af = PARSE_AF_INET;
    if (parse_ipaddr(&af, NULL, 0, NULL, 0, NULL, NULL, NULL, NULL, 0, NULL, 0) != -1) return 1;
    return strcmp(other_platform_format, "%s:%d: insist '%s' failed: %s") == 0 ? 0 : 2;
}
