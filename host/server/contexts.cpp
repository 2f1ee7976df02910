#include "host/server/contexts.h"

#include "host/cim/names.h"

#include <algorithm>
#include <random>

namespace cmpihost::server {

struct Contexts::Context {
    PullKind kind;
    std::string name_space;
    EncodedObjects objects;
    std::size_t next = 0; // object that comes next
    std::chrono::seconds timeout{0};
    std::chrono::steady_clock::time_point expires{};
};

namespace {

Contexts::Pulled refused(CimCode code, const char* description) {
    Contexts::Pulled pulled;
    pulled.status = {code, description};
    return pulled;
}

Contexts::Pulled unknown_context() {
    return refused(CimCode::invalid_enumeration_context, "no such enumeration is open");
}

std::size_t size_of(const EncodedObjects& objects) {
    return objects.bytes.capacity() + objects.ends.capacity() * sizeof(std::size_t);
}

/// 128 random bits in hexadecimal: a client cannot guess another's.
std::string random_id() {
    static constexpr char digits[] = "0123456789abcdef";
    std::random_device random;
    std::string id;
    for (int word = 0; word < 4; ++word)
        for (auto [bits, digit] = std::pair(random(), 0); digit < 8; ++digit, bits >>= 4)
            id += digits[bits & 0xF];
    return id;
}

} // namespace

Contexts::Contexts(const Settings& settings, Clock clock) : settings_(settings), clock_(std::move(clock)) {}
Contexts::~Contexts() = default;

std::optional<std::chrono::seconds> Contexts::granted(const std::uint32_t* operation_timeout) const {
    if (operation_timeout == nullptr)
        return settings_.context_timeout;
    const std::chrono::seconds wanted(*operation_timeout);
    if (wanted.count() == 0 || wanted > settings_.max_context_timeout)
        return std::nullopt;
    return wanted;
}

Contexts::Pulled Contexts::open(PullKind kind, std::string_view name_space, EncodedObjects objects, std::size_t most,
                                std::chrono::seconds timeout) {
    Context context{kind, std::string(name_space), std::move(objects), 0, timeout, {}};
    Pulled pulled = take(context, most);
    if (context.next == context.objects.ends.size())
        return pulled;

    const std::lock_guard lock(mutex_);
    expire();
    const std::size_t size = size_of(context.objects);
    if (contexts_.size() >= settings_.max_contexts || size > settings_.max_context_bytes - bytes_)
        return refused(CimCode::server_limits_exceeded, "too many enumerations are open");
    pulled.context = random_id();
    context.expires = clock_() + timeout;
    contexts_.emplace(pulled.context, std::make_unique<Context>(std::move(context)));
    bytes_ += size;
    return pulled;
}

Contexts::Pulled Contexts::pull(std::string_view context, PullKind kind, std::string_view name_space,
                                std::size_t most) {
    const std::lock_guard lock(mutex_);
    expire();
    const auto found = find(context, name_space);
    if (found == contexts_.end() || found->second->kind != kind)
        return unknown_context();
    Pulled pulled = take(*found->second, most);
    found->second->expires = clock_() + found->second->timeout;
    if (found->second->next == found->second->objects.ends.size())
        forget(found);
    else
        pulled.context = context;
    return pulled;
}

Status Contexts::close(std::string_view context, std::string_view name_space) {
    const std::lock_guard lock(mutex_);
    expire();
    const auto found = find(context, name_space);
    if (found == contexts_.end())
        return unknown_context().status;
    forget(found);
    return {};
}

Contexts::Map::iterator Contexts::find(std::string_view context, std::string_view name_space) {
    const auto found = contexts_.find(std::string(context));
    return found != contexts_.end() && same_name(found->second->name_space, name_space) ? found : contexts_.end();
}

void Contexts::expire() {
    const auto now = clock_();
    for (auto each = contexts_.begin(); each != contexts_.end();) {
        const auto here = each++;
        if (here->second->expires <= now)
            forget(here);
    }
}

Contexts::Pulled Contexts::take(Context& context, std::size_t most) const {
    const std::vector<std::size_t>& ends = context.objects.ends;
    const std::size_t count = std::min({most, settings_.max_pull, ends.size() - context.next});
    const auto begin_of = [&ends](std::size_t object) { return object == 0 ? 0 : ends[object - 1]; };
    Pulled pulled;
    pulled.objects = count;
    pulled.bytes =
        context.objects.bytes.substr(begin_of(context.next), begin_of(context.next + count) - begin_of(context.next));
    context.next += count;
    return pulled;
}

void Contexts::forget(Map::iterator at) {
    bytes_ -= size_of(at->second->objects);
    contexts_.erase(at);
}

} // namespace cmpihost::server
