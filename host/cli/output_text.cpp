#include "host/cli/output.h"

#include "host/cim/names.h"
#include "host/cim/path_text.h"
#include "host/cli/path_table.h"
#include "host/cli/table.h"
#include "host/mof/value_texts.h"

#include <algorithm>

namespace cmpihost {

namespace {

std::string counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " object\n" : " objects\n");
}

std::string lines_of(const std::vector<Row>& rows) {
    std::string text;
    for (const std::string& line : aligned(rows))
        text += line + "\n";
    return text;
}

// ------------------------------------------------------------------------------------------------------- objects

class TextAnswer : public AnswerText {
  public:
    std::string object(const Object& object) override {
        ++count_;
        return text_of(object);
    }

    std::string end(const Answer& answer, const std::string& failure) override {
        const bool failed = answer.rc != CMPI_RC_OK || !failure.empty();
        return failed && count_ == 0 ? std::string() : last() + counted(count_);
    }

  private:
    virtual std::string text_of(const Object& object) = 0;
    virtual std::string last() { return {}; } ///< in front of the count

    std::size_t count_ = 0;
};

class TextOfPaths : public TextAnswer {
  public:
    TextOfPaths(const std::string& requested_class, bool colour) : table_(requested_class, colour) {}

  private:
    std::string text_of(const Object& object) override {
        any_ = true;
        return table_.add(object);
    }
    std::string last() override { return any_ ? table_.rest() + "\n" : std::string(); }

    PathTable table_;
    bool any_ = false;
};

class TextOfInstances : public TextAnswer {
  public:
    TextOfInstances(bool colour, const mof::Schema* schema) : colour_(colour), schema_(schema) {}

  private:
    std::string text_of(const Object& object) override {
        const mof::ClassDeclaration* declaration = schema_ ? schema_->find(object.class_name) : nullptr;
        std::vector<Row> rows;
        for (const Property& property : object.properties)
            rows.push_back({"  " + property.name, property.type, text_value(property) + mapped(declaration, property)});
        return styled(printable(path_text(object)), cyan, colour_) + "\n" + lines_of(rows) + "\n";
    }

    static std::string mapped(const mof::ClassDeclaration* declaration, const Property& property) {
        const mof::PropertyDeclaration* declared = declaration ? declaration->property(property.name) : nullptr;
        const std::string text = declared ? mapped_text(*declared, property.value) : std::string();
        return text.empty() ? text : " (" + printable(text) + ")";
    }

    bool colour_;
    const mof::Schema* schema_;
};

// -------------------------------------------------------------------------------------------------- other answers

class TextOfMethod : public AnswerText {
  public:
    std::string object(const Object& /*object*/) override { return {}; }

    std::string end(const Answer& answer, const std::string& failure) override {
        if (answer.rc != CMPI_RC_OK || !failure.empty())
            return {};
        std::vector<Row> rows;
        if (answer.returned)
            rows.push_back({"ReturnValue", answer.returned->type, text_value(*answer.returned)});
        for (const Property& argument : answer.arguments)
            rows.push_back({argument.name, argument.type, text_value(argument)});
        return lines_of(rows);
    }
};

class PathLines : public AnswerText {
  public:
    std::string object(const Object& object) override {
        std::string line = "'";
        for (const char c : path_text(object))
            line += c == '\'' ? "'\\''" : std::string(1, c);
        return line + "'\n";
    }
    std::string end(const Answer& /*answer*/, const std::string& /*failure*/) override { return {}; }
};

class ObjectCount : public AnswerText {
  public:
    std::string object(const Object& /*object*/) override {
        ++count_;
        return {};
    }
    std::string end(const Answer& answer, const std::string& failure) override {
        const bool failed = answer.rc != CMPI_RC_OK || !failure.empty();
        return failed && count_ == 0 ? std::string() : std::to_string(count_) + "\n";
    }

  private:
    std::size_t count_ = 0;
};

} // namespace

std::unique_ptr<AnswerText> text_answer(const Request& request, bool colour, const mof::Schema* schema) {
    if (gives_value(request.operation))
        return std::make_unique<TextOfMethod>();
    if (gives_paths(request.operation))
        return std::make_unique<TextOfPaths>(request.path.class_name, colour);
    return std::make_unique<TextOfInstances>(colour, schema);
}

std::unique_ptr<AnswerText> path_lines() {
    return std::make_unique<PathLines>();
}

std::unique_ptr<AnswerText> object_count() {
    return std::make_unique<ObjectCount>();
}

} // namespace cmpihost
