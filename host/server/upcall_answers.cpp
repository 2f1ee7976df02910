#include "host/server/upcall_answers.h"

#include "host/cim/names.h"
#include "host/server/whole_answer.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace cmpihost::server {

namespace {

/// Whether it is to be carried out once, however many serve the class.
bool is_change(Request::Operation operation) {
    using enum Request::Operation;
    const auto changes = {create_instance, modify_instance, delete_instance, invoke_method, set_property};
    return std::find(changes.begin(), changes.end(), operation) != changes.end();
}

/// Associations are asked of all that serve the class, any without one; anything else of those that serve the path's.
bool serves(const ServedClass& served, const Request& request) {
    const std::string& name = served.declaration->name;
    if (is_traversal(request.operation))
        return served.associations && (!request.assoc_class || same_name(name, *request.assoc_class));
    const bool method = request.operation == Request::Operation::invoke_method;
    return same_name(name, request.path.class_name) && (method ? served.methods : served.instances);
}

/// Whom a request concerns, each once.
std::vector<const Ask*> concerned(const Namespace& space, const Request& request) {
    std::vector<const Ask*> all;
    for (const ServedClass& served : space.classes)
        if (serves(served, request) && std::find(all.begin(), all.end(), served.ask) == all.end())
            all.push_back(served.ask);
    return all;
}

Answer answer_of(const Ask& ask, const Request& request) {
    return whole_answer(ask, request, [](bool) { return true; });
}

/// Adds the objects of another provider; an error counts only if all have one.
void join(Answer& all, Answer one) {
    if (one.rc != CMPI_RC_OK)
        return;
    if (all.rc != CMPI_RC_OK)
        all = std::move(one);
    else
        std::move(one.objects.begin(), one.objects.end(), std::back_inserter(all.objects));
}

/// What the first answers that does it, else the last.
Answer answer_change(const std::vector<const Ask*>& all, const Request& request) {
    Answer answer;
    for (const Ask* each : all) {
        answer = answer_of(*each, request);
        if (!is_not_served(answer.rc) && answer.rc != CMPI_RC_ERR_METHOD_NOT_AVAILABLE)
            break;
    }
    return answer;
}

Answer answer_upcall(const Catalogue& catalogue, const Request& request) {
    Answer answer;
    const Namespace* space = catalogue.find(request.path.name_space);
    if (space == nullptr) {
        answer.rc = CMPI_RC_ERR_INVALID_NAMESPACE;
        return answer;
    }
    const std::vector<const Ask*> all = concerned(*space, request);
    if (all.empty()) {
        answer.rc = is_traversal(request.operation) ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_CLASS;
        return answer;
    }
    if (is_change(request.operation))
        return answer_change(all, request);
    answer = answer_of(*all.front(), request);
    for (std::size_t i = 1; i < all.size(); ++i)
        join(answer, answer_of(*all[i], request));
    return answer;
}

} // namespace

UpcallAnswers::UpcallAnswers(const Catalogue& catalogue)
    : answer_([&catalogue](const Request& request) { return answer_upcall(catalogue, request); }) {
    serve_upcalls(&answer_);
}

UpcallAnswers::~UpcallAnswers() {
    end_upcalls(&answer_);
}

} // namespace cmpihost::server
