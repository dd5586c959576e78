/*
 * What the stand-in platform library offers beyond the platform's own interface: a profile, which a
 * program may fill in and install, describes the platform that the parser sees.
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

/* Sends log messages to `sink` with `context`, or to standard error when `sink` is null. */
ORVEX_PLATFORM_API void orvex_platform_set_log_sink(orvex_log_sink sink, void *context);

/* Where the parser finds the product record. */
enum orvex_product_record {
    ORVEX_PRODUCT_BY_POINTER, /* product_infop points to it */
    ORVEX_PRODUCT_BY_CALL,    /* product_infop is null, product_info_data() returns it */
    ORVEX_PRODUCT_NONE        /* both are null */
};

/* What the chassis is. The last two belong to a multi-chassis system. */
enum orvex_chassis_kind { ORVEX_CHASSIS_SINGLE, ORVEX_CHASSIS_SWITCH, ORVEX_CHASSIS_LINE_CARD };

/* Maps an FPC number of a line-card chassis to first + lcc * slots_per_lcc + fpc. */
struct orvex_slot_mapping {
    int32_t first;
    int32_t slots_per_lcc;
};

/* What the attribute database returns for one key. */
struct orvex_attribute {
    int32_t value;
    int32_t status; /* 0: the value is read; any other: the read fails with this status */
};

/* An interface type: its name, its catalogue entry, the PIC slots of a virtual FPC for it. */
struct orvex_interface_type {
    const char *name;
    struct interface_info info;
    uint32_t virtual_pic_slots;
};

struct orvex_platform_profile {
    enum orvex_product_record product_record;
    uint16_t product_id;
    uint32_t multi_chassis_size; /* lcc numbers are 0 to this - 2 */

    uint8_t running_in_container;
    uint8_t has_attributes;                 /* 0: no hook reads the two attributes */
    struct orvex_attribute is_l2ng_product; /* 0 to 255 */
    struct orvex_attribute max_ifl_subunit;

    enum orvex_chassis_kind chassis_kind;
    uint8_t is_multi_chassis_root; /* a chassis name may precede every interface name */
    uint8_t has_wide_vtnet_units;
    int32_t max_fpc_slots;

    uint8_t has_virtual_fpcs;
    int32_t min_virtual_fpc_slot;
    int32_t max_virtual_fpc_slot; /* inclusive */

    uint8_t uses_global_slots_a;
    uint8_t uses_global_slots_b;
    struct orvex_slot_mapping local_to_global; /* with one of the two flags above */
    struct orvex_slot_mapping lcc_to_scc;      /* without */

    const struct orvex_interface_type *types; /* in ascending order of their names, by byte */
    size_t type_count;
};

/*
 * The built-in profile, installed at the start: a single chassis of 12 FPC slots, product 1, with a
 * catalogue of its own.
 */
ORVEX_PLATFORM_API const struct orvex_platform_profile *orvex_platform_default_profile(void);

/*
 * Installs a copy of `profile`, or the built-in profile when it is null. The interface types and
 * their names are not copied: they must stay in place. Returns 0; or -1, with nothing changed, when
 * a name is null or empty or the names are not in ascending order. What the parser has read by then
 * for the life of the process (the form of names on a multi-chassis system, the attributes) stays.
 */
ORVEX_PLATFORM_API int orvex_platform_install(const struct orvex_platform_profile *profile);

#ifdef __cplusplus
}
#endif

#endif
