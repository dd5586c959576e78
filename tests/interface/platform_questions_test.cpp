// Which questions a name asks of the platform, in their order. The platform here records them.
#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <orvex/platform.h>

#include <cstring>
#include <string>

#include "interface/slots.h"

namespace {

std::string questions;

// Records a question of the library, and returns what the platform says.
template <typename Answer = int>
Answer asked(const std::string &question, Answer answer = {})
{
    questions += questions.empty() ? question : ' ' + question;
    return answer;
}

// What the platform says; every product has the attributes (0, 0).
struct Router {
    uint16_t product_id = 1;
    bool in_container = false;
    bool is_root = false;
    bool is_line_card = false;
    bool has_virtual_fpcs = false;
} router;

product_info product{};
interface_info fpc_type{}, device_type{};

}  // namespace

const product_info *product_infop = nullptr;
const product_info *product_info_data()
{
    product.product_id = router.product_id;
    product.multi_chassis_size = 3;
    return asked("product", &product);
}

void logging(int /*level*/, const char * /*format*/, ...) { asked("logging"); }
// Called before main, and before the objects here have their values.
constinit const char *hook_group = nullptr;
int platform_hooks_init(const char *group)
{
    hook_group = group;
    return 0;
}
int platform_hook_call(const char *hook_name, platform_hook_arg *arg_list, int32_t *answer)
{
    if (std::strcmp(hook_name, "running_in_container") == 0) {
        if (router.in_container) *answer = 7;  // else as a platform that does not know the hook
        return asked("container", 0);
    }
    std::string types;
    for (const platform_hook_arg *arg = arg_list; arg->name != nullptr; ++arg) {
        EXPECT_EQ(arg->reserved, 0U);
        types += std::to_string(arg->type) + ' ' + arg->name + ' ';
    }
    EXPECT_EQ(types, "14 key_name 11 attrib_buf 6 attrib_size 11 ret ");
    std::memset(*reinterpret_cast<void **>(arg_list[1].value), 0, arg_list[2].value);
    return asked(reinterpret_cast<const char *>(arg_list->value), 0);
}

const interface_info *interface_info_byname(const char *text, size_t length)
{
    const std::string type(text, length);
    asked("type:" + type);
    return type == "eth" ? &fpc_type : type == "vtnet" || type == "mgmt" ? &device_type : nullptr;
}
uint32_t interface_info_index(const interface_info *entry) { return asked("index", entry == &fpc_type ? 5U : 6U); }
uint32_t get_virtual_fpc_picslots(uint32_t index) { return asked("virtual-pics", index); }

int orvex_product_info_is_virtual_fpc_enabled() { return asked("virtual", router.has_virtual_fpcs ? -1 : 0); }
int32_t orvex_product_info_get_router_min_virtual_fpc_slot() { return asked("min", 100); }
int32_t orvex_product_info_get_router_max_virtual_fpc_slot() { return asked("max", 109); }

uint8_t chassis_is_switch_chassis() { return asked<uint8_t>("switch"); }
uint8_t chassis_is_line_card_chassis() { return asked<uint8_t>("line-card", router.is_line_card ? 2 : 0); }
uint8_t chassis_is_multi_chassis_root() { return asked<uint8_t>("root", router.is_root ? 3 : 0); }
uint8_t chassis_has_wide_vtnet_units() { return asked<uint8_t>("wide-vtnet"); }
uint8_t chassis_uses_global_slots_a() { return asked<uint8_t>("global-a"); }
uint8_t chassis_uses_global_slots_b() { return asked<uint8_t>("global-b"); }
int32_t chassis_get_max_fpc_slots() { return asked("fpcs", 12); }
int32_t chassis_local_slot_to_global_slot(int32_t fpc, int32_t /*lcc*/) { return asked("local-to-global", fpc); }
int32_t chassis_lcc_slot_to_scc_slot(int32_t /*lcc*/, int32_t fpc) { return asked("lcc-to-scc", fpc); }

TEST(PlatformQuestions, TheLibraryRegistersItsHooks) { EXPECT_STREQ(hook_group, "pvidb"); }

TEST(PlatformQuestions, AreThoseOfTheName)
{
    fpc_type.pic_slots = device_type.pic_slots = 4;
    fpc_type.ports_per_pic = 8;
    fpc_type.flags = PARSE_IF_CHANNELS;
    fpc_type.channel_levels = 1;
    fpc_type.channel_bounds[0] = 8;
    device_type.flags = PARSE_IF_MGMT;
    const Router virtual_fpcs = {.has_virtual_fpcs = true};
    const std::string start = "product container root switch line-card";
    const std::string fpc = start + " type:eth fpcs virtual";
    const std::string local_fpc = start + " type:eth product virtual";
    const struct {
        const char *name;
        Router router = {};
        std::string questions;
    } rows[] = {
        {.name = "eth-1/2/3.1", .questions = fpc + " virtual"},
        {.name = "eth-102/3/4",
         .router = virtual_fpcs,
         .questions = fpc + " min max virtual min max index virtual-pics"},
        {.name = "eth-1/0", .router = virtual_fpcs, .questions = fpc + " min max virtual min"},
        {.name = "eth-1/2/3/4", .questions = fpc + " virtual"},
        {.name = "eth-1/2/3/4",
         .router = {.is_line_card = true},
         .questions = local_fpc + " virtual fpcs global-a global-b lcc-to-scc virtual"},
        {.name = "eth-1/102/3/4",
         .router = {.is_line_card = true, .has_virtual_fpcs = true},
         .questions = local_fpc + " min max virtual min max global-a global-b lcc-to-scc virtual min"},
        {.name = "eth", .router = {.in_container = true}, .questions = start},
        {.name = "node1:mgmt-0", .questions = start + " type:mgmt virtual"},
        {.name = "a.b:eth-0", .router = {.is_root = true}, .questions = "product container root"},
        {.name = "lan0", .questions = start + " type:lan type:lan0"},
        {.name = "vtnet0.1",
         .router = {.product_id = 169},
         .questions = start + " type:vtnet virtual global.is_l2ng_product global.max_ifl_subunit wide-vtnet"},
        {.name = "", .questions = "product container logging root switch line-card"},
    };
    for (const auto &row : rows) {
        router = row.router;
        parse_pf_attrib = {0, 1, 0};
        questions.clear();
        parsed_interface record;
        const int result = parse_interface(row.name, 0, 0, &record, nullptr, 0);
        EXPECT_EQ(questions, row.questions) << row.name;
        EXPECT_EQ(parse_interface(row.name, 0, 0, &record, nullptr, 0), result) << "again: " << row.name;
        orvex::multichassis_naming = -1;  // as in a new program, which the first row is
    }
}
