#include "interface/parse_interface.h"

#include <orvex/parse.h>
#include <orvex/platform.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "interface/parse_pf_attrib.h"
#include "text/error_text.h"
#include "text/insist.h"
#include "old/name_characters.h"
#include "old/plain_numbers.h"
#include "old/target_numbers.h"

static_assert(sizeof(parsed_interface) == 120);
static_assert(offsetof(parsed_interface, fpc) == 60);
static_assert(offsetof(parsed_interface, channels) == 72);
static_assert(offsetof(parsed_interface, direction) == 108);
static_assert(offsetof(parsed_interface, unit) == 116);

namespace orvex {

constinit std::atomic<int32_t> multichassis_naming{-1};

namespace {

// What a step of the grammar answers besides the results of parse_interface.
constexpr int go_on = 1;
constexpr int accepted = 0;

// What messages need of a name.
struct Quotes {
    const char *name;  // whole, without the chassis prefix
    ErrorText error;
};

// ---- Numbers ----

// A number of a name. Minimum 0 and bound 0 mean that every value is accepted.
struct Field {
    const char *label;
    int32_t min;
    int32_t bound;  // exclusive
};

// What a reader of a number answers. The value of a refused one is IF_FIELD_RANGE when it was a
// range, else IF_FIELD_ABSENT.
struct FieldRead {
    const char *end;  // where the number ends; null: refused
    int32_t value;
};

constexpr FieldRead refused_number{nullptr, IF_FIELD_ABSENT};

int32_t least_above(int32_t value)
{
    return static_cast<int32_t>(static_cast<uint32_t>(value) + 1);
}

int32_t most_below(int32_t bound) { return static_cast<int32_t>(static_cast<uint32_t>(bound) - 1); }

bool is_outside(int32_t value, int32_t min, int32_t bound) { return value < min || value >= bound; }

bool is_wildcard_value(int32_t value)
{
    return value == IF_FIELD_WILD_ONE || value == IF_FIELD_WILD_ANY;
}

struct Number {
    int32_t value;
    const char *end;  // the start when there is no digit
    bool is_minus_zero;
};

Number read_number(const char *at)
{
    const auto number = convert<uint32_t>(at, Base::decimal);
    return {static_cast<int32_t>(number.value), number.end, number.value == 0 && *at == '-'};
}

// A range's text, from its "[" up to its "]", for messages.
class RangeText {
   public:
    RangeText(const char *open, const char *close)
    {
        const auto length = std::min(static_cast<size_t>(close - open), text_.size() - 1);
        std::memcpy(text_.data(), open, length);
        text_[length] = '\0';
    }
    [[nodiscard]] const char *c_str() const { return text_.data(); }

