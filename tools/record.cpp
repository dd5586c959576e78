#include "record.h"

#include <algorithm>

#include "hexadecimal.h"
#include "json_text.h"
#include "terminal.h"

namespace {

// "prefix length:  "
std::string label(const char *name)
{
    constexpr size_t width = 15;
    std::string text = name;
    std::replace(text.begin(), text.end(), '_', ' ');
    text += ": ";
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string prefix_of(const Field &field, Format format, Layout layout)
{
    if (format == Format::json) return std::string(",\"") + field.name + "\":";
    if (format == Format::people && layout == Layout::names_and_values) return label(field.name);
    return {};
}

bool is_shown(const Field &field, const Form &form)
{
    switch (form.format) {
        case Format::people: return is_shown_to(field, Audience::people);
        case Format::field: return field.name == form.field;
        case Format::json:
        case Format::tsv: return is_shown_to(field, Audience::programs);
        default: return false;
    }
}

}  // namespace

Record::Record(std::string &out, const Form &form, std::span<const Field> fields, Layout layout)
    : out_(out),
      format_(form.format),
      layout_(layout),
      terminator_(form.terminator),
      for_terminal_(form.for_terminal)
{
    for (const Field &field : fields) {
        prefixes_.push_back(prefix_of(field, form.format, layout));
        is_shown_.push_back(is_shown(field, form));
    }
}

void Record::begin() { column_ = 0; }

// Fills the columns that are left.
void Record::end()
{
    if (format_ != Format::tsv) return;
    for (; column_ < is_shown_.size(); ++column_)
        if (is_shown_[column_]) out_ += '\t';
}

bool Record::open(size_t field)
{
    if (!is_shown_[field]) return false;
    if (format_ == Format::tsv) {
        for (; column_ <= field; ++column_)
            if (is_shown_[column_]) out_ += '\t';
    }
    out_ += prefixes_[field];
    return true;
}

void Record::close()
{
    if (format_ != Format::people) return;
    out_ += layout_ == Layout::values ? terminator_ : '\n';
}

void Record::append_text(std::string_view value)
{
    if (format_ == Format::json)
        append_json_text(out_, value, for_terminal_);
    else if (format_ == Format::tsv)
        append_cell(out_, value, for_terminal_);
    else if (for_terminal_)
        out_ += for_terminal(value);
    else
        out_ += value;
}

void Record::text(size_t field, std::string_view value)
{
    if (!open(field)) return;
    append_text(value);
    close();
}

void Record::truth(size_t field, bool value)
{
    if (!open(field)) return;
    if (is_for_people())
        out_ += value ? "yes" : "no";
    else
        out_ += value ? "true" : "false";
    close();
}

void Record::bytes(size_t field, std::span<const uint8_t> value)
{
    if (!open(field)) return;
    if (format_ == Format::json) out_ += '"';
    for (const uint8_t byte : value) append_hex_byte(out_, byte);
    if (format_ == Format::json) out_ += '"';
    close();
}

void Record::open_list(size_t field)
{
    list_is_open_ = open(field);
    list_has_item_ = false;
    if (list_is_open_ && format_ == Format::json) out_ += '[';
}

void Record::separate_item()
{
    if (list_has_item_) out_ += format_ == Format::json ? ',' : ':';
    list_has_item_ = true;
}

void Record::item(int32_t value)
{
    if (!list_is_open_) return;
    separate_item();
    append_number(value);
}

void Record::item(std::string_view value)
{
    if (!list_is_open_) return;
    separate_item();
    append_text(value);
}

void Record::close_list()
{
    if (!list_is_open_) return;
    if (format_ == Format::json) out_ += ']';
    close();
}

void append_cell(std::string &out, std::string_view text, bool is_for_terminal)
{
    if (is_for_terminal) return append_cell(out, for_terminal(text), false);
    for (const char character : text) {
        switch (character) {
            case '\t': out += "\\t"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\\': out += "\\\\"; break;
            default: out += character;
        }
    }
}

bool is_shown_to(const Field &field, Audience audience)
{
    return field.audience == Audience::everyone || field.audience == audience;
}
