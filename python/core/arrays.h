// The arrays of a column.
#ifndef ORVEX_PYTHON_ARRAYS_H
#define ORVEX_PYTHON_ARRAYS_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <string>
#include <utility>

namespace py = pybind11;

// By name, each of as many rows as the column has texts. They come from NumPy as zeros, whose
// memory costs nothing until it is written: rows of refused texts stay zero.
class Arrays {
   public:
    explicit Arrays(size_t rows) : rows_(rows) {}

    // Adds an array with `width` values in a row.
    template <typename Value>
    Value *add(const char *name, size_t width = 1)
    {
        const py::object shape =
            width == 1 ? py::object(py::int_(rows_)) : py::object(py::make_tuple(rows_, width));
        return static_cast<Value *>(add_zeros(name, shape, py::dtype::of<Value>()));
    }

    // Adds an array of NUL-padded texts of up to `size` bytes.
    char *add_texts(const char *name, size_t size)
    {
        return static_cast<char *>(
            add_zeros(name, py::int_(rows_), py::dtype("S" + std::to_string(size))));
    }

    // Adds what is no array.
    void add_object(const char *name, const py::object &object) { arrays_[name] = object; }

    [[nodiscard]] size_t rows() const { return rows_; }
    [[nodiscard]] py::dict take() { return std::move(arrays_); }

   private:
    void *add_zeros(const char *name, const py::object &shape, const py::dtype &dtype)
    {
        py::array array = py::module_::import("numpy").attr("zeros")(shape, dtype);
        arrays_[name] = array;
        return array.mutable_data();
    }

    size_t rows_;
    py::dict arrays_;
};

#endif
