// The product that the library runs on, and the sets of products that differ from others.
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

inline uint16_t read_product_id()
{
    const product_info *const product = product_record();
    return product != nullptr ? product->product_id : uint16_t{0};
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

// Products without the interface "vlan".
inline constexpr ProductSet no_vlan_products({
    {52, 62},
    {64, 70},
    {72, 74},
    {79, 79},
    {92, 92},
    {102, 106},
    {110, 110},
    {118, 118},
    {127, 127},
    {139, 139},
    {180, 191},
    {198, 198},
    {200, 201},
    {205, 214},
    {221, 226},
    {248, 248},
});

// Products on which units of every type are large.
inline constexpr ProductSet large_unit_products({
    {84, 84},
    {96, 96},
    {136, 136},
    {142, 148},
    {157, 160},
    {165, 166},
    {168, 168},
    {172, 175},
    {177, 178},
    {202, 204},
    {242, 243},
    {253, 253},
    {260, 260},
    {268, 268},
});

// Products on which units of the types "at" and "irb" are larger than elsewhere.
inline constexpr ProductSet at_irb_products({
    {21, 21},
    {33, 33},
    {48, 48},
    {88, 89},
    {120, 123},
    {128, 128},
    {137, 138},
    {149, 152},
    {161, 161},
    {170, 170},
    {215, 218},
    {229, 230},
});

}  // namespace orvex

#endif
