#include "host/worker/failure.h"

#include "host/cimxml/write_reply.h"
#include "host/server/status.h"

namespace cmpihost::worker {

std::string request_name(const server::Subject* subject) {
    if (subject == nullptr)
        return "a request";
    const std::string& operation = subject->envelope.operation;
    return subject->class_name.empty() ? operation : operation + " of " + subject->class_name;
}

Failure failure(const server::Subject* subject, std::string_view text, unsigned http_status) {
    Failure failed;
    if (subject == nullptr) {
        failed.outcome.http_status = http_status;
        return failed;
    }
    failed.outcome.cim_status = static_cast<unsigned>(server::CimCode::failed);
    cimxml::append_error_reply(failed.body, subject->envelope, failed.outcome.cim_status, text);
    return failed;
}

} // namespace cmpihost::worker
