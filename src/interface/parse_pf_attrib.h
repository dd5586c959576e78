// The platform attributes that bound unit numbers.
#ifndef ORVEX_INTERFACE_PARSE_PF_ATTRIB_H
#define ORVEX_INTERFACE_PARSE_PF_ATTRIB_H

#include <orvex/parse.h>

#include <atomic>

namespace orvex {

// Fields of parse_pf_attrib, for concurrent first calls. The program may write the record too, so
// it is a plain one.
inline auto is_l2ng_product() { return std::atomic_ref(parse_pf_attrib.is_l2ng_product); }
inline auto max_ifl_subunit() { return std::atomic_ref(parse_pf_attrib.max_ifl_subunit); }

// Reads both attributes from the platform, unless the record is marked loaded, and marks it,
// whatever the reads gave.
void load_platform_attributes();

}  // namespace orvex

#endif
