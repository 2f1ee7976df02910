#include "host/server/whole_answer.h"

#include "host/broker/held.h"

#include <exception>
#include <utility>

namespace cmpihost::server {

Answer whole_answer(const Ask& ask, const Request& request, const Wanted& wanted) {
    std::vector<Object> objects;
    std::exception_ptr failure;
    Answer answer = ask(request, [&](const HeldObject& object, bool is_instance) noexcept {
        try { // nothing may be thrown through the provider
            if (!failure && wanted(is_instance))
                objects.push_back(plain(object));
        } catch (...) {
            failure = std::current_exception();
        }
    });
    if (failure)
        std::rethrow_exception(failure);
    answer.objects = std::move(objects);
    return answer;
}

} // namespace cmpihost::server
