#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstring>
#include <map>

#include "bench.h"

namespace bench {
namespace {

std::vector<std::pair<std::string, Limits>> rows;

struct Calls {
    std::string name;
    size_t texts;
    std::function<void()> run;
};
std::vector<Calls> all_calls;

// Prints as usual and keeps the medians.
class MedianReporter : public benchmark::ConsoleReporter {
   public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            if (run.aggregate_name == "median")
                medians_[run.run_name.function_name] = run.GetAdjustedCPUTime();
    }

    // Prints the table of ratios; returns how many of them are over their limit.
    int print_ratios() const
    {
        int over = 0;
        std::printf("\n%-44s %-6s %9s %9s %7s %7s\n", "row", "set", "ours ns", "peer ns", "ratio",
                    "limit");
        for (const auto &[name, limits] : rows) {
            over += print_ratio(name, "small", limits.small);
            over += print_ratio(name, "large", limits.large);
        }
        return over;
    }

   private:
    int print_ratio(const std::string &name, const std::string &set, double limit) const
    {
        const auto ours = medians_.find(name + "/ours/" + set);
        const auto peer = medians_.find(name + "/peer/" + set);
        if (ours == medians_.end() || peer == medians_.end()) return 0;
        const double ratio = ours->second / peer->second;
        const bool over = ratio > limit;
        std::printf("%-44s %-6s %9.2f %9.2f %7.3f %7.2f%s\n", name.c_str(), set.c_str(),
                    ours->second, peer->second, ratio, limit, over ? "  over" : "");
        return over ? 1 : 0;
    }

    std::map<std::string, double> medians_;
};

// Makes each row's calls once to warm up, and once more under callgrind, which dumps what it
// counted with "row texts" as the reason.
int count_instructions()
{
    for (const Calls &calls : all_calls) {
        calls.run();
        const std::string reason = calls.name + ' ' + std::to_string(calls.texts);
        CALLGRIND_TOGGLE_COLLECT;
        calls.run();
        CALLGRIND_TOGGLE_COLLECT;
        CALLGRIND_DUMP_STATS_AT(reason.c_str());
    }
    return 0;
}

}  // namespace

void declare_row(const std::string &name, Limits limits) { rows.emplace_back(name, limits); }

void declare_calls(const std::string &name, size_t texts, std::function<void()> calls)
{
    all_calls.push_back({name, texts, std::move(calls)});
}

}  // namespace bench

int main(int argc, char **argv)
{
    bench::add_parse_integer_rows();
    bench::add_parse_ipaddr_rows();
    bench::add_format_ipv6addr_rows();
    bench::add_format_ipaddr_rows();
    bench::add_parse_interface_rows();
    bench::add_is_interface_alias_rows();
    bench::add_parse_mac_addr_rows();
    bench::add_parse_delim_addr_rows();
    bench::add_parse_iso_addr_rows();
    bench::add_parse_inetvpn_rd_rows();
    bench::add_parse_esi_rows();
    bench::add_parse_dhms_rows();
    bench::add_format_rfc5952_rows();
    bench::add_long_text_rows();
    if (argc == 2 && std::strcmp(argv[1], "--count") == 0) return bench::count_instructions();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    bench::MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const int over = reporter.print_ratios();
    if (over != 0) std::printf("%d ratios over their limit\n", over);
    return 0;
}
