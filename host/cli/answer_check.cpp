#include "host/cli/answer_check.h"

#include "host/cli/call_text.h"
#include "host/cli/output.h"
#include "host/cli/schema_files.h"

#include <set>

namespace cmpihost {

namespace {

mof::Kind kind_of(const Request& request, bool is_instance) {
    if (!is_instance)
        return mof::Kind::path;
    return request.properties ? mof::Kind::partial_instance : mof::Kind::instance;
}

bool gives_results(Request::Operation operation) {
    return operation != Request::Operation::modify_instance && operation != Request::Operation::delete_instance &&
           operation != Request::Operation::set_property;
}

} // namespace

AnswerCheck::AnswerCheck(const Options& options) {
    if (!options.check)
        return;
    schema_ = load_schema(options);
    deviations_ = load_deviations(options);
}

void AnswerCheck::count(const std::string& finding, const char* of) {
    const auto [place, is_new] = index_.emplace(finding, findings_.size());
    if (is_new)
        findings_.push_back({finding, 0, of});
    ++findings_[place->second].count;
}

void AnswerCheck::add(const Request& request, const Object& object, bool is_instance) {
    if (!schema_)
        return;
    std::vector<std::string> findings = mof::check(*schema_, object, kind_of(request, is_instance));
    if (is_instance && gives_paths(request.operation))
        findings.push_back(object.class_name + ": an instance, expected a path");
    else if (!is_instance && !gives_paths(request.operation))
        findings.push_back(object.class_name + ": a path, expected an instance");
    std::set<std::string> counted;
    for (const std::string& finding : deviations_.unexpected(std::move(findings)))
        if (counted.insert(finding).second)
            count(finding, "object");
}

void AnswerCheck::add(const Request& request, const Answer& answer) {
    if (!schema_ || !gives_results(request.operation))
        return;
    std::vector<std::string> findings;
    if (answer.late_results > 0)
        findings.push_back(operation_name(request.operation) + ": results after returnDone");
    if (answer.rc == CMPI_RC_OK && !answer.done)
        findings.push_back(operation_name(request.operation) + ": no returnDone");
    for (const std::string& finding : deviations_.unexpected(std::move(findings)))
        count(finding, "answer");
}

void AnswerCheck::tell(std::FILE* err) const {
    for (const Finding& finding : findings_)
        std::fprintf(err, "check: %s (%zu %s%s)\n", printable(finding.text).c_str(), finding.count, finding.of,
                     finding.count == 1 ? "" : "s");
}

} // namespace cmpihost
