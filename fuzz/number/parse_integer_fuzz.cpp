// Any text converts as by the host's own functions, and the parsers of integers take just what is
// converted to its end.
#include <orvex/parse.h>

#include <string>

#include "support/host_numbers.h"

namespace {

void require(bool holds)
{
    if (!holds) std::abort();
}

template <typename Value>
void check_whole(const char *text, int (*parse)(const char *, Value *))
{
    const auto host = orvex_test::convert_by_host<Value>(text, orvex::Base::from_prefix);
    const bool is_whole = host.end != text && *host.end == '\0';
    constexpr Value untouched = 77;
    Value value = untouched;
    require(parse(text, &value) == (is_whole && !host.out_of_range ? 0 : -1));
    require(errno == (host.out_of_range ? ERANGE : 0));
    require(value == (!is_whole ? 0 : host.out_of_range ? untouched : host.value));
}

void check_number(const char *text, int32_t limit)
{
    const auto host = orvex_test::convert_by_host<int32_t>(text, orvex::Base::decimal);
    const bool is_taken = *host.end == '\0' && host.value >= 0 && host.value < limit;
    int32_t value = 77;
    require(parse_number(text, &value, limit) == (is_taken ? 1 : 0));
    require(value == (is_taken ? host.value : 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    require(orvex_test::all_convert_as_host(text.c_str()));
    check_whole<int32_t>(text.c_str(), parse_integer);
    check_whole<int64_t>(text.c_str(), parse_quad);
    for (const int32_t limit : {0, 10, 2147483647}) check_number(text.c_str(), limit);
    return 0;
}
