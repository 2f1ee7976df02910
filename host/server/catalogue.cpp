#include "host/server/catalogue.h"

#include "host/broker/held.h"
#include "host/broker/loader.h"
#include "host/mof/provider_classes.h"
#include "host/server/interop.h"
#include "host/server/registration.h"

#include <algorithm>
#include <array>
#include <deque>
#include <filesystem>
#include <mutex>
#include <stdexcept>

#include <unistd.h>

namespace cmpihost::server {

namespace {

namespace fs = std::filesystem;

constexpr std::array interop_names{"interop", "root/interop"};

mof::Schema read_schema(const std::vector<std::string>& files) {
    auto read = mof::Schema::read(files);
    if (const auto* error = std::get_if<mof::Error>(&read))
        throw std::runtime_error(error->text());
    return std::get<mof::Schema>(std::move(read));
}

std::string own_system_name() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "localhost";
}

bool names_type(const RegisteredClass& registered, std::string_view type) {
    return std::any_of(registered.types.begin(), registered.types.end(),
                       [type](const std::string& each) { return same_name(each, type); });
}

/// Hands what the interop namespace answers to a sink.
Answer ask_interop(const Interop& interop, const Request& request, const Sink& sink) {
    constexpr std::array instances{Request::Operation::enumerate_instances, Request::Operation::get_instance,
                                   Request::Operation::associators, Request::Operation::references};
    const bool is_instance = std::find(instances.begin(), instances.end(), request.operation) != instances.end();
    Answer answer = interop.answer(request);
    Store store;
    for (const Object& object : answer.objects)
        sink(hold(store, object), is_instance);
    answer.objects.clear();
    return answer;
}

/// Figures that several threads change. (A lock, since not every machine has atomic numbers of 64 bits.)
class Counter {
  public:
    void add(std::chrono::microseconds took, bool failed) {
        const std::lock_guard lock(mutex_);
        ++figures_.calls;
        figures_.failures += failed ? 1U : 0U;
        figures_.time += took;
    }

    ProviderFigures figures() const {
        const std::lock_guard lock(mutex_);
        return figures_;
    }

  private:
    mutable std::mutex mutex_;
    ProviderFigures figures_;
};

Answer run_counted(const Provider& provider, Counter& counter, const Request& request, const Sink& sink) {
    const auto began = std::chrono::steady_clock::now();
    Answer answer = run(provider, request, sink);
    const auto took = std::chrono::steady_clock::now() - began;
    counter.add(std::chrono::duration_cast<std::chrono::microseconds>(took), answer.rc != 0);
    return answer;
}

/// The last parts of a path; all of it, as it was given, if it has no more.
std::string path_end(const std::string& file, std::size_t parts) {
    const fs::path path = file;
    const auto all = static_cast<std::size_t>(std::distance(path.begin(), path.end()));
    if (parts >= all)
        return file;
    fs::path end;
    for (auto part = std::next(path.begin(), static_cast<std::ptrdiff_t>(all - parts)); part != path.end(); ++part)
        end /= *part;
    return end.string();
}

/// The providers, each loaded once.
class Providers {
  public:
    explicit Providers(const Settings& settings) : scenario_(settings.scenario) {}

    /// The provider whose factories have this prefix.
    const Ask& find_or_load(const std::string& file, const std::string& prefix) {
        const auto found = std::find_if(loaded_.begin(), loaded_.end(),
                                        [&](const Loaded& each) { return each.file == file && each.prefix == prefix; });
        if (found != loaded_.end())
            return found->ask;
        auto library = std::make_unique<Library>(file);
        hand_scenario_to(*library);
        library->create(prefix);
        const Provider& provider = library->provider();
        auto counter = std::make_unique<Counter>();
        Ask ask = [&provider, counting = counter.get()](const Request& request, const Sink& sink) {
            return run_counted(provider, *counting, request, sink);
        };
        Loaded loaded{file, prefix, file, std::move(library), std::move(counter), std::move(ask)};
        return loaded_.emplace_back(std::move(loaded)).ask;
    }

