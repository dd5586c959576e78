// The subcommands of the program.
#ifndef ORVEX_TOOLS_COMMAND_H
#define ORVEX_TOOLS_COMMAND_H

#include <span>
#include <string_view>

#include "record.h"
#include "texts.h"

class Options;

struct Refusal {
    std::string_view message;
    int code = 0;                // the library's result
    int error = 0;               // errno after the call, 0 when unchanged
    std::string_view hint = {};  // for people at a terminal; may be empty
};

// Receives what is read of each text: a record between `begin` and `end`, or a refusal.
class Receiver {
   public:
    Receiver() = default;
    Receiver(const Receiver &) = delete;
    Receiver &operator=(const Receiver &) = delete;
    virtual ~Receiver() = default;

    virtual Record &begin(const Text &text) = 0;
    virtual void end(const Text &text) = 0;
    virtual void refuse(const Text &text, const Refusal &refusal) = 0;

    // The text was read, and means "no".
    virtual void say_no() = 0;

    // Whether refusals should carry a hint, which may take as long as reading the text.
    [[nodiscard]] virtual bool shows_hints() const { return false; }
};

struct Command {
    const char *name;     // one word or two: "ip", "alias is"
    const char *summary;  // one line
    const char *texts = "TEXT";
    const char *examples = "";  // lines, each a command
    Layout layout = Layout::names_and_values;
    std::span<const Field> fields = {};
    bool has_profile = false;
    void (*add_options)(Options &options) = nullptr;

    // Checks and completes the options. Returns the command to run, which may be another one.
    const Command &(*prepare)(const Command &self) = nullptr;

    // Reads one text; or, for a command that takes none, writes all of its records.
    void (*read)(const Text &text, Receiver &receiver) = nullptr;
    void (*write)(Receiver &receiver) = nullptr;
};

// All of them, in the order of the help text.
std::span<const Command *const> all_commands();

// The families' commands.
extern const Command integer_command, quad_command, number_command;
extern const Command ip_command;
extern const Command interface_command;
extern const Command alias_is_command, alias_find_command;
extern const Command mac_command, rd_command, esi_command, iso_command, nsap_command, sysid_command,
    atmvpn_command, delimited_command;
extern const Command duration_command, canonical_command, prefix6_command;
extern const Command identify_command;
extern const Command profile_show_command;

#endif