   private:
    std::array<char, 1024> text_;
};

// What the parts of a range share.
struct Range {
    const Field &field;
    const char *text;
    const Quotes &quotes;
};

// The readers of a range answer where it ends, or null behind a message.
constexpr const char *refused_range = nullptr;

const char *refuse_range(const Range &range)
{
    refuse(range.quotes.error, keep_errno, 0, "%s range %s is invalid in %s", range.field.label,
           range.text, range.quotes.name);
    return refused_range;
}

const char *refuse_range_number(const Range &range)
{
    refuse(range.quotes.error, keep_errno, 0, "missing or invalid %s number %s in %s",
           range.field.label, range.text, range.quotes.name);
    return refused_range;
}

const char *refuse_range_value(const Range &range, int32_t value)
{
    refuse(range.quotes.error, keep_errno, 0,
           "%s value %d is outside range %d..%d for '%s' in '%s'", range.field.label, value,
           range.field.min, most_below(range.field.bound), range.text, range.quotes.name);
    return refused_range;
}

// "3]" behind "[1-"
const char *read_range_end(const Range &range, const char *at, int32_t low)
{
    const auto &[field, text, quotes] = range;
    const Number high = read_number(at);
    if (high.end == at || high.is_minus_zero) return refuse_range_number(range);
    if (is_outside(high.value, low, field.bound)) {
        refuse(quotes.error, keep_errno, 0, "%s value %d is outside range %d..%d for '%s' in '%s",
               field.label, high.value, low, most_below(field.bound), text, quotes.name);
        return refused_range;
    }
    if (*high.end == ']') return high.end + 1;
    refuse(quotes.error, keep_errno, 0, "%s range %s has invalid extra trailer in %s", field.label,
           text, quotes.name);
    return refused_range;
}

// ",2,3]" behind "[1"; a comma may be missing, and one may stand before the "]".
const char *read_range_list(const Range &range, const char *at)
{
    for (;;) {
        if (*at == ',') ++at;
        const Number number = read_number(at);
        if (number.end == at && *at == ']') return at + 1;
        if (number.end == at || number.is_minus_zero) return refuse_range(range);
        if (is_outside(number.value, range.field.min, range.field.bound))
            return refuse_range_value(range, number.value);
        at = number.end;
    }
}

// "0-3]" or "0,2,5]" behind the "["
const char *read_range_numbers(const Range &range, const char *at)
{
    const Number first = read_number(at);
    if (first.end == at || first.is_minus_zero) return refuse_range_number(range);
    if (is_outside(first.value, range.field.min, range.field.bound))
        return refuse_range_value(range, first.value);
    if (*first.end == '-') return read_range_end(range, first.end + 1, first.value);
    if (*first.end == ',') return read_range_list(range, first.end);
    refuse(range.quotes.error, keep_errno, 0,
           "%s has invalid range format %s in %s , use [n-m] or [n,m] format", range.field.label,
           range.text, range.quotes.name);
    return refused_range;
}

// Checks the numbers of a range, which are not kept.
const char *parse_field_range(const char *open, const Field &field, const Quotes &quotes)
{
    const char *const close = std::strchr(open, ']');
    if (close == nullptr) {
        refuse(quotes.error, keep_errno, 0, "missing ending brace ] for %s in %s", field.label,
               quotes.name);
        return refused_range;
    }
    const RangeText text(open, close);
    return read_range_numbers({field, text.c_str(), quotes}, open + 1);
}

FieldRead refuse_number(const char *at, const Field &field, const Quotes &quotes)
{
    const char *const quote = *at != '\0' ? "'" : "";
    const char *const unquote = *at != '\0' ? "' " : "";
    refuse(quotes.error, keep_errno, 0, "missing or invalid %s number %s%s%sin '%s'", field.label,
           quote, at, unquote, quotes.name);
    return refused_number;
}

bool is_in_range(const Field &field, int32_t value)
{
    return !is_outside(value, field.min, field.bound) || (field.min == 0 && field.bound == 0);
}

FieldRead refuse_value(const char *at, const Field &field, const Quotes &quotes)
{
    refuse(quotes.error, keep_errno, 0, "%s value outside range %d..%d for '%s' in '%s'",
           field.label, field.min, most_below(field.bound), at, quotes.name);
    return refused_number;
}

bool is_wildcard(const char *at, uint32_t flags)
{
    return (flags & PARSE_IF_WILDCARD) != 0 && (*at == '?' || *at == '*');
}

FieldRead read_wildcard(const char *at)
{
    return {at + 1, *at == '?' ? IF_FIELD_WILD_ONE : IF_FIELD_WILD_ANY};
}

FieldRead read_range(const char *open, uint32_t flags, const Field &field, const Quotes &quotes)
{
    if ((flags & PARSE_IF_RANGES) == 0) return refuse_number(open, field, quotes);
    return {parse_field_range(open, field, quotes), IF_FIELD_RANGE};
}

const char *behind_separator(const char *at, uint32_t flags)
{
    return (flags & PARSE_IF_AFTER_SEP) != 0 && *at != '\0' ? at + 1 : at;
}

// Reads a number, a wildcard or a range.
[[gnu::noinline]] FieldRead parse_field_number(const char *at, uint32_t flags, Field field,
                                               const Quotes &quotes)
{
    if (is_wildcard(at, flags)) return read_wildcard(at);
    at = behind_separator(at, flags);
    if (is_wildcard(at, flags)) return read_wildcard(at);
    if (*at == '[') return read_range(at, flags, field, quotes);
    const Number number = read_number(at);
    if (number.end == at || number.is_minus_zero) return refuse_number(at, field, quotes);
    if (!is_in_range(field, number.value)) return refuse_value(at, field, quotes);
    // A "-" behind one digit begins "-rx" or "-tx".
    if (at[1] == '-' && (at[2] == '\0' || at[3] != 'x')) {
        refuse(quotes.error, keep_errno, 0, "invalid input '%s' for '%s'", at, quotes.name);
        return refused_number;
    }
    return {number.end, number.value};
}

// As parse_field_number; but a text without digits reads as 0, and any "-" may follow.
FieldRead parse_field_number_lenient(const char *at, uint32_t flags, Field field,
                                     const Quotes &quotes)
{
    const char *const start = at;
    if (is_wildcard(at, flags)) return read_wildcard(at);
    at = behind_separator(at, flags);
    if (is_wildcard(at, flags)) return read_wildcard(at);
    if (*at == '[') return read_range(at, flags, field, quotes);
    const Number number = read_number(at);
    if (!is_in_range(field, number.value)) return refuse_value(at, field, quotes);
    return {number.end != at ? number.end : start, number.value};
}

// ---- The chassis prefix ----

constexpr size_t longest_chassis_name = 128;

bool is_chassis_name(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char character) {
        return is_letter_or_digit(character) || character == '_' || character == '-';
    });
}

