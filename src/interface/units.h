#ifndef ORVEX_INTERFACE_UNITS_H
#define ORVEX_INTERFACE_UNITS_H

#include "interface/name_parse.h"

namespace orvex {

// Reads ".100" into the record's unit.
const char *read_unit(const NameParse &parse, const char *at);

}  // namespace orvex

#endif
