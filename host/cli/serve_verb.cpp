#include "host/cli/serve_verb.h"

#include "host/cli/redirect.h"
#include "host/cli/serve_options.h"
#include "host/http/listener.h"
#include "host/pages/site.h"
#include "host/server/service.h"
#include "host/worker/heap.h"
#include "host/worker/in_process.h"
#include "host/worker/supervisor.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>

#include <csignal>
#include <stdexcept>

namespace cmpihost {

namespace {

/// The front of the server: everything but the providers.
class Server {
  public:
    Server(const ServeOptions& options, const Streams& streams);

    /// Serves until it is told to end. Returns the exit code.
    int run();

  private:
    std::unique_ptr<worker::Supervisor> make_supervisor();
    void await_end();
    void await_reload();
    void say_addresses();
    void stop();

    const ServeOptions& options_;
    Streams streams_;
    boost::asio::io_context context_{1};
    http::Log log_;
    boost::asio::signal_set ends_;
    boost::asio::signal_set reloads_;
    std::unique_ptr<StandardOutputElsewhere> redirected_; ///< where the providers run in this process
    std::unique_ptr<server::Service> service_;            ///< there, too
    std::unique_ptr<pages::Site> site_;                   ///< likewise
    worker::Supervisor* supervisor_ = nullptr;            ///< else
    std::unique_ptr<worker::Backend> backend_;
    std::unique_ptr<http::Listener> listener_;
    bool stopping_ = false;
    int exit_code_ = exit_ok;
};

std::unique_ptr<worker::Supervisor> Server::make_supervisor() {
    worker::SupervisorOptions options;
    options.command = {"/proc/self/exe", "worker"};
    options.command.insert(options.command.end(), options_.arguments.begin(), options_.arguments.end());
    options.threads = options_.threads;
    options.waiting = options_.waiting;
    options.timeout = options_.timeout;
    options.max_reply = options_.settings.max_reply;
    options.max_replies = options_.max_replies;
    options.log = [this](worker::LogLevel, const std::string& text) { log_.note(text); };
    return std::make_unique<worker::Supervisor>(context_, options);
}

Server::Server(const ServeOptions& options, const Streams& streams)
    : options_(options), streams_(streams), log_(options.log), ends_(context_, SIGTERM, SIGINT),
      reloads_(context_, SIGHUP) {
    if (options.in_process) {
        redirected_ = std::make_unique<StandardOutputElsewhere>(options.trace, streams.err);
        service_ = std::make_unique<server::Service>(options.settings);
        site_ = std::make_unique<pages::Site>(service_->catalogue(), options.site);
        const auto answer = [this](const server::Question& question, server::ReplySink& sink) {
            return question.page ? site_->answer(question, sink) : service_->answer(question, sink);
        };
        backend_ = std::make_unique<worker::InProcess>(context_, answer, options.threads, options.waiting);
    } else {
        auto supervisor = make_supervisor();
        supervisor_ = supervisor.get();
        backend_ = std::move(supervisor);
    }
    listener_ = std::make_unique<http::Listener>(context_, *backend_, log_, options.listener);
}

int Server::run() {
    await_end();
    await_reload();
    if (supervisor_ == nullptr)
        say_addresses();
    else
        supervisor_->start([this](const std::string& error) {
            if (error.empty())
                return say_addresses();
            exit_code_ = refuse(streams_, error);
            stop();
        });
    context_.run();
    return exit_code_;
}

void Server::say_addresses() {
    std::string text;
    for (const std::string& url : listener_->urls())
        text += "listening on " + url + "\n";
    if (print(streams_, text) == exit_ok)
        return;
    exit_code_ = exit_output;
    stop();
}

/// The second signal ends the server at once.
void Server::await_end() {
    ends_.async_wait([this](const boost::system::error_code& error, int) {
        if (error)
            return;
        if (stopping_)
            return context_.stop();
        await_end();
        stop();
    });
}

void Server::await_reload() {
    reloads_.async_wait([this](const boost::system::error_code& error, int) {
        if (error)
            return;
        log_.reopen();
        listener_->reload();
        await_reload();
    });
}

void Server::stop() {
    if (std::exchange(stopping_, true))
        return;
    listener_->stop([this] { backend_->stop([this] { context_.stop(); }); });
}

} // namespace

int serve(const std::vector<std::string>& arguments, const Streams& streams) {
    const ServeLine line = read_serve_line(arguments);
    if (!line.options) {
        std::fputs(line.error.c_str(), streams.err);
        const int printed = print(streams, line.output);
        return printed == exit_ok ? line.exit_code : printed;
    }
    worker::keep_freed_memory();
    try {
        return Server(*line.options, streams).run();
    } catch (const std::runtime_error& error) {
        return refuse(streams, error.what());
    }
}

} // namespace cmpihost
