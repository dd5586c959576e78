/* The smallest platform that can take the stand-in's place: what the parser asks for today. */
#include <orvex/platform.h>
#include <string.h>

extern char other_platform_format[64];
char other_platform_format[64];

void logging(int level, const char *format, ...)
{
    if (level == 0) strncpy(other_platform_format, format, sizeof other_platform_format - 1);
}
