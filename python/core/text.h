// A Python text, or an element of a NumPy array, as the C text that the library reads.
#ifndef ORVEX_PYTHON_TEXT_H
#define ORVEX_PYTHON_TEXT_H

#include <Python.h>

#include <cstring>
#include <string>

// Why an object is no text for the library.
enum class TextFault { none, type, surrogate, nul };

// Terminated; it stays in place until the object ends or the reader reads another one.
struct Text {
    const char *data = "";
    size_t size = 0;
};

// Needs no interpreter lock: str and bytes do not change, and the caller keeps them alive. Texts
// are used where they are, but those that need another encoding or a terminator are copied.
class TextReader {
   public:
    [[gnu::always_inline]] TextFault read(PyObject *object, Text &text)
    {
        if (PyUnicode_Check(object)) return read_str(object, text);
        if (!PyBytes_Check(object)) return TextFault::type;
        text = {PyBytes_AS_STRING(object), static_cast<size_t>(PyBytes_GET_SIZE(object))};
        return check_nul(text);
    }

    // An element of an array of bytes, which NULs fill up.
    TextFault read_bytes(const char *at, size_t size, Text &text)
    {
        while (size > 0 && at[size - 1] == '\0') --size;
        copy_.assign(at, size);
        return use_copy(text);
    }

    // An element of an array of str, `size` bytes of UTF-32, which NULs fill up. It may be
    // unaligned.
    TextFault read_utf32(const char *at, size_t size, Text &text)
    {
        size_t count = size / sizeof(Py_UCS4);
        while (count > 0 && load(at, count - 1) == 0) --count;
        copy_.clear();
        for (size_t i = 0; i < count; ++i)
            if (!append(load(at, i))) return TextFault::surrogate;
        return use_copy(text);
    }

   private:
    TextFault read_str(PyObject *object, Text &text)
    {
        if (!PyUnicode_IS_ASCII(object)) [[unlikely]]
            return encode(object, text);
        text = {static_cast<const char *>(PyUnicode_DATA(object)),
                static_cast<size_t>(PyUnicode_GET_LENGTH(object))};
        return check_nul(text);
    }

    [[gnu::noinline]] TextFault encode(PyObject *object, Text &text)
    {
        const int kind = PyUnicode_KIND(object);
        const void *const data = PyUnicode_DATA(object);
        copy_.clear();
        for (Py_ssize_t i = 0; i < PyUnicode_GET_LENGTH(object); ++i)
            if (!append(PyUnicode_READ(kind, data, i))) return TextFault::surrogate;
        return use_copy(text);
    }

    static TextFault check_nul(const Text &text)
    {
        return std::strlen(text.data) == text.size ? TextFault::none : TextFault::nul;
    }

    TextFault use_copy(Text &text)
    {
        text = {copy_.c_str(), copy_.size()};
        return check_nul(text);
    }

    static Py_UCS4 load(const char *at, size_t index)
    {
        Py_UCS4 character;
        std::memcpy(&character, at + index * sizeof character, sizeof character);
        return character;
    }

    // Appends a character in UTF-8; false for what is none.
    bool append(Py_UCS4 character)
    {
        const auto put = [this](Py_UCS4 byte) { copy_ += static_cast<char>(byte); };
        if (character < 0x80) {
            put(character);
            return true;
        }
        if ((character >= 0xd800 && character < 0xe000) || character > 0x10ffff) return false;
        if (character < 0x800) {
            put(0xc0 | character >> 6);
        } else {
            if (character < 0x10000) {
                put(0xe0 | character >> 12);
            } else {
                put(0xf0 | character >> 18);
                put(0x80 | (character >> 12 & 0x3f));
            }
            put(0x80 | (character >> 6 & 0x3f));
        }
        put(0x80 | (character & 0x3f));
        return true;
    }

    std::string copy_;
};

#endif