    /// Gives each a name of its own: its file's, after as many folders as it takes to tell it from others, and prefix.
    void set_names() {
        for (Loaded& each : loaded_) {
            std::size_t parts = 1;
            const auto is_alike = [&](const Loaded& other) {
                return other.prefix == each.prefix && other.file != each.file &&
                       path_end(other.file, parts) == path_end(each.file, parts);
            };
            while (std::any_of(loaded_.begin(), loaded_.end(), is_alike))
                ++parts;
            each.name = path_end(each.file, parts) + " " + each.prefix;
        }
    }

    std::vector<ProviderFigures> figures() const {
        std::vector<ProviderFigures> all;
        for (const Loaded& each : loaded_) {
            all.push_back(each.counter->figures());
            all.back().name = each.name;
        }
        return all;
    }

    std::optional<ProviderPlace> place_of(const Ask& ask) const {
        for (const Loaded& each : loaded_)
            if (&each.ask == &ask)
                return ProviderPlace{{each.file, each.prefix}, each.library->platform() != nullptr};
        return std::nullopt;
    }

    /// @throws LoadError there is a scenario, and no library took it
    void check_scenario() {
        if (!scenario_.empty() && !scenario_taken_ && !loaded_.empty())
            loaded_.front().library->load_scenario(scenario_);
    }

  private:
    struct Loaded {
        std::string file;
        std::string prefix;
        std::string name;
        std::unique_ptr<Library> library;
        std::unique_ptr<Counter> counter;
        Ask ask;
    };

    /// Several factories, and several libraries, may share a platform.
    void hand_scenario_to(Library& library) {
        const void* platform = library.platform();
        const bool known = std::any_of(loaded_.begin(), loaded_.end(),
                                       [platform](const Loaded& each) { return each.library->platform() == platform; });
        if (scenario_.empty() || known || platform == nullptr)
            return;
        library.load_scenario(scenario_);
        scenario_taken_ = true;
    }

    std::string scenario_;
    bool scenario_taken_ = false;
    std::deque<Loaded> loaded_; // addresses of elements stay valid
};

/// A class that somebody serves as far as it goes.
ServedClass served_wholly(const mof::Schema& schema, const mof::ClassDeclaration& declaration, const Ask& ask,
                          bool methods) {
    ServedClass served(schema, declaration, ask);
    served.instances = true;
    served.associations = declaration.association;
    served.methods = methods;
    return served;
}

} // namespace

ServedClass::ServedClass(const mof::Schema& schema, const mof::ClassDeclaration& served, const Ask& whom)
    : declaration(&served), ask(&whom) {
    for (const auto* each = schema.find(served.superclass); each != nullptr; each = schema.find(each->superclass))
        ancestors.push_back(each);
}

bool ServedClass::is_a(const mof::ClassDeclaration& ancestor) const {
    return declaration == &ancestor || std::find(ancestors.begin(), ancestors.end(), &ancestor) != ancestors.end();
}

struct Catalogue::Content {
    explicit Content(const Settings& settings) : schema(read_schema(settings.schema)), providers(settings) {}

    void add_registered(const Settings& settings);
    void add_files(const Settings& settings);
    void add_interop(const Settings& settings);
    Namespace& find_or_add(const std::string& name, const mof::Schema& its_schema);

    mof::Schema schema;
    Providers providers;
    NameMap<bool> registered;         ///< classes that a registration names
    std::deque<Namespace> namespaces; // addresses of elements stay valid
    std::optional<mof::Schema> interop_schema;
    std::optional<Interop> interop;
    Ask interop_ask;
};

Namespace& Catalogue::Content::find_or_add(const std::string& name, const mof::Schema& its_schema) {
    const auto found = std::find_if(namespaces.begin(), namespaces.end(),
                                    [&name](const Namespace& each) { return same_name(each.name, name); });
    return found != namespaces.end() ? *found : namespaces.emplace_back(Namespace{name, its_schema, {}});
}

