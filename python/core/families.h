// The families: for each its options, how a text is read, and what Python gets of it, alone or in a
// column. The module's functions are made of these by single.h and column.h.
#ifndef ORVEX_PYTHON_FAMILIES_H
#define ORVEX_PYTHON_FAMILIES_H

#include <orvex/parse.h>
#include <pybind11/pybind11.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "arrays.h"
#include "text.h"

namespace py = pybind11;

// Where the library writes its message; null for none.
struct ErrorBuffer {
    char *data = nullptr;
    size_t size = 0;
};

struct Flag {
    const char *name;
    uint32_t bits;
};

struct FlagOptions {
    uint32_t flags = 0;
};

// What most families have: no options but flags, nothing that is kept from text to text.
struct FamilyDefaults {
    using Options = FlagOptions;
    struct State {
        explicit State(const auto & /*options*/) {}
    };
    static constexpr std::array<Flag, 0> flags{};
    static constexpr int accepted = 0;  // the library's result for an accepted text

    // Sets an option that is no flag; false when there is none of that name.
    static bool set(FlagOptions & /*options*/, const std::string & /*name*/, py::handle /*value*/)
    {
        return false;
    }
    // Throws when a required option is missing.
    static void check(const auto & /*options*/) {}
    // The message where the library gives none.
    static std::string message(const std::string &text, const auto & /*options*/, int /*error*/)
    {
        return "'" + text + "' is not valid";
    }
};

// ---- IP addresses ----

struct Ip : FamilyDefaults {
    static constexpr const char *name = "ip";
    struct Options : FlagOptions {
        uint32_t family = 0;
    };
    static const std::array<Flag, 11> flags;
    static bool set(Options &options, const std::string &option, py::handle value);

    struct Value {
        uint32_t af;
        int has_prefix;
        uint32_t prefix_length;
        int has_mask;
        std::array<uint8_t, 16> address;
        std::array<uint8_t, 16> mask;

        [[nodiscard]] bool is_ipv6() const
        {
            return af == PARSE_AF_INET6 || af == 121 || af == 131 || af == 141;
        }
    };
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        value.af = options.family;
        return parse_ipaddr(&value.af, text.data, options.flags, value.address.data(),
                            value.address.size(), &value.has_prefix, &value.prefix_length,
                            &value.has_mask, value.mask.data(), value.mask.size(), error.data,
                            error.size);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *version_;
        uint8_t *address_;
        uint8_t *prefix_length_;
        bool *has_prefix_;
        uint8_t *mask_ = nullptr;
        uint8_t *mask_kind_ = nullptr;
    };
};

// ---- Interface names and aliases ----

struct Interface : FamilyDefaults {
    static constexpr const char *name = "interface";
    struct Options : FlagOptions {
        uint32_t without = 0;
    };
    static const std::array<Flag, 16> flags;
    static bool set(Options &options, const std::string &option, py::handle value);

    // The types that a thread has met; a column holds their numbers. 0 is that of a refused name.
    struct State {
        explicit State(const Options &options);
        int16_t number_of(const char *type);
        std::vector<std::string> types{""};

       private:
        size_t last_ = 0;
    };
    using Value = parsed_interface;
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        return parse_interface(text.data, options.flags, options.without, &value, error.data,
                               error.size);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;
        // Numbers the types by their order in all of the column; `first_row` has each state's.
        void merge(Arrays &arrays, const std::vector<State> &states,
                   const std::vector<size_t> &first_row) const;

       private:
        int16_t *type_;
        int32_t *fpc_;
        int32_t *pic_;
        int32_t *port_;
        int32_t *channels_;
        int8_t *channel_count_;
        uint8_t *direction_;
        int32_t *unit_;
    };
};

struct IsAlias : FamilyDefaults {
    static constexpr const char *name = "is_alias";
    static constexpr int accepted = 1;
    struct State {
        explicit State(const Options &options);
    };
    struct Value {};
    static int parse(const Text &text, const Options & /*options*/, State & /*state*/,
                     Value & /*value*/, ErrorBuffer /*error*/)
    {
        return is_interface_alias(text.data);
    }
    static std::string message(const std::string &text, const Options & /*options*/, int /*error*/)
    {
        return "'" + text + "' is no interface alias";
    }
    static py::object object(const Value & /*value*/, const Text & /*text*/,
                             const Options & /*options*/)
    {
        return py::bool_(true);
    }
    struct Columns {
        Columns(Arrays & /*arrays*/, const Options & /*options*/) {}
        void store(size_t /*row*/, const Value & /*value*/, const Text & /*text*/,
                   State & /*state*/) const
        {
        }
    };
};

