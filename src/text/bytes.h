// Bytes in network order, and questions about their bits.
#ifndef ORVEX_TEXT_BYTES_H
#define ORVEX_TEXT_BYTES_H

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

constexpr uint32_t load_be16(const uint8_t *bytes) { return uint32_t{bytes[0]} << 8 | bytes[1]; }

constexpr uint32_t load_be32(const uint8_t *bytes)
{
    return load_be16(bytes) << 16 | load_be16(bytes + 2);
}

constexpr void store_be16(uint8_t *bytes, uint32_t value)
{
    bytes[0] = static_cast<uint8_t>(value >> 8);
    bytes[1] = static_cast<uint8_t>(value);
}

constexpr void store_be32(uint8_t *bytes, uint32_t value)
{
    store_be16(bytes, value >> 16);
    store_be16(bytes + 2, value);
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

// Moves the bytes from `gap` to `count` to the end of `size` bytes, and puts zeros where they were.
// Byte by byte: a wide load would wait for the narrow stores before it.
inline void fill_gap(uint8_t *bytes, size_t size, size_t gap, size_t count)
{
    for (size_t to = size; to > gap;) bytes[--to] = count > gap ? bytes[--count] : 0;
}

}  // namespace orvex

#endif