void Catalogue::Content::add_registered(const Settings& settings) {
    for (const std::string& file : settings.registrations)
        for (const RegisteredClass& each : read_registration_file(file)) {
            const mof::ClassDeclaration* declaration = schema.find(each.class_name);
            if (declaration == nullptr)
                throw std::runtime_error(file + ": class " + each.class_name + " is in no schema file");
            const Ask& ask = providers.find_or_load(library_file(settings.provider_folder, each), each.provider);
            registered.emplace(each.class_name, true);
            ServedClass served(schema, *declaration, ask);
            served.instances = names_type(each, "instance");
            served.associations = names_type(each, "association");
            served.methods = names_type(each, "method");
            for (const std::string& name_space : each.namespaces)
                find_or_add(name_space, schema).classes.push_back(served);
        }
}

void Catalogue::Content::add_files(const Settings& settings) {
    if (settings.providers.empty() && !namespaces.empty())
        return;
    Namespace& space = find_or_add(settings.name_space, schema);
    for (const ProviderFile& provider : settings.providers) {
        const Ask& ask = providers.find_or_load(provider.library, provider.name);
        for (const mof::ClassDeclaration& declaration : schema.classes())
            if (mof::is_provider_class(declaration) && !registered.contains(declaration.name))
                space.classes.push_back(served_wholly(schema, declaration, ask, true));
    }
}

void Catalogue::Content::add_interop(const Settings& settings) {
    if (settings.interop_schema.empty())
        return;
    interop_schema.emplace(read_schema({settings.interop_schema}));
    for (const char* name : interop_names) {
        if (std::any_of(namespaces.begin(), namespaces.end(),
                        [name](const Namespace& each) { return same_name(each.name, name); }))
            throw std::runtime_error(std::string("namespace ") + name +
                                     " is the server's own, expected another for the classes of providers");
        find_or_add(name, *interop_schema);
    }
    std::vector<std::string> names;
    for (const Namespace& space : namespaces)
        names.push_back(space.name);
    interop.emplace(*interop_schema, names, own_system_name());
    interop_ask = [this](const Request& request, const Sink& sink) { return ask_interop(*interop, request, sink); };
    for (const char* name : interop_names)
        for (const mof::ClassDeclaration& declaration : interop_schema->classes())
            if (!declaration.abstract)
                find_or_add(name, *interop_schema)
                    .classes.push_back(served_wholly(*interop_schema, declaration, interop_ask, false));
}

Catalogue::Catalogue(const Settings& settings) : content_(std::make_unique<Content>(settings)) {
    content_->add_registered(settings);
    content_->add_files(settings);
    content_->providers.check_scenario();
    content_->providers.set_names();
    content_->add_interop(settings);
}

Catalogue::~Catalogue() = default;

const Namespace* Catalogue::find(std::string_view name) const {
    const auto found = std::find_if(content_->namespaces.begin(), content_->namespaces.end(),
                                    [name](const Namespace& each) { return same_name(each.name, name); });
    return found == content_->namespaces.end() ? nullptr : &*found;
}

std::vector<const Namespace*> Catalogue::namespaces() const {
    std::vector<const Namespace*> all;
    for (const Namespace& space : content_->namespaces)
        all.push_back(&space);
    return all;
}

bool Catalogue::is_interop(const Namespace& space) const {
    return content_->interop_schema && &space.schema == &*content_->interop_schema;
}

std::optional<ProviderPlace> Catalogue::provider_of(const Ask& ask) const {
    return content_->providers.place_of(ask);
}

std::vector<ProviderFigures> Catalogue::providers() const {
    return content_->providers.figures();
}

const mof::Schema& Catalogue::schema_of(std::string_view name_space) const {
    const Namespace* space = find(name_space);
    return space == nullptr ? content_->schema : space->schema;
}

} // namespace cmpihost::server
