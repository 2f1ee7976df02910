#include "host/cli/output.h"

#include "host/cim/path_text.h"

namespace cmpihost {

namespace {

std::string mof_of_instance(const Object& object) {
    std::string mof = "instance of " + object.class_name + " {\n";
    for (const Property& property : object.properties)
        mof += "    " + property.name + " = " + mof_value(property) + ";\n";
    return mof + "};\n";
}

class MofAnswer : public AnswerText {
  public:
    explicit MofAnswer(bool paths) : paths_(paths) {}

    std::string object(const Object& object) override {
        std::string mof = paths_ || first_ ? "" : "\n";
        first_ = false;
        mof += "// " + printable(path_text(object)) + "\n";
        return paths_ ? mof : mof + mof_of_instance(object);
    }

    std::string end(const Answer& /*answer*/, const std::string& /*failure*/) override { return {}; }

  private:
    bool paths_;
    bool first_ = true;
};

} // namespace

std::unique_ptr<AnswerText> mof_answer(bool paths) {
    return std::make_unique<MofAnswer>(paths);
}

} // namespace cmpihost
