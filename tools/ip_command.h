#ifndef ORVEX_TOOLS_IP_COMMAND_H
#define ORVEX_TOOLS_IP_COMMAND_H

#include <cstdint>

// Adds PARSE_IPADDR_ flags to those of the options.
void add_ip_flags(uint32_t more);

#endif