struct Alias : FamilyDefaults {
    static constexpr const char *name = "alias";
    static constexpr int accepted = 1;
    struct Options : FlagOptions {
        std::string map;
        [[nodiscard]] std::string path() const;
    };
    static constexpr std::array<Flag, 1> flags = {{{"alternate", 1}}};
    static bool set(Options &options, const std::string &option, py::handle value);
    static void check(const Options &options);

    struct State {
        explicit State(const Options &options);
        std::unique_ptr<FILE, int (*)(FILE *)> map;
    };
    using Value = std::array<char, 61>;
    static int parse(const Text &text, const Options & /*options*/, State &state, Value &value,
                     ErrorBuffer /*error*/)
    {
        return ifalias_to_ifl(text.data, value.data(), value.size(), 0, state.map.get());
    }
    static std::string message(const std::string &text, const Options & /*options*/, int /*error*/)
    {
        return "'" + text + "' is not in the alias map";
    }
    static py::object object(const Value &value, const Text & /*text*/, const Options & /*options*/)
    {
        return py::str(value.data());
    }
    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        char *interface_;
    };
};

// ---- Addresses that are bytes ----

struct Mac : FamilyDefaults {
    static constexpr const char *name = "mac";
    static constexpr std::array<Flag, 3> flags = {{{"prefix", PARSE_MAC_PREFIX_OK},
                                                   {"unicast", PARSE_MAC_UNICAST_ONLY},
                                                   {"multicast", PARSE_MAC_MULTICAST_ONLY}}};
    struct Value {
        std::array<uint8_t, 6> address;
        int has_prefix;
        uint8_t prefix_length;
    };
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        return parse_mac_addr(text.data, options.flags, value.address.data(), &value.has_prefix,
                              &value.prefix_length, error.data, error.size);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *address_;
        uint8_t *prefix_length_;
        bool *has_prefix_;
    };
};

struct Delimited : FamilyDefaults {
    static constexpr const char *name = "delimited";
    struct Options : FlagOptions {
        uint32_t count = 0;
    };
    static constexpr std::array<Flag, 1> flags = {{{"hex", 1}}};
    static bool set(Options &options, const std::string &option, py::handle value);
    static void check(const Options &options);

    using Value = std::vector<uint8_t>;
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        value.resize(options.count);
        const auto reader = options.flags != 0 ? parse_delim_hex_addr : parse_delim_dec_addr;
        return reader(text.data, value.data(), error.data, error.size, options.count);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *address_;
    };
};

struct Iso : FamilyDefaults {
    static constexpr const char *name = "iso";
    static constexpr std::array<Flag, 1> flags = {{{"nsap", PARSE_ISO_NSAP}}};
    struct Value {
        std::array<uint8_t, 21> bytes;
        uint8_t count;
        int has_prefix;
        uint16_t prefix_length;
    };
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        value.count = static_cast<uint8_t>(value.bytes.size());
        return parse_iso_addr(text.data, options.flags, value.bytes.data(), &value.count,
                              &value.has_prefix, &value.prefix_length, error.data, error.size);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *address_;
        uint8_t *count_;
        uint8_t *prefix_length_;
        bool *has_prefix_;
    };
};

struct Sysid : FamilyDefaults {
    static constexpr const char *name = "sysid";
    using Value = std::array<uint8_t, 6>;
    static int parse(const Text &text, const Options & /*options*/, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        return parse_iso_sysid(text.data, value.data(), static_cast<int>(value.size()), error.data,
                               error.size);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *sysid_;
    };
};

// ---- VPN identifiers ----

struct Rd : FamilyDefaults {
    static constexpr const char *name = "rd";
    struct Value {
        uint32_t type;
        uint32_t high;
        uint32_t low;
    };
    static int parse(const Text &text, const Options & /*options*/, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        return parse_inetvpn_rd(text.data, &value.type, &value.high, &value.low, error.data,
                                error.size);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *type_;
        uint8_t *rd_;
    };
};

struct Esi : FamilyDefaults {
    static constexpr const char *name = "esi";
    struct Options : FlagOptions {
        int mode = PARSE_ESI_ANY;
    };
    static bool set(Options &options, const std::string &option, py::handle value);

    using Value = std::array<uint8_t, 10>;
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        return parse_esi(text.data, value.data(), error.data, error.size, options.mode);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *esi_;
    };
};

struct Atmvpn : FamilyDefaults {
    static constexpr const char *name = "atmvpn";
    struct Value {
        atmvpn_address record;
        uint32_t key_length;

