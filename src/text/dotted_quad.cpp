#include "text/dotted_quad.h"

#include <arpa/inet.h>

#include <array>
#include <cstring>

namespace orvex {

bool read_by_inet_aton(std::string_view text, uint32_t &address)
{
    std::array<char, 130> copy;
    if (text.size() >= copy.size()) return false;
    std::memcpy(copy.data(), text.data(), text.size());
    copy[text.size()] = '\0';
    in_addr host_address{};
    if (inet_aton(copy.data(), &host_address) == 0) return false;
    address = ntohl(host_address.s_addr);
    return true;
}

}  // namespace orvex
