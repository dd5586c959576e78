// The longest prefix that holds an address.
#ifndef ORVEX_PYTHON_WITHIN_H
#define ORVEX_PYTHON_WITHIN_H

#include <pybind11/numpy.h>

using ByteArray = pybind11::array_t<uint8_t, pybind11::array::c_style>;

// `version`, `address` and `prefix_length` are the arrays of columns of addresses and of prefixes;
// a version of 0 is that of a refused address. Returns the row of the longest prefix for each
// address, the first of equal ones, or -1.
pybind11::array within(const ByteArray &version, const ByteArray &address,
                       const ByteArray &prefix_version, const ByteArray &prefix_address,
                       const ByteArray &prefix_length, int threads);

#endif
