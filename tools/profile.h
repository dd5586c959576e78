// Platform profiles as files.
#ifndef ORVEX_TOOLS_PROFILE_H
#define ORVEX_TOOLS_PROFILE_H

#include <string>

// Reads a profile and puts it in force for the life of the program; an empty path leaves the
// built-in one. Throws std::runtime_error with the place of the fault, what was expected there and
// what was found.
void install_profile(const std::string &path);

#endif
