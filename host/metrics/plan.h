// What of a class is measured, and under which names.
#pragma once

#include "host/metrics/units.h"
#include "host/server/catalogue.h"
#include "host/views/views.h"

namespace cmpihost::metrics {

/// A property that is a counter, a gauge, or one of some states.
struct Metric {
    std::string property;
    std::string name;
    std::string help; ///< ends with Class.Property
    bool counter = false;
    Unit unit{};
    std::vector<std::pair<std::string, std::string>> states{}; ///< value and name of each; empty: it is a number
    std::string state_label{};
    std::string head{}; ///< the lines before its samples
};

/// A key, or the element's name, that tells instances apart.
struct Label {
    std::string property;
    std::string name;
};

/// Whom to ask for a class's objects, and in which namespace.
struct Source {
    const server::Ask* ask;
    const server::Namespace* space;
};

struct ClassPlan {
    const mof::ClassDeclaration* declaration;
    std::vector<Source> sources; ///< each provider once
    std::vector<Metric> metrics;
    std::vector<Label> labels;
    std::string class_label; ///< between a name and a number of what tells how the class was asked
};

/// What of one class is measured, as this provider serves it; no metrics if nothing of it is marked.
ClassPlan make_plan(const server::ServedClass& served, const server::Namespace& space, const views::Views& views);

/// @throws std::runtime_error one line: two properties get the same name as metrics, or two labels of a class do
void check_names(const std::vector<ClassPlan>& plans);

/// The classes to measure, in the order in which they were named, each with its served subclasses. Classes without a
/// counter, a gauge or states give none.
/// @param classes names; empty: those that the views name and somebody serves
/// @throws std::runtime_error one line: nobody serves a class that was named, nothing of it is marked to be measured,
/// or two properties or labels get the same name
std::vector<ClassPlan> make_plans(const server::Catalogue& catalogue, const views::Views& views,
                                  const std::vector<std::string>& classes);

} // namespace cmpihost::metrics
