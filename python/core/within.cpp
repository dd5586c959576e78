#include "within.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <tuple>
#include <vector>

#include "column.h"

namespace {

using uint128 = unsigned __int128;

// An address as a number.
template <typename Number>
Number load(const uint8_t *bytes)
{
    Number number = 0;
    for (size_t i = 0; i < sizeof number; ++i) number = number << 8 | bytes[i];
    return number;
}

template <typename Number>
struct Prefix {
    Number first;
    Number last;
    uint32_t length;
    int64_t row;
};

// The addresses of a family, divided where the longest prefix changes: from starts[i] on it is the
// one in row rows[i].
template <typename Number>
class Ranges {
   public:
    explicit Ranges(std::vector<Prefix<Number>> prefixes)
    {
        // Each before those that it holds, and the first given of equal ones last, to be found.
        std::sort(prefixes.begin(), prefixes.end(), [](const auto &left, const auto &right) {
            return std::tuple(left.first, left.length, -left.row) <
                   std::tuple(right.first, right.length, -right.row);
        });
        add(0, -1);
        std::vector<Prefix<Number>> open;
        const auto close = [&] {
            const Number last = open.back().last;
            open.pop_back();
            if (last != static_cast<Number>(-1)) add(last + 1, open.empty() ? -1 : open.back().row);
        };
        for (const Prefix<Number> &prefix : prefixes) {
            while (!open.empty() && open.back().last < prefix.first) close();
            open.push_back(prefix);
            add(prefix.first, prefix.row);
        }
        while (!open.empty()) close();
    }

    [[nodiscard]] int64_t find(Number address) const
    {
        // The last start that is not above the address, without branches to mispredict.
        const Number *start = starts_.data();
        for (size_t count = starts_.size(); count > 1;) {
            const size_t half = count / 2;
            start += start[half] <= address ? half : 0;
            count -= half;
        }
        return rows_[static_cast<size_t>(start - starts_.data())];
    }

   private:
    void add(Number start, int64_t row)
    {
        if (starts_.empty() || starts_.back() != start) {
            starts_.push_back(start);
            rows_.push_back(row);
        } else {
            rows_.back() = row;
        }
    }

    std::vector<Number> starts_;
    std::vector<int64_t> rows_;
};

// The prefixes of a family.
template <typename Number>
Ranges<Number> ranges_of(uint8_t version, const ByteArray &versions, const ByteArray &addresses,
                         const ByteArray &lengths)
{
    constexpr uint32_t bits = 8 * sizeof(Number);
    std::vector<Prefix<Number>> prefixes;
    for (py::ssize_t row = 0; row < versions.shape(0); ++row) {
        if (versions.at(row) != version) continue;
        const uint32_t length = std::min<uint32_t>(lengths.at(row), bits);
        const Number host = length == bits ? 0 : static_cast<Number>(-1) >> length;
        const auto address = load<Number>(addresses.data(row, 0));
        prefixes.push_back({address & ~host, address | host, length, row});
    }
    return Ranges<Number>(std::move(prefixes));
}

void check_shapes(const ByteArray &version, const ByteArray &address)
{
    if (version.ndim() != 1 || address.ndim() != 2 || address.shape(0) != version.shape(0) ||
        address.shape(1) != 16)
        throw py::value_error("the arrays are not those of a column of addresses");
}

}  // namespace

py::array within(const ByteArray &version, const ByteArray &address,
                 const ByteArray &prefix_version, const ByteArray &prefix_address,
                 const ByteArray &prefix_length, int threads)
{
    check_shapes(version, address);
    check_shapes(prefix_version, prefix_address);
    if (prefix_length.ndim() != 1 || prefix_length.shape(0) != prefix_version.shape(0))
        throw py::value_error("the arrays are not those of a column of prefixes");
    const auto ipv4 = ranges_of<uint32_t>(4, prefix_version, prefix_address, prefix_length);
    const auto ipv6 = ranges_of<uint128>(6, prefix_version, prefix_address, prefix_length);

    const auto rows = static_cast<size_t>(version.shape(0));
    py::array_t<int64_t> found(version.shape(0));
    int64_t *const results = found.mutable_data();
    const uint8_t *const versions = version.data();
    const uint8_t *const addresses = address.data();
    run_parts(rows, threads_for(rows, threads), [&](size_t /*part*/, size_t first, size_t end) {
        for (size_t row = first; row < end; ++row) {
            const uint8_t *const bytes = addresses + row * 16;
            switch (versions[row]) {
                case 4: results[row] = ipv4.find(load<uint32_t>(bytes)); break;
                case 6: results[row] = ipv6.find(load<uint128>(bytes)); break;
                default: results[row] = -1;
            }
        }
    });
    return found;
}
