// Which slots and PICs names may give, and the numbers of the slots.
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

// Asks the platform the first time, and keeps what it said.
bool ask_multichassis_naming();

inline bool has_multichassis_naming()
{
    const int32_t naming = multichassis_naming.load(std::memory_order_acquire);
    return naming == -1 ? ask_multichassis_naming() : naming == 1;
}

// pic_slots for a product with virtual FPCs.
uint32_t virtual_pic_slots(const char *name, const interface_info &entry);

// The exclusive bound of PIC and device numbers.
inline uint32_t pic_slots(const char *name, const interface_info &entry)
{
    if (orvex_product_info_is_virtual_fpc_enabled() == 0) return entry.pic_slots;
    return virtual_pic_slots(name, entry);
}

// Reads "fpc", or "lcc/fpc", into the record's FPC number.
const char *read_fpc(const NameParse &parse, const char *at);

}  // namespace orvex

#endif
