// A broker in front of the real one, for what the real one does not do: objects without handle, calls that report an
// error, and a list of every property as the provider set it, repeats and raw bytes included.
#pragma once

#include "tests/support/provider_test.h"

#include <map>

namespace test {

class FrontBroker {
  public:
    enum class makes { real_objects, objects_that_report_errors, paths_without_handle, instances_without_handle };

    /// Stands in front of the real broker until the end of its scope.
    explicit FrontBroker(makes what = makes::real_objects);
    ~FrontBroker();
    FrontBroker(const FrontBroker&) = delete;
    FrontBroker& operator=(const FrontBroker&) = delete;

    /// Every property that was set on an instance, in order.
    static const Rows& set();

    /// The raw bytes of the booleans among them, by name.
    static const std::map<std::string, CMPIBoolean>& flags();

    /// How many properties and keys were set or added, as asked, with an error in answer.
    static unsigned errors_reported();

    /// Of every property filter that was set: the number of keys in its null-terminated list; -1 = no list.
    static const std::vector<int>& filter_keys();

    /// The objects that makes::..._without_handle hands out.
    static CMPIObjectPath* path_without_handle();
    static CMPIInstance* instance_without_handle();
};

} // namespace test
