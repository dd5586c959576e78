// The extension module of orvex_parse.
#include <orvex/parse.h>
#include <pybind11/pybind11.h>

#include <array>
#include <map>
#include <string>

#include "../../tools/profile.h"
#include "column.h"
#include "documentation.h"
#include "families.h"
#include "single.h"
#include "within.h"

// ---- Errors ----

void refuse_text(const std::string &message, int code, int error, py::handle text)
{
    // The library may cut a message inside a character, and bytes may be no UTF-8.
    const auto shown = py::reinterpret_steal<py::str>(PyUnicode_DecodeUTF8(
        message.data(), static_cast<Py_ssize_t>(message.size()), "backslashreplace"));
    const py::object &type = classes().refused;
    const py::object refused = type(shown, code, error, text);
    PyErr_SetObject(type.ptr(), refused.ptr());
    throw py::error_already_set();
}

void refuse_object(TextFault fault, py::handle object)
{
    if (fault == TextFault::type)
        throw py::type_error(std::string("expected str or bytes, not ") +
                             Py_TYPE(object.ptr())->tp_name);
    const bool nul = fault == TextFault::nul;
    refuse_text(nul ? "the text holds a NUL character" : "the text holds a surrogate, no character",
                -1, EINVAL, object);
}

namespace {

void set_file_error(const FileError &file)
{
    errno = file.error;
    PyErr_SetFromErrnoWithFilename(PyExc_OSError, file.path.c_str());
}

}  // namespace

