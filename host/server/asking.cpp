#include "host/server/asking.h"

#include <exception>
#include <unordered_set>

namespace cmpihost::server {

namespace {

constexpr int highest_code = 28; // of the standard

/// Writes what providers return, as far as it is wanted.
class Collector {
  public:
    Collector(const Inquiry& inquiry, const cimxml::ReplyPlace& place, ObjectOutput& output, Notes& notes)
        : inquiry_(inquiry), place_(place), output_(output),
          note_([&notes](const std::string& line) { notes.add_once(line); }) {}

    /// Objects of another call come: names from before are not to be known any more.
    void begin_call() { encoder_.emplace(inquiry_.form, place_, inquiry_.selection, note_); }

    /// Called by providers' calls: nothing may be thrown.
    void take(const HeldObject& object, bool is_instance) noexcept {
        try {
            if (!failure_)
                add(object, is_instance);
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    /// Throws what had to wait for the provider's end.
    void check() const {
        if (failure_)
            std::rethrow_exception(failure_);
    }

    std::uint64_t objects() const { return objects_; }
    unsigned of_other_kind() const { return of_other_kind_; }
    unsigned surplus() const { return surplus_; }

  private:
    void add(const HeldObject& object, bool is_instance) {
        if (is_instance != has_instance(inquiry_.form)) {
            ++of_other_kind_;
            return;
        }
        if (output_.is_full() || !is_wanted(object.class_name->text))
            return;
        if (inquiry_.single && objects_ > 0) {
            ++surplus_;
            return;
        }
        std::string& out = output_.buffer();
        const std::size_t begin = out.size();
        const std::size_t path_end = encoder_->append(out, object);
        if (is_double(std::string_view(out).substr(begin, path_end - begin))) {
            out.resize(begin);
            return;
        }
        ++objects_;
        output_.object_ended();
    }

    bool is_wanted(std::string_view class_name) const {
        return !inquiry_.result_class || is_kind_of(place_.schema, class_name, *inquiry_.result_class);
    }

    /// Paths without keys name nothing, and may come more than once.
    bool is_double(std::string_view path) {
        const bool joined = inquiry_.classes.size() > 1 && path.find("<KEYBINDING") != std::string_view::npos;
        return joined && !seen_.emplace(path).second;
    }

    const Inquiry& inquiry_;
    const cimxml::ReplyPlace& place_;
    ObjectOutput& output_;
    TypeNote note_;
    std::optional<ObjectEncoder> encoder_;
    std::unordered_set<std::string> seen_;
    std::exception_ptr failure_;
    std::uint64_t objects_ = 0;
    unsigned of_other_kind_ = 0;
    unsigned surplus_ = 0;
};

/// The request for one of the classes.
void set_class(Request& request, const std::string& class_name) {
    switch (request.operation) {
    case Request::Operation::associators:
    case Request::Operation::associator_names:
    case Request::Operation::references:
    case Request::Operation::reference_names:
        request.assoc_class = class_name;
        return;
    default:
        request.path.class_name = class_name;
    }
}

void note_count(unsigned count, const std::string& what, const std::string& of, Notes& notes) {
    if (count > 0)
        notes.add(of + ": " + std::to_string(count) + ' ' + what + (count == 1 ? " was" : "s were") + " left out");
}

/// What was said of the classes so far.
struct Verdict {
    bool answered = false;
    Status first{};                ///< error
    std::optional<Status> named{}; ///< the error of the class that was asked for
    std::vector<std::string> failures{};

    void add(const Inquiry& inquiry, const ServedClass& asked, const Status& status);
    Status status(Notes& notes);
};

void Verdict::add(const Inquiry& inquiry, const ServedClass& asked, const Status& status) {
    if (status.code == CimCode::ok) {
        answered = true;
        return;
    }
    const bool is_named = asked.declaration == inquiry.named;
    if (is_named && !named)
        named = status;
    if (first.code == CimCode::ok)
        first = status;
    const bool expected = is_unsupported(status) || inquiry.request.operation == Request::Operation::get_instance;
    if (is_named || !expected)
        failures.push_back(asked.declaration->name + ": error " + std::to_string(static_cast<unsigned>(status.code)) +
                           (status.description.empty() ? "" : ", " + status.description));
}

Status Verdict::status(Notes& notes) {
    if (!answered)
        return named.value_or(first);
    for (std::string& failure : failures)
        notes.add(std::move(failure));
    return {};
}

/// Asks for one class, and says whether that was all.
bool ask_one(const Inquiry& inquiry, const ServedClass& asked, Request& request, Collector& collector, Verdict& verdict,
             Notes& notes) {
    set_class(request, asked.declaration->name);
    collector.begin_call();
    const Answer answer = (*asked.ask)(
        request, [&collector](const HeldObject& object, bool is_instance) { collector.take(object, is_instance); });
    collector.check();
    note_leftovers(answer, asked.declaration->name, notes);
    verdict.add(inquiry, asked, status_of(answer));
    return request.operation == Request::Operation::get_instance && collector.objects() > 0;
}

} // namespace

Status status_of(const Answer& answer) {
    const std::string text = answer.message.value_or("");
    if (answer.rc == 0)
        return {};
    if (answer.rc > 0 && answer.rc <= highest_code)
        return {static_cast<CimCode>(answer.rc), text.empty() ? std::string(rc_name(answer.rc)) : text};
    const std::string code = "status " + std::to_string(answer.rc);
    return {CimCode::failed, text.empty() ? "the provider answered with " + code : text + " (" + code + ")"};
}

bool is_unsupported(const Status& status) {
    return status.code == CimCode::not_supported || status.code == CimCode::invalid_class;
}

void note_leftovers(const Answer& answer, const std::string& what, Notes& notes) {
    note_count(answer.null_results, "null result", what, notes);
    note_count(answer.invalid_results, "invalid result", what, notes);
}

Asked ask(const Inquiry& inquiry, const cimxml::ReplyPlace& place, ObjectOutput& output, Notes& notes) {
    const bool get = inquiry.request.operation == Request::Operation::get_instance;
    Collector collector(inquiry, place, output, notes);
    Verdict verdict;
    verdict.answered = inquiry.classes.empty();
    Request request = inquiry.request;
    for (const ServedClass* each : inquiry.classes)
        if (ask_one(inquiry, *each, request, collector, verdict, notes))
            break;
    const std::string what = inquiry.named == nullptr ? inquiry.request.path.class_name : inquiry.named->name;
    note_count(collector.of_other_kind(), has_instance(inquiry.form) ? "path" : "instance", what, notes);
    note_count(collector.surplus(), "further object", what, notes);
    Asked asked{verdict.status(notes), collector.objects()};
    if (get && asked.status.code == CimCode::ok && asked.objects == 0)
        asked.status = {CimCode::not_found, "there is no such instance"};
    if (output.is_full())
        asked.status = {CimCode::failed, "the answer is larger than this server's limit for a reply"};
    return asked;
}

} // namespace cmpihost::server
