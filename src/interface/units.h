#ifndef ORVEX_INTERFACE_UNITS_H
#define ORVEX_INTERFACE_UNITS_H

#include "interface/name_parse.h"

namespace orvex {

// Reads ".100" into the record's unit.
const char *read_unit(const NameParse &parse, const char *at);

// Gives the record unit 0 when the name has none but the number before it.
void set_default_unit(const NameParse &parse);

}  // namespace orvex

#endif
