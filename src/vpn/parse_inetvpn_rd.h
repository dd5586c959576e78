#ifndef ORVEX_VPN_PARSE_INETVPN_RD_H
#define ORVEX_VPN_PARSE_INETVPN_RD_H

#include <cstddef>
#include <cstdint>

#include "text/dotted_quad.h"
#include "text/error_text.h"

namespace orvex {

// Route distinguishers and ATM VPN addresses are judged on so many characters.
constexpr size_t longest_vpn_text = TerminatedCopy::most;

// The maximum of a value without an upper limit.
constexpr uint32_t no_maximum = UINT32_MAX;

// Checks min <= value <= max. Returns 0, or 1 after a message that calls the value by `noun`.
inline int check_value_range(const char *noun, uint32_t value, uint32_t min, uint32_t max,
                             ErrorText error)
{
    if (value >= min && value <= max) return 0;
    return refuse(error, 1, "Invalid %s value at '%u' not in range %u to %u", noun, value, min,
                  max);
}

// As parse_inetvpn_rd, for the first `size` characters of a terminated text, or all when it has
// fewer: those after them neither count nor are quoted.
int read_rd(const char *text, size_t size, uint32_t &type, uint32_t &high, uint32_t &low,
            ErrorText error);

}  // namespace orvex

#endif
