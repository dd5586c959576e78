#include "text/insist.h"

#include <orvex/platform.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace orvex {

void insist_failed(const char *source, int line, const char *condition)
{
    const int saved = errno;
    std::array<char, 64> buffer;
    // strerror may share its buffer between threads.
    const char *const reason = strerror_r(saved, buffer.data(), buffer.size());
    logging(0, "%s:%d: insist '%s' failed: %s", source, line, condition, reason);
    errno = saved;
}

}  // namespace orvex
