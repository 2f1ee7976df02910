#include "host/server/interop_instances.h"

#include "host/mof/typed_value.h"

#include <algorithm>
#include <stdexcept>

namespace cmpihost::server {

namespace {

[[noreturn]] void refuse(const mof::Place& place, const std::string& what) {
    throw std::runtime_error(mof::Error{place, what}.text());
}

Value::Reference path_of(const Object& instance) {
    Object path = instance;
    path.properties.clear();
    return std::make_shared<const Object>(std::move(path));
}

/// Makes objects of declared instances.
class Maker {
  public:
    Maker(const mof::Schema& schema, const std::string& system_name) : schema_(schema), system_name_(system_name) {}

    void add(const mof::InstanceDeclaration& declared);
    void add_namespaces(const std::vector<std::string>& namespaces);

    std::vector<Object> take() { return std::move(instances_); }

  private:
    const mof::ClassDeclaration& class_of(const mof::InstanceDeclaration& declared) const;
    Value value_of(const mof::InstanceDeclaration& declared, const mof::PropertyDeclaration& property) const;
    Value reference(const mof::InstanceDeclaration& declared, const mof::PropertyDeclaration& property,
                    const Value& given) const;
    const Object& manager() const;

    const mof::Schema& schema_;
    const std::string& system_name_;
    std::vector<Object> instances_{};
    NameMap<Value::Reference> aliases_{};
};

const mof::ClassDeclaration& Maker::class_of(const mof::InstanceDeclaration& declared) const {
    const mof::ClassDeclaration* declaration = schema_.find(declared.class_name);
    if (declaration == nullptr || declaration->abstract)
        refuse(declared.place, "instance of " + declared.class_name +
                                   ", expected a class that is declared and not "
                                   "abstract");
    for (const mof::NamedValue& value : declared.properties)
        if (declaration->property(value.name) == nullptr)
            refuse(declared.place, declared.class_name + " has no property " + value.name);
    return *declaration;
}

/// What an alias stands for.
Value Maker::reference(const mof::InstanceDeclaration& declared, const mof::PropertyDeclaration& property,
                       const Value& given) const {
    const auto* alias = std::get_if<std::string>(&given.data);
    const auto known = alias == nullptr ? aliases_.end() : aliases_.find(*alias);
    if (known == aliases_.end())
        refuse(declared.place, "reference " + property.name + " of " + declared.class_name +
                                   ", expected the alias of an instance before");
    return {known->second};
}

Value Maker::value_of(const mof::InstanceDeclaration& declared, const mof::PropertyDeclaration& property) const {
    const Value* given = declared.value(property.name);
    if (given == nullptr && same_name(property.name, "SystemName"))
        return {system_name_};
    if (given == nullptr)
        return property.default_value;
    if (property.type == "reference")
        return reference(declared, property, *given);
    auto typed = mof::typed_value(property.type, *given);
    if (!typed)
        refuse(declared.place, "property " + property.name + " of " + declared.class_name +
                                   ", expected a value of type " + property.type);
    return std::move(*typed);
}

void Maker::add(const mof::InstanceDeclaration& declared) {
    const mof::ClassDeclaration& declaration = class_of(declared);
    Object object{declaration.name, {}, std::nullopt, {}, {}};
    for (const mof::PropertyDeclaration& property : declaration.properties) {
        Value value = value_of(declared, property);
        if (std::holds_alternative<std::monostate>(value.data)) {
            if (property.key)
                refuse(declared.place, "key " + property.name + " of " + declared.class_name + " has no value");
            continue;
        }
        object.properties.push_back({property.name, property.type, std::move(value)});
        if (property.key)
            object.keys.push_back(object.properties.back());
    }
    if (!declared.alias.empty() && !aliases_.emplace(declared.alias, path_of(object)).second)
        refuse(declared.place, "alias " + declared.alias + " is there twice");
    instances_.push_back(std::move(object));
}

const Object& Maker::manager() const {
    const auto is_manager = [this](const Object& each) { return schema_.is_a(each.class_name, "CIM_ObjectManager"); };
    const auto found = std::find_if(instances_.begin(), instances_.end(), is_manager);
    if (found == instances_.end() || std::any_of(found + 1, instances_.end(), is_manager))
        throw std::runtime_error("the interop schema has no instance of CIM_ObjectManager or several, expected one");
    return *found;
}

/// What is declared of a namespace, had MOF declared it.
mof::InstanceDeclaration declared_namespace(const Object& manager, const std::string& name) {
    const auto of_manager = [&](const char* key) {
        const Property* property = manager.key(key);
        return property == nullptr ? Value{} : property->value;
    };
    return {"CIM_Namespace",
            "$namespace " + name,
            {{"SystemCreationClassName", of_manager("SystemCreationClassName")},
             {"SystemName", of_manager("SystemName")},
             {"ObjectManagerCreationClassName", of_manager("CreationClassName")},
             {"ObjectManagerName", of_manager("Name")},
             {"CreationClassName", {std::string("CIM_Namespace")}},
             {"Name", {name}},
             {"ElementName", {name}},
             {"ClassInfo", {std::uint64_t{0}}}}, // unknown
            {}};
}

void Maker::add_namespaces(const std::vector<std::string>& namespaces) {
    const Object manager = this->manager();
    aliases_["$manager of namespaces"] = path_of(manager); // blanks: no alias of MOF
    for (const std::string& name : namespaces) {
        const mof::InstanceDeclaration declared = declared_namespace(manager, name);
        if (aliases_.contains(declared.alias))
            continue;
        add(declared);
        add({"CIM_NamespaceInManager",
             {},
             {{"Antecedent", {std::string("$manager of namespaces")}}, {"Dependent", {declared.alias}}},
             {}});
    }
}

} // namespace

std::vector<Object> interop_instances(const mof::Schema& schema, const std::vector<std::string>& namespaces,
                                      const std::string& system_name) {
    Maker maker(schema, system_name);
    for (const mof::InstanceDeclaration& declared : schema.instances())
        maker.add(declared);
    maker.add_namespaces(namespaces);
    return maker.take();
}

} // namespace cmpihost::server