// Whether what stands in front of `colon`, the first one, is a chassis name.
bool ends_chassis_name(const char *colon, bool is_root)
{
    if (!is_root && std::strstr(colon, ":mgmt-") == nullptr) return false;
    return std::strchr(colon, '-') != nullptr;
}

// Takes the chassis name in front of `colon` off the text; an empty one stays.
[[gnu::noinline]] int strip_chassis_name(const char *&text, const char *colon, bool is_root,
                                         char *chassis_buf, size_t buf_size, size_t *len_out,
                                         ErrorText error)
{
    if (!ends_chassis_name(colon, is_root)) return 0;
    const auto length = static_cast<size_t>(colon - text);
    if (length > longest_chassis_name) {
        return refuse(error, keep_errno, -1, "chassis name length is greater than %d in '%s'",
                      static_cast<int>(longest_chassis_name), text);
    }
    if (chassis_buf != nullptr && length >= buf_size) {
        return refuse(error, keep_errno, -1,
                      "buf_size '%zu' is not enough for '%zu' long chassis name", buf_size, length);
    }
    std::array<char, longest_chassis_name + 1> own_buffer;
    char *const name = chassis_buf != nullptr ? chassis_buf : own_buffer.data();
    std::memcpy(name, text, length);
    name[length] = '\0';
    if (!is_chassis_name({name, length})) {
        return refuse(error, keep_errno, -1, "chassis name '%s' is not valid in '%s'", name, text);
    }
    if (len_out != nullptr) *len_out = length;
    if (length > 0) text = colon + 1;
    return 0;
}

[[gnu::always_inline]] inline int read_chassis_prefix(const char *&text, char *chassis_buf,
                                                      size_t buf_size, size_t *len_out,
                                                      ErrorText error)
{
    if (text == nullptr)
        return refuse(error, keep_errno, -1, "it needs a non null string to parse.");
    if (len_out != nullptr) *len_out = 0;
    if (chassis_buf != nullptr && buf_size > 0) *chassis_buf = '\0';
    const bool is_root = chassis_is_multi_chassis_root() != 0;
    const char *const colon = std::strchr(text, ':');
    if (colon == nullptr) return 0;
    return strip_chassis_name(text, colon, is_root, chassis_buf, buf_size, len_out, error);
}

// ---- The state of a parse ----

struct Parse {
    const Quotes &quotes;
    const char *name;  // without the chassis prefix
    const char *at;    // the cursor
    uint32_t flags;
    uint16_t product_id;
    size_t type_length;  // the type is the start of the name
    const interface_info *entry;
    parsed_interface &record;

    [[nodiscard]] bool has(uint32_t flag) const { return (flags & flag) != 0; }

    // Compares the type's first characters, all of them in lower case, with `start`.
    template <size_t size>
    [[nodiscard]] bool type_begins(const char (&start)[size]) const
    {
        for (size_t i = 0; i + 1 < size; ++i)
            if (name[i] != start[i]) return false;
        return true;
    }

    template <size_t size>
    [[nodiscard]] bool is_type(const char (&type)[size]) const
    {
        return type_length == size - 1 && type_begins(type);
    }
};

// Takes over what a reader of a number answered.
[[gnu::always_inline]] inline int accept(int32_t &value, Parse &parse, FieldRead read)
{
    if (read.end == nullptr) {
        if (read.value == IF_FIELD_RANGE) value = read.value;
        return rule_broken;
    }
    value = read.value;
    parse.at = read.end;
    return go_on;
}

// Digits alone, as nearly every number is: accepted when they are few, in range, and no "-"
// follows. parse_field_number reads these to the same.
[[gnu::always_inline]] inline bool read_plain_number(int32_t &value, Parse &parse, Field field)
{
    const char *at = behind_separator(parse.at, parse.flags);
    uint32_t number = 0;
    if (parse.has(PARSE_IF_WILDCARD) || !read_plain_decimal(at, number)) return false;
    const auto read = static_cast<int32_t>(number);
    if (*at == '-' || !is_in_range(field, read)) return false;
    value = read;
    parse.at = at;
    return true;
}

