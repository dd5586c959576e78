/* A program in plain C99: the headers compile, the names link, the values are right. */
#include <orvex/parse.h>
#include <orvex/platform.h>
#include <stdio.h>
#include <string.h>

int main(void)
{
    uint32_t af = 0;
    uint8_t address[16];
    uint32_t pfxlen = 0;
    char text[FORMAT_IPADDR_BUFSIZE];
    int32_t value = 0;

    if (parse_ipaddr(&af, "10.1.0.0/16", PARSE_IPADDR_PREFIX_OK, address, sizeof address, NULL, &pfxlen, NULL, NULL, 0,
                     NULL, 0) != 0)
        return 1;
    if (format_ipaddr((int)af, address, 0, 1, pfxlen, 0, NULL, text, sizeof text) != 11) return 2;
    if (strcmp(text, "10.1.0.0/16") != 0) return 3;
    if (parse_integer("0x1f", &value) != 0 || value != 31) return 4;
    if (strcmp(sw_version.release, ORVEX_PARSE_VERSION_STRING) != 0) return 5;
    snprintf(text, sizeof text, "%d.%d.%d", ORVEX_PARSE_VERSION / 10000, ORVEX_PARSE_VERSION / 100 % 100,
             ORVEX_PARSE_VERSION % 100);
    if (strcmp(text, ORVEX_PARSE_VERSION_STRING) != 0) return 6;
    return puts(text) < 0;
}
