#include "host/cli/answer_check.h"

#include "host/cli/output.h"
#include "host/cli/schema_files.h"

#include <set>

namespace cmpihost {

namespace {

mof::Kind kind_of(const Request& request) {
    if (gives_paths(request.operation))
        return mof::Kind::path;
    return request.properties ? mof::Kind::partial_instance : mof::Kind::instance;
}

} // namespace

AnswerCheck::AnswerCheck(const Options& options) {
    if (!options.check)
        return;
    schema_ = load_schema(options);
    deviations_ = load_deviations(options);
}

void AnswerCheck::count(const std::string& finding) {
    const auto [place, is_new] = index_.emplace(finding, findings_.size());
    if (is_new)
        findings_.push_back({finding, 0});
    ++findings_[place->second].objects;
}

void AnswerCheck::add(const Request& request, const Answer& answer) {
    if (!schema_)
        return;
    for (const Object& object : answer.objects) {
        std::set<std::string> counted;
        for (const std::string& finding : deviations_.unexpected(mof::check(*schema_, object, kind_of(request))))
            if (counted.insert(finding).second)
                count(finding);
    }
}

void AnswerCheck::tell(std::FILE* err) const {
    for (const Finding& finding : findings_)
        std::fprintf(err, "check: %s (%zu object%s)\n", printable(finding.text).c_str(), finding.objects,
                     finding.objects == 1 ? "" : "s");
}

} // namespace cmpihost