[[gnu::always_inline]] inline int read_field(int32_t &value, Parse &parse, Field field)
{
    if (read_plain_number(value, parse, field)) [[likely]]
        return go_on;
    return accept(value, parse, parse_field_number(parse.at, parse.flags, field, parse.quotes));
}

[[gnu::always_inline]] inline int read_field_lenient(int32_t &value, Parse &parse, Field field)
{
    return accept(value, parse,
                  parse_field_number_lenient(parse.at, parse.flags, field, parse.quotes));
}

// ---- Slots ----

const product_info *product_record()
{
    return product_infop != nullptr ? product_infop : product_info_data();
}

bool is_multichassis_naming()
{
    int32_t naming = multichassis_naming.load(std::memory_order_relaxed);
    if (naming == -1) {
        naming = chassis_is_switch_chassis() != 0 || chassis_is_line_card_chassis() != 0 ? 1 : 0;
        multichassis_naming.store(naming, std::memory_order_relaxed);
    }
    return naming == 1;
}

// Whether the number behind the first "-" is that of a virtual FPC.
bool is_virtual_fpc_name(const char *name)
{
    if (orvex_product_info_is_virtual_fpc_enabled() == 0) return false;
    const char *const dash = std::strchr(name, '-');
    if (dash == nullptr) return false;
    const int32_t fpc = read_number(dash + 1).value;
    return fpc >= orvex_product_info_get_router_min_virtual_fpc_slot() &&
           fpc <= orvex_product_info_get_router_max_virtual_fpc_slot();
}

uint32_t pic_slots(const char *name, const interface_info &entry)
{
    if (is_virtual_fpc_name(name)) return get_virtual_fpc_picslots(interface_info_index(&entry));
    return entry.pic_slots;
}

int32_t pic_bound(const Parse &parse)
{
    return static_cast<int32_t>(pic_slots(parse.name, *parse.entry));
}

// Reads a slot number in the range of the virtual FPCs, where the product has them. The message of
// a failure stays.
[[gnu::always_inline]] inline int read_virtual_slot(int32_t &value, Parse &parse, const char *label)
{
    if (orvex_product_info_is_virtual_fpc_enabled() == 0) return rule_broken;
    const int32_t min = orvex_product_info_get_router_min_virtual_fpc_slot();
    const int32_t max = orvex_product_info_get_router_max_virtual_fpc_slot();
    return read_field(value, parse, {label, min, least_above(max)});
}

// The first bound of lcc numbers.
int32_t lcc_bound()
{
    const product_info *const product = product_record();
    return most_below(static_cast<int32_t>(product != nullptr ? product->multi_chassis_size : 0));
}

// "/fpc" behind the lcc number; the record receives the system-wide number.
int read_fpc_of_lcc(Parse &parse, int32_t lcc)
{
    int32_t &fpc = parse.record.fpc;
    if (is_wildcard_value(lcc))
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "wildcarding not allowed for lcc");
    parse.flags |= PARSE_IF_AFTER_SEP;
    if (read_virtual_slot(fpc, parse, "fpc") != go_on &&
        read_field(fpc, parse, {"fpc", 0, chassis_get_max_fpc_slots()}) != go_on)
        return rule_broken;
    if (is_wildcard_value(fpc)) {
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "wildcarding not allowed for fpc when lcc is specified");
    }
    const bool global = chassis_uses_global_slots_a() != 0 || chassis_uses_global_slots_b() != 0;
    fpc = global ? chassis_local_slot_to_global_slot(fpc, lcc)
                 : chassis_lcc_slot_to_scc_slot(lcc, fpc);
    return go_on;
}

// "fpc", or "lcc/fpc" on a multi-chassis system where three "/" follow.
int read_fpc(Parse &parse)
{
    const bool has_lcc = is_multichassis_naming() &&
                         std::count(parse.at, parse.at + std::strlen(parse.at), '/') == 3;
    int32_t lcc = IF_FIELD_ABSENT;
    int32_t &first = has_lcc ? lcc : parse.record.fpc;
    Field field =
        has_lcc ? Field{"lcc", 0, lcc_bound()} : Field{"fpc", 0, chassis_get_max_fpc_slots()};
    if (parse.has(PARSE_IF_WIDE_FPC) || parse.type_begins("vcp")) field.bound = 256;
    if (read_virtual_slot(first, parse, field.label) != go_on &&
        read_field(first, parse, field) != go_on) {
        // "type-" is a wildcard of its own.
        const bool whole_type = parse.has(PARSE_IF_WILDCARD) && *parse.at == '\0';
        if (!whole_type) return rule_broken;
    }
    return has_lcc ? read_fpc_of_lcc(parse, lcc) : go_on;
}

