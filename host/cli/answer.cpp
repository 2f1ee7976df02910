#include "host/cli/answer.h"

#include "host/cli/answer_check.h"
#include "host/cli/output.h"
#include "host/cli/session.h"

#include <stdexcept>

namespace cmpihost {

namespace {

std::string shown(const Options& options, const Answer& answer, bool colour) {
    if (options.format == Format::json)
        return json_of(answer);
    if (answer.rc != CMPI_RC_OK && answer.objects.empty())
        return {};
    if (options.format == Format::mof && options.request.operation != Request::Operation::invoke_method)
        return mof_of(answer, gives_paths(options.request.operation));
    return text_of(answer, options.request, colour);
}

void note_count(std::FILE* err, unsigned count, const char* what) {
    if (count > 0)
        std::fprintf(err, "note: %u %s result%s\n", count, what, count == 1 ? "" : "s");
}

void print_status(const Answer& answer, std::FILE* err) {
    note_count(err, answer.null_results, "null");
    note_count(err, answer.invalid_results, "invalid");
    const std::string message = printable(answer.message.value_or(""));
    if (answer.rc != CMPI_RC_OK)
        std::fprintf(err, "CIM error %d (%s)%s%s\n", answer.rc, std::string(rc_name(answer.rc)).c_str(),
                     message.empty() ? "" : ": ", message.c_str());
    else if (!message.empty())
        std::fprintf(err, "note: %s\n", message.c_str());
}

} // namespace

int answer_request(const Options& options, const Streams& streams) {
    Answer answer;
    std::optional<AnswerCheck> check;
    try {
        check.emplace(options);
        answer = Session(options, streams).ask(options.request);
    } catch (const std::runtime_error& error) {
        return refuse(streams, error.what());
    }
    check->add(options.request, answer);
    if (print(streams, shown(options, answer, wants_colour(streams.out))) != exit_ok)
        return exit_output;
    print_status(answer, streams.err);
    check->tell(streams.err);
    if (answer.rc != CMPI_RC_OK)
        return exit_cim_error;
    return check->found() ? exit_findings : exit_ok;
}

} // namespace cmpihost
