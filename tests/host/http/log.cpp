// The log: its lines, and that it blocks nobody.
#include "tests/host/http/http_test.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace cmpihost::http {
namespace {

LogRecord some_record() {
    LogRecord record;
    record.time = std::chrono::system_clock::time_point(milliseconds{1'700'000'000'123});
    record.address = "10.0.0.1";
    record.user = "anna";
    record.operation = "EnumerateInstances";
    record.class_name = "X_Class";
    record.objects = 12;
    record.bytes = 3456;
    record.took = std::chrono::microseconds{7'890};
    return record;
}

TEST(LogLines, TellAllInOrder) {
    EXPECT_EQ(text_line(some_record()),
              "2023-11-14T22:13:20.123Z 10.0.0.1 anna EnumerateInstances X_Class ok 12 3456 7.890");
}

TEST(LogLines, TellStatusAndWhatIsNotThere) {
    LogRecord record;
    record.address = "::1";
    record.cim_status = 5;
    EXPECT_EQ(text_line(record), "1970-01-01T00:00:00.000Z ::1 - - - cim=5 0 0 0.000");
    record.http_status = 401;
    EXPECT_EQ(text_line(record), "1970-01-01T00:00:00.000Z ::1 - - - http=401 0 0 0.000");
}

TEST(LogLines, EscapeWhatClientsSend) {
    LogRecord record = some_record();
    record.user = "a b\n\\\xff";
    record.class_name = std::string("x\0\x1b", 3);
    EXPECT_EQ(text_line(record), "2023-11-14T22:13:20.123Z 10.0.0.1 a\\x20b\\x0a\\x5c\\xff EnumerateInstances "
                                 "x\\x00\\x1b ok 12 3456 7.890");
    EXPECT_EQ(note_line(record.time, "two words\nmore"), "2023-11-14T22:13:20.123Z note two words\\x0amore");
}

TEST(LogLines, AreOneObjectEachInJson) {
    LogRecord record = some_record();
    record.user = "\"\n\xff";
    EXPECT_EQ(json_line(record),
              R"({"time":"2023-11-14T22:13:20.123Z","address":"10.0.0.1","user":"\"\n\ufffd",)"
              R"("operation":"EnumerateInstances","class":"X_Class","http_status":200,"cim_status":0,"objects":12,)"
              R"("bytes":3456,"milliseconds":7.89})");
    EXPECT_EQ(json_note_line(record.time, "a\tb"), R"({"time":"2023-11-14T22:13:20.123Z","note":"a\tb"})");
}

TEST(LogLines, AreBounded) {
    LogRecord record = some_record();
    record.operation = std::string(100'000, 'x');
    EXPECT_LT(text_line(record).size(), 2'000U);
    EXPECT_LT(json_line(record).size(), 2'000U);
}

// ------------------------------------------------------------------------------------------------ the file

LogOptions to_file(const std::string& file) {
    return {file, false, false};
}

TEST(Logs, AreAppendedTo) {
    const TestFile file("before\n");
    {
        Log log(to_file(file.name()));
        log.record(some_record());
    }
    EXPECT_EQ(file.text(), "before\n" + text_line(some_record()) + "\n");
}

TEST(Logs, QuietOnesHaveNotesOnly) {
    const TestFile file;
    {
        Log log({file.name(), true, true});
        log.record(some_record());
        log.note("something");
    }
    EXPECT_EQ(file.text().substr(0, 9), "{\"time\":\"");
    EXPECT_NE(file.text().find("\"note\":\"something\"}\n"), std::string::npos);
    EXPECT_EQ(file.text().find('\n'), file.text().size() - 1) << "one line";
}

TEST(Logs, ThatCannotBeOpenedAreToldSo) {
    try {
        const Log log(to_file("/nowhere/log"));
        ADD_FAILURE();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "/nowhere/log: the log cannot be opened: No such file or directory");
    }
}

/// Waits until the file has a line.
void wait_for_line(const TestFile& file) {
    EXPECT_TRUE(comes_true([&file] { return file.text().ends_with('\n'); }));
}

TEST(Logs, AreOpenedAgain) {
    const TestFile file;
    const std::string moved = file.name() + ".1";
    {
        Log log(to_file(file.name()));
        log.record(some_record());
        wait_for_line(file);
        std::filesystem::rename(file.name(), moved);
        log.reopen();
        log.record(some_record());
    }
    EXPECT_EQ(file.text(), text_line(some_record()) + "\n");
    std::filesystem::remove(moved);
}

TEST(Logs, ThatCannotBeOpenedAgainStay) {
    const TestFile file;
    const std::string moved = file.name() + ".1";
    {
        Log log(to_file(file.name()));
        std::filesystem::rename(file.name(), moved);
        std::filesystem::create_directory(file.name());
        log.reopen();
        log.record(some_record());
    }
    std::filesystem::remove(file.name());
    std::filesystem::rename(moved, file.name());
    EXPECT_EQ(file.text(), text_line(some_record()) + "\n");
}

TEST(Logs, BlockedOnesBlockNobodyAndTellWhatIsMissing) {
    const std::string name = testing::TempDir() + "http_test_pipe_" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    const int reader = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    std::string text;
    {
        Log log(to_file(name));
        for (int i = 0; i < 20'000; ++i) // more than pipe and queue take, while nobody reads
            log.record(some_record());
        std::thread late([&] {
            pollfd ready{reader, POLLIN, 0};
            char buffer[65536];
            while (text.find("dropped") == std::string::npos && poll(&ready, 1, most_patience_ms) == 1)
                if (const ssize_t count = read(reader, buffer, sizeof buffer); count > 0)
                    text.append(buffer, static_cast<std::size_t>(count));
        });
        late.join();
    }
    ::close(reader);
    std::filesystem::remove(name);
    EXPECT_NE(text.find(" lines of the log were dropped\n"), std::string::npos);
}

TEST(Logs, FailingOnesEndInTime) {
    Log log(to_file("/dev/full"));
    for (int i = 0; i < 100; ++i)
        log.record(some_record());
}

TEST(Logs, BlockedOnesEndInTime) {
    const std::string name = testing::TempDir() + "http_test_pipe_" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    const int reader = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    {
        Log log(to_file(name));
        for (int i = 0; i < 5'000; ++i)
            log.record(some_record());
    } // goes although nobody reads
    ::close(reader);
    std::filesystem::remove(name);
}

// ------------------------------------------------------------------------------------------------ of a listener

using LogsOfListeners = ListenerTest;

TEST_F(LogsOfListeners, HaveALineForEachRequest) {
    backend.reply.subject.envelope.operation = "GetInstance";
    backend.reply.subject.class_name = "X_Class";
    backend.reply.outcome.objects = 3;
    backend.reply.outcome.cim_status = 6;
    backend.reply.outcome.notes = {"a null result was left out"};
    start();
    ask(post());
    ask("GET /x HTTP/1.1\r\nHost: h\r\n\r\n");
    ask("hello\r\n");
    finish();
    std::istringstream lines(log_file.text());
    std::vector<std::string> found;
    for (std::string line; std::getline(lines, line);)
        found.push_back(line.substr(line.find(' ') + 1));
    ASSERT_EQ(found.size(), 4U) << log_file.text();
    EXPECT_EQ(found[0], "note a null result was left out");
    EXPECT_TRUE(found[1].starts_with("127.0.0.1 - GetInstance X_Class cim=6 3 9 ")) << found[1];
    EXPECT_TRUE(found[2].starts_with("127.0.0.1 - - - http=404 0 0 ")) << found[2];
    EXPECT_TRUE(found[3].starts_with("127.0.0.1 - - - http=400 0 0 ")) << found[3];
}

TEST_F(LogsOfListeners, TellOfRepliesThatNobodyTook) {
    options.limits.sending = milliseconds{100};
    backend.reply.body = std::vector<std::string>(400, std::string(65'536, 'x'));
    start();
    RawClient client(port, 4096);
    client.send(post());
    wait_for_line(log_file);
    EXPECT_NE(log_file.text().find(" ok 0 26214400 "), std::string::npos) << log_file.text();
}

} // namespace
} // namespace cmpihost::http
