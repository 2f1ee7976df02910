// Measures a scrape against the enumerations that it consists of, where nobody keeps the objects and where somebody
// does, and a page of 200 objects, without sockets. The provider's trace lines go to /dev/null meanwhile.
// usage: pages_bench [TUNNELS...]
#include "bench/counting_sink.h"
#include "host/metrics/plan.h"
#include "host/metrics/scrape.h"
#include "host/pages/site.h"
#include "host/server/whole_answer.h"
#include "host/worker/heap.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace cmpihost;

constexpr double enough = 3000; // milliseconds
constexpr std::size_t fewest_turns = 25;

/// What this program has used of the processor, in milliseconds: others on the machine change it less than the time
/// that passes.
double used() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double median(std::vector<double> turns) {
    const auto middle = turns.begin() + static_cast<std::ptrdiff_t>(turns.size() / 2);
    std::nth_element(turns.begin(), middle, turns.end());
    return *middle;
}

/// The median of the ratios in each turn: a machine's speed changes between turns.
double ratio(const std::vector<double>& turns, const std::vector<double>& of) {
    std::vector<double> ratios;
    std::transform(turns.begin(), turns.end(), of.begin(), std::back_inserter(ratios), std::divides<>());
    return median(std::move(ratios));
}

/// How long each took, in milliseconds, turn by turn.
template <std::size_t count>
std::array<std::vector<double>, count> turns_of(const std::array<std::function<void()>, count>& works) {
    std::array<std::vector<double>, count> turns;
    const double begin = used();
    while (turns.front().size() < fewest_turns || used() - begin < enough)
        for (std::size_t index = 0; index < count; ++index) {
            const double began = used();
            works[index]();
            turns[index].push_back(used() - began);
        }
    return turns;
}

server::Settings settings_for(std::size_t tunnels) {
    server::Settings settings;
    settings.schema = {FCIP_SOURCE_DIR "/schema/dmtf.mof", FCIP_SOURCE_DIR "/schema/fcip.mof"};
    settings.providers = {{FCIP_PROVIDER, "FCIPProvider"}};
    settings.scenario = "/tmp/pages_bench_" + std::to_string(getpid()) + ".toml";
    std::ofstream(settings.scenario) << "[switch]\nname = \"sw1\"\n[generate]\ntunnels = " << tunnels << "\n";
    return settings;
}

/// All objects of the measured classes, to nobody, or kept as those who ask in this process have them.
void enumerate(const std::vector<metrics::ClassPlan>& plans, bool kept) {
    for (const metrics::ClassPlan& plan : plans)
        for (const metrics::Source& source : plan.sources) {
            Request request;
            request.path.class_name = plan.declaration->name;
            request.path.name_space = source.space->name;
            const Answer answer = kept ? server::whole_answer(*source.ask, request, [](bool) { return true; })
                                       : (*source.ask)(request, [](const HeldObject& /*object*/, bool) {});
            if (answer.rc != 0 || answer.objects.empty() == kept)
                throw std::runtime_error("an enumeration failed");
        }
}

std::size_t answer(const pages::Site& site, const char* target) {
    server::Question question;
    question.page.emplace().target = target;
    CountingSink sink;
    if (site.answer(question, sink).http_status != 200)
        throw std::runtime_error("there is no such page");
    return sink.bytes;
}

void print_row(std::FILE* out, std::size_t tunnels) {
    const server::Settings settings = settings_for(tunnels);
    const server::Catalogue catalogue(settings);
    unlink(settings.scenario.c_str());
    const auto views = views::read_views(FCIP_SOURCE_DIR "/schema/views.toml", catalogue.schema_of({}));
    const auto plans = metrics::make_plans(catalogue, views, {});
    const pages::Site site(catalogue, {.views = FCIP_SOURCE_DIR "/schema/views.toml", .metrics = {}});
    std::size_t bytes = 0;
    const auto [bare, kept, scrape, page] = turns_of<4>(
        {[&] { enumerate(plans, false); }, [&] { enumerate(plans, true); }, [&] { bytes = answer(site, "/metrics"); },
         [&] { answer(site, "/class/ZANTO_FCIPProtocolEndPoint"); }});
    std::fprintf(out,
                 "%6zu tunnels   enumerations %8.2f ms, kept %8.2f ms   scrape %8.2f ms   ratios %.2f and %.2f   "
                 "%9zu bytes   page %6.2f ms\n",
                 tunnels, median(bare), median(kept), median(scrape), ratio(scrape, bare), ratio(scrape, kept), bytes,
                 median(page));
    std::fflush(out);
}

std::FILE* take_standard_output() {
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (own < 0 || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0)
        throw std::runtime_error("there is no standard output");
    return fdopen(own, "w");
}

} // namespace

int main(int argc, char** argv) {
    worker::keep_freed_memory(); // as the process does that runs providers
    try {
        std::FILE* out = take_standard_output();
        if (argc < 2)
            for (const std::size_t tunnels : {std::size_t{10}, std::size_t{200}, std::size_t{10'000}})
                print_row(out, tunnels);
        for (int i = 1; i < argc; ++i)
            print_row(out, std::stoul(argv[i]));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pages_bench: %s\n", error.what());
        return 1;
    }
}
