#include "host/cimxml/header_match.h"

#include "host/cim/names.h"
#include "host/cim/path_text.h"
#include "host/cim/whole_number.h"
#include "host/cimxml/typed_text.h"

#include <algorithm>

namespace cmpihost::cimxml {

namespace {

bool same_keys(const Object& a, const Object& b);

bool same_value(const Value& a, const Value& b) {
    const auto* target = std::get_if<Value::Reference>(&a.data);
    const auto* other = std::get_if<Value::Reference>(&b.data);
    if (target != nullptr && other != nullptr)
        return same_name((*target)->class_name, (*other)->class_name) && same_keys(**target, **other);
    if (target != nullptr || other != nullptr)
        return false;
    std::string text;
    std::string other_text;
    append_typed(text, "", a);
    append_typed(other_text, "", b);
    return same_name(text, other_text);
}

bool same_keys(const Object& a, const Object& b) {
    return a.keys.size() == b.keys.size() && std::all_of(a.keys.begin(), a.keys.end(), [&b](const Property& key) {
               const Property* other = b.key(key.name);
               return other != nullptr && same_value(key.value, other->value);
           });
}

bool names_target(const std::string& text, const Envelope& envelope) {
    try {
        const Object named = parse_path(text);
        if (!same_name(named.name_space, envelope.name_space))
            return false;
        if (const auto* class_name = std::get_if<ClassName>(&*envelope.target))
            return same_name(named.class_name, class_name->name) && named.keys.empty();
        const auto& instance = std::get<Object>(*envelope.target);
        return same_name(named.class_name, instance.class_name) && same_keys(named, instance);
    } catch (const PathError&) {
        return false;
    }
}

} // namespace

std::optional<std::string> percent_decoded(std::string_view text) {
    std::string decoded;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            decoded += text[at];
            continue;
        }
        const std::string_view digits = text.substr(at + 1, 2);
        const auto byte = whole_number<unsigned char>(digits, 16);
        if (digits.size() < 2 || !byte)
            return std::nullopt;
        decoded += static_cast<char>(*byte);
        at += 2;
    }
    return decoded;
}

bool headers_match(std::string_view cim_method, std::string_view cim_object, const Envelope& envelope) {
    const auto method = percent_decoded(cim_method);
    const auto object = percent_decoded(cim_object);
    if (!method || !object || !same_name(*method, envelope.operation))
        return false;
    return envelope.target ? names_target(*object, envelope) : same_name(*object, envelope.name_space);
}

} // namespace cmpihost::cimxml
