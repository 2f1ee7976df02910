// Measures the broker and the simulated platform by the answers of one class: collected, and into a sink that counts.
// The provider's trace lines go to /dev/null meanwhile.
#include "bench/calls.h"
#include "bench/cases.h"
#include "bench/replay.h"
#include "simulator/switchsim.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <unistd.h>

extern "C" CMPIInstanceMI* FCIPProvider_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* context);

namespace {

using bench::Operation;

const cmpihost::Provider& provider() {
    static const cmpihost::Provider made{FCIPProvider_Create_InstanceMI(cmpihost::broker(), nullptr), nullptr};
    return made;
}

void fill_switch(unsigned tunnels) {
    static unsigned filled = 0;
    if (filled != tunnels)
        switchsim::generate(tunnels);
    filled = tunnels;
}

cmpihost::Request request_for(const bench::Case& measured) {
    cmpihost::Request request;
    request.operation = measured.operation;
    request.path.class_name = measured.class_name;
    request.path.name_space = "root/cimv2";
    return request;
}

void expect_rows(benchmark::State& state, std::size_t rows) {
    if (rows != static_cast<std::size_t>(state.range()))
        state.SkipWithError("not a row per tunnel");
}

/// Time per row: seconds and prefix, so that nanoseconds are printed with an n.
void count_rows(benchmark::State& state) {
    state.counters["per_row"] =
        benchmark::Counter(static_cast<double>(state.range()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

std::size_t count(const cmpihost::Provider& provider, const cmpihost::Request& request) {
    std::size_t rows = 0;
    cmpihost::run(provider, request, [&rows](const cmpihost::HeldObject&, bool) { ++rows; });
    return rows;
}

void collected(benchmark::State& state, const bench::Case& measured) {
    fill_switch(static_cast<unsigned>(state.range()));
    const cmpihost::Request request = request_for(measured);
    for ([[maybe_unused]] auto _ : state)
        expect_rows(state, cmpihost::run(provider(), request).objects.size());
    count_rows(state);
}

void counted(benchmark::State& state, const bench::Case& measured) {
    fill_switch(static_cast<unsigned>(state.range()));
    const cmpihost::Request request = request_for(measured);
    for ([[maybe_unused]] auto _ : state)
        expect_rows(state, count(provider(), request));
    count_rows(state);
}

/// The broker's share: the CMPI calls that lead to the answer, without provider and platform.
struct Replaying {
    std::vector<bench::Replay> objects;
    CMPIInstanceMIFT functions{};
};

const Replaying& replaying(const CMPIInstanceMI* mi) {
    return *static_cast<const Replaying*>(mi->hdl);
}

CMPIStatus replay_instances(CMPIInstanceMI* mi, const CMPIContext*, const CMPIResult* result, const CMPIObjectPath*,
                            const char** properties) {
    for (const bench::Replay& object : replaying(mi).objects)
        object.return_instance(cmpihost::broker(), result, true, properties);
    return {CMPI_RC_OK, nullptr};
}

CMPIStatus replay_names(CMPIInstanceMI* mi, const CMPIContext*, const CMPIResult* result, const CMPIObjectPath*) {
    for (const bench::Replay& object : replaying(mi).objects)
        object.return_path(cmpihost::broker(), result);
    return {CMPI_RC_OK, nullptr};
}

void broker(benchmark::State& state, const bench::Case& measured) {
    fill_switch(static_cast<unsigned>(state.range()));
    const cmpihost::Request request = request_for(measured);
    const cmpihost::Answer recorded = cmpihost::run(provider(), request);
    Replaying replayed;
    for (const cmpihost::Object& object : recorded.objects)
        replayed.objects.emplace_back(object);
    replayed.functions.enumerateInstances = replay_instances;
    replayed.functions.enumerateInstanceNames = replay_names;
    CMPIInstanceMI mi{&replayed, &replayed.functions};
    for ([[maybe_unused]] auto _ : state)
        expect_rows(state, count({&mi, nullptr}, request));
    count_rows(state);
}

/// The platform's share: the calls of the walk.
void platform(benchmark::State& state, const bench::Case& measured) {
    provider(); // opens the queue
    fill_switch(static_cast<unsigned>(state.range()));
    for ([[maybe_unused]] auto _ : state) {
        std::size_t rows = 0;
        mutex_lock();
        bench::for_each_link([&](const FcipLinkEntry& link) {
            measured.calls({&link, nullptr, 0});
            ++rows;
            return true;
        });
        mutex_unlock();
        expect_rows(state, rows);
    }
    count_rows(state);
}

bool is_measured(const bench::Case& measured) {
    return std::strcmp(measured.class_name, "ZANTO_FCIPProtocolEndPoint") == 0 &&
           (measured.operation == Operation::enumerate_instances ||
            measured.operation == Operation::enumerate_instance_names);
}

struct Series {
    const char* name;
    void (*measure)(benchmark::State& state, const bench::Case& measured);
};

constexpr Series series[]{
    {", collected", collected}, {", into a sink", counted}, {", broker alone", broker}, {", platform alone", platform}};

void register_all() {
    for (const bench::Case& measured : bench::cases()) {
        if (!is_measured(measured))
            continue;
        const std::string what = measured.operation == Operation::enumerate_instances ? "instances" : "names";
        for (const Series& one : series)
            benchmark::RegisterBenchmark((what + one.name).c_str(), one.measure, measured)
                ->RangeMultiplier(10)
                ->Range(10, 10000);
    }
}

} // namespace

int main(int argc, char** argv) {
    std::fflush(stdout);
    const int report = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY);
    if (report < 0 || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0)
        return 1;
    std::ofstream out("/dev/fd/" + std::to_string(report));
    benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_Tabular);
    reporter.SetOutputStream(&out);
    register_all();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    return benchmark::RunSpecifiedBenchmarks(&reporter) > 0 ? 0 : 1;
}
