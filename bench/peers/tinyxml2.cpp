// The side of tinyxml2 of the workloads with documents; it has no queries.
#include <tinyxml2.h>

#include <memory>
#include <string>

#include "configurations.h"
#include "scratch.h"
#include "tally.h"
#include "workload.h"

namespace {

using bench::configuration_t;
using tinyxml2::XMLDocument;
using tinyxml2::XMLElement;

class tallying_t : public tinyxml2::XMLVisitor {
public:
    bool VisitEnter(const XMLElement& element, const tinyxml2::XMLAttribute* first) override {
        ++elements;
        tally.element(element.Name());
        for (; first != nullptr; first = first->Next()) {
            tally.attribute(first->Name(), first->Value());
        }
        return true;
    }
    bool Visit(const tinyxml2::XMLText& text) override {
        tally.text(text.Value());
        return true;
    }

    bench::tally_t tally;
    std::size_t elements = 0;
};

tallying_t walked(const XMLDocument& document) {
    tallying_t walker;
    document.Accept(&walker);
    return walker;
}

double tally_of(const XMLDocument& document) {
    return walked(document).tally.number();
}

double elements_of(const XMLDocument& document) {
    return double(walked(document).elements);
}

void fill(XMLDocument& document, const std::string& text) {
    document.Parse(text.data(), text.size());
}

void load(benchmark::State& state) {
    const configuration_t configuration;
    std::unique_ptr<XMLDocument> document;
    bench::measure(state, configuration.text.size(),
                   {[&] { document = std::make_unique<XMLDocument>(); },
                    [&] { fill(*document, configuration.text); },
                    [&] {
                        return tally_of(*document);
                    }});
}

void free_tree(benchmark::State& state) {
    const configuration_t configuration;
    std::unique_ptr<XMLDocument> document;
    double check = 0;
    bench::measure(state, configuration.elements(),
                   {[&] {
                        document = std::make_unique<XMLDocument>();
                        fill(*document, configuration.text);
                        check = elements_of(*document);
                    },
                    [&] { document.reset(); },
                    [&] {
                        return check;
                    }});
}

void write(benchmark::State& state) {
    const configuration_t configuration;
    XMLDocument document;
    fill(document, configuration.text);
    std::string written;
    bench::measure(state, configuration.elements(),
                   {nullptr,
                    [&] {
                        tinyxml2::XMLPrinter printer;
                        document.Print(&printer);
                        written = printer.CStr();
                    },
                    [&] {
                        return bench::tally_of(written);
                    }});
}

void save(benchmark::State& state) {
    const configuration_t configuration;
    XMLDocument document;
    fill(document, configuration.text);
    const bench::scratch_folder_t folder;
    const std::string file = folder.file("saved.xml");
    bench::measure(state, configuration.elements(),
                   {nullptr, [&] { document.SaveFile(file.c_str()); },
                    [&] {
                        return bench::tally_of(folder.read("saved.xml"));
                    }});
}

template <typename memory_t> void memory(benchmark::State& state) {
    const configuration_t configuration;
    const memory_t memory;
    XMLDocument document;
    fill(document, configuration.text);
    const double amount = memory.growth();
    bench::report(state, configuration.elements(), amount, tally_of(document));
}

void attribute_by_name(benchmark::State& state) {
    XMLDocument document;
    fill(document, bench::ten_items);
    const XMLElement& item = *document.RootElement()->LastChildElement();
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            sum += std::string(item.Attribute("value")).size();
        }
        return double(sum);
    });
}

void clone(benchmark::State& state) {
    const configuration_t configuration;
    XMLDocument document;
    fill(document, configuration.text);
    std::unique_ptr<XMLDocument> copy;
    bench::measure(state, configuration.elements(),
                   {[&] { copy = std::make_unique<XMLDocument>(); },
                    [&] { document.DeepCopy(copy.get()); },
                    [&] {
                        return elements_of(*copy);
                    }});
}

void children_delete(benchmark::State& state) {
    const configuration_t configuration;
    std::unique_ptr<XMLDocument> document;
    bench::measure(state, configuration.elements() - 1,
                   {[&] {
                        document = std::make_unique<XMLDocument>();
                        fill(*document, configuration.text);
                    },
                    [&] { document->RootElement()->DeleteChildren(); },
                    [&] {
                        return elements_of(*document);
                    }});
}

void elements_remove(benchmark::State& state) {
    const std::size_t count = bench::sized(10000);
    XMLDocument document;
    bench::measure(state, count,
                   {[&] { fill(document, bench::numbered(count)); },
                    [&] {
                        XMLElement& a = *document.RootElement()->FirstChildElement();
                        while (!a.NoChildren()) {
                            a.DeleteChild(a.FirstChild());
                        }
                    },
                    [&] {
                        return elements_of(document);
                    }});
}

constexpr bench::workload_t rows[] = {
    {"X1", load},
    {"X1d", free_tree, 3},
    {"X2", write},
    {"X2f", save},
    {"X4", memory<bench::memory_in_use_t>, 1},
    {"X4p", memory<bench::memory_peak_t>, 1},
    {"X5n", attribute_by_name},
    {"X6", clone},
    {"X7", children_delete, 3},
    {"X8", elements_remove, 3},
};
const bench::workloads_t workloads(rows);

} // namespace
