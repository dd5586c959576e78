#include "interface/ifalias_to_ifl.h"

#include <fcntl.h>
#include <orvex/parse.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "text/characters.h"
#include "text/text_writer.h"

namespace orvex {
namespace {

constexpr const char *map_path = "/var/etc/if_alias_map";
constexpr const char *alternate_map_path = "/var/etc/if_alias_map+";

constexpr size_t longest_interface_name = 60;
constexpr size_t longest_alias = 128;
constexpr size_t chunk_size = 16384;

// The open file, or the caller's stream.
class MapInput {
   public:
    explicit MapInput(int file) : file_(file) {}
    explicit MapInput(FILE *stream) : stream_(stream) {}

    // Reads what comes next; 0 at the end, or where it cannot be read.
    size_t read(char *buf, size_t size)
    {
        if (stream_ != nullptr) return std::fread(buf, 1, size, stream_);
        ssize_t count{};
        do count = ::read(file_, buf, size);
        while (count < 0 && errno == EINTR);
        return static_cast<size_t>(std::max<ssize_t>(count, 0));
    }

   private:
    int file_ = -1;
    FILE *stream_ = nullptr;
};

// The first `limit` characters of a word.
template <size_t limit>
struct Word {
    std::array<char, limit> text;
    size_t length{};

    void append(const char *at, size_t count)
    {
        const size_t taken = std::min(count, limit - length);
        std::memcpy(text.data() + length, at, taken);
        length += taken;
    }
    [[nodiscard]] std::string_view view() const { return {text.data(), length}; }
};

// Reads the map chunk by chunk. A line end after each chunk stops the inner loops.
class MapReader {
   public:
    explicit MapReader(MapInput input) : input_(input) { refill(); }

    // At the start of a line: moves past the lines of the chunk that do not contain `text`.
    void skip_lines_without(std::string_view text)
    {
        const auto *const hit = static_cast<const char *>(
            memmem(at_, static_cast<size_t>(end_ - at_), text.data(), text.size()));
        const char *const from = hit != nullptr ? hit : end_;
        const auto *const line_end =
            static_cast<const char *>(memrchr(at_, '\n', static_cast<size_t>(from - at_)));
        if (line_end != nullptr) at_ = line_end + 1;
    }

    // Moves to the next word of the line; false when there is none.
    bool skip_blanks()
    {
        do {
            while (*at_ != '\n' && is_space(*at_)) ++at_;
        } while (at_ == end_ && refill());
        return *at_ != '\n';
    }

    // Reads a word of the line into `word`; false when the line or the map ends before it.
    template <size_t limit>
    bool read_word(Word<limit> &word)
    {
        word.length = 0;
        if (!skip_blanks()) return false;
        do {
            const char *const start = at_;
            while (!is_space(*at_)) ++at_;
            word.append(start, static_cast<size_t>(at_ - start));
        } while (at_ == end_ && refill());
        return true;
    }

    // Moves past the line's end; false at the end of the map.
    bool skip_line()
    {
        for (;;) {
            at_ = static_cast<const char *>(
                std::memchr(at_, '\n', static_cast<size_t>(chunk_.end() - at_)));
            if (at_ != end_) break;
            if (!refill()) return false;
        }
        ++at_;
        return true;
    }

   private:
    bool refill()
    {
        const size_t count = input_.read(chunk_.data(), chunk_size);
        at_ = chunk_.data();
        end_ = at_ + count;
        chunk_[count] = '\n';
        return at_ != end_;
    }

    MapInput input_;
    std::array<char, chunk_size + 1> chunk_;
    const char *at_;
    const char *end_;
};

bool find_alias(MapInput input, std::string_view alias, char *dest, size_t dest_size)
{
    MapReader reader(input);
    Word<longest_interface_name> name;
    Word<longest_alias> candidate;
    do {
        reader.skip_lines_without(alias);
        const bool complete =
            reader.read_word(name) && reader.read_word(candidate) && reader.skip_blanks();
        if (!complete || candidate.view() != alias) continue;
        copy_cut(dest, dest_size, name.text.data(), name.length);
        return true;
    } while (reader.skip_line());
    return false;
}

// Opens what may be a map: opening must not wait for a writer, nor make a terminal the process's
// own. Negative when it cannot be opened.
int open_map(const char *path)
{
    int file{};
    do file = ::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    while (file < 0 && errno == EINTR);
    return file;
}

bool is_regular(int file)
{
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
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

bool find_alias_in_file(const char *path, std::string_view alias, char *dest, size_t dest_size)
{
    const int saved = errno;
    const int file = open_map(path);
    const bool found =
        file >= 0 && is_regular(file) && find_alias(MapInput(file), alias, dest, dest_size);
    if (file >= 0) ::close(file);
    errno = saved;
    return found;
}

}  // namespace orvex

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
