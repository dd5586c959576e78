#ifndef ORVEX_VPN_PARSE_INETVPN_RD_H
#define ORVEX_VPN_PARSE_INETVPN_RD_H

#include <cstdint>

#include "text/error_text.h"

namespace orvex {

// The maximum that stands for no upper limit.
constexpr uint32_t no_maximum = UINT32_MAX;

// Checks min <= value <= max; returns 0, or 1 behind a message that calls the value by `noun`.
int check_value_range(const char *noun, uint32_t value, uint32_t min, uint32_t max,
                      ErrorText error);

struct RouteDistinguisher {
    uint32_t type;
    uint32_t high;
    uint32_t low;
};

// Reads a plain AS or four plain octets and a plain number, all in range, and answers where they
// end; null: left to parse_inetvpn_rd.
const char *read_plain_rd(const char *text, RouteDistinguisher &rd);

// Route distinguishers and what is built on them are read from this much of a text.
constexpr unsigned work_text_length = 129;

}  // namespace orvex

#endif
