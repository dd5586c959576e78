// The Python classes of the results.
#ifndef ORVEX_PYTHON_CLASSES_H
#define ORVEX_PYTHON_CLASSES_H

#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>

namespace py = pybind11;

struct Classes {
    py::object ipv4_address, ipv6_address, ipv4_interface, ipv6_interface, ipv4_network,
        ipv6_network, timedelta;
    py::object refused, address_mask, any_unicast, any_multicast, interface, mac_address,
        iso_address, system_id, route_distinguisher, esi, atm_vpn_address;
    Py_ssize_t ipv4_number_offset, ipv6_number_offset;
};

// Looked up at the first call, and never released: a module lives as long as the process.
const Classes &classes();

// ipaddress objects, of 4 or 16 bytes.
py::object make_address(bool ipv6, const uint8_t *bytes);
py::object make_interface(bool ipv6, const uint8_t *bytes, uint32_t prefix_length);

// A file that cannot be opened; it may be thrown without the interpreter lock.
struct FileError {
    int error;
    std::string path;
};

#endif