// ---- Products ----

struct ProductRange {
    uint16_t first;
    uint16_t last;
};

class ProductSet {
   public:
    template <size_t count>
    constexpr explicit ProductSet(const ProductRange (&ranges)[count])
    {
        for (const ProductRange range : ranges)
            for (uint32_t id = range.first; id <= range.last; ++id)
                words_[id / 64] |= uint64_t{1} << id % 64;
    }

    [[nodiscard]] constexpr bool contains(uint16_t id) const
    {
        return id / 64U < words_.size() && (words_[id / 64U] >> id % 64U & 1) != 0;
    }

   private:
    std::array<uint64_t, 5> words_{};
};

constexpr ProductRange no_vlan_ranges[] = {
    {52, 62},   {64, 70},   {72, 74},   {79, 79},   {92, 92},   {102, 106}, {110, 110}, {118, 118},
    {127, 127}, {139, 139}, {180, 191}, {198, 198}, {200, 201}, {205, 214}, {221, 226}, {248, 248},
};
constexpr ProductRange large_unit_ranges[] = {
    {84, 84},   {96, 96},   {136, 136}, {142, 148}, {157, 160}, {165, 166}, {168, 168},
    {172, 175}, {177, 178}, {202, 204}, {242, 243}, {253, 253}, {260, 260}, {268, 268},
};
constexpr ProductRange at_irb_ranges[] = {
    {21, 21},   {33, 33},   {48, 48},   {88, 89},   {120, 123}, {128, 128},
    {137, 138}, {149, 152}, {161, 161}, {170, 170}, {215, 218}, {229, 230},
};
constexpr ProductSet no_vlan_products(no_vlan_ranges);
constexpr ProductSet large_unit_products(large_unit_ranges);
constexpr ProductSet at_irb_products(at_irb_ranges);

// The product that has its attributes in the platform's database.
constexpr uint16_t attribute_product = 169;

uint16_t read_product_id()
{
    const product_info *const product = product_record();
    return product != nullptr ? product->product_id : uint16_t{0};
}

bool runs_in_container()
{
    platform_hook_arg no_args{};
    int32_t answer = 0;
    platform_hook_call("running_in_container", &no_args, &answer);
    return answer != 0;
}

// ---- Units ----

constexpr int32_t max_ordinary_unit = 16385;
constexpr int32_t max_irb_unit = 65535;
constexpr int32_t max_vtnet_unit = 262143;
constexpr int32_t max_large_unit = 1073741823;
constexpr int32_t first_reserved_unit = 1073741824;
constexpr int32_t last_reserved_unit = 1074003967;

bool is_large_unit_type(const Parse &parse)
{
    return parse.is_type("demux") || parse.is_type("pe") || parse.is_type("pd") ||
           parse.is_type("mt");
}

int32_t max_unit(const Parse &parse)
{
    const bool at_irb_product = at_irb_products.contains(parse.product_id);
    const int32_t subunit = max_ifl_subunit().load(std::memory_order_relaxed);
    if (is_l2ng_product().load(std::memory_order_relaxed) != 0) return max_large_unit;
    if (is_large_unit_type(parse)) return max_large_unit;
    if (large_unit_products.contains(parse.product_id)) return max_large_unit;
    if (at_irb_product && parse.is_type("at")) return max_large_unit;
    if (parse.is_type("pp")) return max_large_unit;
    if (subunit != 0 && parse.is_type("at")) return subunit;
    if (parse.is_type("vtnet") && chassis_has_wide_vtnet_units() != 0) return max_vtnet_unit;
    if (at_irb_product && parse.is_type("irb")) return max_irb_unit;
    return max_ordinary_unit;
}

// Units above the highest one that are accepted all the same.
bool is_extra_unit(const Parse &parse)
{
    const int32_t unit = parse.record.unit;
    if (unit >= first_reserved_unit && unit <= last_reserved_unit) return true;
    return unit == 32767 && parse.has(PARSE_IF_AT_UNIT_32767) && parse.is_type("at");
}

