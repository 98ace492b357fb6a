#include "expat_parser/expat_parser.h"

#include <new>

#include <expat.h>

#include "expat_parser/memory.h"
#include "expat_parser/run.h"

namespace ko::xml {

namespace {

/// Hands events to the virtual functions of a parser. Its strings and its map serve every event.
class virtual_calls_t : public events_t {
public:
    explicit virtual_calls_t(expat_parser_t& parser) : self(parser) {}

    void start_element(const char* element, const char* const* pairs) override {
        attributes.assign(pairs);
        name = element;
        self.start_element(name, attributes);
    }
    void end_element(const char* element) override {
        name = element;
        self.end_element(name);
    }
    void character_data(const char* piece, int size) override {
        text.assign(piece, static_cast<std::size_t>(size));
        self.character_data(text);
    }
    void start_cdata() override { self.start_cdata(); }
    void end_cdata() override { self.end_cdata(); }

private:
    expat_parser_t& self;
    attribute_map_t attributes;
    std::string name;
    std::string text;
};

} // namespace

void expat_parser_t::start_element(const std::string&, const attribute_map_t&) {}
void expat_parser_t::end_element(const std::string&) {}
void expat_parser_t::character_data(const std::string&) {}
void expat_parser_t::start_cdata() {}
void expat_parser_t::end_cdata() {}

expat_parser_t::expat_parser_t(bool namespaces)
    : parser(nullptr), error_code(0), memory(std::make_unique<expat_memory_t>()) {
    parser = memory->parser_create(namespaces);
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    XML_SetReturnNSTriplet(parser, 1);
}

expat_parser_t::~expat_parser_t() {
    XML_ParserFree(parser);
}

void expat_parser_t::parse(const std::string& name) {
    virtual_calls_t calls(*this);
    run_t(*this, calls).parse_file(name);
}

void expat_parser_t::parse_buffer(const std::string& text) {
    virtual_calls_t calls(*this);
    run_t(*this, calls).parse_text(text);
}

std::string expat_parser_t::position_describe() const {
    return "line=" + std::to_string(line_number_get()) +
           " column=" + std::to_string(column_number_get());
}

unsigned long expat_parser_t::line_number_get() const {
    return static_cast<unsigned long>(XML_GetCurrentLineNumber(parser));
}

unsigned long expat_parser_t::column_number_get() const {
    return static_cast<unsigned long>(XML_GetCurrentColumnNumber(parser));
}

long expat_parser_t::byte_index_get() const {
    return static_cast<long>(XML_GetCurrentByteIndex(parser));
}

std::string expat_parser_t::file_name_get() const {
    return file_name;
}

} // namespace ko::xml
