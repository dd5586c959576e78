#include "column.h"

namespace {

// Fewer rows than these are read before a thread has started.
constexpr size_t rows_worth_a_thread = 4096;

}  // namespace

Source::Source(const py::object &texts) : keep_(texts)
{
    if (PyTuple_Check(texts.ptr())) {
        size_ = static_cast<size_t>(PyTuple_GET_SIZE(texts.ptr()));
        objects_ = PySequence_Fast_ITEMS(texts.ptr());
        return;
    }
    const auto array = texts.cast<py::array>();
    if (array.ndim() != 1)
        throw py::value_error("a column has one dimension, not " + std::to_string(array.ndim()));
    const char kind = array.dtype().kind();
    if (kind != 'S' && kind != 'U')
        throw py::type_error("a column's elements are str or bytes, not " +
                             py::str(array.dtype()).cast<std::string>());
    size_ = static_cast<size_t>(array.shape(0));
    elements_ = static_cast<const char *>(array.data());
    stride_ = array.strides(0);
    width_ = static_cast<size_t>(array.itemsize());
    utf32_ = kind == 'U';
}

size_t threads_for(size_t rows, int wanted)
{
    if (wanted < 0)
        throw py::value_error("threads is 0, for all processors, or a number of threads");
    const size_t most = rows / rows_worth_a_thread + 1;
    const size_t threads =
        wanted == 0 ? std::thread::hardware_concurrency() : static_cast<size_t>(wanted);
    return std::clamp<size_t>(threads, 1, most);
}
