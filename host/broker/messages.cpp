// Messages of a provider: translated texts, the log, the broker's trace.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"

#include <cstdarg>
#include <cstdio>

namespace cmpihost {

namespace {

/// The next (type, value) pair of getMessage's argument list as text. Nothing: the type is none that may stand there.
std::optional<std::string> next_argument(std::va_list& arguments) {
    switch (va_arg(arguments, int)) {
    case CMPI_boolean:
        return va_arg(arguments, int) != 0 ? "TRUE" : "FALSE";
    case CMPI_sint32:
        return std::to_string(va_arg(arguments, CMPISint32));
    case CMPI_uint32:
        return std::to_string(va_arg(arguments, CMPIUint32));
    case CMPI_sint64:
        return std::to_string(va_arg(arguments, CMPISint64));
    case CMPI_uint64:
        return std::to_string(va_arg(arguments, CMPIUint64));
    case CMPI_real64:
        return std::to_string(va_arg(arguments, CMPIReal64));
    case CMPI_chars: {
        const char* text = va_arg(arguments, const char*);
        return text == nullptr ? "" : text;
    }
    case CMPI_string: {
        const Text* text = live(va_arg(arguments, const CMPIString*));
        return text == nullptr ? "" : std::string(text->chars);
    }
    default:
        return std::nullopt;
    }
}

/// Replaces $0, $1 ... in the text; a number without an argument stays as it is.
std::string substitute(std::string_view text, const std::vector<std::string>& arguments) {
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t digit = at + 1;
        const bool number = text[at] == '$' && digit < text.size() && text[digit] >= '0' && text[digit] <= '9';
        const std::size_t index = number ? static_cast<std::size_t>(text[digit] - '0') : arguments.size();
        if (index < arguments.size()) {
            out += arguments[index];
            at = digit;
        } else {
            out += text[at];
        }
    }
    return out;
}

/// What a log or trace call says: its text, or the string that is given instead of one.
std::string_view said(const char* text, const CMPIString* string) {
    if (text != nullptr)
        return text;
    const Text* content = live(string);
    return content == nullptr ? std::string_view() : content->chars;
}

const char* or_empty(const char* text) {
    return text == nullptr ? "" : text;
}

} // namespace

/// There is no catalogue of translations: the default text, with its arguments ($0 to $9) filled in.
CMPIString* get_message(const CMPIBroker*, const char*, const char* text, CMPIStatus* status, CMPICount count, ...) {
    std::vector<std::string> values;
    std::va_list arguments;
    va_start(arguments, count);
    bool known = text != nullptr;
    for (CMPICount i = 0; known && i < count; ++i) {
        auto value = next_argument(arguments);
        known = value.has_value();
        values.push_back(std::move(value).value_or(""));
    }
    va_end(arguments);
    if (known)
        return make_string(substitute(text, values), status);
    report(status, CMPI_RC_ERR_INVALID_PARAMETER);
    return nullptr;
}

/// One line on standard error.
CMPIStatus log_message(const CMPIBroker*, CMPISeverity severity, const char* id, const char* text,
                       const CMPIString* string) {
    const std::string line(said(text, string));
    std::fprintf(stderr, "log (severity %d): %s: %s\n", static_cast<int>(severity), or_empty(id), line.c_str());
    return status_of(CMPI_RC_OK);
}

/// One line on standard output, where providers print their own trace.
CMPIStatus trace(const CMPIBroker*, CMPILevel level, const char* component, const char* text,
                 const CMPIString* string) {
    const std::string line(said(text, string));
    std::printf("trace (level %d): %s: %s\n", static_cast<int>(level), or_empty(component), line.c_str());
    return status_of(CMPI_RC_OK);
}

} // namespace cmpihost
