#ifndef ORVEX_TEXT_INSIST_H
#define ORVEX_TEXT_INSIST_H

namespace orvex {

// Logs a failed insist and leaves errno as it was.
[[gnu::cold, gnu::noinline]] void insist_failed(const char *source, int line,
                                                const char *condition);

// Checks what callers must never break: logs when `holds` is false, and the caller goes on.
// Returns `holds`. `condition` is its text as the log shows it.
inline bool insist(bool holds, const char *source, const char *condition,
                   int line = __builtin_LINE())
{
    if (!holds) [[unlikely]]
        insist_failed(source, line, condition);
    return holds;
}

}  // namespace orvex

#endif
