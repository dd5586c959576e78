"""Loads the library with ctypes and reads a refused and a valid address: load.py LIBRARY"""
import ctypes
import sys

parse = ctypes.CDLL(sys.argv[1]).parse_ipaddr
family = ctypes.c_uint32()
address = ctypes.create_string_buffer(16)
error = ctypes.create_string_buffer(160)


def read(text):
    return parse(ctypes.byref(family), text, ctypes.c_uint32(0), address, ctypes.c_size_t(16), None, None, None, None,
                 ctypes.c_size_t(0), error, ctypes.c_size_t(160))


assert read(b"10.0.0.256") != 0 and error.value, error.value
assert read(b"10.0.0.1") == 0 and address.raw[:4] == bytes([10, 0, 0, 1]), address.raw
