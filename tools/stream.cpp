#include "stream.h"

#include <orvex/parse.h>

#include <cerrno>
#include <string>
#include <utility>

#include "hexadecimal.h"
#include "json_text.h"
#include "options.h"
#include "terminal.h"

namespace {

// The name of an errno value, or null.
const char *error_name(int error)
{
    switch (error) {
        case EINVAL: return "EINVAL";
        case ERANGE: return "ERANGE";
        case ENOSPC: return "ENOSPC";
        case PARSE_EAFNOSUPPORT: return "EAFNOSUPPORT";
        default: return nullptr;
    }
}

// Prints what is read of each text.
class Printer : public Receiver {
   public:
    Printer(const Command &command, const Form &form, bool are_lines, bool are_several,
            Output &output)
        : command_(command),
          form_(form),
          are_lines_(are_lines),
          are_several_(are_several),
          output_(output),
          out_(output.results()),
          record_(out_, form_, command.fields, command.layout)
    {
        if (form.format == Format::tsv) print_header();
    }

    [[nodiscard]] int status() const { return status_; }

    Record &begin(const Text &text) override
    {
        is_no_ = false;
        const bool has_blocks =
            form_.format == Format::people && command_.layout == Layout::names_and_values;
        if (has_blocks && has_records_) out_ += form_.terminator;
        has_records_ = true;
        begin_record(text);
        record_.begin();
        return record_;
    }

    void end(const Text &text) override
    {
        record_.end();
        if (form_.format == Format::tsv) out_ += '\t';  // no error
        end_record();
        print_if_only(text, !is_no_);
        output_.ended_record();
    }

    void say_no() override
    {
        is_no_ = true;
        status_ = 1;
    }

    [[nodiscard]] bool shows_hints() const override { return output_.is_error_terminal(); }

    void refuse(const Text &text, const Refusal &refusal) override
    {
        status_ = 1;
        switch (form_.format) {
            case Format::quiet: return;
            case Format::only: print_if_only(text, false); break;
            case Format::json:
            case Format::tsv:
                begin_record(text);
                print_error_fields(refusal);
                end_record();
                break;
            case Format::field: end_record(); [[fallthrough]];
            case Format::people: print_refusal(text, refusal);
        }
        output_.ended_record();
    }

    // A line that cannot be printed as it is.
    void refuse_on_error(const Text &text, const Refusal &refusal)
    {
        status_ = 1;
        print_refusal(text, refusal);
    }

   private:
    [[nodiscard]] const char *place_name() const { return are_lines_ ? "line" : "argument"; }

    void print_header()
    {
        if (command_.read != nullptr) out_ += std::string("input\t") + place_name() + '\t';
        for (const Field &field : command_.fields)
            if (is_shown_to(field, Audience::programs)) out_ += std::string(field.name) + '\t';
        out_ += "error";
        out_ += form_.terminator;
    }

    // What ties a record to its input.
    void begin_record(const Text &text)
    {
        if (form_.format == Format::json) begin_object(text);
        if (form_.format != Format::tsv || command_.read == nullptr) return;
        append_cell(out_, text.view(), form_.for_terminal);
        out_ += '\t';
        out_ += std::to_string(text.number);
    }

    void begin_object(const Text &text)
    {
        out_ += '{';
        if (command_.read == nullptr) {
            object_start_ = out_.size();
            return;
        }
        out_ += "\"input\":";
        append_json_text(out_, text.view(), form_.for_terminal);
        if (!is_utf8(text.view())) {
            out_ += ",\"input_hex\":\"";
            for (const char character : text.view())
                append_hex_byte(out_, static_cast<uint8_t>(character));
            out_ += '"';
        }
        out_ += are_lines_ ? ",\"line\":" : ",\"argument\":";
        out_ += std::to_string(text.number);
    }

    void end_record()
    {
        if (form_.format == Format::json) out_ += '}';
        const bool has_end = form_.format == Format::json || form_.format == Format::tsv ||
                             form_.format == Format::field;
        if (has_end) out_ += form_.terminator;
        // Without an input before it, the first field has no comma.
        if (object_start_ == 0) return;
        out_.erase(object_start_, 1);
        object_start_ = 0;
    }

    void print_error_fields(const Refusal &refusal)
    {
        if (form_.format == Format::tsv) {
            record_.begin();
            record_.end();
            out_ += '\t';
            append_cell(out_, refusal.message, form_.for_terminal);
            return;
        }
        out_ += ",\"error\":";
        append_json_text(out_, refusal.message, form_.for_terminal);
        out_ += ",\"code\":" + std::to_string(refusal.code) + ",\"errno\":";
        const char *const name = error_name(refusal.error);
        out_ += name != nullptr ? '"' + std::string(name) + '"' : "null";
    }

