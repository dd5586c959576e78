#include "text/dotted_quad.h"

#include <arpa/inet.h>

namespace orvex {

bool read_by_inet_aton(std::string_view text, uint32_t &address)
{
    const TerminatedCopy copy(text);
    in_addr host_address{};
    if (inet_aton(copy.text.data(), &host_address) == 0) return false;
    address = ntohl(host_address.s_addr);
    return true;
}

}  // namespace orvex