        // In bits of the address; the library counts the bits before it too.
        static constexpr uint32_t bits_before = 72;
        [[nodiscard]] bool has_prefix() const { return key_length != 255; }
        [[nodiscard]] uint32_t prefix_length() const { return key_length - bits_before; }
    };
    static int parse(const Text &text, const Options & /*options*/, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        return parse_atmvpn(text.data, &value.record, &value.key_length, error.data, error.size);
    }
    static py::object object(const Value &value, const Text &text, const Options &options);

    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        uint8_t *rd_;
        uint8_t *type_;
        uint8_t *address_;
        uint8_t *prefix_length_;
        bool *has_prefix_;
    };
};

// ---- Numbers and durations ----

// A family whose texts are one number.
template <typename Number>
struct NumberFamily : FamilyDefaults {
    using Value = Number;
    static py::object object(Number value, const Text & /*text*/, const auto & /*options*/)
    {
        return py::int_(value);
    }
    struct Columns {
        Columns(Arrays &arrays, const auto & /*options*/) : value_(arrays.add<Number>("value")) {}
        void store(size_t row, Number value, const Text & /*text*/, auto & /*state*/) const
        {
            value_[row] = value;
        }

       private:
        Number *value_;
    };
};

std::string number_message(const std::string &text, const std::string &what, int error);

template <typename Number, int read(const char *, Number *)>
struct WholeNumber : NumberFamily<Number> {
    static int parse(const Text &text, const FlagOptions & /*options*/, auto & /*state*/,
                     Number &value, ErrorBuffer /*error*/)
    {
        return read(text.data, &value);
    }
    static std::string message(const std::string &text, const FlagOptions & /*options*/, int error)
    {
        return number_message(text, "an integer", error);
    }
};

struct Integer : WholeNumber<int32_t, parse_integer> {
    static constexpr const char *name = "integer";
};

struct Quad : WholeNumber<int64_t, parse_quad> {
    static constexpr const char *name = "quad";
};

struct Number : NumberFamily<int32_t> {
    static constexpr const char *name = "number";
    static constexpr int accepted = 1;
    struct Options : FlagOptions {
        int32_t limit = 0;
        bool has_limit = false;
    };
    static bool set(Options &options, const std::string &option, py::handle value);
    static void check(const Options &options);
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer /*error*/)
    {
        return parse_number(text.data, &value, options.limit);
    }
    static std::string message(const std::string &text, const Options &options, int error);
};

struct Duration : NumberFamily<uint64_t> {
    static constexpr const char *name = "duration";
    static constexpr int accepted = 1;
    static constexpr uint64_t longest_timedelta = 86399999999999;
    struct Options : FlagOptions {
        uint64_t min = 0;
        uint64_t max = longest_timedelta;
    };
    static bool set(Options &options, const std::string &option, py::handle value);
    static int parse(const Text &text, const Options &options, State & /*state*/, Value &value,
                     ErrorBuffer error)
    {
        return decode_dhms(text.data, options.min, options.max, &value, error.data, error.size);
    }
    static py::object object(uint64_t seconds, const Text &text, const Options &options);
    struct Columns : NumberFamily::Columns {
        Columns(Arrays &arrays, const Options &options);
    };
};

// ---- Forms of IPv6 text ----

struct Canonical : FamilyDefaults {
    static constexpr const char *name = "canonical";
    static constexpr int accepted = 1;
    using Value = std::array<char, 47>;
    static int parse(const Text &text, const Options &options, State &state, Value &value,
                     ErrorBuffer error);
    static std::string message(const std::string &text, const Options & /*options*/, int /*error*/)
    {
        return "'" + text + "' is not an IPv6 address";
    }
    static py::object object(const Value &value, const Text & /*text*/, const Options & /*options*/)
    {
        return py::str(value.data());
    }
    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        char *text_;
    };
};

struct Prefix6 : FamilyDefaults {
    static constexpr const char *name = "prefix6";
    static constexpr std::array<Flag, 1> flags = {{{"address", 1}}};
    using Value = std::array<char, FORMAT_IN6_BUFSIZE>;
    static int parse(const Text &text, const Options &options, State &state, Value &value,
                     ErrorBuffer error);
    static py::object object(const Value &value, const Text & /*text*/, const Options & /*options*/)
    {
        return py::str(value.data());
    }
    struct Columns {
        Columns(Arrays &arrays, const Options &options);
        void store(size_t row, const Value &value, const Text &text, State &state) const;

       private:
        char *text_;
    };
};

// Whether a name's router has been asked for, after which it cannot be described any more.
bool router_is_known();

#endif
