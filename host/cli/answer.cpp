#include "host/cli/answer.h"

#include "host/cli/answer_check.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/cli/schema_files.h"
#include "host/cli/schema_keys.h"
#include "host/cli/session.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace cmpihost {

namespace {

void note_count(std::FILE* err, unsigned count, const char* what) {
    if (count > 0)
        std::fprintf(err, "note: %u %s result%s\n", count, what, count == 1 ? "" : "s");
}

/// @param by in front of an error: which of several requests it belongs to
void print_status(const Answer& answer, const std::string& by, std::FILE* err) {
    note_count(err, answer.null_results, "null");
    note_count(err, answer.invalid_results, "invalid");
    const std::string message = printable(answer.message.value_or(""));
    if (answer.rc != CMPI_RC_OK)
        std::fprintf(err, "%sCIM error %d (%s)%s%s\n", by.c_str(), answer.rc, std::string(rc_name(answer.rc)).c_str(),
                     message.empty() ? "" : ": ", message.c_str());
    else if (!message.empty())
        std::fprintf(err, "note: %s\n", message.c_str());
}

// ----------------------------------------------------------------------------------------------------- many times

/// Times of calls, for people.
class Times {
  public:
    using Clock = std::chrono::steady_clock;

    void add(Clock::duration time) { milliseconds_.push_back(std::chrono::duration<double, std::milli>(time).count()); }

    void tell(std::FILE* err) {
        std::sort(milliseconds_.begin(), milliseconds_.end());
        std::fprintf(err, "%zu times: least %.3f ms, median %.3f ms, most %.3f ms\n", milliseconds_.size(),
                     milliseconds_.front(), milliseconds_[milliseconds_.size() / 2], milliseconds_.back());
    }

  private:
    std::vector<double> milliseconds_;
};

// -------------------------------------------------------------------------------------------------------- a request

/// What came of one request, beside what was printed of it.
struct Result {
    Answer answer;
    std::size_t objects = 0;
    std::string failure; ///< why the provider did not come to answer; empty: it did
};

/// Asks what the options want, and shows it.
class Inquiry {
  public:
    Inquiry(const Options& options, const Streams& streams)
        : options_(options), streams_(streams),
          schema_(options.every_association ? load_schema(options) : schema_if_there(options)), check_(options),
          out_(streams), progress_(is_terminal(streams.out) ? nullptr : streams.err) {}

    int run() {
        Session session(options_, streams_);
        return options_.every_association ? ask_each_association(session) : ask_once(session);
    }

  private:
    int ask_once(Session& session);
    int ask_each_association(Session& session);
    Result ask(Session& session, const Request& request, const std::string& heading);
    void repeat(Session& session);
    void close(Session& session, Result& last);
    int end(const Result& last, int printed);
    std::unique_ptr<AnswerText> text_for(const Request& request) const;

