// The stand-in platform: what it tells the parser comes from the installed profile.
#include "orvex/stand_in.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "default_profile.h"

namespace {

constexpr int32_t wrapped(uint32_t value) { return static_cast<int32_t>(value); }

// Compares a type's name with the first `length` characters of `text`, as strcmp does.
constexpr int compare_name(const char *name, const char *text, size_t length)
{
    for (size_t i = 0; i < length; ++i) {
        const auto left = static_cast<unsigned char>(name[i]);
        const auto right = static_cast<unsigned char>(text[i]);
        if (left != right) return left < right ? -1 : 1;
        if (left == '\0') return 0;
    }
    return name[length] == '\0' ? 0 : 1;
}

// Whether two texts begin with the same characters. Inline, as names of types are short.
constexpr bool is_same(const char *name, const char *text, size_t length)
{
    size_t i = 0;
    while (i < length && name[i] == text[i]) ++i;
    return i == length;
}

constexpr size_t length_of(const char *text)
{
    size_t length = 0;
    while (text[length] != '\0') ++length;
    return length;
}

constexpr bool is_sorted(const orvex_interface_type *types, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        const char *const name = types[i].name;
        if (name == nullptr || name[0] == '\0') return false;
        if (i > 0 && compare_name(types[i - 1].name, name, length_of(name)) >= 0) return false;
    }
    return true;
}

// A number below bucket_count for the name of a type; those of the built-in profile all differ.
constexpr size_t bucket_count = 64;
constexpr size_t bucket_of(const char *name, size_t length)
{
    const auto first = static_cast<unsigned char>(name[0]);
    const auto last = static_cast<unsigned char>(name[length - 1]);
    return (size_t{4} * first + last + length) % bucket_count;
}

// The last of the types whose names have this bucket's number.
struct Bucket {
    size_t length = 0;  // of its name, 0 when there is none
    size_t index = 0;
    bool is_shared = false;  // by several types
};

// The profile in force, and its types by their names.
struct Platform {
    orvex_platform_profile profile{};
    product_info product{};
    std::array<Bucket, bucket_count> buckets{};

    constexpr explicit Platform(const orvex_platform_profile &described) : profile(described)
    {
        product.product_id = profile.product_id;
        product.multi_chassis_size = profile.multi_chassis_size;
        for (size_t i = 0; i < profile.type_count; ++i) {
            const char *const name = profile.types[i].name;
            const size_t length = length_of(name);
            Bucket &bucket = buckets[bucket_of(name, length)];
            bucket = {length, i, bucket.length != 0};
        }
    }
};

static_assert(is_sorted(default_types.data(), default_types.size()));
constinit Platform platform{default_profile};

orvex_log_sink log_sink = nullptr;
void *log_context = nullptr;

bool has_product_record() { return platform.profile.product_record != ORVEX_PRODUCT_NONE; }

int32_t map_slot(const orvex_slot_mapping &mapping, int32_t lcc, int32_t fpc)
{
    const auto slots = static_cast<uint32_t>(mapping.slots_per_lcc);
    return wrapped(static_cast<uint32_t>(mapping.first) + static_cast<uint32_t>(lcc) * slots +
                   static_cast<uint32_t>(fpc));
}

const interface_info *search_type(const char *text, size_t length)
{
    const orvex_interface_type *const end = platform.profile.types + platform.profile.type_count;
    const auto *const type = std::lower_bound(platform.profile.types, end, text,
                                              [length](const auto &each, const char *name) {
                                                  return compare_name(each.name, name, length) < 0;
                                              });
    return type != end && compare_name(type->name, text, length) == 0 ? &type->info : nullptr;
}

// The arguments of the hook that reads an attribute.
struct AttributeRequest {
    const char *key = nullptr;
    void **buffer = nullptr;
    size_t size = 0;
    int32_t *status = nullptr;

    explicit AttributeRequest(const platform_hook_arg *arg)
    {
        // A hook's argument carries pointers as integers.
        // NOLINTBEGIN(performance-no-int-to-ptr)
        for (; arg->name != nullptr; ++arg) {
            if (std::strcmp(arg->name, "key_name") == 0)
                key = reinterpret_cast<const char *>(arg->value);
            else if (std::strcmp(arg->name, "attrib_buf") == 0)
                buffer = reinterpret_cast<void **>(arg->value);
            else if (std::strcmp(arg->name, "attrib_size") == 0)
                size = arg->value;
            else if (std::strcmp(arg->name, "ret") == 0)
                status = reinterpret_cast<int32_t *>(arg->value);
        }
        // NOLINTEND(performance-no-int-to-ptr)
    }

    [[nodiscard]] bool complete() const
    {
        return key != nullptr && buffer != nullptr && *buffer != nullptr && status != nullptr;
    }
};

// Hands over an attribute's value, `size` bytes of it.
void give_attribute(const AttributeRequest &request, const orvex_attribute &attribute,
                    const void *value, size_t size)
{
    *request.status = request.size < size ? ENOSPC : attribute.status;
    if (*request.status == 0) std::memcpy(*request.buffer, value, size);
}

