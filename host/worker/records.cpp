#include "host/worker/records.h"

#include "host/worker/frames.h"
#include "host/worker/numbers.h"

#include <algorithm>
#include <array>

namespace cmpihost::worker {

namespace {

constexpr std::size_t max_notes = std::size_t{1} << 20; // bytes

template <class Number>
void append_number(std::string& bytes, Number number) {
    std::array<char, sizeof(Number)> room{};
    write_number(room.data(), number);
    bytes.append(room.data(), room.size());
}

void append_text(std::string& bytes, std::string_view text) {
    append_number(bytes, static_cast<std::uint32_t>(text.size()));
    bytes += text;
}

/// Reads the fields of a record in their order.
class Fields {
  public:
    explicit Fields(std::string_view bytes) : bytes_(bytes) {}

    template <class Number>
    Number number() {
        return read_number<Number>(take(sizeof(Number)).data());
    }

    std::string text() {
        const std::size_t size = number<std::uint32_t>();
        return std::string(take(size));
    }

    void end() const {
        if (!bytes_.empty())
            throw BrokenFrame("a record with more than its fields");
    }

  private:
    std::string_view take(std::size_t size) {
        if (size > bytes_.size())
            throw BrokenFrame("a record that is cut off");
        const std::string_view taken = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return taken;
    }

    std::string_view bytes_;
};

/// How many notes of an outcome are told.
std::size_t told_notes(const std::vector<std::string>& notes) {
    std::size_t bytes = 0;
    const auto untold = std::find_if(notes.begin(), notes.end(), [&bytes](const std::string& note) {
        bytes += note.size() + sizeof(std::uint32_t);
        return bytes > max_notes;
    });
    return static_cast<std::size_t>(untold - notes.begin());
}

void append_notes(std::string& bytes, const std::vector<std::string>& notes) {
    const std::size_t told = told_notes(notes);
    const bool all = told == notes.size();
    append_number(bytes, static_cast<std::uint32_t>(told + (all ? 0 : 1)));
    for (std::size_t index = 0; index < told; ++index)
        append_text(bytes, notes[index]);
    if (!all)
        append_text(bytes, "notes left out: " + std::to_string(notes.size() - told));
}

std::vector<std::string> read_notes(Fields& fields) {
    std::vector<std::string> notes;
    for (auto left = fields.number<std::uint32_t>(); left > 0; --left)
        notes.push_back(fields.text());
    return notes;
}

void append_page(std::string& bytes, const server::PageRequest& page) {
    append_text(bytes, page.target);
    append_number(bytes, static_cast<std::uint64_t>(page.time.count()));
    const server::ServerFigures& figures = page.figures;
    for (const std::uint64_t figure :
         {figures.since, figures.requests, figures.failures, figures.restarts, figures.connections})
        append_number(bytes, figure);
}

server::PageRequest read_page(Fields& fields) {
    server::PageRequest page;
    page.target = fields.text();
    page.time = std::chrono::milliseconds(fields.number<std::uint64_t>());
    server::ServerFigures& figures = page.figures;
    for (std::uint64_t* figure :
         {&figures.since, &figures.requests, &figures.failures, &figures.restarts, &figures.connections})
        *figure = fields.number<std::uint64_t>();
    return page;
}

bool is_printable(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char letter) { return letter >= ' ' && letter <= '~'; });
}

void check(const server::Outcome& outcome) {
    if (outcome.http_status < 200 || outcome.http_status > 599)
        throw BrokenFrame("HTTP status " + std::to_string(outcome.http_status));
    if (!is_printable(outcome.cim_error))
        throw BrokenFrame("a CIMError that is no header's text");
    if (!is_printable(outcome.content_type))
        throw BrokenFrame("a type of content that is no header's text");
}

} // namespace

std::string encode(const server::Question& question) {
    std::string bytes;
    bytes.reserve(question.body.size() + question.cim_object.size() + 256);
    append_text(bytes, question.cim_method);
    append_text(bytes, question.cim_object);
    append_text(bytes, question.host);
    append_text(bytes, question.body);
    append_number(bytes, static_cast<std::uint8_t>(question.page ? 1 : 0));
    if (question.page)
        append_page(bytes, *question.page);
    return bytes;
}

std::string encode(const server::Subject& subject) {
    std::string bytes;
    append_text(bytes, subject.envelope.message_id);
    append_text(bytes, subject.envelope.protocol_version);
    append_text(bytes, subject.envelope.operation);
    append_text(bytes, subject.envelope.name_space);
    append_number(bytes, static_cast<std::uint8_t>(subject.envelope.target ? 1 : 0));
    append_text(bytes, subject.class_name);
    return bytes;
}

std::string encode(const server::Outcome& outcome) {
    std::string bytes;
    append_number(bytes, static_cast<std::uint32_t>(outcome.http_status));
    append_text(bytes, outcome.cim_error);
    append_number(bytes, static_cast<std::uint32_t>(outcome.cim_status));
    append_number(bytes, outcome.objects);
    append_notes(bytes, outcome.notes);
    append_text(bytes, outcome.content_type);
    return bytes;
}

server::Question decode_question(std::string_view bytes) {
    Fields fields(bytes);
    server::Question question;
    question.cim_method = fields.text();
    question.cim_object = fields.text();
    question.host = fields.text();
    question.body = fields.text();
    if (fields.number<std::uint8_t>() != 0)
        question.page = read_page(fields);
    fields.end();
    return question;
}

server::Subject decode_subject(std::string_view bytes) {
    Fields fields(bytes);
    server::Subject subject;
    subject.envelope.message_id = fields.text();
    subject.envelope.protocol_version = fields.text();
    subject.envelope.operation = fields.text();
    subject.envelope.name_space = fields.text();
    const auto is_method = fields.number<std::uint8_t>();
    subject.class_name = fields.text();
    fields.end();
    if (is_method > 1)
        throw BrokenFrame("a subject that may be a method");
    if (is_method == 1)
        subject.envelope.target = cimxml::ClassName{subject.class_name};
    return subject;
}

server::Outcome decode_outcome(std::string_view bytes) {
    if (bytes.size() > 2 * max_notes)
        throw BrokenFrame("an outcome of " + std::to_string(bytes.size()) + " bytes");
    Fields fields(bytes);
    server::Outcome outcome;
    outcome.http_status = fields.number<std::uint32_t>();
    outcome.cim_error = fields.text();
    outcome.cim_status = fields.number<std::uint32_t>();
    outcome.objects = fields.number<std::uint64_t>();
    outcome.notes = read_notes(fields);
    outcome.content_type = fields.text();
    fields.end();
    check(outcome);
    return outcome;
}

} // namespace cmpihost::worker
