/* The parser, not rebuilt, calls the platform library that the program is linked with. */
#include <orvex/parse.h>
#include <string.h>

extern char other_platform_format[64];

int main(void)
{
    uint32_t af = PARSE_AF_INET;
    struct parsed_interface name;
    if (parse_ipaddr(&af, NULL, 0, NULL, 0, NULL, NULL, NULL, NULL, 0, NULL, 0) != -1) return 1;
    if (strcmp(other_platform_format, "%s:%d: insist '%s' failed: %s") != 0) return 2;
    if (parse_interface("ser-2/19/7/1", 0, 0, &name, NULL, 0) != 0 || name.fpc != 2019 || name.pic != 7) return 3;
    if (parse_interface("ser-2/20/0/0", 0, 0, &name, NULL, 0) != -2) return 4;
    return parse_interface("eth-0/0/0", 0, 0, &name, NULL, 0) == -1 ? 0 : 5;
}