// The hooks: each returns ENOENT when it has another name.

int run_container_hook(const char *hook_name, int32_t *answer)
{
    if (std::strcmp(hook_name, "running_in_container") != 0) return ENOENT;
    *answer = platform.profile.running_in_container;
    return 0;
}

// Not inline: the container hook, which runs for every name, would save registers for it.
[[gnu::noinline]] int run_attribute_hook(const char *hook_name, const platform_hook_arg *args)
{
    if (std::strcmp(hook_name, "ui_hook_pvidb_get_value") != 0) return ENOENT;
    const orvex_platform_profile &profile = platform.profile;
    if (profile.has_attributes == 0) return ENOENT;
    const AttributeRequest request(args);
    if (!request.complete()) return EINVAL;
    if (std::strcmp(request.key, "global.is_l2ng_product") == 0) {
        const auto value = static_cast<uint8_t>(profile.is_l2ng_product.value);
        give_attribute(request, profile.is_l2ng_product, &value, sizeof value);
    } else if (std::strcmp(request.key, "global.max_ifl_subunit") == 0) {
        const int32_t value = profile.max_ifl_subunit.value;
        give_attribute(request, profile.max_ifl_subunit, &value, sizeof value);
    } else {
        *request.status = ENOENT;
    }
    return 0;
}

}  // namespace

// ---- The stand-in's own interface ----

void orvex_platform_set_log_sink(orvex_log_sink sink, void *context)
{
    log_sink = sink;
    log_context = context;
}

const orvex_platform_profile *orvex_platform_default_profile() { return &default_profile; }

int orvex_platform_install(const orvex_platform_profile *profile)
{
    if (profile == nullptr) profile = &default_profile;
    if (!is_sorted(profile->types, profile->type_count)) return -1;
    platform = Platform(*profile);
    product_infop =
        profile->product_record == ORVEX_PRODUCT_BY_POINTER ? &platform.product : nullptr;
    return 0;
}

// ---- Logging and hooks ----

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

int platform_hook_call(const char *hook_name, platform_hook_arg *arg_list, int32_t *answer)
{
    // No two hooks have the same first letter.
    return *hook_name == 'r' ? run_container_hook(hook_name, answer)
                             : run_attribute_hook(hook_name, arg_list);
}

// ---- Interface types ----

const interface_info *interface_info_byname(const char *text, size_t length)
{
    if (length == 0) return nullptr;
    const Bucket &bucket = platform.buckets[bucket_of(text, length)];
    const orvex_interface_type &type = platform.profile.types[bucket.index];
    if (bucket.length == length && is_same(type.name, text, length)) return &type.info;
    return bucket.is_shared ? search_type(text, length) : nullptr;
}

uint32_t interface_info_index(const interface_info *entry)
{
    const auto offset = reinterpret_cast<uintptr_t>(entry) -
                        reinterpret_cast<uintptr_t>(&platform.profile.types->info);
    return static_cast<uint32_t>(offset / sizeof(orvex_interface_type));
}

uint32_t get_virtual_fpc_picslots(uint32_t index)
{
    if (index >= platform.profile.type_count) return 0;
    return platform.profile.types[index].virtual_pic_slots;
}

// ---- Product ----

const product_info *product_infop = &platform.product;

const product_info *product_info_data()
{
    return has_product_record() ? &platform.product : nullptr;
}

int orvex_product_info_is_virtual_fpc_enabled() { return platform.profile.has_virtual_fpcs; }
int32_t orvex_product_info_get_router_min_virtual_fpc_slot()
{
    return platform.profile.min_virtual_fpc_slot;
}
int32_t orvex_product_info_get_router_max_virtual_fpc_slot()
{
    return platform.profile.max_virtual_fpc_slot;
}

// ---- Chassis ----

uint8_t chassis_is_switch_chassis()
{
    return platform.profile.chassis_kind == ORVEX_CHASSIS_SWITCH ? 1 : 0;
}
uint8_t chassis_is_line_card_chassis()
{
    return platform.profile.chassis_kind == ORVEX_CHASSIS_LINE_CARD ? 1 : 0;
}
uint8_t chassis_is_multi_chassis_root() { return platform.profile.is_multi_chassis_root; }
uint8_t chassis_has_wide_vtnet_units() { return platform.profile.has_wide_vtnet_units; }
uint8_t chassis_uses_global_slots_a() { return platform.profile.uses_global_slots_a; }
uint8_t chassis_uses_global_slots_b() { return platform.profile.uses_global_slots_b; }
int32_t chassis_get_max_fpc_slots() { return platform.profile.max_fpc_slots; }
int32_t chassis_local_slot_to_global_slot(int32_t fpc, int32_t lcc)
{
    return map_slot(platform.profile.local_to_global, lcc, fpc);
}
int32_t chassis_lcc_slot_to_scc_slot(int32_t lcc, int32_t fpc)
{
    return map_slot(platform.profile.lcc_to_scc, lcc, fpc);
}
