#include "host/cli/verbs.h"

#include "host/cli/answer.h"
#include "host/cli/classes.h"
#include "host/cli/count_verb.h"
#include "host/cli/graph_verb.h"

#include <algorithm>
#include <array>

namespace cmpihost {

namespace {

using enum Request::Operation;

constexpr std::array verbs{
    Verb{"ei", "OBJECT [PROPERTY...]", "enumerate instances", Shape::request, Filters::none, enumerate_instances,
         answer_request},
    Verb{"ein", "OBJECT", "enumerate instance names", Shape::request, Filters::none, enumerate_instance_names,
         answer_request},
    Verb{"gi", "OBJECT [PROPERTY...]", "get instance", Shape::request, Filters::none, get_instance, answer_request},
    Verb{"ai", "OBJECT [PROPERTY...]", "associators", Shape::request, Filters::associators, associators,
         answer_request},
    Verb{"ain", "OBJECT", "associator names", Shape::request, Filters::associators, associator_names, answer_request},
    Verb{"ri", "OBJECT [PROPERTY...]", "references", Shape::request, Filters::references, references, answer_request},
    Verb{"rin", "OBJECT", "reference names", Shape::request, Filters::references, reference_names, answer_request},
    Verb{"ci", "OBJECT [NAME=VALUE...]", "create instance with the properties NAME=VALUE", Shape::request,
         Filters::none, create_instance, answer_request},
    Verb{"mi", "OBJECT [NAME=VALUE...]", "modify the properties NAME=VALUE of an instance", Shape::request,
         Filters::none, modify_instance, answer_request},
    Verb{"di", "OBJECT", "delete instance", Shape::request, Filters::none, delete_instance, answer_request},
    Verb{"count", "[OBJECT]", "count the instances of a class, or without OBJECT of each class of the schema",
         Shape::request, Filters::none, enumerate_instance_names, count_instances},
    Verb{"xq", "QUERY | OBJECT [PROPERTY...]", "execute a whole WQL query, or SELECT PROPERTY... FROM the class",
         Shape::request, Filters::none, exec_query, answer_request},
    Verb{"cm", "OBJECT METHOD [NAME=VALUE...]", "call the METHOD that is named next with the parameters NAME=VALUE",
         Shape::request, Filters::none, invoke_method, answer_request},
    Verb{"gp", "OBJECT PROPERTY", "get one property of an instance, by the provider's own interface for that",
         Shape::request, Filters::none, get_property, answer_request},
    Verb{"sp", "OBJECT NAME=VALUE", "set one property of an instance, by the same", Shape::request, Filters::none,
         set_property, answer_request},
    Verb{"classes", "", "list the classes of the schema with their keys; no provider is loaded", Shape::classes,
         Filters::none, enumerate_instances, list_classes},
    Verb{"graph", "[OBJECT]", "show all objects, or those that can be reached from OBJECT, and what ties them",
         Shape::graph, Filters::none, associator_names, show_graph},
};

} // namespace

std::span<const Verb> all_verbs() {
    return verbs;
}

const Verb* find_verb(std::string_view name) {
    const auto* found =
        std::find_if(verbs.begin(), verbs.end(), [name](const Verb& verb) { return verb.name == name; });
    return found == verbs.end() ? nullptr : found;
}

} // namespace cmpihost
