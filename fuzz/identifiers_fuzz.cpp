// Reads any text as a duration.
#include <orvex/parse.h>

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    char error[16];
    uint64_t seconds = 0;
    if (decode_dhms(text.c_str(), 0, UINT64_MAX, &seconds, error, sizeof error) < 0) std::abort();
    return 0;
}
