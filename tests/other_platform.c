/* Another router's platform: it has one interface type, and slot numbers of its own. */
#include <orvex/platform.h>
#include <string.h>

extern char other_platform_format[64];
char other_platform_format[64];

void logging(int level, const char *format, ...)
{
    if (level == 0) strncpy(other_platform_format, format, sizeof other_platform_format - 1);
}

static const struct interface_info ser = {.pic_slots = 8, .ports_per_pic = 2, .product_mask = 1 << 5};
static const struct product_info product = {.product_id = 64 + 5, .multi_chassis_size = 4};
const struct product_info *product_infop = &product;
const struct product_info *product_info_data(void) { return NULL; }

const struct interface_info *interface_info_byname(const char *text, size_t length)
{
    return length == 3 && memcmp(text, "ser", 3) == 0 ? &ser : NULL;
}
uint32_t interface_info_index(const struct interface_info *entry) { return entry == &ser ? 7 : 0; }
uint32_t get_virtual_fpc_picslots(uint32_t index) { return index; }

int platform_hooks_init(const char *group) { return strcmp(group, "pvidb"); }
int platform_hook_call(const char *hook_name, struct platform_hook_arg *arg_list, int32_t *answer)
{
    return hook_name == NULL || arg_list == NULL || answer == NULL ? 0 : -1;
}

int orvex_product_info_is_virtual_fpc_enabled(void) { return 0; }
int32_t orvex_product_info_get_router_min_virtual_fpc_slot(void) { return 0; }
int32_t orvex_product_info_get_router_max_virtual_fpc_slot(void) { return 0; }
uint8_t chassis_is_switch_chassis(void) { return 0; }
uint8_t chassis_is_line_card_chassis(void) { return 2; }
uint8_t chassis_is_multi_chassis_root(void) { return 0; }
uint8_t chassis_has_wide_vtnet_units(void) { return 0; }
uint8_t chassis_uses_global_slots_a(void) { return 0; }
uint8_t chassis_uses_global_slots_b(void) { return 3; }
int32_t chassis_get_max_fpc_slots(void) { return 20; }
int32_t chassis_local_slot_to_global_slot(int32_t fpc, int32_t lcc) { return 1000 * lcc + fpc; }
int32_t chassis_lcc_slot_to_scc_slot(int32_t lcc, int32_t fpc) { return -1000 * lcc - fpc; }
