#include <orvex/parse.h>
#include <orvex/platform.h>

#include <cstring>
#include <string_view>

#include "interface/parse_field_number.h"
#include "interface/parse_pf_attrib.h"
#include "interface/product.h"

namespace orvex {
namespace {

constexpr int32_t max_ordinary_unit = 16385;
constexpr int32_t max_irb_unit = 65535;
constexpr int32_t max_vtnet_unit = 262143;
constexpr int32_t max_large_unit = 1073741823;
constexpr int32_t first_reserved_unit = 1073741824;
constexpr int32_t last_reserved_unit = 1074003967;

// The product that has its attributes in the platform's database.
constexpr uint16_t attribute_product = 169;

bool has_large_units(std::string_view type)
{
    return type == "demux" || type == "pe" || type == "pd" || type == "mt" || type == "pp";
}

int32_t max_unit(const char *type_name, uint16_t product_id)
{
    if (is_l2ng_product().load(std::memory_order_relaxed) != 0) return max_large_unit;
    const std::string_view type = type_name;
    if (large_unit_products.contains(product_id) || has_large_units(type)) return max_large_unit;
    const bool is_at_irb_product = at_irb_products.contains(product_id);
    if (type == "at") {
        if (is_at_irb_product) return max_large_unit;
        const int32_t subunit = max_ifl_subunit().load(std::memory_order_relaxed);
        if (subunit != 0) return subunit;
    }
    if (type == "vtnet" && chassis_has_wide_vtnet_units() != 0) return max_vtnet_unit;
    if (is_at_irb_product && type == "irb") return max_irb_unit;
    return max_ordinary_unit;
}

// Units above the highest one that are accepted all the same.
bool is_extra_unit(const NameParse &parse, int32_t unit)
{
    if (unit >= first_reserved_unit && unit <= last_reserved_unit) return true;
    return unit == 32767 && parse.has(PARSE_IF_AT_UNIT_32767) &&
           std::strcmp(parse.record.type_name, "at") == 0;
}

}  // namespace

const char *read_unit(const NameParse &parse, const char *at)
{
    if (parse.has(PARSE_IF_NO_UNIT))
        return no_part(
            refuse(parse.error, rule_broken, "unit number is not appropriate: %s", parse.name));
    int32_t &unit = parse.record.unit;
    const char *const end = parse_field_number(unit, parse, at + 1, {"unit", 0, 0});
    if (end == nullptr) return nullptr;
    if (unit > last_reserved_unit) {
        return no_part(refuse(parse.error, rule_broken,
                              "unit number is not within the range 0-%d, %d-%d in '%s'",
                              max_vtnet_unit, first_reserved_unit, last_reserved_unit, parse.name));
    }
    if (parse.product_id == attribute_product) load_platform_attributes();
    const int32_t max = max_unit(parse.record.type_name, parse.product_id);
    if (parse.has(PARSE_IF_NO_UNIT_MAX) || unit <= max || is_extra_unit(parse, unit)) return end;
    return no_part(
        refuse(parse.error, rule_broken, "unit number is larger than %d in '%s'", max, parse.name));
}

void set_default_unit(const NameParse &parse)
{
    parsed_interface &record = parse.record;
    if (record.unit != IF_FIELD_ABSENT) return;
    const bool is_device = parse.has(PARSE_IF_MGMT | PARSE_IF_RLSQ);
    const int32_t needed = is_device ? record.fpc : record.port;
    if (parse.has(PARSE_IF_NO_SLOT) || needed != IF_FIELD_ABSENT) record.unit = 0;
}

}  // namespace orvex
