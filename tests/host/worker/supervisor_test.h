// A supervisor whose worker is tests/host/worker/double.cpp, and an event loop for it.
#pragma once

#include "host/worker/clock.h"
#include "host/worker/supervisor.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>

namespace cmpihost::worker {

/// A file that does not exist, and is removed at the end.
class FreshFile {
  public:
    FreshFile() : path(std::filesystem::temp_directory_path() / name()) { std::filesystem::remove(path); }
    ~FreshFile() { std::filesystem::remove(path); }
    FreshFile(const FreshFile&) = delete;
    FreshFile& operator=(const FreshFile&) = delete;

    void make() const { std::ofstream(path) << '.'; }
    std::uintmax_t size() const { return std::filesystem::exists(path) ? std::filesystem::file_size(path) : 0; }

    const std::filesystem::path path;

  private:
    static std::string name() {
        static unsigned files = 0;
        return "worker-test-" + std::to_string(getpid()) + "-" + std::to_string(++files);
    }
};

/// Limits are so long that none comes before the test lets time pass.
class SupervisorTest : public testing::Test {
  protected:
    SupervisorTest()
        : descriptors_(open_descriptors()), loop_(std::make_unique<boost::asio::io_context>()),
          work_(loop_->get_executor()) {
        options_.command = {TEST_WORKER, "4"};
        options_.threads = 4;
        options_.timeout = options_.abort_wait = options_.stop_wait = std::chrono::minutes(10);
        options_.start_timeout = std::chrono::hours(24);
        options_.log = [this](LogLevel level, const std::string& line) { log_.emplace_back(level, line); };
    }

    /// Starts and waits until the worker is ready, or not.
    std::string start() {
        std::optional<std::string> result;
        begin([&result](const std::string& error) { result = error; });
        run_until([&result] { return result.has_value(); });
        return result.value_or("nothing was told");
    }

    void begin(std::function<void(const std::string&)> started) {
        supervisor_ = std::make_unique<Supervisor>(*loop_, options_);
        supervisor_->start(std::move(started));
    }

    void run_until(const std::function<bool()>& holds) {
        while (!holds())
            ASSERT_GT(loop_->run_one_for(std::chrono::seconds(120)), 0u) << "nothing happens any more";
    }

    /// Lets time pass, without waiting: what comes within it has happened then.
    void pass(std::chrono::milliseconds time) {
        Clock::skipped += time;
        bool looked = false;
        Timer past(*loop_, Clock::time_point{}); // for which the loop looks at its timers
        past.async_wait([&looked](const boost::system::error_code&) { looked = true; });
        run_until([&looked] { return looked; });
        loop_->poll();
    }

    /// @return the request's number; 0 if it was not taken
    unsigned ask(const std::string& body, const std::string& method = "GetInstance") {
        const unsigned number = ++last_;
        const bool taken = supervisor_->ask({method, "root/test", "host", body}, [this, number](Reply reply) {
            EXPECT_FALSE(replies_.contains(number)) << "answered twice";
            replies_[number] = std::move(reply);
        });
        return taken ? number : 0;
    }

    /// Asks, and waits until the worker has done the first commands, and what it sent of them is read.
    unsigned ask_and_see(const std::string& first, const std::string& then) {
        const FreshFile done;
        const unsigned number = ask(first + ";make " + done.path.string() + ";" + then);
        wait_for_file(done);
        return number;
    }

    /// Waits until the worker has made it, and what it sent before is read.
    void wait_for_file(const FreshFile& file) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(120);
        while (file.size() == 0 && std::chrono::steady_clock::now() < end)
            loop_->run_for(std::chrono::milliseconds(1));
        EXPECT_EQ(file.size(), 1u) << "the worker does not get there";
        loop_->poll();
    }

    const Reply& reply_to(unsigned number) {
        run_until([this, number] { return replies_.contains(number); });
        return replies_[number];
    }

    /// Asks and waits for the body.
    std::string answer(const std::string& body) { return text(reply_to(ask(body))); }

    static std::string text(const Reply& reply) {
        std::string text;
        for (const std::string& block : reply.body)
            text += block;
        return text;
    }

    /// What a GetInstance with an error is answered with.
    static std::string error_reply(const std::string& description) {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
               "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"7\" PROTOCOLVERSION=\"1.0\">"
               "<SIMPLERSP><IMETHODRESPONSE NAME=\"GetInstance\"><ERROR CODE=\"1\" DESCRIPTION=\"" +
               description + "\"></ERROR></IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>\n";
    }

    /// The process that answers.
    pid_t worker_pid() { return std::stoi(answer("process").substr(4)); }

    /// Whether a line was logged that has this in it.
    bool logged(LogLevel level, const std::string& part) const {
        return std::any_of(log_.begin(), log_.end(), [&](const auto& line) {
            return line.first == level && line.second.find(part) != std::string::npos;
        });
    }

    void wait_for_log(LogLevel level, const std::string& part) {
        run_until([&] { return logged(level, part); });
    }

    /// @param waits how often the time passes that workers are given
    void stop(unsigned waits = 0) {
        bool stopped = false;
        supervisor_->stop([&stopped] { stopped = true; });
        for (; waits > 0; --waits)
            pass(options_.stop_wait);
        run_until([&stopped] { return stopped; });
    }

    static std::size_t open_descriptors() {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
            ++count;
        return count;
    }

    /// After each test: no process, no descriptor is left.
    void TearDown() override {
        if (supervisor_)
            stop(2);
        supervisor_.reset();
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a process is left";
        work_.reset();
        loop_.reset();
        EXPECT_EQ(open_descriptors(), descriptors_);
    }

    std::size_t descriptors_;
    std::unique_ptr<boost::asio::io_context> loop_;
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work_;
    SupervisorOptions options_;
    std::vector<std::pair<LogLevel, std::string>> log_;
    std::unique_ptr<Supervisor> supervisor_;
    std::map<unsigned, Reply> replies_;
    unsigned last_ = 0;
};

} // namespace cmpihost::worker
