// Texts for people who may sit at a terminal.
#ifndef ORVEX_TOOLS_TERMINAL_H
#define ORVEX_TOOLS_TERMINAL_H

#include <string>
#include <string_view>

// Returns `text` with each control character but line ends as "\\x1b", so that a text from
// elsewhere cannot give the terminal orders.
std::string for_terminal(std::string_view text);

// Writes "orvex-parse: " and a problem to standard error.
void print_problem(const std::string &problem);

#endif
