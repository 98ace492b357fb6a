/// @file
/// Processes the input as a document. Further documents for "include" may follow it, each after a
/// line of the form "---- NAME"; they are put into the cache. A plug-in "gen" gives the children
/// of its directive twice. An observer asks for a trace whenever it is told something; the second
/// call runs without it. Both run under limits, since a loop without an end is a valid document,
/// the second under ones so low that many inputs meet them.

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "lxml/lxml.h"
#include "support/target.h"
#include "xml_preprocessor/xml_preprocessor.h"

namespace {

using ko::lxml::document_t;
using ko::lxml::element_t;

/// Names that no cached document has are looked for here, where nothing is.
constexpr const char* folder = "/nonexistent/kobase/";

class generator_t : public ko::xpp::plugin_t {
public:
    element_t* generate(element_t* directive) override {
        element_t* const made = documents.element_create("made", ko::lxml::str_empty);
        for (int i = 0; i < 2; ++i) {
            for (const element_t* child : directive->children) {
                made->append(child->clone(documents, true));
            }
        }
        return made;
    }

private:
    document_t documents;
};

/// Asks where it is whenever it is told something.
class asking_t : public ko::xpp::observer_t {
public:
    using place_t = ko::xpp::place_t;

    explicit asking_t(const ko::xpp::preprocessor_t& by) : preprocessor(by) {}
    void expression_failed(const place_t& place, const std::string&,
                           const std::string&) override {
        ask(place);
    }
    void directive_unknown(const place_t& place, const std::string&) override { ask(place); }
    void text_dropped(const place_t& place) override { ask(place); }
    void element_made(const element_t&, const element_t& output) override {
        made += output.attributes.size();
    }

private:
    void ask(const place_t& place) {
        // A trace is as long as the nesting is deep, and one is made for each that is told.
        if (asked++ < 1000) {
            made += preprocessor.trace_get().size() + place.detail.size();
        }
    }

    const ko::xpp::preprocessor_t& preprocessor;
    std::size_t asked = 0;
    std::size_t made = 0;
};

/// Gives each loop a child that is copied, so that each pass costs memory.
void add_cost_to_loops(document_t& document) {
    std::vector<element_t*> loops;
    for (element_t* e : document.elements) {
        if (e->name_get() == "for" || e->name_get() == "repeat") {
            loops.push_back(e);
        }
    }
    for (element_t* e : loops) {
        e->append(document.element_create("pass", ko::lxml::str_empty));
    }
}

using parts_t = std::vector<std::pair<std::string, std::string>>;

/// The documents in an input, with their names; that of the first is empty.
parts_t split(const std::string& input) {
    parts_t parts(1);
    std::istringstream lines(input);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 5, "---- ") == 0) {
            parts.emplace_back(line.substr(5), "");
        } else {
            parts.back().second += line + "\n";
        }
    }
    return parts;
}

void load(document_t& document, const std::string& text) {
    document.load_from_string(text);
    document.file_name = folder;
    add_cost_to_loops(document);
}

void fill(ko::xpp::file_cache_t& cache, const parts_t& parts) {
    for (std::size_t i = 1; i < parts.size(); ++i) {
        if (cache.get(parts[i].first) == nullptr) {
            auto document = std::make_unique<document_t>(&cache.atom_table_get());
            fuzz::attempt([&] { load(*document, parts[i].second); });
            cache.insert(parts[i].first, document.get());
            document.release();
        }
    }
}

ko::xpp::limits_t limits(std::size_t elements, std::size_t passes) {
    ko::xpp::limits_t made;
    made.elements = elements;
    made.passes = passes;
    return made;
}

void process(document_t& source, ko::xpp::file_cache_t* cache) {
    document_t output;
    ko::xpp::preprocessor_t preprocessor(output, cache);
    preprocessor.register_plugin("gen", std::make_unique<generator_t>().release());
    asking_t asking(preprocessor);
    preprocessor.observer_set(&asking);
    preprocessor.limits_set(limits(20000, 1000));
    preprocessor.insert_argument("count", 3);
    preprocessor.insert_argument("name", "stage");
    fuzz::attempt([&] {
        output.root = preprocessor.process(source.root, ko::xpp::preprocessor_t::process_include);
    });
    if (output.root != nullptr) {
        std::ostringstream out;
        output.root->print(out, 0, 0, true, true);
    }
    preprocessor.trace_get();
    preprocessor.observer_set(nullptr);
    preprocessor.limits_set(limits(1000, 100));
    fuzz::attempt(
        [&] { preprocessor.process(source.root, ko::xpp::preprocessor_t::include_comments); });
    preprocessor.trace_get();
}

void run(const std::string& input) {
    const parts_t parts = split(input);
    ko::xpp::file_cache_t cache;
    fill(cache, parts);
    document_t own_atoms;
    document_t shared_atoms(&cache.atom_table_get());
    for (document_t* source : {&own_atoms, &shared_atoms}) {
        if (fuzz::attempt([&] { load(*source, parts[0].second); })) {
            process(*source, &cache);
            process(*source, nullptr);
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::run_limited(run, data, size);
    return 0;
}
