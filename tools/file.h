// Files that are closed when they go out of scope.
#ifndef ORVEX_TOOLS_FILE_H
#define ORVEX_TOOLS_FILE_H

#include <cstdio>
#include <memory>

struct CloseFile {
    void operator()(FILE *file) const { std::fclose(file); }
};

using File = std::unique_ptr<FILE, CloseFile>;

#endif
