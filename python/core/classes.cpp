#include "classes.h"

#include <structmember.h>

#include <array>
#include <cstring>

namespace {

// Where objects of an address class have their number.
Py_ssize_t number_offset(const py::object &type)
{
    const py::object slot = type.attr("_ip");
    if (Py_TYPE(slot.ptr()) != &PyMemberDescr_Type)
        throw py::import_error("the address classes of this Python are not those of ipaddress");
    return reinterpret_cast<PyMemberDescrObject *>(slot.ptr())->d_member->offset;
}

}  // namespace

const Classes &classes()
{
    static const Classes *const found = [] {
        const auto addresses = py::module_::import("ipaddress");
        const auto types = py::module_::import("orvex_parse._types");
        const py::object keyword = types.attr("AnyAddress");
        return new Classes{addresses.attr("IPv4Address"),
                           addresses.attr("IPv6Address"),
                           addresses.attr("IPv4Interface"),
                           addresses.attr("IPv6Interface"),
                           addresses.attr("IPv4Network"),
                           addresses.attr("IPv6Network"),
                           py::module_::import("datetime").attr("timedelta"),
                           types.attr("Refused"),
                           types.attr("AddressMask"),
                           keyword.attr("UNICAST"),
                           keyword.attr("MULTICAST"),
                           types.attr("Interface"),
                           types.attr("MacAddress"),
                           types.attr("IsoAddress"),
                           types.attr("SystemId"),
                           types.attr("RouteDistinguisher"),
                           types.attr("Esi"),
                           types.attr("AtmVpnAddress"),
                           number_offset(addresses.attr("IPv4Address")),
                           number_offset(addresses.attr("IPv6Address"))};
    }();
    return *found;
}

namespace {

py::object number_of(bool ipv6, const uint8_t *bytes)
{
    if (ipv6) return py::reinterpret_steal<py::object>(_PyLong_FromByteArray(bytes, 16, 0, 0));
    return py::int_(uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 |
                    bytes[3]);
}

// The names of attributes, made once.
struct Names {
    PyObject *scope = PyUnicode_InternFromString("_scope_id");
    PyObject *network = PyUnicode_InternFromString("network");
    PyObject *network_address = PyUnicode_InternFromString("network_address");
    PyObject *netmask = PyUnicode_InternFromString("netmask");
    PyObject *prefix_length = PyUnicode_InternFromString("_prefixlen");
};

const Names &names()
{
    static const Names all;
    return all;
}

void set_attribute(const py::object &object, PyObject *name, py::handle value)
{
    if (PyObject_SetAttr(object.ptr(), name, value.ptr()) != 0) throw py::error_already_set();
}

// Objects of ipaddress are made with their attributes, as copy and pickle make objects: the
// classes' own constructors take ten times as long as the reading of the text.
py::object make(const py::object &type)
{
    auto *const type_object = reinterpret_cast<PyTypeObject *>(type.ptr());
    auto object = py::reinterpret_steal<py::object>(type_object->tp_alloc(type_object, 0));
    if (!object) throw py::error_already_set();
    return object;
}

py::object make_number(const py::object &type, bool ipv6, const uint8_t *bytes)
{
    py::object object = make(type);
    py::object number = number_of(ipv6, bytes);
    if (!number) throw py::error_already_set();
    // Into its slot, which is empty: half of the time for an address goes into looking it up.
    const Py_ssize_t offset = ipv6 ? classes().ipv6_number_offset : classes().ipv4_number_offset;
    *reinterpret_cast<PyObject **>(reinterpret_cast<char *>(object.ptr()) + offset) =
        number.release().ptr();
    if (ipv6) set_attribute(object, names().scope, Py_None);
    return object;
}

// The network of an address. `netmask` is kept for the next one of the same length.
py::object make_network(bool ipv6, const uint8_t *bytes, uint32_t prefix_length, py::handle length,
                        py::object &netmask)
{
    const py::object &type = ipv6 ? classes().ipv6_network : classes().ipv4_network;
    std::array<uint8_t, 16> first{};
    std::memcpy(first.data(), bytes, (prefix_length + 7) / 8);
    if (prefix_length % 8 != 0)
        first[prefix_length / 8] &= static_cast<uint8_t>(0xff00U >> prefix_length % 8);
    // A network of one or two addresses has a method of its own to list them.
    const bool is_small = prefix_length + 1 >= (ipv6 ? 128U : 32U);
    if (is_small || !netmask) {
        py::object network = type(py::make_tuple(number_of(ipv6, first.data()), length));
        netmask = network.attr(py::handle(names().netmask));
        return network;
    }
    py::object network = make(type);
    set_attribute(network, names().network_address, make_address(ipv6, first.data()));
    set_attribute(network, names().netmask, netmask);
    set_attribute(network, names().prefix_length, length);
    return network;
}

}  // namespace

py::object make_address(bool ipv6, const uint8_t *bytes)
{
    return make_number(ipv6 ? classes().ipv6_address : classes().ipv4_address, ipv6, bytes);
}

py::object make_interface(bool ipv6, const uint8_t *bytes, uint32_t prefix_length)
{
    // Never released, as the classes are.
    static auto *const netmasks = new std::array<std::array<py::object, 129>, 2>;
    py::object &netmask = (*netmasks)[ipv6 ? 1 : 0].at(prefix_length);
    const py::int_ length(prefix_length);
    const py::object network = make_network(ipv6, bytes, prefix_length, length, netmask);
    const py::object &type = ipv6 ? classes().ipv6_interface : classes().ipv4_interface;
    py::object object = make_number(type, ipv6, bytes);
    set_attribute(object, names().network, network);
    set_attribute(object, names().netmask, netmask);
    set_attribute(object, names().prefix_length, length);
    return object;
}
