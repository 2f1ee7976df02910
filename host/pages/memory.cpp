#include "host/pages/memory.h"

namespace cmpihost::pages {

namespace {

constexpr std::chrono::minutes slow_for{10};

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

} // namespace cmpihost::pages
