// The readers behind parse_ipaddr.
#ifndef ORVEX_PARSE_IPADDR_H
#define ORVEX_PARSE_IPADDR_H

#include <cstddef>
#include <cstdint>

#include "support/error_text.h"

namespace orvex
{

// Where an address parser leaves what it read. No pointer may be null.
struct AddressOutputs {
    uint8_t *address;
    int *pfxseen;
    uint32_t *pfxlen;
    int *maskseen;
    uint8_t *mask;
};

// Reads dotted decimal groups, one hexadecimal number or one decimal integer into `len` bytes.
int parse_ipaddr_bytes(const char *str, uint32_t flags, uint8_t *bytes, size_t len, bool is_mask,
                       ErrorText error);

// Reads an IPv4 address (4 bytes) or an IPv6 address (16 bytes) with what `flags` allow behind it.
int parse_ipv4_addr(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error);
int parse_ipv6_addr(const char *str, uint32_t flags, const AddressOutputs &out, ErrorText error);

// Tells whether an IPv4 address may not appear as a source or destination; false for any family
// but PARSE_AF_INET.
bool parse_ipaddr_is_martian(uint32_t af, const void *address);

}  // namespace orvex

#endif
