/*
 * What the parser asks of the router's platform. A platform library defines every symbol below,
 * with C linkage; the parser imports them by name, and keeps no result but those that orvex/parse.h
 * names.
 */
#ifndef ORVEX_PLATFORM_H
#define ORVEX_PLATFORM_H

#include <orvex/parse.h> /* the PARSE_IF_ bits of interface_info.flags */
#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ORVEX_PLATFORM_API __attribute__((visibility("default")))
#else
#define ORVEX_PLATFORM_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Logging --------------------------------------------------------------------------------- */

/* Logs one message; `level` 0 is the most severe. `format` is a printf format. */
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
ORVEX_PLATFORM_API void
logging(int level, const char *format, ...);

/* ---- Hooks ----------------------------------------------------------------------------------- */

/*
 * One argument of a hook; a list ends with an entry of zero bytes. `type` says what `value` is: 14
 * a pointer to a text, 11 the address of a variable that the hook reads or fills, 6 an integer.
 */
struct platform_hook_arg {
    uint32_t type;
    const char *name;
    uintptr_t value;
    uint32_t reserved; /* 0 */
};

/* Registers the calling library for a group of hooks. Returns 0 on success. */
ORVEX_PLATFORM_API int platform_hooks_init(const char *group);

/* Runs a hook, which stores its own result in `*answer`. Returns 0 when it ran, else non-zero. */
ORVEX_PLATFORM_API int platform_hook_call(const char *hook_name, struct platform_hook_arg *arg_list,
                                          int32_t *answer);

/* ---- Interface types ------------------------------------------------------------------------- */

/* An entry of the interface-type catalogue. Bounds are exclusive. */
struct interface_info {
    uint8_t platform_private_0[8];
    uint32_t pic_slots;     /* PIC slots per FPC, and the bound of device numbers */
    uint16_t ports_per_pic; /* bound of port numbers */
    uint8_t platform_private_14[2];
    uint32_t flags; /* PARSE_IF_ bits: the forms of names of this type */
    uint8_t platform_private_20[4];
    uint16_t channel_bounds[6]; /* level 1 first */
    uint16_t channel_levels;    /* at most 6 count */
    uint8_t platform_private_38[2];
    uint64_t product_mask; /* 0: every product; else bit (product identifier modulo 64) */
};

/* The entry whose name is the first `length` characters of `text`, or null. */
ORVEX_PLATFORM_API const struct interface_info *interface_info_byname(const char *text,
                                                                      size_t length);

/* The index of an entry in the catalogue. */
ORVEX_PLATFORM_API uint32_t interface_info_index(const struct interface_info *entry);

/* The PIC slots of a virtual FPC for the interface type with that index. */
ORVEX_PLATFORM_API uint32_t get_virtual_fpc_picslots(uint32_t index);

/* ---- Product --------------------------------------------------------------------------------- */

struct product_info {
    uint16_t product_id;
    uint8_t platform_private_2[54];
    uint32_t multi_chassis_size;
};

/* The product record, or null; then product_info_data() is called, which may return null too. */
ORVEX_PLATFORM_API extern const struct product_info *product_infop;
ORVEX_PLATFORM_API const struct product_info *product_info_data(void);

/* Whether the product has virtual FPCs (non-zero), and their lowest and highest slot number. */
ORVEX_PLATFORM_API int orvex_product_info_is_virtual_fpc_enabled(void);
ORVEX_PLATFORM_API int32_t orvex_product_info_get_router_min_virtual_fpc_slot(void);
ORVEX_PLATFORM_API int32_t orvex_product_info_get_router_max_virtual_fpc_slot(void);

/* ---- Chassis --------------------------------------------------------------------------------- */

/* Truth values, non-zero for yes. */
ORVEX_PLATFORM_API uint8_t chassis_is_switch_chassis(void);
ORVEX_PLATFORM_API uint8_t chassis_is_line_card_chassis(void);
ORVEX_PLATFORM_API uint8_t chassis_is_multi_chassis_root(void);
ORVEX_PLATFORM_API uint8_t chassis_has_wide_vtnet_units(void);
ORVEX_PLATFORM_API uint8_t chassis_uses_global_slots_a(void);
ORVEX_PLATFORM_API uint8_t chassis_uses_global_slots_b(void);

/* The number of FPC slots of the router. */
ORVEX_PLATFORM_API int32_t chassis_get_max_fpc_slots(void);

/* The system-wide number of an FPC of a line-card chassis; note the orders of the arguments. */
ORVEX_PLATFORM_API int32_t chassis_local_slot_to_global_slot(int32_t fpc, int32_t lcc);
ORVEX_PLATFORM_API int32_t chassis_lcc_slot_to_scc_slot(int32_t lcc, int32_t fpc);

#ifdef __cplusplus
}
#endif

/* The parser reads these records at fixed offsets, on 32-bit and 64-bit hosts alike. */
#if defined(__cplusplus)
#define ORVEX_PLATFORM_LAYOUT(condition) static_assert(condition, #condition)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define ORVEX_PLATFORM_LAYOUT(condition) _Static_assert(condition, #condition)
#endif
#ifdef ORVEX_PLATFORM_LAYOUT
ORVEX_PLATFORM_LAYOUT(sizeof(struct interface_info) == 48);
ORVEX_PLATFORM_LAYOUT(offsetof(struct interface_info, pic_slots) == 8);
ORVEX_PLATFORM_LAYOUT(offsetof(struct interface_info, ports_per_pic) == 12);
ORVEX_PLATFORM_LAYOUT(offsetof(struct interface_info, flags) == 16);
ORVEX_PLATFORM_LAYOUT(offsetof(struct interface_info, channel_bounds) == 24);
ORVEX_PLATFORM_LAYOUT(offsetof(struct interface_info, channel_levels) == 36);
ORVEX_PLATFORM_LAYOUT(offsetof(struct interface_info, product_mask) == 40);
ORVEX_PLATFORM_LAYOUT(offsetof(struct product_info, product_id) == 0);
ORVEX_PLATFORM_LAYOUT(offsetof(struct product_info, multi_chassis_size) == 56);
ORVEX_PLATFORM_LAYOUT(sizeof(uintptr_t) != 4 || sizeof(struct platform_hook_arg) == 16);
#undef ORVEX_PLATFORM_LAYOUT
#endif

#endif
