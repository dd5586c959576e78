#include <orvex/parse.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string>

#include "commands.h"
#include "terminal.h"

namespace {

constexpr int wrong_usage = 2;

const char *const examples = R"(Examples:
  orvex-parse integer 0x1f
  orvex-parse quad -- -9223372036854775808
  orvex-parse number --limit 4096 100
  orvex-parse ip --prefix --host-zero 10.1.0.0/16
  orvex-parse interface --wildcard 'eth-1/*/0.100'
  orvex-parse --profile profiles/virtual-fpcs.toml interface eth-1050/0/0
  orvex-parse alias is uplink-to-core
  orvex-parse mac --prefix 0:1b:2c:3d:4e:5f/40
  orvex-parse rd 65000:100 10.1.1.1:7
  orvex-parse esi --mode user-defined 00:11::99
  orvex-parse iso --nsap 49.0001.1921.6800.1001.00
  orvex-parse sysid 1921.6800.1001
  orvex-parse atmvpn 65000:1::5::10.1.2.3/32
  orvex-parse delimited --count 4 --hex 0a:1:2:3
  orvex-parse duration --max 86400 1h30m
  orvex-parse canonical 2001:DB8:0:0:0:0:0:1
  orvex-parse prefix6 2001:db8:1::/48

Exit status: 0 when every text was accepted, 1 when one was refused, 2 for wrong usage.)";

// Prints the text of --help or --version, which CLI11 reports as errors.
int print_help_or_version(const CLI::App &app, const CLI::ParseError &request)
{
    std::ostringstream text;
    app.exit(request, text, text);
    std::fputs(text.str().c_str(), stdout);
    return finish_output(0);
}

int run(int argc, char **argv)
{
    // Writing to a closed pipe then fails with EPIPE.
    std::signal(SIGPIPE, SIG_IGN);
    CLI::App app("Reads what operators of routers type, and prints the values.", "orvex-parse");
    app.set_version_flag("--version", std::string("orvex-parse ") + sw_version.release + " (" +
                                          sw_version.build + ")");
    app.require_subcommand(1);
    app.footer(examples);
    std::string profile;
    app.add_option("--profile", profile, "The router whose interface names are read")
        ->type_name("FILE")
        ->envname("ORVEX_PROFILE");
    Job job;
    add_number_commands(app, job);
    add_ip_command(app, job);
    add_interface_command(app, profile, job);
    add_alias_command(app, profile, job);
    add_identifier_commands(app, job);
    add_text_commands(app, job);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == 0) return print_help_or_version(app, error);
        print_problem(std::string(error.what()) +
                      "\nRun orvex-parse --help to see how it is used.");
        return wrong_usage;
    }
    return job();
}

}  // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        print_problem(error.what());
        return 1;
    }
}
