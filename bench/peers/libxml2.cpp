// The side of libxml2 of the workloads with documents, and with its XInclude of those that
// include.
#include "peers/libxml2.h"

#include <libxml/xinclude.h>
#include <libxml/xpath.h>

#include <cstring>
#include <string>

#include "configurations.h"
#include "preprocessed.h"
#include "scratch.h"
#include "workload.h"

namespace {

using bench::chars;
using bench::configuration_t;
using bench::xml;
using bench::xml_document_t;

/// Adds up what a document holds without keeping anything.
struct summing_t {
    std::size_t sum = 0;

    static void start(void* self, const xmlChar* name, const xmlChar*, const xmlChar*, int,
                      const xmlChar**, int attributes, int, const xmlChar** attribute) {
        std::size_t length = std::strlen(chars(name));
        for (int i = 0; i < attributes; ++i, attribute += 5) {
            length += static_cast<std::size_t>(attribute[4] - attribute[3]);
        }
        static_cast<summing_t*>(self)->sum += length;
    }
    static void end(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
        ++static_cast<summing_t*>(self)->sum;
    }
    static void characters(void* self, const xmlChar*, int length) {
        static_cast<summing_t*>(self)->sum += static_cast<std::size_t>(length);
    }
};

void read(benchmark::State& state) {
    const configuration_t configuration;
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = summing_t::start;
    handler.endElementNs = summing_t::end;
    handler.characters = summing_t::characters;
    bench::measure(state, configuration.text.size(), [&] {
        summing_t summing;
        xmlSAXUserParseMemory(&handler, &summing, configuration.text.data(),
                              static_cast<int>(configuration.text.size()));
        return double(summing.sum);
    });
}

void load(benchmark::State& state) {
    const configuration_t configuration;
    xml_document_t document;
    bench::measure(state, configuration.text.size(),
                   {[&] { document.reset(); },
                    [&] { document = bench::parsed(configuration.text); },
                    [&] {
                        return bench::tally_of(document);
                    }});
}

void free_tree(benchmark::State& state) {
    const configuration_t configuration;
    xml_document_t document;
    double check = 0;
    bench::measure(state, configuration.elements(),
                   {[&] {
                        document = bench::parsed(configuration.text);
                        check = bench::elements_of(document);
                    },
                    [&] { document.reset(); },
                    [&] {
                        return check;
                    }});
}

void write(benchmark::State& state) {
    const configuration_t configuration;
    const xml_document_t document = bench::parsed(configuration.text);
    std::string written;
    bench::measure(state, configuration.elements(),
                   {nullptr,
                    [&] {
                        xmlChar* text = nullptr;
                        int length = 0;
                        xmlDocDumpMemory(document.get(), &text, &length);
                        written.assign(chars(text), static_cast<std::size_t>(length));
                        xmlFree(text);
                    },
                    [&] {
                        return bench::tally_of(written);
                    }});
}

void save(benchmark::State& state) {
    const configuration_t configuration;
    const xml_document_t document = bench::parsed(configuration.text);
    const bench::scratch_folder_t folder;
    const std::string file = folder.file("saved.xml");
    bench::measure(state, configuration.elements(),
                   {nullptr, [&] { xmlSaveFile(file.c_str(), document.get()); },
                    [&] {
                        return bench::tally_of(folder.read("saved.xml"));
                    }});
}

/// What a path selects below the root of a document.
class selection_t {
public:
    explicit selection_t(const xml_document_t& document)
        : context(xmlXPathNewContext(document.get())) {
        context->node = xmlDocGetRootElement(document.get());
    }
    selection_t(const selection_t&) = delete;
    selection_t& operator=(const selection_t&) = delete;
    ~selection_t() { xmlXPathFreeContext(context); }

    template <typename use_t> auto of(const char* path, use_t use) {
        const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> found(
            xmlXPathEval(xml(path), context), xmlXPathFreeObject);
        return use(*found->nodesetval);
    }

private:
    xmlXPathContext* context;
};

void select_by_attribute(benchmark::State& state) {
    const std::size_t count = bench::sized(100000);
    const xml_document_t document = bench::parsed(bench::numbered(count));
    selection_t selection(document);
    bench::measure(state, count, [&] {
        return selection.of("a/b[@id=\"7\"]",
                            [](const xmlNodeSet& nodes) { return double(nodes.nodeNr); });
    });
}

void select_value(benchmark::State& state) {
    const xml_document_t document = bench::parsed(bench::ten_items);
    selection_t selection(document);
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            sum += selection.of("item[@id=\"7\"]/@value", [](const xmlNodeSet& nodes) {
                return std::stoul(chars(nodes.nodeTab[0]->children->content));
            });
        }
        return double(sum);
    });
}

void find_first(benchmark::State& state) {
    const configuration_t configuration;
    const xml_document_t document = bench::parsed(configuration.text);
    selection_t selection(document);
    bench::measure(state, 1, [&] {
        return selection.of("device[1]/channel[1]/band[1]", [](const xmlNodeSet& nodes) {
            double count = 0;
            for (const xmlAttr* a = nodes.nodeTab[0]->properties; a != nullptr; a = a->next) {
                ++count;
            }
            return count;
        });
    });
}

template <typename memory_t> void memory(benchmark::State& state) {
    const configuration_t configuration;
    const memory_t memory;
    const xml_document_t document = bench::parsed(configuration.text);
    const double amount = memory.growth();
    bench::report(state, configuration.elements(), amount, bench::tally_of(document));
}

void attribute_by_name(benchmark::State& state) {
    const xml_document_t document = bench::parsed(bench::ten_items);
    const xmlNode* item = xmlGetLastChild(xmlDocGetRootElement(document.get()));
    bench::measure(state, bench::lookups, [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < bench::lookups; ++i) {
            sum += std::strlen(chars(xmlHasProp(item, xml("value"))->children->content));
        }
        return double(sum);
    });
}

void clone(benchmark::State& state) {
    const configuration_t configuration;
    const xml_document_t document = bench::parsed(configuration.text);
    xml_document_t copy;
    bench::measure(state, configuration.elements(),
                   {[&] { copy.reset(); }, [&] { copy.reset(xmlCopyDoc(document.get(), 1)); },
                    [&] {
                        return bench::elements_of(copy);
                    }});
}

/// Carries out the XInclude of a document. Each part comes with its top element `r`.
void include(benchmark::State& state, bool counted) {
    const bench::scratch_folder_t folder;
    bench::parts_write(folder);
    const std::string text =
        "<r xmlns:i='http://www.w3.org/2001/XInclude'>" +
        bench::directives(bench::includes(), "<i:include href='part", ".xml'/>", counted) +
        "</r>";
    xml_document_t document;
    bench::measure(state, bench::includes(),
                   {[&] { document = bench::parsed(text, folder.file("whole.xml").c_str()); },
                    [&] {
                        xmlXIncludeProcessFlags(document.get(),
                                                XML_PARSE_NOXINCNODE | XML_PARSE_NOBASEFIX);
                    },
                    [&] {
                        return bench::tally_of(document);
                    }});
}

void include_files(benchmark::State& state) {
    include(state, true);
}

void include_one_file(benchmark::State& state) {
    include(state, false);
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
    {"X6", clone},
    {"P2", include_files},
    {"P2c", include_one_file},
};
const bench::workloads_t workloads(rows);

} // namespace
