#include "classes.h"

#include <array>
#include <cstring>

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
                           types.attr("AtmVpnAddress")};
    }();
    return *found;
}

namespace {

py::object number_of(bool ipv6, const uint8_t *bytes)
{
    return py::reinterpret_steal<py::object>(_PyLong_FromByteArray(bytes, ipv6 ? 16 : 4, 0, 0));
}

// The names of attributes, made once.
struct Names {
    PyObject *number = PyUnicode_InternFromString("_ip");
    PyObject *scope = PyUnicode_InternFromString("_scope_id");
    PyObject *network = PyUnicode_InternFromString("network");
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

// An object of an address class is made with its attributes, as copy and pickle make objects: the
// class's own constructor takes longer than the reading of the text.
py::object make(const py::object &type, bool ipv6, const uint8_t *bytes)
{
    auto *const type_object = reinterpret_cast<PyTypeObject *>(type.ptr());
    auto object = py::reinterpret_steal<py::object>(type_object->tp_alloc(type_object, 0));
    const py::object number = number_of(ipv6, bytes);
    if (!object || !number) throw py::error_already_set();
    set_attribute(object, names().number, number);
    if (ipv6) set_attribute(object, names().scope, Py_None);
    return object;
}

}  // namespace

py::object make_address(bool ipv6, const uint8_t *bytes)
{
    return make(ipv6 ? classes().ipv6_address : classes().ipv4_address, ipv6, bytes);
}

py::object make_interface(bool ipv6, const uint8_t *bytes, uint32_t prefix_length)
{
    const py::object &type = ipv6 ? classes().ipv6_interface : classes().ipv4_interface;
    const py::object &network_type = ipv6 ? classes().ipv6_network : classes().ipv4_network;
    std::array<uint8_t, 16> first{};
    std::memcpy(first.data(), bytes, (prefix_length + 7) / 8);
    if (prefix_length % 8 != 0)
        first[prefix_length / 8] &= static_cast<uint8_t>(0xff00U >> prefix_length % 8);
    const py::int_ length(prefix_length);
    const py::object network = network_type(py::make_tuple(number_of(ipv6, first.data()), length));
    py::object object = make(type, ipv6, bytes);
    set_attribute(object, names().network, network);
    set_attribute(object, names().netmask, network.attr(py::handle(names().netmask)));
    set_attribute(object, names().prefix_length, length);
    return object;
}
