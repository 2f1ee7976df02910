#include "host/pages/memory.h"

namespace cmpihost::pages {

namespace {

constexpr std::chrono::minutes slow_for{10};
constexpr std::chrono::minutes counted_for{1};

} // namespace

void Memory::note_slow(const server::Namespace& space, const mof::ClassDeclaration& declaration) {
    const std::lock_guard lock(mutex_);
    slow_until_[{&space, &declaration}] = Clock::now() + slow_for;
}

bool Memory::is_slow(const server::Namespace& space, const mof::ClassDeclaration& declaration) {
    const std::lock_guard lock(mutex_);
    const auto found = slow_until_.find({&space, &declaration});
    return found != slow_until_.end() && Clock::now() < found->second;
}

void Memory::note_count(const server::Namespace& space, const mof::ClassDeclaration& declaration,
                        const std::string& text) {
    const std::lock_guard lock(mutex_);
    counts_[{&space, &declaration}] = {text, Clock::now()};
}

std::optional<Memory::Count> Memory::count(const server::Namespace& space, const mof::ClassDeclaration& declaration) {
    const std::lock_guard lock(mutex_);
    const auto found = counts_.find({&space, &declaration});
    const bool known = found != counts_.end() && Clock::now() - found->second.when < counted_for;
    return known ? std::optional(found->second) : std::nullopt;
}

} // namespace cmpihost::pages
