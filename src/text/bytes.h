// Bytes in network order, and questions about their bits.
#ifndef ORVEX_TEXT_BYTES_H
#define ORVEX_TEXT_BYTES_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orvex {

constexpr size_t ipv4_size = 4;
constexpr size_t ipv6_size = 16;
constexpr uint32_t ipv4_bits = 32;
constexpr uint32_t ipv6_bits = 128;

template <typename Word>
Word load_native(const uint8_t *bytes)
{
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

inline uint32_t load_be16(const uint8_t *bytes)
{
    const auto word = load_native<uint16_t>(bytes);
    return std::endian::native == std::endian::little ? __builtin_bswap16(word) : word;
}

inline uint32_t load_be32(const uint8_t *bytes)
{
    const auto word = load_native<uint32_t>(bytes);
    return std::endian::native == std::endian::little ? __builtin_bswap32(word) : word;
}

inline uint64_t load_be64(const uint8_t *bytes)
{
    const auto word = load_native<uint64_t>(bytes);
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

inline void store_be16(uint8_t *bytes, uint32_t value)
{
    auto word = static_cast<uint16_t>(value);
    if constexpr (std::endian::native == std::endian::little) word = __builtin_bswap16(word);
    std::memcpy(bytes, &word, sizeof word);
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

// Whether every byte is zero.
inline bool all_zero(const uint8_t *bytes, size_t count)
{
    uint8_t bits = 0;
    for (size_t i = 0; i < count; ++i) bits |= bytes[i];
    return bits == 0;
}

// Whether every bit of `count` bytes after the first `length` bits is zero.
inline bool bits_after_are_zero(const uint8_t *bytes, size_t count, size_t length)
{
    const size_t whole = length / 8;
    if (whole >= count) return true;
    if ((bytes[whole] & 0xffU >> length % 8) != 0) return false;
    return all_zero(bytes + whole + 1, count - whole - 1);
}

// Bytes with room for as many again: whole blocks are copied, which is quicker than their parts.
template <size_t size>
using GapBytes = std::array<uint8_t, 2 * size>;

// Moves the bytes from `gap` to `count` to the end of the first `size` bytes, and puts zeros where
// they were.
template <size_t size>
void fill_gap(GapBytes<size> &bytes, size_t gap, size_t count)
{
    std::array<uint8_t, size> tail;
    std::memcpy(tail.data(), bytes.data() + gap, size);
    std::memset(bytes.data() + gap, 0, size);
    std::memcpy(bytes.data() + size - (count - gap), tail.data(), size);
}

// As above, in place. Byte by byte: a wide load would wait for the narrow stores before it.
inline void fill_gap(uint8_t *bytes, size_t size, size_t gap, size_t count)
{
    for (size_t to = size; to > gap;) bytes[--to] = count > gap ? bytes[--count] : 0;
}

}  // namespace orvex

#endif
