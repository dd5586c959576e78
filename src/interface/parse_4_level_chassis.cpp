#include <orvex/parse.h>
#include <orvex/platform.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "text/characters.h"
#include "text/error_text.h"

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

// Where the chassis name goes; each may be null.
struct ChassisOutput {
    char *buf;
    size_t buf_size;
    size_t *length;
};

// Moves `text` past a chassis name and the first ":", which is at `colon`. Out of line, as most
// names have none.
[[gnu::noinline]] int take_chassis_name(const char *&text, const char *colon, bool is_root,
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

}  // namespace
}  // namespace orvex

int parse_4_level_chassis(const char **name_ptr, char *chassis_buf, size_t buf_size, char *errbuf,
                          size_t errlen, size_t *len_out)
{
    using namespace orvex;
    const ErrorText error{errbuf, errlen};
    if (*name_ptr == nullptr) return refuse(error, -1, "it needs a non null string to parse.");
    if (len_out != nullptr) *len_out = 0;
    if (chassis_buf != nullptr && buf_size > 0) *chassis_buf = '\0';
    const bool is_root = chassis_is_multi_chassis_root() != 0;
    const char *const colon = std::strchr(*name_ptr, ':');
    if (colon == nullptr) return 0;
    return take_chassis_name(*name_ptr, colon, is_root, {chassis_buf, buf_size, len_out}, error);
}
