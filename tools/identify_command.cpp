// Which families accept a text.
#include <orvex/parse.h>

#include <deque>
#include <string>

#include "command.h"
#include "ip_command.h"
#include "link_commands.h"
#include "parse_text.h"

namespace {

struct Family {
    const Command &command;
    const char *field;  // whose value is the canonical form; null: the text itself
};

const Family families[] = {
    {integer_command, "value"},
    {quad_command, "value"},
    {ip_command, "compressed"},
    {interface_command, nullptr},
    {alias_is_command, nullptr},
    {mac_command, "address"},
    {rd_command, "rd"},
    {esi_command, "esi"},
    {iso_command, "address"},
    {nsap_command, "address"},
    {sysid_command, "sysid"},
    {atmvpn_command, "address"},
    {duration_command, "seconds"},
};

constexpr Field fields[] = {
    {"input", Audience::people},
    {"integer"},
    {"quad"},
    {"ip"},
    {"interface"},
    {"alias"},
    {"mac"},
    {"rd"},
    {"esi"},
    {"iso"},
    {"nsap"},
    {"sysid"},
    {"atmvpn"},
    {"duration"},
};
static_assert(std::size(fields) == 1 + std::size(families));

// Keeps the value of one field of the last record.
class OneField : public Receiver {
   public:
    explicit OneField(const Family &family)
        : record_(value_, form(family), family.command.fields, Layout::values),
          is_text_(family.field == nullptr)
    {
    }

    Record &begin(const Text & /*text*/) override
    {
        is_accepted_ = true;
        return record_;
    }
    void end(const Text &text) override
    {
        if (is_text_) value_ = text.view();
    }
    void refuse(const Text & /*text*/, const Refusal & /*refusal*/) override
    {
        is_accepted_ = false;
    }
    void say_no() override { is_no_ = true; }

    // Returns whether the family accepts the text.
    bool read(const Command &command, const Text &text)
    {
        value_.clear();
        is_no_ = false;
        command.read(text, *this);
        return is_accepted_ && !is_no_;
    }

    [[nodiscard]] const std::string &value() const { return value_; }

   private:
    static Form form(const Family &family)
    {
        return {.format = Format::field, .field = family.field != nullptr ? family.field : ""};
    }

    std::string value_;
    Record record_;
    bool is_text_;
    bool is_accepted_ = false;
    bool is_no_ = false;
};

void identify(const Text &text, Receiver &receiver)
{
    static std::deque<OneField> readers(std::begin(families), std::end(families));
    Record *record = nullptr;
    // The platform logs an empty interface name.
    const size_t count = text.length > 0 ? std::size(families) : 0;
    for (size_t i = 0; i < count; ++i) {
        OneField &canonical = readers[i];
        if (!canonical.read(families[i].command, text)) continue;
        if (record == nullptr) {
            record = &receiver.begin(text);
            record->text(0, text.view());
        }
        record->text(i + 1, canonical.value());
    }
    if (record != nullptr) return receiver.end(text);
    const std::string message = "no family accepts " + quoted(text);
    receiver.refuse(text, {.message = message});
}

const Command &prepare(const Command &self)
{
    add_ip_flags(PARSE_IPADDR_PREFIX_OK | PARSE_IPADDR_MASK_OK);
    accept_mac_prefix();
    return self;
}

}  // namespace

const Command identify_command = {
    .name = "identify",
    .summary = "The families that accept a text, each with its canonical form",
    .examples = "orvex-parse identify 10.0.0.1 0:1b:2c:3d:4e:5f eth-0/0/0\n",
    .fields = fields,
    .has_profile = true,
    .prepare = prepare,
    .read = identify,
};
