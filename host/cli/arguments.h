// The words of a command line by their options, and the help about them.
#pragma once

#include "host/cli/parse_end.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace cmpihost {

struct Verb;

/// As texts, before they are looked at.
struct Arguments {
    std::string provider;
    std::optional<std::string> name;
    std::string scenario;
    std::string trace;
    std::string name_space = "root/cimv2";
    std::optional<std::string> format;
    std::vector<std::string> schema;
    std::string deviations;
    bool check = false;
    bool count = false;
    std::optional<double> repeat;
    std::string colour = "auto";
    bool no_fork = false;
    std::optional<double> timeout;
    std::optional<double> max_objects;
    bool tree = false;
    std::optional<std::string> graph_format;
    std::optional<double> limit;
    std::optional<std::string> ac, arc, ar, arr;
    std::string verb;
    std::string object;
    std::vector<std::string> properties;
};

constexpr std::size_t default_limit = 10000;
constexpr std::size_t default_max_objects = 1'000'000;

/// Sorts the words. Where help or the version was asked for, or an option is wrong, what to end with instead.
std::optional<ParseEnd> read_arguments(const std::vector<std::string>& words, Arguments& arguments);

/// How one verb is used: its arguments, and the options that go with it.
std::string verb_help(const Verb& verb);

} // namespace cmpihost
