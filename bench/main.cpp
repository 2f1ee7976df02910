// Measures the provider against bare loops, and prints ratios. The provider's trace lines go to /dev/null meanwhile.
#include "bench/comparison.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <map>

#include <fcntl.h>
#include <unistd.h>

namespace {

using bench::Comparison;
using bench::Operation;

// Tunnels; every power of ten between the two is measured.
constexpr unsigned smallest_switch = 10;
constexpr unsigned largest_switch = 10000;

// How long a measurement goes on, and how many turns it takes at least and at most. Where each row is found again by a
// walk of its own, one turn may take longer than all others together; it takes three even so, as one alone may fall
// into a moment when the machine does something else.
constexpr double enough_seconds = 0.25;
constexpr double most_seconds = 5;
constexpr std::size_t fewest_long_turns = 3;
constexpr std::size_t fewest_turns = 5;
constexpr std::size_t most_turns = 5000;

const char* name_of(Operation operation) {
    switch (operation) {
    case Operation::enumerate_instances:
        return "enumerate instances";
    case Operation::enumerate_instance_names:
        return "enumerate names";
    case Operation::get_instance:
        return "get the last one";
    case Operation::associators:
        return "associators";
    case Operation::associator_names:
        return "associator names";
    case Operation::references:
        return "references";
    case Operation::reference_names:
        return "reference names";
    default:
        return "unknown operation";
    }
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <typename F>
double nanoseconds(F f) {
    const auto began = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - began).count();
}

/// What the turns of one measurement took.
struct Times {
    std::vector<double> provider; ///< nanoseconds
    std::vector<double> bare;     ///< nanoseconds
    std::vector<double> ratio;
    double seconds = 0;
};

/// Runs both sides in turns, so that whatever else the machine does hits them alike; which side begins alternates.
void take_turn(Comparison& comparison, Times& times) {
    const bool provider_first = times.provider.size() % 2 == 0;
    if (provider_first)
        times.provider.push_back(nanoseconds([&] { comparison.run_provider(); }));
    times.bare.push_back(nanoseconds([&] { comparison.run_bare(); }));
    if (!provider_first)
        times.provider.push_back(nanoseconds([&] { comparison.run_provider(); }));
    times.ratio.push_back(times.provider.back() / times.bare.back());
    times.seconds += (times.provider.back() + times.bare.back()) / 1e9;
}

bool goes_on(const Times& times) {
    const std::size_t turns = times.ratio.size();
    if (times.seconds >= most_seconds)
        return turns < fewest_long_turns;
    return turns < fewest_turns || (times.seconds < enough_seconds && turns < most_turns);
}

void measure(benchmark::State& state, const bench::Case& measured) {
    const auto tunnels = static_cast<unsigned>(state.range());
    Comparison comparison(measured, tunnels);
    Times times;
    for ([[maybe_unused]] auto _ : state) {
        do
            take_turn(comparison, times);
        while (goes_on(times));
        state.SetIterationTime(times.seconds);
    }
    state.counters["tunnels"] = tunnels;
    state.counters["provider"] = median(times.provider) / tunnels;
    state.counters["bare"] = median(times.bare) / tunnels;
    state.counters["ratio"] = median(times.ratio);
}

/// Prints one line per measurement, the medians of its repetitions, and the growth against the smallest switch.
class Table : public benchmark::BenchmarkReporter {
  public:
    explicit Table(FILE* out) : out_(out) {}

    bool ReportContext(const Context& /*context*/) override {
        std::fprintf(out_, "%-53s %8s %12s %12s %7s %7s\n", "", "", "provider", "bare loop", "", "time per");
        std::fprintf(out_, "%-53s %8s %12s %12s %7s %7s\n", "class, operation", "tunnels", "ns/tunnel", "ns/tunnel",
                     "ratio", "tunnel");
        std::fprintf(out_,
                     "(Profiles and Ethernet ports: as many as tunnels. TCP settings and TCP statistics find each row "
                     "again by a\n walk of its own: their time per tunnel grows, and the last step takes "
                     "minutes.)\n");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        std::map<std::string, std::vector<double>> values;
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                for (const auto& [name, counter] : run.counters)
                    values[name].push_back(counter.value);
        if (values.empty())
            return;
        const std::string name = runs.front().run_name.function_name;
        const double provider = median(values["provider"]);
        const auto smallest = at_first_size_.emplace(name, provider).first;
        std::fprintf(out_, "%-53s %8.0f %12.0f %12.0f %7.2f %6.2fx\n", name.c_str(), values["tunnels"].front(),
                     provider, median(values["bare"]), median(values["ratio"]), provider / smallest->second);
        std::fflush(out_);
    }

  private:
    FILE* out_;
    std::map<std::string, double> at_first_size_;
};

void register_all() {
    for (const bench::Case& measured : bench::cases())
        benchmark::RegisterBenchmark((std::string(measured.class_name) + ", " + name_of(measured.operation)).c_str(),
                                     measure, measured)
            ->RangeMultiplier(10)
            ->Range(smallest_switch, largest_switch)
            ->UseManualTime()
            ->Iterations(1);
}

/// Sends standard output to /dev/null. @return what it was before, for the report
FILE* redirect_trace() {
    FILE* report = fdopen(dup(STDOUT_FILENO), "w");
    const int nowhere = open("/dev/null", O_WRONLY);
    if (report == nullptr || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0)
        throw std::runtime_error("cannot send the trace to /dev/null");
    close(nowhere);
    return report;
}

} // namespace

int main(int argc, char** argv) {
    try {
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
            return 2;
        Table table(redirect_trace());
        register_all();
        return benchmark::RunSpecifiedBenchmarks(&table) > 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "provider_bench: %s\n", error.what());
        return 1;
    }
}
