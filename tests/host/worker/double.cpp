// A worker whose answers are what the body of the question says, command by command, separated by semicolons:
//
//   subject CLASS   tells the subject        say TEXT     appends it
//   throw           an exception             big MIB      appends that much, in parts of 100,000 bytes
//   discard         what was appended        endless      appends for ever
//   sleep MS        waits                    hang         waits for ever
//   crash           SIGSEGV                  exit STATUS  from within the answer
//   await FILE      waits until there is such a file      make FILE  makes it
//   orphan FILE     forks a process that keeps the socket as long as there is such a file, then dies by SIGABRT
//   garbage         writes to the socket what is no frame     shut   closes its half of the connection
//   ignore          SIGABRT and SIGTERM from now on
//   process         appends pid, process group, descriptors and signals
//   status CODE     is what it ends with, as HTTP
//
// usage: worker_double THREADS [GRACE | FILE FIRST LAST] | never | forge FILE
//   GRACE is what run_worker() is given, in milliseconds; a minute where it is not told
//   forge reads nothing, answers the second request when there is such a file, and ends with exit status 3
//   FILE grows by a byte with each start; the starts from FIRST to LAST end with exit status 2 before they are ready
#include "host/worker/frame_writer.h"
#include "host/worker/records.h"
#include "host/worker/worker_process.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using cmpihost::server::Outcome;
using cmpihost::server::Question;
using cmpihost::server::ReplySink;

constexpr int worker_socket = 3;

void hang() {
    for (;;)
        pause();
}

void await(const std::string& file) {
    while (access(file.c_str(), F_OK) != 0)
        usleep(1'000);
}

void ignore_signals() {
    std::signal(SIGABRT, SIG_IGN);
    std::signal(SIGTERM, SIG_IGN);
}

void orphan(const std::string& file) {
    const char* path = file.c_str();
    if (fork() != 0)
        std::abort();
    for (int time = 0; time < 12'000 && access(path, F_OK) == 0; ++time)
        usleep(10'000);
    _exit(0);
}

std::string process_text() {
    std::ostringstream text;
    text << "pid " << getpid() << " group " << getpgrp() << " descriptors";
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        text << ' ' << entry.path().filename().string();
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    struct sigaction interrupt {};
    sigaction(SIGINT, nullptr, &interrupt);
    text << (sigismember(&mask, SIGTERM) != 0 ? " blocked" : " unblocked")
         << (interrupt.sa_handler == SIG_DFL ? " default" : " ignored");
    return text.str();
}

void append_mebibytes(ReplySink& sink, int count) {
    const std::size_t total = static_cast<std::size_t>(count) << 20;
    for (std::size_t done = 0; done < total; done += 100'000)
        sink.append(std::string(std::min<std::size_t>(100'000, total - done), 'x'));
}

void end(const std::string& verb, const std::string& rest) {
    if (verb == "crash")
        std::raise(SIGSEGV);
    else if (verb == "exit")
        std::exit(std::stoi(rest)); // NOLINT(concurrency-mt-unsafe): providers do
    else if (verb == "orphan")
        orphan(rest);
    else if (verb == "await")
        await(rest);
    else if (verb == "hang")
        hang();
    else if (verb == "sleep")
        usleep(static_cast<unsigned>(std::stoi(rest)) * 1'000);
    else if (verb == "garbage")
        write(worker_socket, "this is no frame", 16) == 16 ? hang() : std::abort();
    else if (verb == "shut")
        shutdown(worker_socket, SHUT_WR) == 0 ? hang() : std::abort();
    else
        throw std::runtime_error(verb + " thrown");
}

void tell_subject(const Question& question, const std::string& class_name, ReplySink& sink) {
    cmpihost::server::Subject subject;
    subject.envelope = {"7", "1.0", question.cim_method, "root/test", std::nullopt};
    subject.class_name = class_name;
    sink.subject(subject);
}

void run(const std::string& command, const Question& question, ReplySink& sink, Outcome& outcome) {
    const std::string verb = command.substr(0, command.find(' '));
    const std::string rest = verb.size() < command.size() ? command.substr(verb.size() + 1) : std::string();
    if (verb == "subject")
        tell_subject(question, rest, sink);
    else if (verb == "say")
        sink.append(rest);
    else if (verb == "ignore")
        ignore_signals();
    else if (verb == "make")
        std::ofstream(rest) << '.';
    else if (verb == "discard")
        sink.discard();
    else if (verb == "big")
        append_mebibytes(sink, std::stoi(rest));
    else if (verb == "endless")
        for (;;)
            append_mebibytes(sink, 1);
    else if (verb == "process")
        sink.append(process_text());
    else if (verb == "status")
        outcome.http_status = static_cast<unsigned>(std::stoi(rest));
    else
        end(verb, rest);
    ++outcome.objects;
}

Outcome answer(const Question& question, ReplySink& sink) {
    Outcome outcome;
    std::istringstream commands(question.body);
    for (std::string command; std::getline(commands, command, ';');)
        run(command, question, sink, outcome);
    return outcome;
}

int forge(const std::string& file) {
    cmpihost::worker::FrameWriter writer(worker_socket);
    writer.write(cmpihost::worker::FrameKind::ready, 0, {});
    await(file);
    writer.write(cmpihost::worker::FrameKind::outcome, 2, cmpihost::worker::encode(Outcome{}));
    return 3;
}

bool may_start(const std::string& file, std::uintmax_t first, std::uintmax_t last) {
    std::ofstream(file, std::ios::app) << '.';
    const auto starts = std::filesystem::file_size(file);
    return starts < first || starts > last;
}

} // namespace

int main(int argc, char** argv) {
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    std::signal(SIGSEGV, SIG_DFL); // sanitizers have handlers of their own
    const std::string mode = argc > 1 ? argv[1] : "1";
    if (mode == "never")
        hang();
    if (mode == "forge")
        return forge(argv[2]);
    if (argc == 5 && !may_start(argv[2], std::stoul(argv[3]), std::stoul(argv[4])))
        return 2;
    const std::chrono::milliseconds grace(argc == 3 ? std::stoi(argv[2]) : 60'000);
    return cmpihost::worker::run_worker(worker_socket, answer, static_cast<unsigned>(std::stoul(mode)), grace);
}
