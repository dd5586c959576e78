#include "interface/parse_4_level_chassis.h"

#include <orvex/parse.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "text/characters.h"

namespace orvex {
namespace {

constexpr size_t longest_chassis_name = 128;

bool is_chassis_name(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char character) {
        return is_letter_or_digit(character) || character == '_' || character == '-';
    });
}

// Whether ":mgmt-" is in a text that has its first ":" at `colon`.
bool names_management(const char *colon)
{
    constexpr std::string_view management = ":mgmt-";
    for (; colon != nullptr; colon = std::strchr(colon + 1, ':'))
        if (std::strncmp(colon, management.data(), management.size()) == 0) return true;
    return false;
}

}  // namespace

int take_chassis_name(const char *&text, const char *colon, bool is_root,
                      const ChassisOutput &output, ErrorText error)
{
    // ser-0/0/0:1, lcc0:lo0
    if (std::strchr(colon, '-') == nullptr) return 0;
    if (!is_root && !names_management(colon)) return 0;

    const std::string_view name(text, static_cast<size_t>(colon - text));
    if (name.size() > longest_chassis_name)
        return refuse(error, -1, "chassis name length is greater than %d in '%s'",
                      static_cast<int>(longest_chassis_name), text);
    if (output.buf != nullptr) {
        if (name.size() >= output.buf_size)
            return refuse(error, -1, "buf_size '%zu' is not enough for '%zu' long chassis name",
                          output.buf_size, name.size());
        std::memcpy(output.buf, name.data(), name.size());
        output.buf[name.size()] = '\0';
    }
    // bad.name:eth-0/0/0
    if (!is_chassis_name(name))
        return refuse(error, -1, "chassis name '%.*s' is not valid in '%s'", precision(name),
                      name.data(), text);
    if (output.length != nullptr) *output.length = name.size();
    // An empty name and its ":" are left in the text.
    if (!name.empty()) text = colon + 1;
    return 0;
}

}  // namespace orvex

int parse_4_level_chassis(const char **name_ptr, char *chassis_buf, size_t buf_size, char *errbuf,
                          size_t errlen, size_t *len_out)
{
    return orvex::strip_chassis_name(*name_ptr, {chassis_buf, buf_size, len_out}, {errbuf, errlen});
}
