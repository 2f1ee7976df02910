// Measures what the server adds to the broker: an answer encoded as a reply, without sockets, beside the same answer
// into a sink that counts. The provider's trace lines go to /dev/null meanwhile.
// usage: service_bench [ROWS...]
#include "host/server/service.h"
#include "bench/counting_sink.h"
#include "host/broker/loader.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace cmpihost;

constexpr double enough_seconds = 1;
constexpr std::size_t fewest_turns = 7;

constexpr const char* measured_class = "ZANTO_FCIPProtocolEndPoint";

/// A switch with this many tunnels, for the library's own simulator.
std::string scenario_file(std::size_t tunnels) {
    const std::string file = "/tmp/service_bench_" + std::to_string(getpid()) + ".toml";
    std::ofstream(file) << "[switch]\nname = \"sw1\"\nwwn = \"20:00:00:00:5e:99:00:01\"\n"
                           "[ip]\nforwarding = false\ndefault_ttl = 64\n"
                           "[generate]\ntunnels = "
                        << tunnels << "\nprofiles = " << std::min<std::size_t>(tunnels, 100)
                        << "\nethernet_ports = 8\nvsans = 4\n";
    return file;
}

server::Question question_for(const char* operation) {
    const std::string body = std::string("<?xml version=\"1.0\" encoding=\"utf-8\"?><CIM CIMVERSION=\"2.0\" "
                                         "DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ>"
                                         "<IMETHODCALL NAME=\"") +
                             operation +
                             "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/>"
                             "</LOCALNAMESPACEPATH><IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"" +
                             measured_class + "\"/></IPARAMVALUE></IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
    return {operation, "root/cimv2", "localhost:5988", body};
}

Request request_for(Request::Operation operation) {
    Request request;
    request.operation = operation;
    request.path.class_name = measured_class;
    request.path.name_space = "root/cimv2";
    return request;
}

/// The median of some turns, in nanoseconds.
template <class Turn>
double median_of(Turn turn) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> turns;
    const auto begin = Clock::now();
    while (turns.size() < fewest_turns ||
           std::chrono::duration<double>(Clock::now() - begin).count() < enough_seconds) {
        const auto began = Clock::now();
        turn();
        turns.push_back(std::chrono::duration<double, std::nano>(Clock::now() - began).count());
    }
    const auto middle = turns.begin() + static_cast<std::ptrdiff_t>(turns.size() / 2);
    std::nth_element(turns.begin(), middle, turns.end());
    return *middle;
}

struct Measured {
    const char* name;
    const char* operation;
    Request::Operation broker_operation;
};

constexpr Measured measured[]{
    {"instances", "EnumerateInstances", Request::Operation::enumerate_instances},
    {"names", "EnumerateInstanceNames", Request::Operation::enumerate_instance_names},
};

void require(bool condition, const char* what) {
    if (!condition)
        throw std::runtime_error(what);
}

void print_row(std::FILE* out, const Measured& one, std::size_t rows) {
    server::Settings settings;
    settings.schema = {FCIP_SOURCE_DIR "/schema/dmtf.mof", FCIP_SOURCE_DIR "/schema/fcip.mof"};
    settings.providers = {{FCIP_PROVIDER, "FCIPProvider"}};
    settings.scenario = scenario_file(rows);
    server::Service service(settings);
    Library loaded(FCIP_PROVIDER); // shares the switch with the service's own
    loaded.create("FCIPProvider");
    unlink(settings.scenario.c_str());

    const server::Question question = question_for(one.operation);
    const Request request = request_for(one.broker_operation);
    std::size_t bytes = 0;
    const double broker = median_of([&] {
        std::size_t counted = 0;
        run(loaded.provider(), request, [&counted](const HeldObject& /*object*/, bool) { ++counted; });
        require(counted == rows, "not a row per tunnel");
    });
    const double whole = median_of([&] {
        CountingSink sink;
        require(service.answer(question, sink).objects == rows, "not an object per tunnel");
        bytes = sink.bytes;
    });
    const auto count = static_cast<double>(rows);
    std::fprintf(out, "%-10s %6zu rows %10zu bytes %10.1f us %8.0f ns/row   broker alone %8.0f ns/row   ratio %.2f\n",
                 one.name, rows, bytes, whole / 1000, whole / count, broker / count, whole / broker);
    std::fflush(out);
}

std::FILE* take_standard_output() {
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (own < 0 || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0)
        throw std::runtime_error("there is no standard output");
    return fdopen(own, "w");
}

std::vector<std::size_t> rows_of(int argc, char** argv) {
    std::vector<std::size_t> rows;
    for (int i = 1; i < argc; ++i)
        rows.push_back(std::stoul(argv[i]));
    return rows.empty() ? std::vector<std::size_t>{1, 100, 1000, 10000} : rows;
}

} // namespace

int main(int argc, char** argv) {
    try {
        std::FILE* out = take_standard_output();
        for (const Measured& one : measured)
            for (const std::size_t rows : rows_of(argc, argv))
                print_row(out, one, rows);
        return std::fclose(out) == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "service_bench: %s\n", error.what());
        return 1;
    }
}
