#ifndef ORVEX_OLD_BYTES_H
#define ORVEX_OLD_BYTES_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orvex {
inline namespace old {

constexpr uint32_t load_be32(const uint8_t *bytes)
{
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

constexpr uint64_t load_be64(const uint8_t *bytes)
{
    return uint64_t{load_be32(bytes)} << 32 | load_be32(bytes + 4);
}

constexpr void store_be16(uint8_t *bytes, uint32_t value)
{
    bytes[0] = static_cast<uint8_t>(value >> 8);
    bytes[1] = static_cast<uint8_t>(value);
}

inline void store_be32(uint8_t *bytes, uint32_t value)
{
    if constexpr (std::endian::native == std::endian::little) value = __builtin_bswap32(value);
    std::memcpy(bytes, &value, sizeof value);
}

inline void store_be64(uint8_t *bytes, uint64_t value)
{
    if constexpr (std::endian::native == std::endian::little) value = __builtin_bswap64(value);
    std::memcpy(bytes, &value, sizeof value);
}

// Moves the bytes from `gap` to `count` to the end of an array, and leaves zeros where they stood.
template <size_t size>
void fill_gap(std::array<uint8_t, size> &bytes, size_t gap, size_t count)
{
    const size_t tail = count - gap;
    std::memmove(bytes.data() + size - tail, bytes.data() + gap, tail);
    std::memset(bytes.data() + gap, 0, size - count);
}

}  // namespace old
}  // namespace orvex

#endif