// ".100"
int read_unit(Parse &parse)
{
    int32_t &unit = parse.record.unit;
    if (parse.has(PARSE_IF_NO_UNIT)) {
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "unit number is not appropriate: %s", parse.name);
    }
    if (read_field(unit, parse, {"unit", 0, 0}) != go_on) return rule_broken;
    if (unit > last_reserved_unit) {
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "unit number is not within the range 0-%d, %d-%d in '%s'", max_vtnet_unit,
                      first_reserved_unit, last_reserved_unit, parse.name);
    }
    if (parse.product_id == attribute_product &&
        attributes_loaded().load(std::memory_order_relaxed) == 0)
        load_platform_attributes();
    const int32_t max = max_unit(parse);
    if (parse.has(PARSE_IF_NO_UNIT_MAX) || unit <= max || is_extra_unit(parse)) return go_on;
    return refuse(parse.quotes.error, keep_errno, rule_broken,
                  "unit number is larger than %d in '%s'", max, parse.name);
}

// ---- The name, part by part ----

void reset(parsed_interface &record)
{
    std::memset(record.type_name, 0, sizeof record.type_name);
    record.fpc = record.pic = record.port = IF_FIELD_ABSENT;
    for (int32_t &channel : record.channels) channel = IF_FIELD_ABSENT;
    record.channel_count = IF_FIELD_ABSENT;
    std::memset(record.direction, 0, sizeof record.direction);
    record.unit = IF_FIELD_ABSENT;
}

int refuse_type(const Parse &parse)
{
    return refuse(parse.quotes.error, keep_errno, not_this_form, "invalid interface type: %s",
                  parse.name);
}

// The length of the type: the text before the first "-"; without one, up to the last lower-case
// letter. 0 when there is none.
size_t type_length(const char *name, bool &has_dash)
{
    size_t length = 0;
    while (name[length] != '-' && name[length] != '\0') ++length;
    has_dash = name[length] == '-';
    if (has_dash) return length;
    while (length > 0 && !is_ascii_lower(name[length - 1])) --length;
    return length;
}

void set_type(Parse &parse, const interface_info *entry, size_t length)
{
    parse.entry = entry;
    parse.type_length = length;
    parse.at = parse.name + length;
}

// Looks up the whole name, or "all", after its type was not found.
int read_whole_type(Parse &parse)
{
    if (parse.has(PARSE_IF_RANGES)) {
        return refuse(parse.quotes.error, keep_errno, not_this_form,
                      "invalid interface-type for ranges in %s", parse.name);
    }
    if (parse.has(PARSE_IF_ALLOW_ALL) && std::strcmp(parse.name, "all") == 0) {
        std::memcpy(parse.record.type_name, "all", sizeof "all");
        return accepted;
    }
    const size_t length = std::strlen(parse.name);
    set_type(parse, interface_info_byname(parse.name, length), length);
    if (parse.entry != nullptr) return go_on;
    return refuse(parse.quotes.error, keep_errno, not_this_form, "invalid interface type in '%s'",
                  parse.name);
}

// Finds the type and its entry; the flags are the caller's here.
int find_type(Parse &parse)
{
    bool has_dash = false;
    const size_t length = type_length(parse.name, has_dash);
    if (!has_dash && parse.has(PARSE_IF_RANGES)) {
        return refuse(parse.quotes.error, keep_errno, not_this_form, "invalid interface name in %s",
                      parse.name);
    }
    if (length == 0) return refuse_type(parse);
    set_type(parse, interface_info_byname(parse.name, length), length);
    return parse.entry != nullptr ? go_on : read_whole_type(parse);
}

void set_type_name(Parse &parse)
{
    // Types are short. No type holds the terminator; asking keeps this from becoming a call.
    char *const type_name = parse.record.type_name;
    const size_t length = std::min(parse.type_length, sizeof parse.record.type_name - 1);
    for (size_t i = 0; i < length && (type_name[i] = parse.name[i]) != '\0'; ++i) continue;
}

// Takes the type over: its name into the record, its flags into the parse.
int take_type(Parse &parse, uint32_t mask)
{
    const uint64_t products = parse.entry->product_mask;
    if (products != 0 && (products >> parse.product_id % 64 & 1) == 0) {
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "product does not support interface type in '%s'", parse.name);
    }
    set_type_name(parse);
    parse.flags = (parse.flags | parse.entry->flags) & ~mask;
    if (*parse.at == '-') ++parse.at;
    return go_on;
}

