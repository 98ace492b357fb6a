// pugixml's side of the workloads with documents. It parses a copy of the text in place, keeps
// namespaces as parts of names, and checks less: no names, no namespaces, no doubled attributes.
#include <pugixml.hpp>

#include <memory>
#include <sstream>
#include <string>

#include "configurations.h"
#include "preprocessed.h"
#include "scratch.h"
#include "tally.h"
#include "workload.h"

namespace {

using bench::configuration_t;

class tallying_t : public pugi::xml_tree_walker {
public:
    bool for_each(pugi::xml_node& node) override {
        if (node.type() == pugi::node_element) {
            ++elements;
            tally.element(node.name());
            for (const pugi::xml_attribute attribute : node.attributes()) {
                tally.attribute(attribute.name(), attribute.value());
            }
        } else {
            tally.text(node.value());
        }
        return true;
    }

    bench::tally_t tally;
    std::size_t elements = 0;
};

tallying_t walked(pugi::xml_document& document) {
    tallying_t walker;
    document.traverse(walker);
    return walker;
}

double tally_of(pugi::xml_document& document) {
    return walked(document).tally.number();
}

double elements_of(pugi::xml_document& document) {
    return double(walked(document).elements);
}

/// Keeps the white space between elements, as the library does.
void fill(pugi::xml_document& document, const std::string& text) {
    document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata);
}

void load(benchmark::State& state) {
    const configuration_t configuration;
    pugi::xml_document document;
    bench::measure(state, configuration.text.size(),
                   {[&] { document.reset(); }, [&] { fill(document, configuration.text); },
                    [&] {
                        return tally_of(document);
                    }});
}

void free_tree(benchmark::State& state) {
    const configuration_t configuration;
    pugi::xml_document document;
    double check = 0;
    bench::measure(state, configuration.elements(),
                   {[&] {
                        fill(document, configuration.text);
                        check = elements_of(document);
                    },
                    [&] { document.reset(); },
                    [&] {
                        return check;
                    }});
}

void write(benchmark::State& state) {
    const configuration_t configuration;
    pugi::xml_document document;
    fill(document, configuration.text);
    std::string written;
    bench::measure(state, configuration.elements(),
                   {nullptr,
                    [&] {
                        std::ostringstream out;
                        document.save(out);
                        written = out.str();
                    },
                    [&] {
                        return bench::tally_of(written);
                    }});
}

void save(benchmark::State& state) {
    const configuration_t configuration;
    pugi::xml_document document;
    fill(document, configuration.text);
    const bench::scratch_folder_t folder;
    const std::string file = folder.file("saved.xml");
    bench::measure(state, configuration.elements(),
                   {nullptr, [&] { document.save_file(file.c_str()); },
                    [&] {
                        return bench::tally_of(folder.read("saved.xml"));
                    }});
}

void select_by_attribute(benchmark::State& state) {
    const std::size_t count = bench::sized(100000);
    pugi::xml_document document;
    fill(document, bench::numbered(count));
    bench::measure(state, count, [&] {
        return double(document.document_element().select_nodes("a/b[@id=\"7\"]").size());
    });
}

void select_value(benchmark::State& state) {
    pugi::xml_document document;
    fill(document, bench::ten_items);
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            sum += std::stoul(document.document_element()
                                  .select_node("item[@id=\"7\"]/@value")
                                  .attribute()
                                  .value());
        }
        return double(sum);
    });
}

void find_first(benchmark::State& state) {
    const configuration_t configuration;
    pugi::xml_document document;
    fill(document, configuration.text);
    bench::measure(state, 1, [&] {
        const pugi::xml_node band =
            document.document_element().select_node("device/channel/band").node();
        return double(std::distance(band.attributes_begin(), band.attributes_end()));
    });
}

template <typename memory_t> void memory(benchmark::State& state) {
    const configuration_t configuration;
    const memory_t memory;
    pugi::xml_document document;
    fill(document, configuration.text);
    const double amount = memory.growth();
    bench::report(state, configuration.elements(), amount, tally_of(document));
}

void attribute_by_name(benchmark::State& state) {
    pugi::xml_document document;
    fill(document, bench::ten_items);
    const pugi::xml_node item = document.document_element().last_child();
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            sum += std::string(item.attribute("value").value()).size();
        }
        return double(sum);
    });
}

void clone(benchmark::State& state) {
    const configuration_t configuration;
    pugi::xml_document document;
    fill(document, configuration.text);
    pugi::xml_document copy;
    bench::measure(state, configuration.elements(),
                   {[&] { copy.reset(); }, [&] { copy.reset(document); },
                    [&] {
                        return elements_of(copy);
                    }});
}

void children_delete(benchmark::State& state) {
    const configuration_t configuration;
    pugi::xml_document document;
    bench::measure(state, configuration.elements() - 1,
                   {[&] { fill(document, configuration.text); },
                    [&] { document.document_element().remove_children(); },
                    [&] {
                        return elements_of(document);
                    }});
}

void elements_remove(benchmark::State& state) {
    const std::size_t count = bench::sized(10000);
    pugi::xml_document document;
    bench::measure(state, count,
                   {[&] { fill(document, bench::numbered(count)); },
                    [&] {
                        pugi::xml_node a = document.document_element().first_child();
                        while (a.remove_child(a.first_child())) {
                        }
                    },
                    [&] {
                        return elements_of(document);
                    }});
}

/// The output of a loop, made by hand: the floor of what making it costs.
void loop(benchmark::State& state) {
    const std::size_t count = bench::loop_passes();
    pugi::xml_document document;
    bench::measure(state, count,
                   {[&] { document.reset(); },
                    [&] {
                        pugi::xml_node top = document.append_child("r");
                        for (std::size_t n = 1; n <= count; ++n) {
                            pugi::xml_node amp = top.append_child("amp");
                            amp.append_attribute("id") = n;
                            amp.append_attribute("address") = n * 2 + 1;
                            amp.append_attribute("name") =
                                ("amplifier " + std::to_string(n)).c_str();
                        }
                    },
                    [&] {
                        return tally_of(document);
                    }});
}

constexpr bench::workload_t rows[] = {
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
    {"X6", clone},
    {"X7", children_delete, 3},
    {"X8", elements_remove, 3},
    {"P1", loop},
};
const bench::workloads_t workloads(rows);

} // namespace
