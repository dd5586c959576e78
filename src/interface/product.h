// The product that the library runs on.
#ifndef ORVEX_INTERFACE_PRODUCT_H
#define ORVEX_INTERFACE_PRODUCT_H

#include <orvex/platform.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace orvex {

// The platform's record of the product, or null.
inline const product_info *product_record()
{
    return product_infop != nullptr ? product_infop : product_info_data();
}

struct ProductRange {
    uint16_t first;
    uint16_t last;
};

// A set of product identifiers.
class ProductSet {
   public:
    template <size_t count>
    constexpr explicit ProductSet(const ProductRange (&ranges)[count])
    {
        for (const ProductRange range : ranges)
            for (uint32_t id = range.first; id <= range.last; ++id)
                words_[id / 64] |= uint64_t{1} << id % 64;
    }

    [[nodiscard]] constexpr bool contains(uint16_t id) const
    {
        return id / 64U < words_.size() && (words_[id / 64U] >> id % 64U & 1) != 0;
    }

   private:
    std::array<uint64_t, 5> words_{};
};

}  // namespace orvex

#endif
