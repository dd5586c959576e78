#include "expand.h"

#include <charconv>
#include <cstddef>
#include <utility>

namespace {

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

// A number of at most nine digits: no interface has larger ones in a range.
bool read_number(std::string_view &text, uint64_t &number)
{
    constexpr std::ptrdiff_t most_digits = 9;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::ptrdiff_t digits = read.ptr - text.data();
    if (read.ec != std::errc() || digits > most_digits) return false;
    text.remove_prefix(static_cast<size_t>(digits));
    return true;
}

}  // namespace

// "0-3,7"
std::string ExpandedName::read_part(std::string_view inside, Part &part)
{
    std::string wrong = "'[" + std::string(inside) + "]' is no range: use [0-3] or [0,2,5-7]";
    for (;;) {
        Span span{};
        if (!read_number(inside, span.first)) return wrong;
        span.last = span.first;
        if (inside.starts_with('-')) {
            inside.remove_prefix(1);
            if (!read_number(inside, span.last)) return wrong;
        }
        if (span.last < span.first)
            return "the range " + std::to_string(span.first) + '-' + std::to_string(span.last) +
                   " ends before it begins";
        part.spans.push_back(span);
        part.count += span.last - span.first + 1;
        if (inside.empty()) return {};
        if (!inside.starts_with(',')) return wrong;
        inside.remove_prefix(1);
    }
}

std::string ExpandedName::read(std::string_view text)
{
    std::string_view rest = text;
    for (;;) {
        const size_t open = rest.find('[');
        if (open == std::string_view::npos) break;
        const size_t close = rest.find(']', open);
        if (close == std::string_view::npos) return quoted(text) + " has no ] after its [";
        Part part;
        part.before = rest.substr(0, open);
        std::string fault = read_part(rest.substr(open + 1, close - open - 1), part);
        if (!fault.empty()) return fault + " in " + quoted(text);
        // Both are below 2^48, and the product is checked after each part.
        if (part.count > most_names || count_ * part.count > most_names)
            return quoted(text) + " means more than " + std::to_string(most_names) + " names";
        count_ *= part.count;
        parts_.push_back(std::move(part));
        rest.remove_prefix(close + 1);
    }
    after_ = rest;
    return {};
}

std::string ExpandedName::name(uint64_t index) const
{
    std::string text = after_;
    for (size_t i = parts_.size(); i-- > 0;) {
        const Part &part = parts_[i];
        uint64_t offset = index % part.count;
        index /= part.count;
        for (const Span &span : part.spans) {
            const uint64_t length = span.last - span.first + 1;
            if (offset < length) {
                text.insert(0, part.before + std::to_string(span.first + offset));
                break;
            }
            offset -= length;
        }
    }
    return text;
}
