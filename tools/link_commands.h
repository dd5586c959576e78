#ifndef ORVEX_TOOLS_LINK_COMMANDS_H
#define ORVEX_TOOLS_LINK_COMMANDS_H

// A prefix length may follow MAC addresses, as with --prefix.
void accept_mac_prefix();

#endif
