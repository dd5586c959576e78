// Any text as an interface name, a chassis prefix and an alias, with any flags, on any platform;
// and any bytes as an alias map, which must give the same from a file as from a stream.
#include <fuzzer/FuzzedDataProvider.h>
#include <orvex/parse.h>
#include <orvex/platform.h>
#include <orvex/stand_in.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "interface/ifalias_to_ifl.h"
#include "interface/slots.h"

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

// A buffer of a drawn size, filled with a value that no function leaves by chance.
std::vector<char> draw_buffer(FuzzedDataProvider &input, size_t most)
{
    return std::vector<char>(input.ConsumeIntegralInRange<size_t>(0, most), 'x');
}

// Either nothing was written, or a text with its terminator. (A second message may be shorter.)
void require_terminated(const std::vector<char> &buffer)
{
    const auto is_fill = [](char character) { return character == 'x'; };
    require(std::all_of(buffer.begin(), buffer.end(), is_fill) ||
            std::memchr(buffer.data(), '\0', buffer.size()) != nullptr);
}

// Starts a router of any kind: nothing is cached.
void install(FuzzedDataProvider &input)
{
    constexpr uint16_t products[] = {0, 52, 79, 84, 88, 169, 226, 268, 319, 320, 65535};
    orvex_platform_profile profile = *orvex_platform_default_profile();
    profile.product_record =
        static_cast<orvex_product_record>(input.ConsumeIntegral<uint8_t>() % 3);
    profile.product_id = input.PickValueInArray(products);
    profile.multi_chassis_size = input.ConsumeIntegral<uint8_t>();
    profile.running_in_container = input.ConsumeIntegralInRange<uint8_t>(0, 9) == 0;
    profile.has_attributes = input.ConsumeBool();
    profile.is_l2ng_product.value = input.ConsumeBool();
    profile.max_ifl_subunit.value = input.ConsumeIntegral<int16_t>();
    profile.max_ifl_subunit.status = input.ConsumeBool();
    profile.chassis_kind = static_cast<orvex_chassis_kind>(input.ConsumeIntegral<uint8_t>() % 3);
    profile.is_multi_chassis_root = input.ConsumeBool();
    profile.has_wide_vtnet_units = input.ConsumeBool();
    profile.uses_global_slots_a = input.ConsumeBool();
    profile.uses_global_slots_b = input.ConsumeBool();
    profile.has_virtual_fpcs = input.ConsumeBool();
    profile.min_virtual_fpc_slot = input.ConsumeIntegral<int16_t>();
    profile.max_virtual_fpc_slot = input.ConsumeIntegral<int16_t>();
    require(orvex_platform_install(&profile) == 0);
    parse_pf_attrib = {0, 1, 0};
    orvex::multichassis_naming = -1;
}

void check_name(FuzzedDataProvider &input, const std::string &text)
{
    parsed_interface record;
    std::memset(&record, 'x', sizeof record);
    std::vector<char> error = draw_buffer(input, 200);
    const auto flags = input.ConsumeIntegral<uint32_t>();
    const auto mask = input.ConsumeIntegral<uint32_t>();
    const int result =
        parse_interface(text.c_str(), flags, mask, &record, error.data(), error.size());
    require(result <= 0 && result >= -2);
    require_terminated(error);
    const bool is_reset = record.type_name[0] != 'x' || text[0] == 'x';
    require(is_reset || result == -1);
    if (is_reset && result == 0) require(strnlen(record.type_name, 60) < 60);
}

void check_chassis(FuzzedDataProvider &input, const std::string &text)
{
    std::vector<char> chassis = draw_buffer(input, 140);
    std::vector<char> error = draw_buffer(input, 200);
    const char *name = text.c_str();
    size_t length = 7;
    const int result = parse_4_level_chassis(&name, chassis.data(), chassis.size(), error.data(),
                                             error.size(), &length);
    require_terminated(error);
    require(result == 0 ? length <= 128 : name == text.c_str() && length == 0);
    const bool is_moved = name != text.c_str();
    require(is_moved == (result == 0 && length > 0));
    if (result == 0 && !chassis.empty())
        require(std::string(chassis.data()) == text.substr(0, length));
    const interface_info *const type = interface_info_byname("eth", 3);
    get_fpc_picslots_byname(text.c_str(), type);
}

void check_map(const std::string &alias, const std::string &map)
{
    if (map.empty()) return;
    const int file = memfd_create("map", MFD_CLOEXEC);
    require(file >= 0 && ::write(file, map.data(), map.size()) == static_cast<ssize_t>(map.size()));
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    FILE *const stream = fmemopen(const_cast<char *>(map.data()), map.size(), "r");
    char from_file[8] = "before";
    char from_stream[8] = "before";
    const bool found = orvex::find_alias_in_file(
        path.c_str(), std::string_view(alias).substr(0, 128), from_file, sizeof from_file);
    require(found ==
            (ifalias_to_ifl(alias.c_str(), from_stream, sizeof from_stream, 0, stream) == 1));
    require(std::strcmp(from_file, from_stream) == 0);
    std::fclose(stream);
    ::close(file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool is_silent = [] {
        orvex_platform_set_log_sink([](int, const char *, void *) {}, nullptr);
        return true;
    }();
    require(is_silent);
    FuzzedDataProvider input(data, size);
    install(input);
    const std::string line = input.ConsumeRandomLengthString();
    const std::string text = line.c_str();
    check_name(input, text);
    check_chassis(input, text);
    const int alias = is_interface_alias(text.c_str());
    require(alias == 0 || (text.size() >= 5 && text.size() <= 128));
    check_map(text, input.ConsumeRemainingBytesAsString());
    return 0;
}
