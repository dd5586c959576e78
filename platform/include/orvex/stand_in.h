/* What the stand-in platform library offers beyond the platform's own interface. */
#ifndef ORVEX_STAND_IN_H
#define ORVEX_STAND_IN_H

#include <orvex/platform.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Receives one log message: its level and its text, terminated, without a line end. */
typedef void (*orvex_log_sink)(int level, const char *message, void *context);

/*
 * Sends log messages to `sink` with `context`, or back to standard error when `sink` is null. To be
 * called while no other thread logs.
 */
ORVEX_PLATFORM_API void orvex_platform_set_log_sink(orvex_log_sink sink, void *context);

#ifdef __cplusplus
}
#endif

#endif