    const Options& options_;
    Streams streams_;
    std::optional<mof::Schema> schema_;
    AnswerCheck check_;
    Printer out_;
    Progress progress_;
    Times times_;
};

std::unique_ptr<AnswerText> Inquiry::text_for(const Request& request) const {
    if (options_.count)
        return object_count();
    if (options_.format == Format::json)
        return json_answer();
    if (options_.format == Format::paths)
        return path_lines();
    if (options_.format == Format::mof && !gives_value(request.operation))
        return mof_answer(gives_paths(request.operation));
    return text_answer(request, wants_colour(options_.colour, streams_.out), schema_ ? &*schema_ : nullptr);
}

/// @param heading goes before the first thing that is shown
Result Inquiry::ask(Session& session, const Request& request, const std::string& heading) {
    const std::unique_ptr<AnswerText> text = text_for(request);
    std::string before = heading;
    const auto show = [&](const std::string& piece) {
        if (!piece.empty())
            out_.add(std::exchange(before, {}) + piece);
    };
    Result result;
    show(text->begin());
    const auto take = [&](Object object, bool is_instance) {
        ++result.objects;
        progress_.tell(std::to_string(result.objects) + " objects");
        check_.add(request, object, is_instance);
        if (is_instance && schema_)
            add_keys(*schema_, request, object);
        show(text->object(object));
    };
    const auto start = Times::Clock::now();
    try {
        result.answer = session.ask(request, take);
        check_.add(request, result.answer);
    } catch (const ProviderFailed& failure) {
        result.failure = failure.what();
    }
    times_.add(Times::Clock::now() - start);
    progress_.end();
    if (!options_.every_association || result.objects > 0 || options_.format == Format::json)
        show(text->end(result.answer, result.failure));
    return result;
}

/// Asks again, for the time alone.
void Inquiry::repeat(Session& session) {
    for (std::size_t i = 1; i < options_.repeat; ++i) {
        const auto start = Times::Clock::now();
        session.ask(options_.request, [](const Object&, bool) {});
        times_.add(Times::Clock::now() - start);
    }
}

/// What goes wrong at the end counts if nothing did before.
void Inquiry::close(Session& session, Result& last) {
    if (!last.failure.empty())
        return;
    try {
        repeat(session);
        session.close();
    } catch (const ProviderFailed& failure) {
        last.failure = failure.what();
    }
}

/// @param printed what came of printing
int Inquiry::end(const Result& last, int printed) {
    if (printed != exit_ok)
        return printed;
    if (options_.repeat > 1)
        times_.tell(streams_.err);
    check_.tell(streams_.err);
    if (!last.failure.empty()) {
        std::fprintf(streams_.err, "cmpihost: %s\n", last.failure.c_str());
        return exit_provider;
    }
    if (last.answer.rc != CMPI_RC_OK)
        return exit_cim_error;
    return check_.found() ? exit_findings : exit_ok;
}

int Inquiry::ask_once(Session& session) {
    const Request& request = options_.request;
    Result result = ask(session, request, {});
    close(session, result);
    const bool gives_none = request.operation == Request::Operation::modify_instance ||
                            request.operation == Request::Operation::delete_instance || gives_value(request.operation);
    const bool answered =
        result.objects > 0 || !result.failure.empty() || (result.answer.rc == CMPI_RC_OK && gives_none);
    if (schema_)
        for (const std::string& name : undeclared_names(*schema_, request, answered))
            std::fprintf(streams_.err, "note: %s\n", printable(name).c_str());
    const int printed = out_.end();
    if (printed == exit_ok)
        print_status(result.answer, {}, streams_.err);
    return end(result, printed);
}

/// What stands before the answer of one association among several.
std::string heading_of(const std::string& association, Format format, bool first) {
    switch (format) {
    case Format::json: // one object, which has the answers by their association
        return (first ? "{\n\"" : ",\n\"") + association + "\": ";
    case Format::mof:
        return "// " + association + "\n";
    case Format::paths:
        return {};
    case Format::text:
        break;
    }
    return association + ":\n";
}

int Inquiry::ask_each_association(Session& session) {
    Result last;
    std::vector<std::pair<std::string, Answer>> answers;
    for (const mof::ClassDeclaration& declaration : schema_->classes()) {
        if (!declaration.association || declaration.abstract || !last.failure.empty())
            continue;
        Request request = options_.request;
        request.assoc_class = declaration.name;
        Result result = ask(session, request, heading_of(declaration.name, options_.format, answers.empty()));
        if (is_not_served(result.answer.rc))
            result.answer.rc = CMPI_RC_OK; // by this association, which others may be
        answers.emplace_back(declaration.name, result.answer);
        last.failure = result.failure;
        last.answer.rc = last.answer.rc == CMPI_RC_OK ? result.answer.rc : last.answer.rc;
    }
    if (options_.format == Format::json)
        out_.add("}\n");
    close(session, last);
    const int printed = out_.end();
    if (printed == exit_ok)
        for (const auto& [association, answer] : answers)
            print_status(answer, association + ": ", streams_.err);
    return end(last, printed);
}

} // namespace

int answer_request(const Options& options, const Streams& streams) {
    return Inquiry(options, streams).run();
}

} // namespace cmpihost
