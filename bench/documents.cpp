// The library's side of the workloads with documents.
#include <cstring>
#include <list>
#include <memory>
#include <sstream>
#include <string>

#include "configurations.h"
#include "expat_parser/expat_parser.h"
#include "lxml/lxml.h"
#include "scratch.h"
#include "tally.h"
#include "workload.h"

namespace {

using bench::configuration_t;
using bench::tally_t;
using namespace ko::lxml;

/// Adds up what a document holds without keeping anything.
class summing_t : public ko::xml::expat_parser_t {
public:
    summing_t() : expat_parser_t(true) {}

    void start_element(const std::string& name, const attribute_map_t& attributes) override {
        elements += name.size();
        for (const auto& attribute : attributes) {
            values += std::strlen(attribute.second);
        }
    }
    void end_element(const std::string&) override { ++elements; }
    void character_data(const std::string& text) override { texts += text.size(); }

    double sum() const { return double(elements + values + texts); }

private:
    std::size_t elements = 0;
    std::size_t values = 0;
    std::size_t texts = 0;
};

double tally_of(const element_t& top) {
    tally_t tally;
    std::list<const element_t*> open{&top};
    while (!open.empty()) {
        const element_t& e = *open.front();
        open.pop_front();
        tally.element(e.name_get());
        for (const attribute_t* attribute : e.attributes) {
            tally.attribute(attribute->name_get(), attribute->value);
        }
        tally.text(e.text);
        tally.text(e.cdata);
        open.insert(open.begin(), e.children.begin(), e.children.end());
    }
    return tally.number();
}

/// A document with a tree.
class loaded_t : public document_t {
public:
    explicit loaded_t(const std::string& text) { load_from_string(text); }
};

void read(benchmark::State& state) {
    const configuration_t configuration;
    bench::measure(state, configuration.text.size(), [&] {
        summing_t parser;
        parser.parse_buffer(configuration.text);
        return parser.sum();
    });
}

void load(benchmark::State& state) {
    const configuration_t configuration;
    std::unique_ptr<document_t> document;
    bench::measure(state, configuration.text.size(),
                   {[&] { document = std::make_unique<document_t>(); },
                    [&] { document->load_from_string(configuration.text); },
                    [&] {
                        return tally_of(*document->root);
                    }});
}

void free_tree(benchmark::State& state) {
    const configuration_t configuration;
    std::unique_ptr<document_t> document;
    double check = 0;
    bench::measure(state, configuration.elements(),
                   {[&] {
                        document = std::make_unique<loaded_t>(configuration.text);
                        check = double(document->elements.size());
                    },
                    [&] { document.reset(); },
                    [&] {
                        return check;
                    }});
}

void write(benchmark::State& state) {
    const configuration_t configuration;
    const loaded_t document(configuration.text);
    std::string written;
    bench::measure(state, configuration.elements(),
                   {nullptr,
                    [&] {
                        std::ostringstream out;
                        document.root->print(out, 0, 0, true, true);
                        written = out.str();
                    },
                    [&] {
                        return bench::tally_of(written);
                    }});
}

void save(benchmark::State& state) {
    const configuration_t configuration;
    loaded_t document(configuration.text);
    const bench::scratch_folder_t folder;
    const std::string file = folder.file("saved.xml");
    bench::measure(state, configuration.elements(),
                   {nullptr, [&] { document.save(file, true, true); },
                    [&] {
                        return bench::tally_of(folder.read("saved.xml"));
                    }});
}

void select_by_attribute(benchmark::State& state) {
    const std::size_t count = bench::sized(100000);
    const loaded_t document(bench::numbered(count));
    bench::measure(state, count, [&] {
        std::list<node_t*> nodes;
        document.root->select_nodes("a/b[@id=\"7\"]", nodes);
        return double(nodes.size());
    });
}

void select_value(benchmark::State& state) {
    const loaded_t document(bench::ten_items);
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            const node_t* node = document.root->select_single_node("item[@id=\"7\"]/@value");
            sum += std::stoul(node->as_attribute()->value);
        }
        return double(sum);
    });
}

void find_first(benchmark::State& state) {
    const configuration_t configuration;
    loaded_t document(configuration.text);
    bench::measure(state, 1, [&] {
        const element_t* band = element_find(document, "device/channel/band", true);
        return double(band->attributes.size());
    });
}

template <typename memory_t> void memory(benchmark::State& state) {
    const configuration_t configuration;
    const memory_t memory;
    const loaded_t document(configuration.text);
    const double amount = memory.growth();
    bench::report(state, configuration.elements(), amount, tally_of(*document.root));
}

void attribute_by_name(benchmark::State& state) {
    const loaded_t document(bench::ten_items);
    const element_t& item = *document.root->children.back();
    const std::string name = "value";
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            sum += item.attribute_get(name)->value.size();
        }
        return double(sum);
    });
}

void attribute_by_atoms(benchmark::State& state) {
    const loaded_t document(bench::ten_items);
    const element_t& item = *document.root->children.back();
    const int name = document.atoms->find("value");
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            sum += item.attribute_get(name, 0)->value.size();
        }
        return double(sum);
    });
}

void clone(benchmark::State& state) {
    const configuration_t configuration;
    const loaded_t document(configuration.text);
    std::unique_ptr<document_t> copy;
    bench::measure(state, configuration.elements(),
                   {[&] { copy.reset(); }, [&] { copy = std::make_unique<document_t>(document); },
                    [&] {
                        return double(copy->elements.size());
                    }});
}

void children_delete(benchmark::State& state) {
    const configuration_t configuration;
    std::unique_ptr<document_t> document;
    bench::measure(state, configuration.elements() - 1,
                   {[&] { document = std::make_unique<loaded_t>(configuration.text); },
                    [&] { document->root->children_delete(); },
                    [&] {
                        return double(document->elements.size());
                    }});
}

void elements_remove(benchmark::State& state) {
    const std::size_t count = bench::sized(10000);
    std::unique_ptr<document_t> document;
    bench::measure(state, count,
                   {[&] { document = std::make_unique<loaded_t>(bench::numbered(count)); },
                    [&] {
                        const element_t& a = *document->root->children.front();
                        while (!a.children.empty()) {
                            document->element_remove(a.children.front());
                        }
                    },
                    [&] {
                        return double(document->elements.size());
                    }});
}

constexpr bench::workload_t rows[] = {
    {"X0", read},
    {"X1", load},
    {"X1d", free_tree, 3},
    {"X2", write},
    {"X2f", save},
    {"X3", select_by_attribute},
    {"X3s", select_value},
    {"X3f", find_first},
    {"X4", memory<bench::memory_in_use_t>, 1},
    {"X4p", memory<bench::memory_peak_t>, 1},
    {"X5n", attribute_by_name},
    {"X5a", attribute_by_atoms},
    {"X6", clone},
    {"X7", children_delete, 3},
    {"X8", elements_remove, 3},
};
const bench::workloads_t workloads(rows);

} // namespace
