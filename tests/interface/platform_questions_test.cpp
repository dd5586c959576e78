// Which questions a name asks of the platform, in their order. The platform here answers and records.
#include <gtest/gtest.h>
#include <orvex/parse.h>
#include <orvex/platform.h>

#include <cstring>
#include <string>

#include "interface/slots.h"

namespace {

std::string questions;

void asked(const std::string &question) { questions += questions.empty() ? question : ' ' + question; }

// What the platform answers; every product has the attributes (0, 0).
struct Router {
    uint16_t product_id = 1;
    bool in_container = false;
    bool is_root = false;
    bool is_line_card = false;
    bool has_virtual_fpcs = false;
};
Router router;

product_info product{};
interface_info fpc_type{};
interface_info device_type{};

struct Row {
    const char *name;
    Router router;
    const char *questions;
};

}  // namespace

const product_info *product_infop = nullptr;
const product_info *product_info_data()
{
    asked("product");
    product.product_id = router.product_id;
    product.multi_chassis_size = 3;
    return &product;
}

void logging(int /*level*/, const char * /*format*/, ...) { asked("logging"); }
int platform_hooks_init(const char * /*group*/) { return 0; }
int platform_hook_call(const char *hook_name, platform_hook_arg *arg_list, int32_t *answer)
{
    if (std::strcmp(hook_name, "running_in_container") == 0) {
        asked("container");
        *answer = router.in_container ? 7 : 0;
        return 0;
    }
    asked(reinterpret_cast<const char *>(arg_list->value));
    std::memset(*reinterpret_cast<void **>(arg_list[1].value), 0, arg_list[2].value);
    return 0;
}

const interface_info *interface_info_byname(const char *text, size_t length)
{
    const std::string type(text, length);
    asked("type:" + type);
    return type == "eth" ? &fpc_type : type == "vtnet" || type == "mgmt" ? &device_type : nullptr;
}
uint32_t interface_info_index(const interface_info *entry)
{
    asked("index");
    return entry == &fpc_type ? 5 : 6;
}
uint32_t get_virtual_fpc_picslots(uint32_t index)
{
    asked("virtual-pics");
    return index;
}

int orvex_product_info_is_virtual_fpc_enabled()
{
    asked("virtual");
    return router.has_virtual_fpcs ? 1 : 0;
}
int32_t orvex_product_info_get_router_min_virtual_fpc_slot()
{
    asked("min");
    return 100;
}
int32_t orvex_product_info_get_router_max_virtual_fpc_slot()
{
    asked("max");
    return 109;
}

uint8_t chassis_is_switch_chassis()
{
    asked("switch");
    return 0;
}
uint8_t chassis_is_line_card_chassis()
{
    asked("line-card");
    return router.is_line_card ? 1 : 0;
}
uint8_t chassis_is_multi_chassis_root()
{
    asked("root");
    return router.is_root ? 1 : 0;
}
uint8_t chassis_has_wide_vtnet_units()
{
    asked("wide-vtnet");
    return 0;
}
uint8_t chassis_uses_global_slots_a()
{
    asked("global-a");
    return 0;
}
uint8_t chassis_uses_global_slots_b()
{
    asked("global-b");
    return 0;
}
int32_t chassis_get_max_fpc_slots()
{
    asked("fpcs");
    return 12;
}
int32_t chassis_local_slot_to_global_slot(int32_t fpc, int32_t /*lcc*/)
{
    asked("local-to-global");
    return fpc;
}
int32_t chassis_lcc_slot_to_scc_slot(int32_t /*lcc*/, int32_t fpc)
{
    asked("lcc-to-scc");
    return fpc;
}

TEST(PlatformQuestions, AreThoseOfTheName)
{
    fpc_type.pic_slots = device_type.pic_slots = 4;
    fpc_type.ports_per_pic = 8;
    fpc_type.flags = PARSE_IF_CHANNELS;
    fpc_type.channel_levels = 1;
    fpc_type.channel_bounds[0] = 8;
    device_type.flags = PARSE_IF_MGMT;
    const Row rows[] = {
        {.name = "eth-1/2/3.1",
         .router = {},
         .questions = "product container root switch line-card type:eth fpcs virtual virtual"},
        {.name = "eth-1/2/3/4",
         .router = {.is_line_card = true},
         .questions = "product container root switch line-card type:eth product virtual virtual fpcs global-a global-b "
                      "lcc-to-scc virtual"},
        {.name = "eth-1/102/3/4",
         .router = {.is_line_card = true, .has_virtual_fpcs = true},
         .questions = "product container root switch line-card type:eth product virtual min max virtual min max "
                      "global-a global-b lcc-to-scc virtual min"},
        {.name = "eth-102/3/4",
         .router = {.has_virtual_fpcs = true},
         .questions = "product container root switch line-card type:eth fpcs virtual min max virtual min max index "
                      "virtual-pics"},
        {.name = "eth-1/0",
         .router = {.has_virtual_fpcs = true},
         .questions = "product container root switch line-card type:eth fpcs virtual min max virtual min"},
        {.name = "eth-1/2/3:4",
         .router = {},
         .questions = "product container root switch line-card type:eth fpcs virtual virtual"},
        {.name = "eth", .router = {.in_container = true}, .questions = "product container root switch line-card"},
        {.name = "node1:mgmt-0",
         .router = {},
         .questions = "product container root switch line-card type:mgmt virtual"},
        {.name = "a.b:eth-0", .router = {.is_root = true}, .questions = "product container root"},
        {.name = "lan0", .router = {}, .questions = "product container root switch line-card type:lan type:lan0"},
        {.name = "vtnet0.1",
         .router = {.product_id = 169},
         .questions = "product container root switch line-card type:vtnet virtual global.is_l2ng_product "
                      "global.max_ifl_subunit wide-vtnet"},
        {.name = "", .router = {}, .questions = "product container logging root switch line-card"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        router = row.router;
        parse_pf_attrib = {0, 1, 0};
        orvex::multichassis_naming = -1;
        questions.clear();
        parsed_interface record;
        parse_interface(row.name, 0, 0, &record, nullptr, 0);
        EXPECT_EQ(questions, row.questions);
    }
}
