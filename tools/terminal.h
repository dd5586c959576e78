// Texts for people who may sit at a terminal.
#ifndef ORVEX_TOOLS_TERMINAL_H
#define ORVEX_TOOLS_TERMINAL_H

#include <string>

// Returns `text` as it is, or when `is_terminal`, with each control character but line ends as
// "\\x1b", so that a text from elsewhere cannot give the terminal orders.
std::string for_terminal(std::string text, bool is_terminal);

// Writes "orvex-parse: " and a problem to standard error.
void print_problem(const std::string &problem);

// Whether standard error is a terminal.
bool is_error_terminal();

#endif
