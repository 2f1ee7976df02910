#include "host/server/service.h"

#include "host/broker/broker.h"
#include "host/cimxml/header_match.h"
#include "host/cimxml/request.h"
#include "host/cimxml/write_reply.h"
#include "host/server/class_operations.h"
#include "host/server/exchange.h"
#include "host/server/inquiry.h"
#include "host/server/upcall_answers.h"

#include <exception>

namespace cmpihost::server {

namespace {

/// The class that a request names first; empty for none.
std::string class_of(const cimxml::Call& call) {
    if (call.envelope.target) {
        const auto* name = std::get_if<cimxml::ClassName>(&*call.envelope.target);
        return name != nullptr ? name->name : std::get<Object>(*call.envelope.target).class_name;
    }
    for (const cimxml::Parameter& parameter : call.parameters) {
        if (parameter.name == "AssocClass" || parameter.name == "ResultClass")
            continue;
        if (const auto* name = std::get_if<cimxml::ClassName>(&parameter.value))
            return name->name;
        if (const auto* object = std::get_if<Object>(&parameter.value))
            return object->class_name;
    }
    return {};
}

/// A request, as far as it could be read.
struct Reading {
    cimxml::Call call;
    Outcome outcome{}; ///< another HTTP status than 200: there is nothing else to answer
    Status status{};
    bool headers_compare = true; ///< there is something that the headers can be compared with
};

Reading reading_of(std::variant<cimxml::Call, cimxml::Refusal> read) {
    if (auto* call = std::get_if<cimxml::Call>(&read))
        return {std::move(*call)};
    auto& refusal = std::get<cimxml::Refusal>(read);
    Reading reading{{std::move(refusal.envelope), {}, {}}, {refusal.http_status, std::move(refusal.cim_error)}};
    reading.headers_compare = !refusal.of_target;
    if (refusal.http_status == 200)
        reading.status = {static_cast<CimCode>(refusal.code), std::move(refusal.description)};
    return reading;
}

/// Keys have the types of the namespace's classes, and the namespace is known once the request is read.
Reading read(const std::string& body, const Catalogue& catalogue) {
    const mof::Schema& first = catalogue.schema_of({});
    Reading reading = reading_of(cimxml::read_request(body, first));
    const mof::Schema& own = catalogue.schema_of(reading.call.envelope.name_space);
    return &own == &first ? std::move(reading) : reading_of(cimxml::read_request(body, own));
}

Status answer_classes(Exchange& exchange) {
    std::string values;
    Status status = answer_class_operation(exchange.call, exchange.place, values, exchange.objects);
    if (status.code != CimCode::ok)
        return status;
    cimxml::begin_reply(exchange.body.buffer(), exchange.call.envelope);
    exchange.body.append(values);
    cimxml::end_reply(exchange.body.buffer());
    return {};
}

Status answer_call(Exchange& exchange) {
    const cimxml::Envelope& envelope = exchange.call.envelope;
    if (envelope.target)
        return invoke_method(exchange);
    if (is_class_operation(envelope.operation))
        return answer_classes(exchange);
    if (const InquiryRow* row = find_inquiry(envelope.operation))
        return row->opens ? answer_opening(exchange, *row) : answer_inquiry(exchange, *row);
    if (const Operation operation = find_pull_operation(envelope.operation))
        return operation(exchange);
    if (const Operation operation = find_instance_operation(envelope.operation))
        return operation(exchange);
    return {CimCode::not_supported, envelope.operation + " is not supported"};
}

} // namespace

class Service::State {
  public:
    explicit State(const Settings& settings) : settings_(settings), catalogue_(settings_), contexts_(settings_) {}

    Outcome answer(const Question& question, ReplySink& sink);
    const Catalogue& catalogue() const { return catalogue_; }

  private:
    Status answer(const Question& question, const cimxml::Call& call, ReplyBody& body, Notes& notes,
                  std::uint64_t& objects);

    const Settings settings_;
    const Catalogue catalogue_;
    const UpcallAnswers upcalls_{catalogue_};
    Contexts contexts_;
    SaidOnce said_;
};

Outcome Service::State::answer(const Question& question, ReplySink& sink) {
    Reading reading = read(question.body, catalogue_);
    if (reading.outcome.http_status != 200)
        return std::move(reading.outcome);
    const cimxml::Envelope& envelope = reading.call.envelope;
    sink.subject({envelope, class_of(reading.call)});
    if (reading.headers_compare && !cimxml::headers_match(question.cim_method, question.cim_object, envelope))
        return {400, "header-mismatch"};
    ReplyBody body(sink, settings_.max_reply);
    Notes notes(said_);
    Outcome outcome;
    if (reading.status.code == CimCode::ok)
        reading.status = answer(question, reading.call, body, notes, outcome.objects);
    outcome.cim_status = static_cast<unsigned>(reading.status.code);
    if (outcome.cim_status != 0) {
        body.discard();
        outcome.objects = 0;
        const std::string& text = reading.status.description;
        cimxml::append_error_reply(body.buffer(), envelope, outcome.cim_status,
                                   text.empty() ? rc_name(static_cast<int>(outcome.cim_status)) : text);
    }
    body.finish();
    outcome.notes = notes.take();
    return outcome;
}

Status Service::State::answer(const Question& question, const cimxml::Call& call, ReplyBody& body, Notes& notes,
                              std::uint64_t& objects) {
    const Namespace* space = catalogue_.find(call.envelope.name_space);
    if (space == nullptr)
        return {CimCode::invalid_namespace, "there is no namespace " + call.envelope.name_space};
    const cimxml::ReplyPlace place{question.host, space->name, space->schema};
    Exchange exchange{call, *space, place, settings_, contexts_, body, notes};
    try {
        Status status = answer_call(exchange);
        objects = exchange.objects;
        return status;
    } catch (Status& status) {
        return std::move(status);
    } catch (const std::exception& error) {
        return {CimCode::failed, error.what()};
    }
}

Service::Service(const Settings& settings) : state_(std::make_unique<State>(settings)) {}

Service::~Service() = default;

const Catalogue& Service::catalogue() const {
    return state_->catalogue();
}

Outcome Service::answer(const Question& question, ReplySink& sink) {
    return state_->answer(question, sink);
}

} // namespace cmpihost::server
