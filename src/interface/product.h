// The product that the library runs on, and the sets of products that differ from others.
#ifndef ORVEX_INTERFACE_PRODUCT_H
#define ORVEX_INTERFACE_PRODUCT_H

#include <orvex/platform.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

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

// A set of product identifiers.
class ProductSet {
   public:
    constexpr ProductSet(std::initializer_list<uint16_t> ids)
    {
        for (const uint16_t id : ids) words_[id / 64] |= uint64_t{1} << id % 64;
    }

    [[nodiscard]] constexpr bool contains(uint16_t id) const
    {
        return id / 64U < words_.size() && (words_[id / 64U] >> id % 64U & 1) != 0;
    }

   private:
    std::array<uint64_t, 5> words_{};
};

// Products without the interface "vlan".
inline constexpr ProductSet no_vlan_products = {
    52,  53,  54,  55,  56,  57,  58,  59,  60,  61,  62,  64,  65,  66,  67,  68,
    69,  70,  72,  73,  74,  79,  92,  102, 103, 104, 105, 106, 110, 118, 127, 139,
    180, 181, 182, 183, 184, 185, 186, 187, 188, 189, 190, 191, 198, 200, 201, 205,
    206, 207, 208, 209, 210, 211, 212, 213, 214, 221, 222, 223, 224, 225, 226, 248};

// Products on which units of every type are large.
inline constexpr ProductSet large_unit_products = {
    84,  96,  136, 142, 143, 144, 145, 146, 147, 148, 157, 158, 159, 160, 165, 166,
    168, 172, 173, 174, 175, 177, 178, 202, 203, 204, 242, 243, 253, 260, 268};

// Products on which units of the types "at" and "irb" are larger than elsewhere.
inline constexpr ProductSet at_irb_products = {21,  33,  48,  88,  89,  120, 121, 122,
                                               123, 128, 137, 138, 149, 150, 151, 152,
                                               161, 170, 215, 216, 217, 218, 229, 230};

}  // namespace orvex

#endif