// "slot-port"
int read_expansion_slot(Parse &parse)
{
    const Field slot{"expansion slot", 0, pic_bound(parse)};
    if (read_field_lenient(parse.record.pic, parse, slot) != go_on) return rule_broken;
    if (*parse.at == '-') ++parse.at;
    const Field port{"port", 0, parse.entry->ports_per_pic};
    return read_field_lenient(parse.record.port, parse, port);
}

[[gnu::always_inline]] inline int read_port(Parse &parse)
{
    return read_field(parse.record.port, parse, {"port", 0, parse.entry->ports_per_pic});
}

// The device number or the FPC
int read_slot(Parse &parse)
{
    if (!parse.has(PARSE_IF_MGMT | PARSE_IF_RLSQ)) return read_fpc(parse);
    constexpr int32_t aggregate_devices = 4092;
    const int32_t bound = parse.type_begins("ae") ? aggregate_devices : pic_bound(parse);
    return read_field(parse.record.fpc, parse, {"device", 0, bound});
}

// "/pic/port", both optional
int read_pic_and_port(Parse &parse)
{
    if (*parse.at != '/') return go_on;
    const int result = read_field(parse.record.pic, parse, {"pic", 0, pic_bound(parse)});
    if (result != go_on || *parse.at != '/') return result;
    return read_port(parse);
}

// The first number that is missing, or null.
const char *missing_number(const parsed_interface &record)
{
    if (record.fpc == IF_FIELD_ABSENT) return "fpc";
    if (record.pic == IF_FIELD_ABSENT) return "pic";
    return record.port == IF_FIELD_ABSENT ? "port" : nullptr;
}

int refuse_missing(const Parse &parse, int result, const char *what)
{
    return refuse(parse.quotes.error, keep_errno, result, "missing or invalid %s in '%s'", what,
                  parse.name);
}

int refuse_trailing(const Parse &parse)
{
    return refuse(parse.quotes.error, keep_errno, not_this_form,
                  "invalid trailing input '%s' for '%s'", parse.at, parse.name);
}

// A name with ranges ends behind its port.
int check_range_form(const Parse &parse)
{
    if (*parse.at != '\0') return refuse_trailing(parse);
    const char *const missing = missing_number(parse.record);
    return missing == nullptr ? go_on : refuse_missing(parse, not_this_form, missing);
}

// ":1:2:3"
int read_channels(Parse &parse)
{
    const interface_info &entry = *parse.entry;
    const size_t levels = std::min(size_t{entry.channel_levels}, std::size(entry.channel_bounds));
    if (!parse.has(PARSE_IF_CHANNELS)) {
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "interface does not support channels: %s", parse.name);
    }
    size_t level = 0;
    for (; *parse.at == ':'; ++level) {
        if (level >= levels) {
            return refuse(parse.quotes.error, keep_errno, rule_broken,
                          "level of channelization exceeded limit of %d", entry.channel_levels);
        }
        const Field channel{"channel", 0, entry.channel_bounds[level]};
        const int result = read_field(parse.record.channels[level], parse, channel);
        if (result != go_on) return result;
    }
    parse.record.channel_count = static_cast<int32_t>(level);
    return go_on;
}

// "-rx" or "-tx"
int read_direction(Parse &parse)
{
    const char *const letters = parse.at + 1;
    const bool known = *letters == 'r' || *letters == 't';
    if (!known || letters[1] != 'x') {
        return refuse(parse.quotes.error, keep_errno, rule_broken, "invalid input '%s' for '%s'",
                      known ? letters + 1 : parse.at, parse.name);
    }
    std::memcpy(parse.record.direction, parse.at, 3);
    parse.at += 3;
    return go_on;
}

// Channels or a direction; one of them can be required.
int read_suffix(Parse &parse)
{
    if (parse.has(PARSE_IF_RANGES)) {
        const int result = check_range_form(parse);
        if (result != go_on) return result;
    } else {
        if (*parse.at == ':') return read_channels(parse);
        if (*parse.at == '-') return read_direction(parse);
    }
    if (!parse.has(PARSE_IF_NEED_CHANNEL)) return go_on;
    return refuse(parse.quotes.error, keep_errno, rule_broken, "channel number missing: %s",
                  parse.name);
}

void set_default_unit(Parse &parse)
{
    parsed_interface &record = parse.record;
    if (!parse.has(PARSE_IF_DEFAULT_UNIT) || record.unit != IF_FIELD_ABSENT) return;
    const bool device = parse.has(PARSE_IF_MGMT | PARSE_IF_RLSQ);
    const int32_t needed = device ? record.fpc : record.port;
    if (parse.has(PARSE_IF_NO_SLOT) || needed != IF_FIELD_ABSENT) record.unit = 0;
}

