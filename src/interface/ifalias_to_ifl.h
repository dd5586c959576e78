#ifndef ORVEX_INTERFACE_IFALIAS_TO_IFL_H
#define ORVEX_INTERFACE_IFALIAS_TO_IFL_H

#include <cstddef>
#include <string_view>

namespace orvex {

// Looks an alias up in the map file at `path`, as ifalias_to_ifl does. errno is left alone.
bool find_alias_in_file(const char *path, std::string_view alias, char *dest, size_t dest_size);

}  // namespace orvex

#endif
