// The second half of an exchange: what is sent, and how a connection ends.
#include "host/http/connection.h"
#include "host/http/reply_head.h"
#include "host/metrics/metric_text.h"

namespace cmpihost::http {

namespace {

constexpr std::size_t blocks_at_once = 16;

std::chrono::microseconds since(std::chrono::steady_clock::time_point time) {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - time);
}

std::uint64_t size_of(const std::vector<std::string>& blocks) {
    std::uint64_t size = 0;
    for (const std::string& block : blocks)
        size += block.size();
    return size;
}

} // namespace

void Connection::on_reply(worker::Reply reply) {
    reply_ = std::move(reply);
    if (page_)
        return on_page_reply();
    record_.operation = reply_.subject.envelope.operation;
    record_.class_name = reply_.subject.class_name;
    record_.cim_status = reply_.outcome.cim_status;
    record_.objects = reply_.outcome.objects;
    for (const std::string& note : reply_.outcome.notes)
        shared_->log.note(note);
    if (reply_.outcome.http_status != 200)
        return refuse({reply_.outcome.http_status, reply_.outcome.cim_error, {}, cim_.prefix});
    record_.bytes = size_of(reply_.body);
    keep_alive_ = reader_.head().keep_alive && !shared_->stopping;
    send(operation_head(cim_.prefix, record_.bytes, since(received_), {keep_alive_, reader_.head().version_1_1}),
         &Connection::on_sent);
}

/// Metrics are answered even where the providers are not: the listener has some of its own.
void Connection::on_page_reply() {
    for (const std::string& note : reply_.outcome.notes)
        shared_->log.note(note);
    unsigned status = reply_.outcome.http_status;
    const bool answered = !reply_.outcome.content_type.empty();
    std::string type = std::move(reply_.outcome.content_type);
    if (!answered && status == 400) // what was asked for cannot be read
        return refuse({400});
    if (record_.class_name == metrics_path) {
        if (!answered)
            reply_.body.clear();
        reply_.body.push_back(shared_->metrics(answered));
        type = metrics::content_type;
        status = 200;
    } else if (!answered) {
        return refuse({status == 200 ? 500 : status});
    }
    record_.http_status = status;
    record_.bytes = size_of(reply_.body);
    keep_alive_ = reader_.head().keep_alive && !shared_->stopping;
    if (reader_.head().method == "HEAD")
        reply_.body.clear();
    send(page_head(status, type, record_.bytes, {keep_alive_, reader_.head().version_1_1}), &Connection::on_sent);
}

void Connection::refuse(const Refusal& refusal) {
    if (record_.time == std::chrono::system_clock::time_point{}) { // not even the head was read
        record_.time = std::chrono::system_clock::now();
        received_ = std::chrono::steady_clock::now();
    }
    record_.http_status = refusal.status;
    reply_.body.clear();
    keep_alive_ = reader_.is_complete() && reader_.head().keep_alive && !must_close_ && !shared_->stopping;
    send(refusal_head(refusal, {keep_alive_, reader_.head().version_1_1}), &Connection::on_sent);
}

void Connection::refuse_for_now(unsigned status, seconds retry_after) {
    refuse({status, {}, {{"Retry-After", std::to_string(retry_after.count())}}, {}});
}

void Connection::send(std::string head, Step then) {
    head_ = std::move(head);
    then_ = then;
    block_ = 0;
    offset_ = 0;
    write();
}

/// Some of what is to be sent yet; empty when all is.
Stream::Buffers Connection::unsent() const {
    Stream::Buffers buffers;
    std::size_t offset = offset_;
    for (std::size_t block = block_; block <= reply_.body.size() && buffers.size() < blocks_at_once; ++block) {
        const std::string& text = block == 0 ? head_ : reply_.body[block - 1];
        if (offset < text.size())
            buffers.emplace_back(text.data() + offset, text.size() - offset);
        offset = 0;
    }
    return buffers;
}

void Connection::write() {
    enter(Phase::sending, shared_->limits.sending);
    stream_.write_some(unsent(), [self = shared_from_this()](const Error& error, std::size_t bytes) {
        if (self->phase_ != Phase::closed)
            self->on_written(error, bytes);
    });
}

void Connection::on_written(const Error& error, std::size_t bytes) {
    if (error)
        return close();
    offset_ += bytes;
    while (block_ <= reply_.body.size()) {
        const std::size_t size = block_ == 0 ? head_.size() : reply_.body[block_ - 1].size();
        if (offset_ < size)
            return write();
        offset_ -= size;
        ++block_;
    }
    (this->*then_)();
}

void Connection::on_sent() {
    reply_ = {};
    log_request();
    if (keep_alive_ && !shared_->stopping)
        next_request();
    else
        linger();
}

void Connection::log_request() {
    record_.address = address_;
    record_.took = since(received_);
    shared_->figures.count(record_);
    shared_->log.record(record_);
    record_ = {};
}

void Connection::next_request() {
    const bool has_more = reader_.has_more();
    reader_.next();
    enter(Phase::idle, shared_->limits.idle);
    has_more ? advance() : read();
}

/// What the client still sends is read, or a reset would take the reply from it.
void Connection::linger() {
    linger_end_ = std::chrono::steady_clock::now() + shared_->limits.linger;
    enter(Phase::lingering, shared_->limits.linger_silent);
    if (!stream_.is_tls())
        return discard();
    stream_.shut_tls_down([self = shared_from_this()](const Error&) {
        if (self->phase_ != Phase::closed)
            self->discard();
    });
}

void Connection::discard() {
    stream_.end_sending();
    discard_more();
}

void Connection::discard_more() {
    arm(std::min(std::chrono::steady_clock::now() + shared_->limits.linger_silent, linger_end_));
    stream_.read_some_raw(scratch_, [self = shared_from_this()](const Error& error, std::size_t) {
        if (self->phase_ == Phase::closed)
            return;
        if (error)
            self->close();
        else
            self->discard_more();
    });
}

} // namespace cmpihost::http
