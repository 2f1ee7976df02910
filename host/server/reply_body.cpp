#include "host/server/reply_body.h"

namespace cmpihost::server {

namespace {

constexpr std::size_t part_size = std::size_t{96} << 10;

} // namespace

ReplyBody::ReplyBody(ReplySink& sink, std::size_t limit) : sink_(sink), limit_(limit) {}

void ReplyBody::object_ended() {
    if (!full_ && passed_on_ + buffer_.size() > limit_) {
        discard();
        full_ = true;
    }
    if (full_)
        buffer_.clear();
    else if (buffer_.size() >= part_size)
        finish();
}

void ReplyBody::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, part_size);
        buffer_ += part;
        finish();
        bytes.remove_prefix(part.size());
    }
}

void ReplyBody::discard() {
    buffer_.clear();
    if (passed_on_ > 0)
        sink_.discard();
    passed_on_ = 0;
}

void ReplyBody::finish() {
    if (buffer_.empty())
        return;
    sink_.append(buffer_);
    passed_on_ += buffer_.size();
    buffer_.clear();
}

void OpenedObjects::object_ended() {
    full_ = full_ || objects_.bytes.size() > limit_;
    if (full_)
        objects_ = {};
    else
        objects_.ends.push_back(objects_.bytes.size());
}

} // namespace cmpihost::server
