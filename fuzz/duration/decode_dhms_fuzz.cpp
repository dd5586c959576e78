// Durations add up whatever is written around them, and the same seconds written out read the same.
#include <orvex/parse.h>

#include <cctype>
#include <cstdlib>
#include <string>

namespace {

struct Reading {
    int result = 0;
    uint64_t seconds = 77;  // untouched by a refusal
    std::string message;

    explicit Reading(const std::string &text, uint64_t min = 0, uint64_t max = UINT64_MAX)
    {
        char error[PARSE_ERROR_BUFSIZE] = "";
        result = decode_dhms(text.c_str(), min, max, &seconds, error, sizeof error);
        message = error;
    }

    bool operator==(const Reading &other) const = default;
};

void require(bool holds)
{
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(std::string(reinterpret_cast<const char *>(data), size).c_str());
    const Reading reading(text);
    require(reading.result == 1 || (reading.seconds == 77 && !reading.message.empty()));

    std::string upper = text;
    for (char &c : upper)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(std::toupper(c));
    require(Reading(upper) == reading);
    if (reading.message != "Empty string") require(Reading("\t0:0 " + text + "\n0s") == reading);
    if (reading.result != 1) return 0;

    const uint64_t seconds = reading.seconds;
    require(Reading(std::to_string(seconds)) == reading);
    require(Reading(text, seconds, seconds) == reading);
    require(seconds == 0 || Reading(text, 0, seconds - 1).result == 0);
    require((seconds == UINT64_MAX) == (Reading(text + " 1").result == 0));
    return 0;
}
