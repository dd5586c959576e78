#include "text/insist.h"

#include <orvex/platform.h>

#include <cerrno>
#include <cstring>

namespace orvex {

void insist_failed(const char *source, int line, const char *condition)
{
    const int saved = errno;
    logging(0, "%s:%d: insist '%s' failed: %s", source, line, condition, std::strerror(saved));
    errno = saved;
}

}  // namespace orvex
