#include "host/cimxml/structure.h"

#include "host/cimxml/characters.h"

#include <algorithm>
#include <array>

namespace cmpihost::cimxml {

namespace {

/// Children in order, separated by blanks: `A|B` one of these, with ? at most one, * any number, + at least one. A
/// slash separates whole alternatives. "#" is text.
struct ElementRow {
    std::string_view name;
    std::string_view content;
    std::string_view required = ""; ///< attributes that must be there
    std::string_view names = "";    ///< attributes that must be there and hold a CIM name
};

constexpr std::array elements{
    ElementRow{"CIM", "MESSAGE", "CIMVERSION DTDVERSION"},
    ElementRow{"MESSAGE", "SIMPLEREQ", "ID PROTOCOLVERSION"},
    ElementRow{"SIMPLEREQ", "IMETHODCALL|METHODCALL"},
    ElementRow{"IMETHODCALL", "LOCALNAMESPACEPATH IPARAMVALUE*", "", "NAME"},
    ElementRow{"METHODCALL", "LOCALINSTANCEPATH|LOCALCLASSPATH PARAMVALUE*", "", "NAME"},
    ElementRow{"IPARAMVALUE",
               "VALUE|VALUE.ARRAY|VALUE.REFERENCE|INSTANCENAME|CLASSNAME|QUALIFIER.DECLARATION|CLASS|INSTANCE|"
               "VALUE.NAMEDINSTANCE?",
               "", "NAME"},
    ElementRow{"PARAMVALUE", "VALUE|VALUE.ARRAY|VALUE.REFERENCE|VALUE.REFARRAY?", "", "NAME"},
    ElementRow{"LOCALNAMESPACEPATH", "NAMESPACE+"},
    ElementRow{"NAMESPACEPATH", "HOST LOCALNAMESPACEPATH"},
    ElementRow{"NAMESPACE", "", "NAME"},
    ElementRow{"HOST", "#"},
    ElementRow{"CLASSNAME", "", "", "NAME"},
    ElementRow{"INSTANCENAME", "KEYBINDING*/KEYVALUE|VALUE.REFERENCE", "", "CLASSNAME"},
    ElementRow{"KEYBINDING", "KEYVALUE|VALUE.REFERENCE", "", "NAME"},
    ElementRow{"KEYVALUE", "#"},
    ElementRow{"INSTANCEPATH", "NAMESPACEPATH INSTANCENAME"},
    ElementRow{"LOCALINSTANCEPATH", "LOCALNAMESPACEPATH INSTANCENAME"},
    ElementRow{"CLASSPATH", "NAMESPACEPATH CLASSNAME"},
    ElementRow{"LOCALCLASSPATH", "LOCALNAMESPACEPATH CLASSNAME"},
    ElementRow{"VALUE", "#"},
    ElementRow{"VALUE.NULL", ""},
    ElementRow{"VALUE.REFERENCE", "CLASSPATH|LOCALCLASSPATH|CLASSNAME|INSTANCEPATH|LOCALINSTANCEPATH|INSTANCENAME"},
    ElementRow{"VALUE.ARRAY", "VALUE|VALUE.NULL*"},
    ElementRow{"VALUE.REFARRAY", "VALUE.REFERENCE|VALUE.NULL*"},
    ElementRow{"VALUE.NAMEDINSTANCE", "INSTANCENAME INSTANCE"},
    ElementRow{"INSTANCE", "QUALIFIER* PROPERTY|PROPERTY.ARRAY|PROPERTY.REFERENCE*", "", "CLASSNAME"},
    ElementRow{"CLASS", "QUALIFIER* PROPERTY|PROPERTY.ARRAY|PROPERTY.REFERENCE* METHOD*", "", "NAME"},
    ElementRow{"PROPERTY", "QUALIFIER* VALUE?", "TYPE", "NAME"},
    ElementRow{"PROPERTY.ARRAY", "QUALIFIER* VALUE.ARRAY?", "TYPE", "NAME"},
    ElementRow{"PROPERTY.REFERENCE", "QUALIFIER* VALUE.REFERENCE?", "", "NAME"},
    ElementRow{"QUALIFIER", "VALUE|VALUE.ARRAY?", "TYPE", "NAME"},
    ElementRow{"METHOD", "QUALIFIER* PARAMETER|PARAMETER.REFERENCE|PARAMETER.ARRAY|PARAMETER.REFARRAY*", "", "NAME"},
    ElementRow{"PARAMETER", "QUALIFIER*", "TYPE", "NAME"},
    ElementRow{"PARAMETER.REFERENCE", "QUALIFIER*", "", "NAME"},
    ElementRow{"PARAMETER.ARRAY", "QUALIFIER*", "TYPE", "NAME"},
    ElementRow{"PARAMETER.REFARRAY", "QUALIFIER*", "", "NAME"},
    ElementRow{"QUALIFIER.DECLARATION", "SCOPE? VALUE|VALUE.ARRAY?", "TYPE", "NAME"},
    ElementRow{"SCOPE", ""},
};

/// Cuts off what stands before a separator, or all.
std::string_view next_part(std::string_view& list, char separator) {
    const std::size_t end = std::min(list.find(separator), list.size());
    const std::string_view part = list.substr(0, end);
    list.remove_prefix(std::min(end + 1, list.size()));
    return part;
}

bool contains(std::string_view list, char separator, std::string_view name) {
    while (!list.empty())
        if (next_part(list, separator) == name)
            return true;
    return false;
}

bool matches(std::string_view content, const std::vector<XmlElement>& children) {
    auto child = children.begin();
    while (!content.empty()) {
        std::string_view names = next_part(content, ' ');
        const char last = names.back();
        const bool counted = last == '?' || last == '*' || last == '+';
        names.remove_suffix(counted ? 1 : 0);
        const bool many = last == '*' || last == '+';
        bool seen = false;
        while (child != children.end() && (many || !seen) && contains(names, '|', child->name)) {
            seen = true;
            ++child;
        }
        if (!seen && last != '?' && last != '*')
            return false;
    }
    return child == children.end();
}

bool has_content(const XmlElement& element, std::string_view content) {
    if (content == "#")
        return element.children.empty();
    if (!trimmed(element.text).empty())
        return false;
    do
        if (matches(next_part(content, '/'), element.children))
            return true;
    while (!content.empty());
    return false;
}

bool has_attributes(const XmlElement& element, const ElementRow& row) {
    for (std::string_view list = row.required; !list.empty();)
        if (element.attribute(next_part(list, ' ')) == nullptr)
            return false;
    for (std::string_view list = row.names; !list.empty();) {
        const std::string* name = element.attribute(next_part(list, ' '));
        if (name == nullptr || !is_cim_name(*name))
            return false;
    }
    return true;
}

} // namespace

bool is_valid_structure(const XmlElement& element) {
    const auto* row =
        std::find_if(elements.begin(), elements.end(), [&](const ElementRow& each) { return element.is(each.name); });
    return row != elements.end() && has_attributes(element, *row) && has_content(element, row->content) &&
           std::all_of(element.children.begin(), element.children.end(), is_valid_structure);
}

} // namespace cmpihost::cimxml
