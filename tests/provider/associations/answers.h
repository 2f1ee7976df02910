// What every source object answers, in one table: each row is what some of the four operations must answer to one
// association class. What no row tells of is answered with nothing.
#pragma once

#include "tests/provider/associations/association_test.h"

namespace test {

/// Builds the instance that Associators must answer, property for property.
using Build = std::function<CMPIInstance*()>;

/// The far end: Associators answer its instance, AssociatorNames its path.
struct Partner {
    Build build;
    const char* identity;           ///< one property of it
    const char* value;              ///< and its value
    std::vector<std::string> names; ///< the paths
};

/// Role pairs, and whether IsDefault and IsCurrent follow.
struct Shape {
    const char* first;
    const char* second;
    bool setting = false;

    std::string text(const std::string& first_end, const std::string& second_end) const; ///< behind the class
};

inline constexpr Shape realize{"Antecedent", "Dependent"};
inline constexpr Shape group_part{"GroupComponent", "PartComponent"};
inline constexpr Shape managed_stats{"ManagedElement", "Stats"};
inline constexpr Shape managed_setting{"ManagedElement", "SettingData", true};

/// The association: References answer it as an instance, ReferenceNames as a path, both with these ends.
struct Tie {
    const char* class_line; ///< what the member prints of the class asked for
    Shape shape;
    const char* answers; ///< the association's class
    std::string first;
    std::string second;

    std::string text() const { return answers + shape.text(first, second); } ///< as text_of_object() has it
};

struct AnswerRow {
    const char* operations; ///< A and N for a partner's instance and name, R and r for a tie's; "direct" below
    const char* member;     ///< without its ending
    int location;
    const char* source;
    const char* asked; ///< in any mix of case
    const char* key;
    std::variant<Partner, Tie> answer;
};

/// Asked for, it stands for every name that no other row of the source answers.
inline constexpr const char* any_name = "*";

/// For rows that no operation of the sources reaches, but a direct call of the member does.
inline constexpr const char* direct = "d";

/// The table.
const std::vector<AnswerRow>& answers();

/// Its rows that answer an operation, by the operation's letter.
std::vector<AnswerRow> answers_of(char operation);

/// The row of a member that answers direct calls only.
const AnswerRow& direct_answer(const std::string& member);

/// How many objects the table gives an operation.
std::size_t expected_answers(char operation, const std::string& source, const std::string& asked);

} // namespace test
