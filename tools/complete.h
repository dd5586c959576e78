// Completes command lines for shells.
#ifndef ORVEX_TOOLS_COMPLETE_H
#define ORVEX_TOOLS_COMPLETE_H

#include <string>
#include <vector>

// What the last word of a command line can become: lines of a word, a TAB and what it means. The
// words are those after the program's name. The line ":files" means the names of files.
std::string complete(const std::vector<std::string> &words);

#endif
