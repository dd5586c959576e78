#include <fcntl.h>
#include <orvex/parse.h>
#include <orvex/platform.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "old/name_characters.h"
#include "old/target_numbers.h"

namespace orvex {
namespace {

// ---- Which texts are aliases ----

constexpr size_t shortest_alias = 5;
constexpr size_t longest_alias = 128;

constexpr bool is_alias_punctuation(char character)
{
    return character == '_' || (character >= '-' && character <= '/') || character == ':';
}
static_assert(is_alias_punctuation('-') && is_alias_punctuation('.') && is_alias_punctuation('/'));

// What a character is to an alias, behind its first letter.
constexpr uint8_t allowed = 1;
constexpr uint8_t colon = 2;
constexpr uint8_t dash = 4;
constexpr uint8_t foreign = 8;  // not ASCII: what the locale makes of it

constexpr std::array<uint8_t, 256> character_kinds = [] {
    std::array<uint8_t, 256> kinds{};
    for (size_t i = 1; i < 128; ++i) {
        const char character = static_cast<char>(i);
        if (is_ascii_letter(character) || is_digit(character) || is_alias_punctuation(character))
            kinds[i] = allowed;
    }
    for (size_t i = 128; i < kinds.size(); ++i) kinds[i] = foreign;
    kinds[':'] |= colon;
    kinds['-'] |= dash;
    return kinds;
}();

struct AliasText {
    std::string_view text;  // empty when it has not the length and the characters of an alias
    uint8_t kinds;          // of all characters behind the first
};

AliasText scan_alias(const char *text)
{
    if (!is_letter(*text)) return {};
    size_t length = 1;
    uint8_t kinds = 0;
    for (; length <= longest_alias; ++length) {
        const uint8_t kind = character_kinds[static_cast<unsigned char>(text[length])];
        if (kind == 0) break;
        kinds |= kind;
    }
    if (text[length] != '\0' || length < shortest_alias || length > longest_alias) return {};
    if ((kinds & foreign) != 0 && !std::all_of(text, text + length, [](char character) {
            return is_ascii(character) || is_letter_or_digit(character);
        }))
        return {};
    return {{text, length}, kinds};
}

bool is_ipv6_address(std::string_view text)
{
    const int saved = errno;
    uint32_t af = PARSE_AF_INET6;
    std::array<uint8_t, 16> address;
    const int result = parse_ipaddr(&af, text.data(), 0, address.data(), address.size(), nullptr,
                                    nullptr, nullptr, nullptr, 0, nullptr, 0);
    errno = saved;
    return result == 0;
}

bool is_reserved_word(std::string_view text)
{
    return text == "localhost" || text == "access-ports" || text == "xstp-disabled";
}

// Whether the first `length` characters are a type that the platform knows.
bool begins_with_type(std::string_view text, size_t length)
{
    return interface_info_byname(text.data(), length) != nullptr;
}

// "uplink-to-core": an alias unless the type before the "-" is known and a port follows.
bool is_dashed_alias(std::string_view text, size_t at)
{
    if (!begins_with_type(text, at)) return !begins_with_type(text, text.size());
    if (at + 1 < text.size() && is_letter(text[at + 1])) return true;
    return text.find('/', at) == std::string_view::npos;
}

// "uplink7": an alias unless it names a device of a known type.
bool is_plain_alias(std::string_view text)
{
    size_t length = text.size();
    while (length > 0 && !is_lower_letter(text[length - 1])) --length;
    if (length == 0) return false;
    return !begins_with_type(text, length) && !begins_with_type(text, text.size());
}

bool is_alias(const AliasText &alias)
{
    const std::string_view text = alias.text;
    if (text.empty() || ((alias.kinds & colon) != 0 && is_ipv6_address(text))) return false;
    if (is_reserved_word(text)) return false;
    if ((alias.kinds & dash) != 0) return is_dashed_alias(text, text.find('-'));
    return is_plain_alias(text);
}

// ---- The alias map ----

constexpr const char *map_path = "/var/etc/if_alias_map";
constexpr const char *alternate_map_path = "/var/etc/if_alias_map+";

constexpr size_t longest_interface_name = 60;
constexpr size_t chunk_size = 16384;

bool is_word_end(char character) { return character == '\n' || is_space(character); }

// The file that the library opened, or the caller's stream.
class MapInput {
   public:
    explicit MapInput(int file) : file_(file) {}
    explicit MapInput(FILE *stream) : stream_(stream) {}

    // Reads what comes next; 0 at the end, or where it cannot be read.
    size_t read(char *buf, size_t size)
    {
        if (stream_ != nullptr) return std::fread(buf, 1, size, stream_);
        ssize_t count = 0;
        do count = ::read(file_, buf, size);
        while (count < 0 && errno == EINTR);
        return count > 0 ? static_cast<size_t>(count) : 0;
    }

   private:
    int file_ = -1;
    FILE *stream_ = nullptr;
};

// The first characters of a word, as many as count.
template <size_t limit>
struct Word {
    std::array<char, limit> text;
    size_t length = 0;

