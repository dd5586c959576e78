#include "interface/slots.h"

#include <orvex/parse.h>

#include <algorithm>
#include <cstring>

#include "interface/parse_field_number.h"
#include "interface/product.h"

namespace orvex {

constinit std::atomic<int32_t> multichassis_naming{-1};

namespace {

// Whether the number after the first "-" is that of a virtual FPC.
bool is_virtual_fpc_name(const char *name)
{
    const char *const dash = std::strchr(name, '-');
    if (dash == nullptr) return false;
    const int32_t fpc = read_number(dash + 1).value;
    return fpc >= orvex_product_info_get_router_min_virtual_fpc_slot() &&
           fpc <= orvex_product_info_get_router_max_virtual_fpc_slot();
}

// Reads a number in the range of the virtual FPCs, where the product has them. The message of a
// failure stays, also when the number is then read otherwise.
inline const char *read_virtual_slot(int32_t &value, const NameParse &parse, const char *at,
                                     const char *label)
{
    if (orvex_product_info_is_virtual_fpc_enabled() == 0) return nullptr;
    const int32_t min = orvex_product_info_get_router_min_virtual_fpc_slot();
    const int32_t max = orvex_product_info_get_router_max_virtual_fpc_slot();
    return parse_field_number(value, parse, at, {label, min, wrapping_add(max, 1)});
}

// Reads the first slot number: below `bound`, or below 256 for some types and flags.
inline const char *read_first_slot(int32_t &value, const NameParse &parse, const char *at,
                                   const char *label, int32_t bound)
{
    constexpr int32_t wide_bound = 256;
    const char *const type_name = parse.record.type_name;
    if (parse.has(PARSE_IF_WIDE_FPC) || std::strncmp(type_name, "vcp", 3) == 0) bound = wide_bound;
    at = first_number(parse, at);
    const char *const end = read_virtual_slot(value, parse, at, label);
    return end != nullptr ? end : parse_field_number(value, parse, at, {label, 0, bound});
}

// "fpc"
const char *read_plain_fpc(const NameParse &parse, const char *at)
{
    const int32_t bound = chassis_get_max_fpc_slots();
    const char *const end = read_first_slot(parse.record.fpc, parse, at, "fpc", bound);
    // "type-" is a wildcard of its own.
    if (end == nullptr && *at == '\0' && parse.has(PARSE_IF_WILDCARD)) return at;
    return end;
}

// "lcc"
const char *read_lcc(int32_t &lcc, const NameParse &parse, const char *at)
{
    const product_info *const product = product_record();
    const uint32_t size = product != nullptr ? product->multi_chassis_size : 0;
    const int32_t bound = wrapping_add(static_cast<int32_t>(size), -1);
    at = read_first_slot(lcc, parse, at, "lcc", bound);
    if (at == nullptr || !is_wildcard_value(lcc)) return at;
    return no_part(refuse(parse.error, rule_broken, "wildcarding not allowed for lcc"));
}

// "lcc/fpc": the record gets the FPC's number in the whole system.
[[gnu::noinline]] const char *read_lcc_and_fpc(const NameParse &parse, const char *at)
{
    int32_t lcc = IF_FIELD_ABSENT;
    at = read_lcc(lcc, parse, at);
    if (at == nullptr) return nullptr;
    at = after_separator(parse, at);
    int32_t &fpc = parse.record.fpc;
    const char *end = read_virtual_slot(fpc, parse, at, "fpc");
    if (end == nullptr)
        end = parse_field_number(fpc, parse, at, {"fpc", 0, chassis_get_max_fpc_slots()});
    if (end == nullptr) return nullptr;
    if (is_wildcard_value(fpc))
        return no_part(refuse(parse.error, rule_broken,
                              "wildcarding not allowed for fpc when lcc is specified"));
    const bool global = chassis_uses_global_slots_a() != 0 || chassis_uses_global_slots_b() != 0;
    fpc = global ? chassis_local_slot_to_global_slot(fpc, lcc)
                 : chassis_lcc_slot_to_scc_slot(lcc, fpc);
    return end;
}

// A number that may be left out. Then its separator is not skipped either.
const char *read_optional_number(int32_t &value, const NameParse &parse, const char *at,
                                 Field field)
{
    const char *const start = first_number(parse, at);
    const char *const end = parse_field_number<Digits::optional>(value, parse, start, field);
    return end != start ? end : at;
}

}  // namespace

bool has_multichassis_naming()
{
    const int32_t known = multichassis_naming.load(std::memory_order_acquire);
    if (known != -1) [[likely]]
        return known == 1;
    const bool naming = chassis_is_switch_chassis() != 0 || chassis_is_line_card_chassis() != 0;
    multichassis_naming.store(naming ? 1 : 0, std::memory_order_release);
    return naming;
}

int32_t pic_bound(const NameParse &parse, const interface_info &entry)
{
    return static_cast<int32_t>(get_fpc_picslots_byname(parse.name, &entry));
}

const char *read_expansion_slot(const NameParse &parse, const interface_info &entry, const char *at)
{
    const Field slot{"expansion slot", 0, pic_bound(parse, entry)};
    at = read_optional_number(parse.record.pic, parse, at, slot);
    if (at == nullptr) return nullptr;
    if (*at == '-') ++at;
    return read_optional_number(parse.record.port, parse, at, {"port", 0, entry.ports_per_pic});
}

const char *read_fpc(const NameParse &parse, const char *at)
{
    const bool has_lcc = parse.has_lcc_names && std::count(at, at + std::strlen(at), '/') == 3;
    return has_lcc ? read_lcc_and_fpc(parse, at) : read_plain_fpc(parse, at);
}

}  // namespace orvex

uint32_t get_fpc_picslots_byname(const char *name, const interface_info *entry)
{
    if (orvex_product_info_is_virtual_fpc_enabled() == 0 || !orvex::is_virtual_fpc_name(name))
        return entry->pic_slots;
    return get_virtual_fpc_picslots(interface_info_index(entry));
}