void set_python_error()
{
    try {
        throw;
    } catch (py::error_already_set &error) {
        error.restore();
    } catch (const py::builtin_exception &error) {
        error.set_error();
    } catch (const FileError &error) {
        set_file_error(error);
    } catch (const std::bad_alloc &) {
        PyErr_NoMemory();
    } catch (const std::exception &error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
}

namespace {

// ---- The families ----

struct FamilyEntry {
    PyMethodDef single;
    py::dict (*column)(const py::object &texts, int threads, const py::dict &options);
};

template <typename Family>
FamilyEntry entry_of(const char *documentation)
{
    // The interpreter calls what its flags tell, whatever the pointer's type.
    const auto function =
        reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(single<Family>));
    return {{Family::name, function, METH_FASTCALL | METH_KEYWORDS, documentation},
            read_column<Family>};
}

std::array<FamilyEntry, 17> families = {
    entry_of<Ip>(documentation::ip),
    entry_of<Interface>(documentation::interface),
    entry_of<IsAlias>(documentation::is_alias),
    entry_of<Alias>(documentation::alias),
    entry_of<Mac>(documentation::mac),
    entry_of<Delimited>(documentation::delimited),
    entry_of<Iso>(documentation::iso),
    entry_of<Sysid>(documentation::sysid),
    entry_of<Rd>(documentation::rd),
    entry_of<Esi>(documentation::esi),
    entry_of<Atmvpn>(documentation::atmvpn),
    entry_of<Integer>(documentation::integer),
    entry_of<Quad>(documentation::quad),
    entry_of<Number>(documentation::number),
    entry_of<Duration>(documentation::duration),
    entry_of<Canonical>(documentation::canonical),
    entry_of<Prefix6>(documentation::prefix6),
};

py::dict column(const std::string &family, const py::object &texts, int threads,
                const py::dict &options)
{
    for (const FamilyEntry &entry : families)
        if (family == entry.single.ml_name) return entry.column(texts, threads, options);
    throw py::value_error("no family '" + family + "'");
}

// ---- Formatters ----

std::string_view view(const py::bytes &bytes) { return bytes; }

const uint8_t *data(const py::bytes &bytes)
{
    return reinterpret_cast<const uint8_t *>(view(bytes).data());
}

void check_size(const char *what, const py::bytes &bytes, size_t size)
{
    if (view(bytes).size() != size)
        throw py::value_error(std::string(what) + " has " + std::to_string(size) + " bytes, not " +
                              std::to_string(view(bytes).size()));
}

// A length is absent below 0.
std::string format_ip(const py::bytes &address, int prefix_length, const py::object &mask,
                      bool full)
{
    const size_t size = view(address).size();
    if (size != 4 && size != 16)
        throw py::value_error("an address has 4 or 16 bytes, not " + std::to_string(size));
    if (prefix_length > static_cast<int>(8 * size))
        throw py::value_error("a prefix length is at most " + std::to_string(8 * size));
    const uint8_t *mask_bytes = nullptr;
    if (!mask.is_none()) {
        check_size("the mask", mask, size);
        mask_bytes = data(mask);
    }
    std::array<char, FORMAT_IPADDR_BUFSIZE> text;
    const bool ipv4 = size == 4;
    // A mask with the bytes of a keyword is written as a mask: an address is written, a "/", and
    // the mask as an address.
    const auto write = [&](const uint8_t *bytes, bool with_length) {
        format_ipaddr(ipv4 ? PARSE_AF_INET : PARSE_AF_INET6, bytes, full ? 1 : 0,
                      with_length ? 1 : 0, static_cast<uint32_t>(prefix_length), 0, nullptr,
                      text.data(), text.size());
        return std::string(text.data());
    };
    if (mask_bytes == nullptr) return write(data(address), prefix_length >= 0);
    return write(data(address), false) + "/" + write(mask_bytes, false);
}

std::string format_mac(const py::bytes &address, int prefix_length)
{
    check_size("a MAC address", address, 6);
    if (prefix_length > 48) throw py::value_error("a prefix length is at most 48");
    std::array<char, FORMAT_MAC_BUFSIZE> text;
    format_mac_addr(text.data(), text.size(), data(address), prefix_length >= 0 ? 1 : 0,
                    static_cast<uint8_t>(prefix_length));
    return text.data();
}

std::string format_delimited(const py::bytes &address, const std::string &delimiter, bool hex)
{
    if (delimiter.size() != 1) throw py::value_error("a delimiter is one ASCII character");
    const auto count = static_cast<uint32_t>(view(address).size());
    std::string text(size_t{4} * count + 1, '\0');
    format_delim_addr(text.data(), text.size(), data(address), delimiter[0], count,
                      hex ? 'x' : 'd');
    return text.c_str();
}

std::string format_iso(const py::bytes &address, int prefix_length)
{
    constexpr size_t most = 20;
    if (view(address).size() > most) throw py::value_error("an ISO address has at most 20 bytes");
    if (prefix_length > static_cast<int>(8 * most))
        throw py::value_error("a prefix length is at most 160");
    std::array<char, 80> text;
    format_iso_addr(data(address), static_cast<uint8_t>(view(address).size()),
                    prefix_length >= 0 ? 1 : 0, static_cast<uint16_t>(prefix_length), text.data(),
                    text.size());
    return text.data();
}

std::string format_sysid(const py::bytes &sysid)
{
    check_size("a system identifier", sysid, 6);
    std::array<char, 16> text;
    format_iso_sysid(data(sysid), text.data(), text.size());
    return text.data();
}

std::string format_esi_text(const py::bytes &esi)
{
    check_size("an Ethernet segment identifier", esi, 10);
    std::array<char, 30> text;
    format_esi(text.data(), text.size(), data(esi));
    return text.data();
}

// ---- The router ----

// Only before a name has been read: a column may be read without the interpreter lock.
void install_router(const std::string &path)
{
    if (!router_is_known()) install_profile(path);
}

}  // namespace

PYBIND11_MODULE(_core, module)
{
    py::register_exception_translator([](std::exception_ptr error) {
        try {
            std::rethrow_exception(std::move(error));
        } catch (const FileError &file) {
            set_file_error(file);
        }
    });
    static std::array<PyMethodDef, families.size() + 1> functions{};
    for (size_t i = 0; i < families.size(); ++i) functions[i] = families[i].single;
    if (PyModule_AddFunctions(module.ptr(), functions.data()) != 0) throw py::error_already_set();
    module.def("column", column);
    module.def("within", within);
    module.def("format_ip", format_ip);
    module.def("format_mac", format_mac);
    module.def("format_delimited", format_delimited);
    module.def("format_iso", format_iso);
    module.def("format_sysid", format_sysid);
    module.def("format_esi", format_esi_text);
    module.def("router_is_known", router_is_known);
    module.def("install_router", install_router);
    const std::string release = sw_version.release;
    module.attr("__version__") = release;
}
