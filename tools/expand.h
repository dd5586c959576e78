// Names with ranges in brackets, and the names that they mean.
#ifndef ORVEX_TOOLS_EXPAND_H
#define ORVEX_TOOLS_EXPAND_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// "eth-0/0/[0-3,7]": what comes before each bracket, the numbers in it, and what comes last.
class ExpandedName {
   public:
    // The most names that one text may mean.
    static constexpr uint64_t most_names = 65536;

    // Returns an empty text, or what is wrong.
    [[nodiscard]] std::string read(std::string_view text);

    [[nodiscard]] uint64_t count() const { return count_; }

    // The name of this index. The numbers of the last range change first.
    [[nodiscard]] std::string name(uint64_t index) const;

   private:
    struct Span {
        uint64_t first;
        uint64_t last;
    };
    struct Part {
        std::string before;
        std::vector<Span> spans;
        uint64_t count = 0;
    };

    [[nodiscard]] static std::string read_part(std::string_view inside, Part &part);

    std::vector<Part> parts_;
    std::string after_;
    uint64_t count_ = 1;
};

#endif
