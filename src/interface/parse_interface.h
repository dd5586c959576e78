#ifndef ORVEX_INTERFACE_PARSE_INTERFACE_H
#define ORVEX_INTERFACE_PARSE_INTERFACE_H

#include <atomic>
#include <cstdint>

namespace orvex {

// Whether names may have the form type-lcc/fpc/pic/port: 1 or 0, -1 before the first name. The
// platform is asked once.
extern std::atomic<int32_t> multichassis_naming;

}  // namespace orvex

#endif
