// The short way to read a number must read what the general way reads.
#include <cstddef>
#include <cstdlib>
#include <string>

#include "old/target_numbers.h"

namespace {

template <typename Value>
void compare(const char *text, orvex::Base base)
{
    const auto number = orvex::convert<Value>(text, base);
    const auto general = orvex::convert_general<Value>(text, base);
    if (number.value != general.value || number.end != general.end ||
        number.out_of_range != general.out_of_range)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    for (const auto base :
         {orvex::Base::from_prefix, orvex::Base::decimal, orvex::Base::hexadecimal}) {
        compare<int32_t>(text.c_str(), base);
        compare<uint32_t>(text.c_str(), base);
        compare<int64_t>(text.c_str(), base);
    }
    return 0;
}
