#include "interface/parse_pf_attrib.h"

#include <orvex/platform.h>

#include <array>

#include "text/bytes.h"

static_assert(sizeof(platform_attributes) == 8);
static_assert(offsetof(platform_attributes, is_l2ng_product) == 1);
static_assert(offsetof(platform_attributes, max_ifl_subunit) == 4);

platform_attributes parse_pf_attrib = {0, 1, 0};

namespace orvex {
namespace {

// Types of a hook's arguments.
constexpr uint32_t arg_integer = 6;
constexpr uint32_t arg_address = 11;
constexpr uint32_t arg_text = 14;

using AttributeBuffer = std::array<uint8_t, 4>;

[[gnu::constructor]] void parse_library_init() { platform_hooks_init("pvidb"); }

uintptr_t address_of(const void *variable) { return reinterpret_cast<uintptr_t>(variable); }

// Has the platform fill `buffer` with an attribute; false when it does not give it.
bool read_attribute(const char *key, AttributeBuffer &buffer)
{
    void *attrib_buf = buffer.data();
    int32_t status = 0;
    int32_t answer{};
    auto args = std::to_array<platform_hook_arg>({
        {arg_text, "key_name", address_of(key), 0},
        {arg_address, "attrib_buf", address_of(&attrib_buf), 0},
        {arg_integer, "attrib_size", sizeof buffer, 0},
        {arg_address, "ret", address_of(&status), 0},
        {},
    });
    return platform_hook_call("ui_hook_pvidb_get_value", args.data(), &answer) == 0 && status == 0;
}

}  // namespace

void load_platform_attributes()
{
    const std::atomic_ref loaded(parse_pf_attrib.loaded);
    if (loaded.load(std::memory_order_acquire) != 0) return;
    // One buffer for both reads: a hook that fills only part of it leaves the rest of the first.
    AttributeBuffer buffer{};
    if (read_attribute("global.is_l2ng_product", buffer))
        is_l2ng_product().store(buffer[0], std::memory_order_relaxed);
    if (read_attribute("global.max_ifl_subunit", buffer)) {
        const auto value = load_native<int32_t>(buffer.data());
        max_ifl_subunit().store(value, std::memory_order_relaxed);
    }
    loaded.store(1, std::memory_order_release);
}

}  // namespace orvex
