#include "host/cimxml/xml_reader.h"

#include "host/cim/names.h"
#include "host/cim/whole_number.h"
#include "host/cimxml/characters.h"

#include <algorithm>
#include <array>

namespace cmpihost::cimxml {

namespace {

/// Thrown within this file.
struct Fault {
    XmlFault what;
};

[[noreturn]] void malformed() {
    throw Fault{XmlFault::not_well_formed};
}

void check_characters(std::string_view bytes) {
    if (!is_utf8(bytes))
        throw Fault{XmlFault::invalid};
    std::size_t at = 0;
    while (at < bytes.size()) {
        const bool plain = bytes[at] >= ' ' && bytes[at] <= '~';
        const std::size_t length = plain ? 1 : xml_character_length(bytes, at);
        if (length == 0)
            malformed();
        at += length;
    }
}

/// Appends the character that a reference such as `&lt;` or `&#65;` stands for (given without & and ;). False: it is no
/// reference.
bool append_reference(std::string& out, std::string_view name) {
    struct Entity {
        std::string_view name;
        char character;
    };
    static constexpr std::array entities{Entity{"amp", '&'}, Entity{"lt", '<'}, Entity{"gt", '>'}, Entity{"quot", '"'},
                                         Entity{"apos", '\''}};
    for (const Entity& entity : entities)
        if (entity.name == name) {
            out += entity.character;
            return true;
        }
    if (!name.starts_with('#'))
        return false;
    const bool hexadecimal = name.starts_with("#x");
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    const auto code = whole_number<std::uint32_t>(digits, hexadecimal ? 16 : 10);
    if (!code || !is_xml_character(*code))
        malformed();
    append_utf8(out, *code);
    return true;
}

/// Appends character data or an attribute's value with references replaced and line ends made one line feed each, or
/// one blank each, as XML has it.
void append_expanded(std::string& out, std::string_view raw, bool attribute) {
    const std::string_view special = attribute ? "&\r\n\t" : "&\r";
    std::size_t at = 0;
    while (at < raw.size()) {
        const std::size_t stop = std::min(raw.find_first_of(special, at), raw.size());
        out.append(raw, at, stop - at);
        at = stop;
        if (at == raw.size())
            return;
        if (raw[at] == '&') {
            const std::size_t length = raw.substr(at, 16).find(';');
            if (length != std::string_view::npos && append_reference(out, raw.substr(at + 1, length - 1))) {
                at += length + 1;
                continue;
            }
            out += '&';
        } else if (!raw.substr(at).starts_with("\r\n")) { // of two, the line feed is taken next
            out += attribute ? ' ' : '\n';
        }
        ++at;
    }
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    XmlElement read() {
        prolog();
        if (!rest().starts_with('<'))
            throw Fault{XmlFault::invalid};
        do
            content();
        while (root_.name.empty() || !open_.empty());
        while (skip_blanks(), at_ < text_.size())
            if (!skip_aside())
                malformed(); // something after the root element
        return std::move(root_);
    }

  private:
    std::string_view rest() const { return text_.substr(at_); }

    bool take(std::string_view token) {
        const bool there = rest().starts_with(token);
        at_ += there ? token.size() : 0;
        return there;
    }

    void skip_blanks() {
        while (at_ < text_.size() && is_blank(text_[at_]))
            ++at_;
    }

    /// The text before `end`, which is taken too.
    std::string_view up_to(std::string_view end) {
        const std::size_t start = at_;
        const std::size_t stop = text_.find(end, start);
        if (stop == std::string_view::npos)
            malformed();
        at_ = stop + end.size();
        return text_.substr(start, stop - start);
    }

    void prolog() {
        take("\xef\xbb\xbf");
        if (rest().starts_with("<?xml") && text_.size() > at_ + 5 && is_blank(text_[at_ + 5]))
            check_encoding(up_to("?>"));
        skip_blanks();
        while (at_ < text_.size() && skip_aside())
            skip_blanks();
    }

    static void check_encoding(std::string_view declaration) {
        const std::size_t at = declaration.find("encoding");
        if (at == std::string_view::npos)
            return;
        const std::size_t quote = declaration.find_first_of("\"'", at);
        if (quote == std::string_view::npos)
            malformed();
        const std::string_view name = declaration.substr(quote + 1);
        if (!same_name(name.substr(0, name.find(declaration[quote])), "utf-8"))
            throw Fault{XmlFault::invalid};
    }

    /// A comment or a processing instruction, if there is one here.
    bool skip_aside() {
        if (take("<!--")) {
            if (up_to("--"); !take(">"))
                malformed();
            return true;
        }
        if (!take("<?"))
            return false;
        if (same_name(up_to("?>").substr(0, 3), "xml"))
            malformed();
        return true;
    }

    void content() {
        if (at_ == text_.size())
            malformed();
        if (text_[at_] != '<')
            character_data();
        else if (take("</"))
            end_tag();
        else if (open_.empty() || !rest().starts_with("<![CDATA["))
            aside_or_start_tag();
        else
            cdata();
    }

    void character_data() {
        const std::size_t start = at_;
        at_ = std::min(text_.find('<', start), text_.size());
        append_expanded(open_.back()->text, text_.substr(start, at_ - start), false);
    }

    void cdata() {
        take("<![CDATA[");
        std::string_view raw = up_to("]]>");
        while (!raw.empty()) { // line ends, but no references
            const std::size_t length = std::min(raw.find('&'), raw.size());
            append_expanded(open_.back()->text, raw.substr(0, length), false);
            raw.remove_prefix(length);
            if (!raw.empty()) {
                open_.back()->text += '&';
                raw.remove_prefix(1);
            }
        }
    }

    void aside_or_start_tag() {
        if (skip_aside())
            return;
        if (rest().starts_with("<!"))
            throw Fault{XmlFault::invalid}; // a document type, or a part of one
        take("<");
        start_tag();
    }

    std::string_view name() {
        const std::size_t start = at_;
        while (at_ < text_.size() && is_name_character(text_[at_]))
            ++at_;
        const std::string_view name = text_.substr(start, at_ - start);
        if (name.empty() || name.front() == '-' || name.front() == '.' || is_digit(name.front()))
            malformed();
        return name;
    }

    static bool is_name_character(char c) { return is_name_part(c) || c == '-' || c == '.' || c == ':'; }

    /// Pointers to open elements stay valid: their parents take no further child meanwhile.
    void start_tag() {
        XmlElement& element = open_.empty() ? root_ : open_.back()->children.emplace_back();
        element.name = name();
        if (++elements_ > max_xml_elements || open_.size() >= max_xml_depth)
            throw Fault{XmlFault::invalid};
        while (attribute(element)) {
        }
        if (take("/>"))
            return;
        if (!take(">"))
            malformed();
        open_.push_back(&element);
    }

    bool attribute(XmlElement& element) {
        const std::size_t before = at_;
        skip_blanks();
        if (at_ == text_.size())
            malformed();
        if (text_[at_] == '>' || text_[at_] == '/')
            return false;
        const std::string_view attribute_name = name();
        if (at_ - attribute_name.size() == before || element.attribute(attribute_name) != nullptr)
            malformed();
        if (element.attributes.size() == max_xml_attributes)
            throw Fault{XmlFault::invalid};
        element.attributes.push_back({std::string(attribute_name), attribute_value()});
        return true;
    }

    std::string attribute_value() {
        skip_blanks();
        if (!take("="))
            malformed();
        skip_blanks();
        const bool single = take("'");
        if (!single && !take("\""))
            malformed();
        const std::string_view raw = up_to(single ? "'" : "\"");
        if (raw.find('<') != std::string_view::npos)
            malformed();
        std::string value;
        append_expanded(value, raw, true);
        return value;
    }

    void end_tag() {
        const std::string_view ended = name();
        skip_blanks();
        if (!take(">") || open_.empty() || open_.back()->name != ended)
            malformed();
        open_.pop_back();
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t elements_ = 0;
    XmlElement root_;
    std::vector<XmlElement*> open_;
};

} // namespace

const std::string* XmlElement::attribute(std::string_view attribute_name) const {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const XmlAttribute& attribute) { return attribute.name == attribute_name; });
    return found == attributes.end() ? nullptr : &found->value;
}

std::variant<XmlElement, XmlFault> read_xml(std::string_view bytes) {
    try {
        check_characters(bytes);
        return Reader(bytes).read();
    } catch (const Fault& fault) {
        return fault.what;
    }
}

} // namespace cmpihost::cimxml
