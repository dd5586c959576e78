#ifndef ORVEX_TOOLS_PROFILE_COMMAND_H
#define ORVEX_TOOLS_PROFILE_COMMAND_H

#include "command.h"

// "interface --list-types"
extern const Command list_types_command;

#endif
