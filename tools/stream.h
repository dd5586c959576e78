// Reads all texts of a command and prints what comes of them.
#ifndef ORVEX_TOOLS_STREAM_H
#define ORVEX_TOOLS_STREAM_H

#include <vector>

#include "command.h"
#include "output.h"
#include "record.h"

struct StreamOptions {
    Form form;
    bool fail_fast = false;
};

// Adds the options that all commands have, for a command with these fields.
void add_stream_options(Options &options, StreamOptions &stream, const Command &command);

// Throws UsageError when the command has no such form.
void check_form(const Command &command, const Form &form);

// Returns the exit status: 0 when every text was accepted, else 1.
int run_stream(const Command &command, const StreamOptions &options, std::vector<char *> texts,
               Output &output);

#endif
