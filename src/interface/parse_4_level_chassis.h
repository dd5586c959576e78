// The name of a chassis before an interface name: "lcc0:eth-0/0/0".
#ifndef ORVEX_INTERFACE_PARSE_4_LEVEL_CHASSIS_H
#define ORVEX_INTERFACE_PARSE_4_LEVEL_CHASSIS_H

#include <orvex/platform.h>

#include <cstring>

#include "text/error_text.h"

namespace orvex {

// Where the chassis name goes; each may be null.
struct ChassisOutput {
    char *buf;
    size_t buf_size;
    size_t *length;
};

// As strip_chassis_name, for a text whose first ":" is at `colon`.
int take_chassis_name(const char *&text, const char *colon, bool is_root,
                      const ChassisOutput &output, ErrorText error);

// Moves `text` past a chassis name and its ":". Returns 0, or -1 with a message. Inline, because
// most names have no ":".
inline int strip_chassis_name(const char *&text, const ChassisOutput &output, ErrorText error)
{
    if (text == nullptr) return refuse(error, -1, "it needs a non null string to parse.");
    if (output.length != nullptr) *output.length = 0;
    if (output.buf != nullptr && output.buf_size > 0) *output.buf = '\0';
    const bool is_root = chassis_is_multi_chassis_root() != 0;
    const char *const colon = std::strchr(text, ':');
    return colon == nullptr ? 0 : take_chassis_name(text, colon, is_root, output, error);
}

}  // namespace orvex

#endif
