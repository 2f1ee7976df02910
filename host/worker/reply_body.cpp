#include "host/worker/reply_body.h"

#include <utility>

namespace cmpihost::worker {

namespace {

constexpr std::size_t block_size = std::size_t{64} << 10;

} // namespace

struct ReplyBody::Lease {
    explicit Lease(std::shared_ptr<ReplyMemory> all) : memory(std::move(all)) {}
    ~Lease() { memory->used -= bytes; }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    std::shared_ptr<ReplyMemory> memory;
    std::size_t bytes = 0;
};

ReplyBody::ReplyBody(std::shared_ptr<ReplyMemory> memory) : lease_(std::make_shared<Lease>(std::move(memory))) {}

bool ReplyBody::append(std::string_view part) {
    ReplyMemory& memory = *lease_->memory;
    if (part.size() > memory.most - memory.used)
        return false;
    memory.used += part.size();
    lease_->bytes += part.size();
    if (!blocks_.empty() && blocks_.back().size() + part.size() <= block_size)
        blocks_.back() += part;
    else
        blocks_.emplace_back(part);
    return true;
}

void ReplyBody::clear() {
    blocks_.clear();
    lease_->memory->used -= std::exchange(lease_->bytes, 0);
}

std::size_t ReplyBody::size() const {
    return lease_->bytes;
}

void ReplyBody::move_to(Reply& reply) {
    reply.body = std::move(blocks_);
    reply.hold = std::exchange(lease_, std::make_shared<Lease>(lease_->memory));
    blocks_.clear();
}

} // namespace cmpihost::worker
