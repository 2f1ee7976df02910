// Requests as a CIM server makes them: through the management interfaces that the factories gave.
#pragma once

#include "tests/support/provider_test.h"

#include <optional>

extern "C" CMPIInstanceMI* FCIPProvider_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* context);
extern "C" CMPIAssociationMI* FCIPProvider_Create_AssociationMI(const CMPIBroker* broker, const CMPIContext* context);

namespace test {

using Operation = cmpihost::Request::Operation;

/// A path in root/cimv2 whose keys are strings.
cmpihost::Object path_of(const std::string& class_name,
                         const std::vector<std::pair<std::string, std::string>>& keys = {});

/// Of each object of an answer: its path as text, for answers that are paths.
std::vector<std::string> paths(const cmpihost::Answer& answer);

/// Of each instance of an answer: the value of one property, "(none)" where it has none.
std::vector<std::string> values(const cmpihost::Answer& answer, const std::string& property);

class RequestTest : public ProviderTest {
  protected:
    void SetUp() override;

    /// Runs a request through the MI tables and keeps what was printed in `trace`. The answer is held against the
    /// schema.
    cmpihost::Answer ask(const cmpihost::Request& request);

    void hold_against_schema(const cmpihost::Answer& answer, const cmpihost::Request& request);

    cmpihost::Answer enumerate_instances(const std::string& class_name,
                                         std::optional<std::vector<std::string>> properties = std::nullopt);
    cmpihost::Answer enumerate_names(const std::string& class_name);
    cmpihost::Answer get(const cmpihost::Object& path,
                         std::optional<std::vector<std::string>> properties = std::nullopt);

    /// An association operation from a source object, with the association class as filter (for references: the
    /// result class).
    cmpihost::Answer walk(Operation operation, const cmpihost::Object& source,
                          std::optional<std::string> association_class);

    cmpihost::Provider provider;
};

} // namespace test
