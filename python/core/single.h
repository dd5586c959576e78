// A family's function for one text.
#ifndef ORVEX_PYTHON_SINGLE_H
#define ORVEX_PYTHON_SINGLE_H

#include <cerrno>
#include <memory>
#include <stdexcept>
#include <string>

#include "classes.h"
#include "families.h"

// Raises what a text that is none deserves.
[[noreturn]] void refuse_object(TextFault fault, py::handle object);
// Raises Refused.
[[noreturn]] void refuse_text(const std::string &message, int code, int error, py::handle text);
// Sets the Python error for the C++ exception that is being handled.
void set_python_error();

template <typename Family>
void set_option(typename Family::Options &options, py::handle option, py::handle value)
{
    for (const Flag &flag : Family::flags) {
        if (PyUnicode_CompareWithASCIIString(option.ptr(), flag.name) != 0) continue;
        const int truth = PyObject_IsTrue(value.ptr());
        if (truth < 0) throw py::error_already_set();
        if (truth != 0) options.flags |= flag.bits;
        return;
    }
    const auto name = option.cast<std::string>();
    if (!Family::set(options, name, value))
        throw py::type_error(std::string(Family::name) + "() has no option '" + name + "'");
}

// Reads a text that was refused again, for the message.
template <typename Family>
[[noreturn, gnu::cold]] void refuse(const Text &text, const typename Family::Options &options,
                                    typename Family::State &state, py::handle object)
{
    // No message quotes the text more than three times.
    const size_t size = 3 * text.size + 2048;
    const auto buffer = std::make_unique_for_overwrite<char[]>(size);
    buffer[0] = '\0';
    typename Family::Value value;
    errno = 0;
    const int code = Family::parse(text, options, state, value, {buffer.get(), size});
    const int error = errno;
    std::string message = buffer.get();
    if (message.empty()) message = Family::message(std::string(text.data), options, error);
    refuse_text(message, code, error, object);
}

template <typename Family>
py::object read_single(PyObject *object, const typename Family::Options &options)
{
    Family::check(options);
    TextReader reader;
    Text text;
    const TextFault fault = reader.read(object, text);
    if (fault != TextFault::none) refuse_object(fault, object);
    typename Family::State state(options);
    typename Family::Value value;
    const int code = Family::parse(text, options, state, value, {});
    if (code != Family::accepted) refuse<Family>(text, options, state, object);
    return Family::object(value, text, options);
}

// Called by the interpreter without a tuple and a dictionary of the arguments, which would take
// longer than the reading.
template <typename Family>
PyObject *single(PyObject * /*module*/, PyObject *const *arguments, Py_ssize_t count,
                 PyObject *keywords)
{
    try {
        if (count != 1)
            throw py::type_error(std::string(Family::name) +
                                 "() takes one text, and options by name");
        typename Family::Options options;
        const Py_ssize_t given = keywords == nullptr ? 0 : PyTuple_GET_SIZE(keywords);
        for (Py_ssize_t i = 0; i < given; ++i)
            set_option<Family>(options, PyTuple_GET_ITEM(keywords, i), arguments[count + i]);
        return read_single<Family>(arguments[0], options).release().ptr();
    } catch (...) {
        set_python_error();
        return nullptr;
    }
}

#endif
