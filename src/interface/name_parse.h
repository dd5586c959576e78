// What the readers of an interface name's parts share.
#ifndef ORVEX_INTERFACE_NAME_PARSE_H
#define ORVEX_INTERFACE_NAME_PARSE_H

#include <orvex/parse.h>

#include <cstdint>

#include "text/error_text.h"

namespace orvex {

// What a step of the name as a whole returns when it holds; else it returns parse_interface's
// result.
constexpr int ok = 0;

// Names are hardly ever refused: the compiler moves the messages out of the way of the readers.
// NOLINTNEXTLINE(readability-redundant-declaration)
[[gnu::cold]] int refuse(ErrorText error, int result, const char *format, ...);

// An interface name while it is read. A reader of a part gets its start, stores its value into the
// record and returns its end, or null with a message when the part breaks a rule.
struct NameParse {
    const char *name;  // without the chassis prefix; messages quote it
    uint32_t flags;    // the caller's; merged with the type's when that is known
    ErrorText error;
    parsed_interface &record;
    uint16_t product_id;
    bool has_lcc_names;  // whether names may have the form type-lcc/fpc/pic/port

    [[nodiscard]] bool has(uint32_t flag) const { return (flags & flag) != 0; }
};

// What the reader of a part returns after its message.
constexpr const char *no_part(int /*result*/) { return nullptr; }

// Reads ".100" into the record's unit.
const char *read_unit(const NameParse &parse, const char *at);

// Gives the record unit 0 when the name has none but the number before it.
void set_default_unit(const NameParse &parse);

}  // namespace orvex

#endif
