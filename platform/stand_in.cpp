// The stand-in platform: a single chassis without interface types, virtual slots or hooks of its
// own, so that the parser runs where there is no router.
#include "orvex/stand_in.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

constexpr int32_t fpc_slots = 12;
constexpr product_info product{};

orvex_log_sink log_sink = nullptr;
void *log_context = nullptr;

}  // namespace

void orvex_platform_set_log_sink(orvex_log_sink sink, void *context)
{
    log_sink = sink;
    log_context = context;
}

void logging(int level, const char *format, ...)
{
    std::array<char, 1024> message;
    va_list args;
    va_start(args, format);
    const int length = std::vsnprintf(message.data(), message.size(), format, args);
    va_end(args);
    if (length < 0) return;
    if (log_sink != nullptr) {
        log_sink(level, message.data(), log_context);
        return;
    }
    std::fprintf(stderr, "%s\n", message.data());
}

int platform_hooks_init(const char * /*group*/) { return 0; }

int platform_hook_call(const char *hook_name, platform_hook_arg * /*arg_list*/, int32_t *answer)
{
    if (std::strcmp(hook_name, "running_in_container") != 0) return ENOENT;
    *answer = 0;
    return 0;
}

const interface_info *interface_info_byname(const char * /*text*/, size_t /*length*/)
{
    return nullptr;
}
uint32_t interface_info_index(const interface_info * /*entry*/) { return 0; }
uint32_t get_virtual_fpc_picslots(uint32_t /*index*/) { return 0; }

const product_info *product_infop = &product;
const product_info *product_info_data() { return &product; }
int orvex_product_info_is_virtual_fpc_enabled() { return 0; }
int32_t orvex_product_info_get_router_min_virtual_fpc_slot() { return 0; }
int32_t orvex_product_info_get_router_max_virtual_fpc_slot() { return -1; }

uint8_t chassis_is_switch_chassis() { return 0; }
uint8_t chassis_is_line_card_chassis() { return 0; }
uint8_t chassis_is_multi_chassis_root() { return 0; }
uint8_t chassis_has_wide_vtnet_units() { return 0; }
uint8_t chassis_uses_global_slots_a() { return 0; }
uint8_t chassis_uses_global_slots_b() { return 0; }
int32_t chassis_get_max_fpc_slots() { return fpc_slots; }
int32_t chassis_local_slot_to_global_slot(int32_t fpc, int32_t lcc)
{
    return lcc * fpc_slots + fpc;
}
int32_t chassis_lcc_slot_to_scc_slot(int32_t lcc, int32_t fpc) { return lcc * fpc_slots + fpc; }
