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

// Asks the platform, and keeps what it says for the life of the process.
bool load_multichassis_naming();

inline bool has_multichassis_naming()
{
    const int32_t naming = multichassis_naming.load(std::memory_order_acquire);
    return naming == -1 ? load_multichassis_naming() : naming == 1;
}

// pic_slots for a product with virtual FPCs.
uint32_t virtual_pic_slots(const char *name, const interface_info &entry);

// The exclusive bound of PIC and device numbers.
inline uint32_t pic_slots(const char *name, const interface_info &entry)
{
    if (orvex_product_info_is_virtual_fpc_enabled() == 0) return entry.pic_slots;
    return virtual_pic_slots(name, entry);
}

inline int32_t pic_bound(const NameParse &parse, const interface_info &entry)
{
    return static_cast<int32_t>(pic_slots(parse.name, entry));
}

// Reads "slot-port" into the record's PIC and port.
const char *read_expansion_slot(const NameParse &parse, const interface_info &entry,
                                const char *at);

// Reads "fpc", or "lcc/fpc", into the record's FPC.
const char *read_fpc(const NameParse &parse, const char *at);

}  // namespace orvex

#endif