// What the type wants of the name as a whole.
int check_whole_name(const Parse &parse)
{
    const parsed_interface &record = parse.record;
    const bool has_pic_or_port = record.pic != IF_FIELD_ABSENT || record.port != IF_FIELD_ABSENT;
    if (parse.has(PARSE_IF_MGMT)) {
        const bool has_channel =
            !parse.has(PARSE_IF_CHANNELS) && record.channels[0] != IF_FIELD_ABSENT;
        if (!has_pic_or_port && !has_channel) return accepted;
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "pic, port, or channel are invalid for management interfaces: %s",
                      parse.name);
    }
    if (parse.has(PARSE_IF_RLSQ)) {
        if (!has_pic_or_port) return accepted;
        return refuse(parse.quotes.error, keep_errno, rule_broken,
                      "pic or port are invalid for rlsq interfaces: %s", parse.name);
    }
    const char *missing = nullptr;
    if (parse.has(PARSE_IF_NEED_FPC_PIC_PORT))
        missing = missing_number(record);
    else if (parse.has(PARSE_IF_EXPANSION_SLOT) && record.pic == IF_FIELD_ABSENT)
        missing = "pic";
    else if (parse.has(PARSE_IF_EXPANSION_SLOT) && record.port == IF_FIELD_ABSENT)
        missing = "port";
    return missing == nullptr ? accepted : refuse_missing(parse, rule_broken, missing);
}

// What stands behind the type.
int read_numbers(Parse &parse)
{
    int result = go_on;
    if (parse.has(PARSE_IF_EXPANSION_SLOT))
        result = read_expansion_slot(parse);
    else if (parse.has(PARSE_IF_PORT_FIRST))
        result = read_port(parse);
    if (result == go_on && !parse.has(PARSE_IF_NO_SLOT)) result = read_slot(parse);
    if (result != go_on) return result;
    parse.flags |= PARSE_IF_AFTER_SEP;
    result = read_pic_and_port(parse);
    if (result == go_on) result = read_suffix(parse);
    if (result == go_on && *parse.at == '.') result = read_unit(parse);
    return result;
}

// Names that are decided before they are read.
int check_special_names(const Parse &parse, bool in_container)
{
    if (in_container && std::strcmp(parse.name, "lo0") != 0) return accepted;
    if (no_vlan_products.contains(parse.product_id) && std::strcmp(parse.name, "vlan") == 0) {
        return refuse(parse.quotes.error, keep_errno, not_this_form,
                      "interface type %s is not supported in this plateform", parse.name);
    }
    return go_on;
}

int parse_name(Parse &parse, uint32_t mask, bool in_container)
{
    int result = check_special_names(parse, in_container);
    if (result == go_on) result = find_type(parse);
    if (result != go_on || parse.entry == nullptr) return result;
    result = take_type(parse, mask);
    if (result == go_on) result = read_numbers(parse);
    if (result != go_on) return result;
    if (*parse.at != '\0') return refuse_trailing(parse);
    set_default_unit(parse);
    return check_whole_name(parse);
}

}  // namespace
}  // namespace orvex

int parse_interface(const char *name, uint32_t flags, uint32_t mask, parsed_interface *result,
                    char *errbuf, size_t errlen)
{
    const orvex::ErrorText error{errbuf, errlen};
    const uint16_t product_id = orvex::read_product_id();
    const bool in_container = orvex::runs_in_container();
    orvex::insist(name != nullptr && *name != '\0', "parse_interface", "str && *str", 711);
    const int prefix = orvex::read_chassis_prefix(name, nullptr, 0, nullptr, error);
    if (prefix != 0 || name == nullptr) return -1;
    orvex::is_multichassis_naming();
    orvex::reset(*result);
    const orvex::Quotes quotes{name, error};
    orvex::Parse parse{quotes, name, name, flags, product_id, 0, nullptr, *result};
    return orvex::parse_name(parse, mask, in_container);
}

int parse_4_level_chassis(const char **name_ptr, char *chassis_buf, size_t buf_size, char *errbuf,
                          size_t errlen, size_t *len_out)
{
    return orvex::read_chassis_prefix(*name_ptr, chassis_buf, buf_size, len_out, {errbuf, errlen});
}

uint32_t get_fpc_picslots_byname(const char *name, const interface_info *entry)
{
    return orvex::pic_slots(name, *entry);
}