    void print_if_only(const Text &text, bool is_valid)
    {
        if (form_.format != Format::only || form_.only_valid != is_valid) return;
        if (form_.for_terminal)
            out_ += for_terminal(text.view());
        else
            out_ += text.view();
        if (text.had_cr) out_ += '\r';
        out_ += form_.terminator;
    }

    void print_refusal(const Text &text, const Refusal &refusal)
    {
        std::string place;
        if (are_several_) place = place_name() + (' ' + std::to_string(text.number) + ": ");
        output_.refuse(place, refusal.message);
        if (!refusal.hint.empty()) output_.refuse("hint: ", refusal.hint);
    }

    const Command &command_;
    Form form_;
    bool are_lines_;
    bool are_several_;
    Output &output_;
    std::string &out_;
    Record record_;
    bool has_records_ = false;
    bool is_no_ = false;
    size_t object_start_ = 0;  // of the first field, when nothing comes before it
    int status_ = 0;
};

void set_format(Form &form, Format format, const char *option)
{
    if (form.format != Format::people)
        throw UsageError(std::string(option) +
                         ": only one of --json, --tsv, --field, --only and --quiet can be given");
    form.format = format;
}

// The fields that programs see.
std::vector<std::string> field_names(const Command &command)
{
    std::vector<std::string> names;
    names.reserve(command.fields.size());
    for (const Field &field : command.fields)
        if (is_shown_to(field, Audience::programs)) names.emplace_back(field.name);
    return names;
}

void read_text(const Command &command, const Form &form, const Text &text, Printer &printer)
{
    if (text.fault == nullptr) return command.read(text, printer);
    const Refusal refusal{.message = text.fault, .code = -1};
    if (form.format == Format::only && text.is_cut)
        printer.refuse_on_error(text, refusal);
    else
        printer.refuse(text, refusal);
}

}  // namespace

void check_form(const Command &command, const Form &form)
{
    if (form.format == Format::field) check_choice("--field", field_names(command), form.field);
    if (command.read != nullptr) return;
    if (form.format == Format::only) throw UsageError("--only: there are no texts to print");
    if (form.format == Format::quiet) throw UsageError("--quiet: there are no texts to check");
}

void add_stream_options(Options &options, StreamOptions &stream, const Command &command)
{
    Form &form = stream.form;
    options.flag("--json", "Print one JSON object a line",
                 [&form] { set_format(form, Format::json, "--json"); });
    options.flag("--tsv", "Print a header line, and columns with TABs between them",
                 [&form] { set_format(form, Format::tsv, "--tsv"); });
    options.value(
        "--field", "NAME", "Print one field's value a line, empty for a refused text",
        [&form](const std::string &name) {
            set_format(form, Format::field, "--field");
            form.field = name;
        },
        field_names(command));
    if (command.read == nullptr) return;
    options.choice("--only", "valid|refused", "Print the valid or the refused texts themselves",
                   {"valid", "refused"}, [&form](const std::string &which) {
                       set_format(form, Format::only, "--only");
                       form.only_valid = which == "valid";
                   });
    options.flag("--quiet", "Print nothing; the exit status says whether all were accepted",
                 [&form] { set_format(form, Format::quiet, "--quiet"); });
    options.flag("--fail-fast", "Stop at the first refused text",
                 [&stream] { stream.fail_fast = true; });
    options.flag(
        "--null", "Texts and results end with NUL instead of a line end",
        [&form] { form.terminator = '\0'; }, '0');
}

int run_stream(const Command &command, const StreamOptions &options, std::vector<char *> texts,
               Output &output)
{
    Form form = options.form;
    form.for_terminal = output.is_terminal();
    if (command.read == nullptr) {
        Printer printer(command, form, false, false, output);
        command.write(printer);
        return output.finish(printer.status());
    }
    const bool is_stopped_by_refusal = options.fail_fast || form.format == Format::quiet;
    Texts input(std::move(texts), form.terminator, output);
    Printer printer(command, form, input.are_lines(), input.are_several(), output);
    for (Text text; input.next(text);) {
        read_text(command, form, text, printer);
        if (is_stopped_by_refusal && printer.status() != 0) break;
        if (!output.is_open()) break;
    }
    const int status = output.finish(printer.status());
    if (!input.failed()) return status;
    print_problem("cannot read standard input");
    return 1;
}