    void append(const char *at, size_t count)
    {
        const size_t taken = std::min(count, limit - length);
        std::memcpy(text.data() + length, at, taken);
        length += taken;
    }
    [[nodiscard]] std::string_view view() const { return {text.data(), length}; }
};

// Reads the map chunk by chunk; a line end behind each chunk stops the inner loops.
class MapReader {
   public:
    explicit MapReader(MapInput input) : input_(input) { chunk_[0] = '\n'; }

    // At the start of a line: moves past lines that do not hold `text`, as many as are at hand.
    void skip_lines_without(std::string_view text)
    {
        const auto *const last =
            static_cast<const char *>(memrchr(at_, '\n', static_cast<size_t>(end_ - at_)));
        if (last == nullptr) return;
        const auto *const hit = static_cast<const char *>(
            memmem(at_, static_cast<size_t>(last - at_), text.data(), text.size()));
        const char *const from = hit != nullptr ? hit : last + 1;
        const auto *const line_end =
            static_cast<const char *>(memrchr(at_, '\n', static_cast<size_t>(from - at_)));
        if (line_end != nullptr) at_ = line_end + 1;
    }

    // Reads a word of the line into `word`; false when the line or the map ends before it.
    template <size_t limit>
    bool read_word(Word<limit> &word)
    {
        word.length = 0;
        if (!skip_blanks()) return false;
        do {
            const char *const start = at_;
            while (!is_word_end(*at_)) ++at_;
            word.append(start, static_cast<size_t>(at_ - start));
        } while (at_ == end_ && refill());
        return true;
    }

    // Moves behind the line's end; false at the end of the map.
    bool skip_line()
    {
        for (;;) {
            at_ = static_cast<const char *>(
                std::memchr(at_, '\n', static_cast<size_t>(end_ - at_) + 1));
            if (at_ != end_) break;
            if (!refill()) return false;
        }
        ++at_;
        return true;
    }

   private:
    // Moves to the next word of the line; false when there is none.
    bool skip_blanks()
    {
        do {
            while (*at_ != '\n' && is_space(*at_)) ++at_;
        } while (at_ == end_ && refill());
        return *at_ != '\n';
    }

    bool refill()
    {
        const size_t count = input_.read(chunk_.data(), chunk_size);
        at_ = chunk_.data();
        end_ = at_ + count;
        chunk_[count] = '\n';
        return count > 0;
    }

    MapInput input_;
    std::array<char, chunk_size + 1> chunk_;
    const char *at_ = chunk_.data();
    const char *end_ = chunk_.data();
};

void copy_name(std::string_view name, char *dest, size_t dest_size)
{
    if (dest_size == 0) return;
    const size_t taken = std::min(name.size(), dest_size - 1);
    std::memcpy(dest, name.data(), taken);
    dest[taken] = '\0';
}

bool find_alias(MapInput input, std::string_view alias, char *dest, size_t dest_size)
{
    MapReader reader(input);
    Word<longest_interface_name> name;
    Word<longest_alias> candidate;
    Word<1> third;
    do {
        reader.skip_lines_without(alias);
        const bool complete =
            reader.read_word(name) && reader.read_word(candidate) && reader.read_word(third);
        if (!complete || candidate.view() != alias) continue;
        copy_name(name.view(), dest, dest_size);
        return true;
    } while (reader.skip_line());
    return false;
}

int open_map(const char *path)
{
    int file = -1;
    do file = ::open(path, O_RDONLY | O_CLOEXEC);
    while (file < 0 && errno == EINTR);
    return file;
}

bool find_alias_in_file(const char *path, std::string_view alias, char *dest, size_t dest_size)
{
    const int saved = errno;
    const int file = open_map(path);
    if (file < 0) return false;
    const bool found = find_alias(MapInput(file), alias, dest, dest_size);
    ::close(file);
    errno = saved;
    return found;
}

bool find_alias_in_stream(FILE *stream, std::string_view alias, char *dest, size_t dest_size)
{
    const int saved = errno;
    std::rewind(stream);
    const bool found = find_alias(MapInput(stream), alias, dest, dest_size);
    errno = saved;
    return found;
}

}  // namespace
}  // namespace orvex

int is_interface_alias(const char *text)
{
    return orvex::is_alias(orvex::scan_alias(text)) ? 1 : 0;
}

int ifalias_to_ifl(const char *alias, char *dest, size_t dest_size, uint8_t use_alternate,
                   FILE *stream)
{
    const std::string_view compared(alias, strnlen(alias, orvex::longest_alias));
    const char *const path = use_alternate != 0 ? orvex::alternate_map_path : orvex::map_path;
    const bool found = stream != nullptr
                           ? orvex::find_alias_in_stream(stream, compared, dest, dest_size)
                           : orvex::find_alias_in_file(path, compared, dest, dest_size);
    return found ? 1 : 0;
}
