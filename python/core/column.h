// A family's function for a column of texts.
#ifndef ORVEX_PYTHON_COLUMN_H
#define ORVEX_PYTHON_COLUMN_H

#include <algorithm>
#include <exception>
#include <thread>
#include <vector>

#include "families.h"
#include "single.h"

// The texts of a column: the objects of a tuple or a list, or the elements of a NumPy array.
class Source {
   public:
    // A tuple, or an array of one dimension whose elements are bytes or native str.
    explicit Source(const py::object &texts);

    [[nodiscard]] size_t size() const { return size_; }

    TextFault read(size_t row, TextReader &reader, Text &text) const
    {
        if (objects_ != nullptr) return reader.read(objects_[row], text);
        const char *const element = elements_ + static_cast<ptrdiff_t>(row) * stride_;
        return utf32_ ? reader.read_utf32(element, width_, text)
                      : reader.read_bytes(element, width_, text);
    }

   private:
    py::object keep_;
    size_t size_ = 0;
    PyObject *const *objects_ = nullptr;
    const char *elements_ = nullptr;
    ptrdiff_t stride_ = 0;
    size_t width_ = 0;
    bool utf32_ = false;
};

// How many threads to use for so many rows: `wanted`, 0 for as many as there are processors, and
// no more than are of use.
size_t threads_for(size_t rows, int wanted);

// Calls work(part, first row, row after the last) for each of `parts` parts, in as many threads.
// The interpreter lock is not held. Throws what a call threw.
template <typename Work>
void run_parts(size_t rows, size_t parts, const Work &work)
{
    const py::gil_scoped_release release;
    std::vector<std::exception_ptr> faults(parts);
    const auto run = [&](size_t part) {
        try {
            work(part, rows * part / parts, rows * (part + 1) / parts);
        } catch (...) {
            faults[part] = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> threads;
        for (size_t part = 1; part < parts; ++part) threads.emplace_back(run, part);
        run(0);
    }
    for (const std::exception_ptr &fault : faults)
        if (fault != nullptr) std::rethrow_exception(fault);
}

template <typename Family>
py::dict read_column(const py::object &texts, int threads, const py::dict &given)
{
    typename Family::Options options;
    for (const auto &[option, value] : given) set_option<Family>(options, option, value);
    Family::check(options);

    const Source source(texts);
    const size_t rows = source.size();
    Arrays arrays(rows);
    bool *const accepted = arrays.add<bool>("accepted");
    const typename Family::Columns columns(arrays, options);

    const size_t parts = threads_for(rows, threads);
    std::vector<typename Family::State> states;
    std::vector<size_t> first_row;
    for (size_t part = 0; part < parts; ++part) {
        states.emplace_back(options);
        first_row.push_back(rows * part / parts);
    }
    first_row.push_back(rows);
    run_parts(rows, parts, [&](size_t part, size_t row, size_t end) {
        typename Family::State &state = states[part];
        typename Family::Value value{};
        TextReader reader;
        Text text;
        for (; row < end; ++row) {
            if (source.read(row, reader, text) != TextFault::none) continue;
            if (Family::parse(text, options, state, value, {}) != Family::accepted) continue;
            columns.store(row, value, text, state);
            accepted[row] = true;
        }
    });
    if constexpr (requires { columns.merge(arrays, states, first_row); })
        columns.merge(arrays, states, first_row);
    return arrays.take();
}

#endif
