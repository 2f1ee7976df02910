#include "host/server/class_operations.h"
#include "host/server/exchange.h"
#include "host/server/interop.h"
namespace cmpihost::server {
bool is_class_operation(std::string_view) {
    return false;
}
Status answer_class_operation(const cimxml::Call&, const cimxml::ReplyPlace&, std::string&, std::uint64_t&) {
    return {};
}
Interop::Interop(const mof::Schema& schema, const std::vector<std::string>&, const std::string&) : schema_(schema) {}
Answer Interop::answer(const Request&) const {
    (void)schema_;
    return {};
}
Status invoke_method(Exchange&) {
    return {};
}
} // namespace cmpihost::server
