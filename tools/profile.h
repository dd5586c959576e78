// Platform profiles in files.
#ifndef ORVEX_TOOLS_PROFILE_H
#define ORVEX_TOOLS_PROFILE_H

#include <orvex/stand_in.h>

#include <string>

// Reads a profile and installs it for the life of the program; an empty path keeps the built-in
// one. Throws std::runtime_error with the place of each fault, what was expected there and what was
// found.
void install_profile(const std::string &path);

// The profile that is installed.
const orvex_platform_profile &current_profile();

#endif
