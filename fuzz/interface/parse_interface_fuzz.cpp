// Reads any text as an interface name with any flags, on several platforms.
#include <orvex/parse.h>
#include <orvex/stand_in.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

void install(uint8_t choice)
{
    orvex_platform_profile profile = *orvex_platform_default_profile();
    profile.product_id = choice % 4 == 0 ? 169 : choice;
    profile.is_multi_chassis_root = choice & 1;
    profile.has_virtual_fpcs = choice >> 1 & 1;
    profile.min_virtual_fpc_slot = 1000;
    profile.max_virtual_fpc_slot = 1099;
    profile.chassis_kind = ORVEX_CHASSIS_SWITCH;
    profile.multi_chassis_size = choice % 5;
    orvex_platform_install(&profile);
    parse_pf_attrib = {0, 1, 0};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    uint32_t words[2] = {};
    if (size < 1 + sizeof words) return 0;
    install(data[0]);
    std::memcpy(words, data + 1, sizeof words);
    const std::string text(reinterpret_cast<const char *>(data) + 1 + sizeof words,
                           size - 1 - sizeof words);
    parsed_interface record;
    char error[64];
    const int result = parse_interface(text.c_str(), words[0], words[1], &record, error,
                                       text.size() % sizeof error);
    require(result <= 0 && result >= -2);
    require(std::memchr(record.type_name, 0, sizeof record.type_name) != nullptr || result == -1);
    require(is_interface_alias(text.c_str()) >= 0);
    FILE *const map = fmemopen(const_cast<uint8_t *>(data), size, "r");
    char name[8];
    ifalias_to_ifl(text.c_str(), name, sizeof name, 0, map);
    std::fclose(map);
    return 0;
}
