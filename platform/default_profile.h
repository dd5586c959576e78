// The built-in profile of the stand-in platform.
#ifndef ORVEX_PLATFORM_DEFAULT_PROFILE_H
#define ORVEX_PLATFORM_DEFAULT_PROFILE_H

#include <array>
#include <cstdint>

#include "orvex/stand_in.h"

constexpr orvex_interface_type interface_type(const char *name, uint32_t flags, uint32_t pic_slots,
                                              uint16_t ports)
{
    orvex_interface_type type{};
    type.name = name;
    type.info.flags = flags;
    type.info.pic_slots = pic_slots;
    type.info.ports_per_pic = ports;
    type.virtual_pic_slots = pic_slots;
    return type;
}

// A type whose ports are divided into channels; `levels` are their exclusive bounds.
template <typename... Levels>
constexpr orvex_interface_type channelised(orvex_interface_type type, Levels... levels)
{
    type.info.flags |= PARSE_IF_CHANNELS;
    type.info.channel_levels = 0;
    ((type.info.channel_bounds[type.info.channel_levels++] = static_cast<uint16_t>(levels)), ...);
    return type;
}

// By name, in ascending order.
inline constexpr std::array default_types = {
    interface_type("ae", PARSE_IF_MGMT, 4092, 0),
    channelised(interface_type("at", PARSE_IF_AT_UNIT_32767, 4, 8), 12),
    interface_type("demux", PARSE_IF_MGMT, 1, 0),
    interface_type("em", PARSE_IF_MGMT, 4, 0),
    channelised(interface_type("eth", 0, 4, 48), 4),
    interface_type("irb", PARSE_IF_NO_SLOT, 0, 0),
    interface_type("lo", PARSE_IF_MGMT, 1, 0),
    interface_type("mgmt", PARSE_IF_MGMT, 2, 0),
    interface_type("mt", 0, 4, 1),
    interface_type("pd", 0, 4, 1),
    interface_type("pe", 0, 4, 1),
    interface_type("pp", PARSE_IF_MGMT, 1, 0),
    interface_type("rlsq", PARSE_IF_RLSQ, 128, 0),
    channelised(interface_type("ser", 0, 4, 12), 28, 24),
    interface_type("vcp", 0, 4, 4),
    interface_type("vlan", PARSE_IF_NO_SLOT, 0, 0),
    interface_type("vtnet", PARSE_IF_MGMT, 16, 0),
};

inline constexpr orvex_platform_profile default_profile = [] {
    orvex_platform_profile profile{};
    profile.product_record = ORVEX_PRODUCT_BY_POINTER;
    profile.product_id = 1;
    profile.has_attributes = 1;
    profile.is_l2ng_product.value = 1;
    profile.chassis_kind = ORVEX_CHASSIS_SINGLE;
    profile.max_fpc_slots = 12;
    profile.max_virtual_fpc_slot = -1;
    profile.local_to_global.slots_per_lcc = 12;
    profile.lcc_to_scc.slots_per_lcc = 12;
    profile.types = default_types.data();
    profile.type_count = default_types.size();
    return profile;
}();

#endif
