// The slots that names address: which there are, and their numbers.
#ifndef ORVEX_INTERFACE_SLOTS_H
#define ORVEX_INTERFACE_SLOTS_H

#include <orvex/platform.h>

#include <atomic>
#include <cstdint>

#include "interface/name_parse.h"

namespace orvex {

// Whether names may have the form type-lcc/fpc/pic/port: 1 or 0, and -1 until the platform was
// asked.
extern std::atomic<int32_t> multichassis_naming;

// Asks the platform once, and keeps what it says for the life of the process.
bool has_multichassis_naming();

// The exclusive bound of PIC and device numbers.
int32_t pic_bound(const NameParse &parse, const interface_info &entry);

// Reads "slot-port" into the record's PIC and port.
const char *read_expansion_slot(const NameParse &parse, const interface_info &entry,
                                const char *at);

// Reads "fpc", or "lcc/fpc", into the record's FPC.
const char *read_fpc(const NameParse &parse, const char *at);

}  // namespace orvex

#endif
