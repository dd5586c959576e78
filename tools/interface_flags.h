// The flags of interface names, as options and profiles name them.
#ifndef ORVEX_TOOLS_INTERFACE_FLAGS_H
#define ORVEX_TOOLS_INTERFACE_FLAGS_H

#include <orvex/parse.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

struct InterfaceFlag {
    const char *name;
    uint32_t bit;
    const char *help;
};

inline constexpr std::array<InterfaceFlag, 16> interface_flags = {{
    {"mgmt", PARSE_IF_MGMT, "One device number: no PIC, port or channel"},
    {"channels", PARSE_IF_CHANNELS, "\":\" channel numbers may follow the port"},
    {"no-slot", PARSE_IF_NO_SLOT, "No FPC or device number"},
    {"need-fpc-pic-port", PARSE_IF_NEED_FPC_PIC_PORT, "FPC, PIC and port must be given"},
    {"no-unit", PARSE_IF_NO_UNIT, "A unit is refused"},
    {"all", PARSE_IF_ALLOW_ALL, "The name \"all\" is accepted"},
    {"wildcard", PARSE_IF_WILDCARD, "\"?\" and \"*\" are accepted as numbers"},
    {"default-unit", PARSE_IF_DEFAULT_UNIT, "A missing unit is 0"},
    {"need-channel", PARSE_IF_NEED_CHANNEL, "A channel number or a direction is required"},
    {"no-unit-max", PARSE_IF_NO_UNIT_MAX, "The type's highest unit is not applied"},
    {"rlsq", PARSE_IF_RLSQ, "One device number: no PIC or port"},
    {"at-unit-32767", PARSE_IF_AT_UNIT_32767, "Type \"at\": unit 32767 is accepted"},
    {"ranges", PARSE_IF_RANGES, "\"[0-3]\" and \"[0,2]\" are accepted as numbers"},
    {"wide-fpc", PARSE_IF_WIDE_FPC, "The first slot number goes up to 255"},
    {"expansion-slot", PARSE_IF_EXPANSION_SLOT, "The form type-slot-port, with no-slot"},
    {"port-first", PARSE_IF_PORT_FIRST, "The form type-port, with no-slot"},
}};

inline std::optional<uint32_t> find_interface_flag(const std::string &name)
{
    const auto *const flag =
        std::find_if(interface_flags.begin(), interface_flags.end(),
                     [&name](const InterfaceFlag &known) { return name == known.name; });
    if (flag == interface_flags.end()) return std::nullopt;
    return flag->bit;
}

inline std::vector<std::string> interface_flag_names()
{
    std::vector<std::string> names;
    names.reserve(interface_flags.size());
    for (const InterfaceFlag &flag : interface_flags) names.emplace_back(flag.name);
    return names;
}

#endif
