/*
 * What the stand-in platform library offers beyond the platform's own interface: it answers every
 * question of the parser out of one platform profile, which a program describes and installs.
 *
 *     struct orvex_platform_profile profile = *orvex_platform_default_profile();
 *     profile.product_id = 169;
 *     profile.max_fpc_slots = 8;
 *     orvex_platform_install(&profile);
 *
 * The functions of this header are for the start of a program: none of them may run while another
 * thread is inside the parser.
 */
#ifndef ORVEX_STAND_IN_H
#define ORVEX_STAND_IN_H

#include <orvex/platform.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Receives one log message: its level and its text, terminated, without a line end. */
typedef void (*orvex_log_sink)(int level, const char *message, void *context);

/* Sends log messages to `sink` with `context`, or back to standard error when `sink` is null. */
ORVEX_PLATFORM_API void orvex_platform_set_log_sink(orvex_log_sink sink, void *context);

/* Where the parser finds the product record. */
enum orvex_product_record {
    ORVEX_PRODUCT_BY_POINTER, /* product_infop points to it */
    ORVEX_PRODUCT_BY_CALL,    /* product_infop is null, product_info_data() answers it */
    ORVEX_PRODUCT_NONE        /* neither gives it */
};

/* What the chassis is. The last two belong to a multi-chassis system. */
enum orvex_chassis_kind { ORVEX_CHASSIS_SINGLE, ORVEX_CHASSIS_SWITCH, ORVEX_CHASSIS_LINE_CARD };

/* Maps a line-card chassis' own FPC number to first + lcc * slots_per_lcc + fpc. */
struct orvex_slot_mapping {
    int32_t first;
    int32_t slots_per_lcc;
};

/* The answer of the attribute database for one key. */
struct orvex_attribute {
    int32_t value;
    int32_t status; /* 0: the value counts; any other: the read reports this and gives no value */
};

/* An interface type: its name, its entry in the catalogue, the PIC slots of a virtual FPC for it.
 */
struct orvex_interface_type {
    const char *name;
    struct interface_info info;
    uint32_t virtual_pic_slots;
};

struct orvex_platform_profile {
    enum orvex_product_record product_record;
    uint16_t product_id;
    uint32_t multi_chassis_size; /* of the product record: one more than it has lcc numbers */

    uint8_t running_in_container;
    uint8_t has_attributes;                 /* 0: there is no hook that reads the two attributes */
    struct orvex_attribute is_l2ng_product; /* one byte */
    struct orvex_attribute max_ifl_subunit;

    enum orvex_chassis_kind chassis_kind;
    uint8_t is_multi_chassis_root; /* a chassis name may stand before every interface name */
    uint8_t has_wide_vtnet_units;
    int32_t max_fpc_slots;

    uint8_t has_virtual_fpcs;
    int32_t min_virtual_fpc_slot;
    int32_t max_virtual_fpc_slot; /* inclusive */

    uint8_t uses_global_slots_a;
    uint8_t uses_global_slots_b;
    struct orvex_slot_mapping local_to_global; /* on the two kinds above */
    struct orvex_slot_mapping lcc_to_scc;      /* on every other */

    const struct orvex_interface_type *types; /* in ascending order of their names, by byte */
    size_t type_count;
};

/*
 * The built-in profile, in force from the start: a single chassis of 12 FPC slots, product 1, with
 * a catalogue of its own.
 */
ORVEX_PLATFORM_API const struct orvex_platform_profile *orvex_platform_default_profile(void);

/*
 * Puts a copy of `profile` in force, or the built-in profile when it is null. The interface types
 * and their names are not copied: they must stay in place. Returns 0; or -1, with nothing changed,
 * when a name is null or empty or the names are not in ascending order. What the parser has cached
 * by then (the form of names on a multi-chassis system, the attributes) it keeps.
 */
ORVEX_PLATFORM_API int orvex_platform_install(const struct orvex_platform_profile *profile);

#ifdef __cplusplus
}
#endif

#endif
