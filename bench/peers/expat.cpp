// The side of expat alone, which builds no tree: the floor of what reading costs.
#include <expat.h>

#include <cstring>
#include <memory>
#include <type_traits>

#include "configurations.h"
#include "tally.h"
#include "workload.h"

namespace {

/// Adds up what a document holds without keeping anything.
struct summing_t {
    std::size_t sum = 0;

    static void start(void* self, const char* name, const char** attributes) {
        std::size_t length = std::strlen(name);
        for (; *attributes != nullptr; attributes += 2) {
            length += std::strlen(attributes[1]);
        }
        static_cast<summing_t*>(self)->sum += length;
    }
    static void end(void* self, const char*) { ++static_cast<summing_t*>(self)->sum; }
    static void characters(void* self, const char*, int length) {
        static_cast<summing_t*>(self)->sum += static_cast<std::size_t>(length);
    }
};

double sum_of(const std::string& text) {
    summing_t summing;
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreateNS(nullptr, '|'), XML_ParserFree);
    XML_SetReturnNSTriplet(parser.get(), 1);
    XML_SetUserData(parser.get(), &summing);
    XML_SetElementHandler(parser.get(), summing_t::start, summing_t::end);
    XML_SetCharacterDataHandler(parser.get(), summing_t::characters);
    XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), 1);
    return double(summing.sum);
}

void read(benchmark::State& state) {
    const bench::configuration_t configuration;
    bench::measure(state, configuration.text.size(), [&] { return sum_of(configuration.text); });
}

/// What a load cannot do without; there is no tree to take the check number from.
void load(benchmark::State& state) {
    const bench::configuration_t configuration;
    bench::measure(state, configuration.text.size(),
                   {nullptr, [&] { benchmark::DoNotOptimize(sum_of(configuration.text)); },
                    [&] {
                        return bench::tally_of(configuration.text);
                    }});
}

constexpr bench::workload_t rows[] = {
    {"X0", read},
    {"X1", load},
};
const bench::workloads_t workloads(rows);

} // namespace
