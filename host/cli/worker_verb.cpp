#include "host/cli/worker_verb.h"

#include "host/cli/redirect.h"
#include "host/cli/serve_options.h"
#include "host/pages/site.h"
#include "host/server/service.h"
#include "host/worker/heap.h"
#include "host/worker/worker_process.h"

#include <stdexcept>

namespace cmpihost {

namespace {

constexpr int socket_to_front = 3;

} // namespace

int work(const std::vector<std::string>& arguments, const Streams& streams) {
    const ServeLine line = read_serve_line(arguments);
    if (!line.options)
        return refuse(streams, "worker: expected the arguments of serve");
    worker::keep_freed_memory();
    try {
        const StandardOutputElsewhere redirected(line.options->trace, streams.err);
        server::Service service(line.options->settings);
        const pages::Site site(service.catalogue(), line.options->site);
        const auto answer = [&](const server::Question& question, server::ReplySink& sink) {
            return question.page ? site.answer(question, sink) : service.answer(question, sink);
        };
        return worker::run_worker(socket_to_front, answer, line.options->threads);
    } catch (const std::runtime_error& error) {
        return refuse(streams, error.what());
    }
}

} // namespace cmpihost
