#include "host/cimxml/operations.h"

#include "host/cim/names.h"

#include <algorithm>
#include <array>

namespace cmpihost::cimxml {

namespace {

constexpr std::array parameters{
    ParameterRow{"AssocClass", ParameterKind::class_name},
    ParameterRow{"ClassName", ParameterKind::class_name},
    ParameterRow{"ContinueOnError", ParameterKind::boolean},
    ParameterRow{"DeepInheritance", ParameterKind::boolean},
    ParameterRow{"EnumerationContext", ParameterKind::text},
    ParameterRow{"FilterQuery", ParameterKind::text},
    ParameterRow{"FilterQueryLanguage", ParameterKind::text},
    ParameterRow{"IncludeClassOrigin", ParameterKind::boolean},
    ParameterRow{"IncludeQualifiers", ParameterKind::boolean},
    ParameterRow{"InstanceName", ParameterKind::instance_name},
    ParameterRow{"LocalOnly", ParameterKind::boolean},
    ParameterRow{"MaxObjectCount", ParameterKind::number},
    ParameterRow{"ModifiedClass", ParameterKind::declaration},
    ParameterRow{"ModifiedInstance", ParameterKind::named_instance},
    ParameterRow{"NewClass", ParameterKind::declaration},
    ParameterRow{"NewInstance", ParameterKind::instance},
    ParameterRow{"NewValue", ParameterKind::value},
    ParameterRow{"ObjectName", ParameterKind::object_name},
    ParameterRow{"OperationTimeout", ParameterKind::number},
    ParameterRow{"PropertyList", ParameterKind::property_list},
    ParameterRow{"PropertyName", ParameterKind::text},
    ParameterRow{"QualifierDeclaration", ParameterKind::declaration},
    ParameterRow{"QualifierName", ParameterKind::text},
    ParameterRow{"Query", ParameterKind::text},
    ParameterRow{"QueryLanguage", ParameterKind::text},
    ParameterRow{"ResultClass", ParameterKind::class_name},
    ParameterRow{"ResultRole", ParameterKind::text},
    ParameterRow{"ReturnQueryResultClass", ParameterKind::boolean},
    ParameterRow{"Role", ParameterKind::text},
};

constexpr std::array operations{
    OperationRow{"AssociatorNames", "ObjectName", "AssocClass ResultClass Role ResultRole"},
    OperationRow{"Associators", "ObjectName",
                 "AssocClass ResultClass Role ResultRole IncludeQualifiers IncludeClassOrigin PropertyList"},
    OperationRow{"CloseEnumeration", "EnumerationContext", ""},
    OperationRow{"CreateClass", "NewClass", ""},
    OperationRow{"CreateInstance", "NewInstance", ""},
    OperationRow{"DeleteClass", "ClassName", ""},
    OperationRow{"DeleteInstance", "InstanceName", ""},
    OperationRow{"DeleteQualifier", "QualifierName", ""},
    OperationRow{"EnumerateClassNames", "", "ClassName DeepInheritance"},
    OperationRow{"EnumerateClasses", "", "ClassName DeepInheritance LocalOnly IncludeQualifiers IncludeClassOrigin"},
    OperationRow{"EnumerateInstanceNames", "ClassName", ""},
    OperationRow{"EnumerateInstances", "ClassName",
                 "LocalOnly DeepInheritance IncludeQualifiers IncludeClassOrigin PropertyList"},
    OperationRow{"EnumerateQualifiers", "", ""},
    OperationRow{"EnumerationCount", "EnumerationContext", ""},
    OperationRow{"ExecQuery", "QueryLanguage Query", ""},
    OperationRow{"GetClass", "ClassName", "LocalOnly IncludeQualifiers IncludeClassOrigin PropertyList"},
    OperationRow{"GetInstance", "InstanceName", "LocalOnly IncludeQualifiers IncludeClassOrigin PropertyList"},
    OperationRow{"GetProperty", "InstanceName PropertyName", ""},
    OperationRow{"GetQualifier", "QualifierName", ""},
    OperationRow{"ModifyClass", "ModifiedClass", ""},
    OperationRow{"ModifyInstance", "ModifiedInstance", "IncludeQualifiers PropertyList"},
    OperationRow{"OpenAssociatorInstancePaths", "InstanceName",
                 "AssocClass ResultClass Role ResultRole FilterQueryLanguage FilterQuery OperationTimeout "
                 "ContinueOnError MaxObjectCount"},
    OperationRow{"OpenAssociatorInstances", "InstanceName",
                 "AssocClass ResultClass Role ResultRole IncludeQualifiers IncludeClassOrigin PropertyList "
                 "FilterQueryLanguage FilterQuery OperationTimeout ContinueOnError MaxObjectCount"},
    OperationRow{"OpenEnumerateInstancePaths", "ClassName",
                 "FilterQueryLanguage FilterQuery OperationTimeout ContinueOnError MaxObjectCount"},
    OperationRow{"OpenEnumerateInstances", "ClassName",
                 "LocalOnly DeepInheritance IncludeQualifiers IncludeClassOrigin PropertyList FilterQueryLanguage "
                 "FilterQuery OperationTimeout ContinueOnError MaxObjectCount"},
    OperationRow{"OpenQueryInstances", "FilterQuery FilterQueryLanguage",
                 "ReturnQueryResultClass OperationTimeout ContinueOnError MaxObjectCount"},
    OperationRow{"OpenReferenceInstancePaths", "InstanceName",
                 "ResultClass Role FilterQueryLanguage FilterQuery OperationTimeout ContinueOnError MaxObjectCount"},
    OperationRow{"OpenReferenceInstances", "InstanceName",
                 "ResultClass Role IncludeQualifiers IncludeClassOrigin PropertyList FilterQueryLanguage FilterQuery "
                 "OperationTimeout ContinueOnError MaxObjectCount"},
    OperationRow{"PullInstancePaths", "EnumerationContext MaxObjectCount", ""},
    OperationRow{"PullInstances", "EnumerationContext MaxObjectCount", ""},
    OperationRow{"PullInstancesWithPath", "EnumerationContext MaxObjectCount", ""},
    OperationRow{"ReferenceNames", "ObjectName", "ResultClass Role"},
    OperationRow{"References", "ObjectName", "ResultClass Role IncludeQualifiers IncludeClassOrigin PropertyList"},
    OperationRow{"SetProperty", "InstanceName PropertyName", "NewValue"},
    OperationRow{"SetQualifier", "QualifierDeclaration", ""},
};

bool lists(std::string_view names, std::string_view wanted) {
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find(' '));
        if (same_name(name, wanted))
            return true;
        names.remove_prefix(std::min(name.size() + 1, names.size()));
    }
    return false;
}

} // namespace

const OperationRow* find_operation(std::string_view name) {
    const auto* found = std::find_if(operations.begin(), operations.end(),
                                     [name](const OperationRow& each) { return same_name(each.name, name); });
    return found == operations.end() ? nullptr : found;
}

const ParameterRow* find_parameter(const OperationRow& operation, std::string_view name) {
    if (!lists(operation.required, name) && !lists(operation.optional, name))
        return nullptr;
    const auto* found = std::find_if(parameters.begin(), parameters.end(),
                                     [name](const ParameterRow& each) { return same_name(each.name, name); });
    return found == parameters.end() ? nullptr : found;
}

} // namespace cmpihost::cimxml
