#include "expat_parser/expat_parser.h"

#include <cstdio>
#include <memory>
#include <new>

#include <expat.h>

#include "errorcode/errorcode.h"
#include "expat_parser/entity_limit.h"
#include "expat_parser/feed.h"
#include "expat_parser/map_exceptions.h"

namespace ko::xml {

namespace {

constexpr int read_size = 4096;

struct file_close_t {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using file_t = std::unique_ptr<std::FILE, file_close_t>;

/// @return the number of bytes read; 0 at the end of the file
int file_read(std::FILE* file, void* buffer, const std::string& name) {
    const std::size_t count = std::fread(buffer, 1, read_size, file);
    if (std::ferror(file) != 0) {
        throw errorcode_t(errorcode::xml_file_read, name);
    }
    return static_cast<int>(count);
}

} // namespace

/// The functions that expat calls. Expat's frames must not be unwound, so an exception is
/// recorded in the parser and never leaves one of them.
struct expat_callbacks_t {
    /// A parse while it runs; what expat hands to the callbacks.
    struct run_t {
        explicit run_t(expat_parser_t& parser) : self(parser) {
            require_unused(self);
            XML_SetUserData(self.parser, this);
        }
        run_t(const run_t&) = delete;
        run_t& operator=(const run_t&) = delete;
        ~run_t() { XML_SetUserData(self.parser, nullptr); }

        expat_parser_t& self;
        unsigned referring_entities = 0;
    };

    static void start_element(void* user, const char* name, const char** atts) {
        guard(user, [=](expat_parser_t& self) {
            expat_parser_t::attribute_map_t attributes;
            for (const char** pair = atts; *pair != nullptr; pair += 2) {
                attributes.emplace(pair[0], pair[1]);
            }
            self.start_element(name, attributes);
        });
    }

    static void end_element(void* user, const char* name) {
        guard(user, [=](expat_parser_t& self) { self.end_element(name); });
    }

    static void character_data(void* user, const char* text, int size) {
        guard(user, [=](expat_parser_t& self) {
            self.character_data(std::string(text, static_cast<std::size_t>(size)));
        });
    }

    static void start_cdata(void* user) {
        guard(user, [](expat_parser_t& self) { self.start_cdata(); });
    }

    static void end_cdata(void* user) {
        guard(user, [](expat_parser_t& self) { self.end_cdata(); });
    }

    /// Counts the entities that refer to entities and stops expat at one too many, before a
    /// reference to it can be expanded. The text of a parameter entity is never expanded.
    static void entity_declaration(void* user, const char*, int is_parameter, const char* value,
                                   int size, const char*, const char*, const char*,
                                   const char*) noexcept {
        if (is_parameter != 0 || value == nullptr ||
            !refers_to_entity({value, static_cast<std::size_t>(size)})) {
            return;
        }
        run_t& run = *static_cast<run_t*>(user);
        if (++run.referring_entities > entity_references_max) {
            XML_StopParser(run.self.parser, XML_FALSE);
        }
    }

    static void attach(expat_parser_t& self) {
        XML_SetReturnNSTriplet(self.parser, 1);
        XML_SetElementHandler(self.parser, start_element, end_element);
        XML_SetCharacterDataHandler(self.parser, character_data);
        XML_SetCdataSectionHandler(self.parser, start_cdata, end_cdata);
        XML_SetEntityDeclHandler(self.parser, entity_declaration);
    }

    static void begin(expat_parser_t& self, const std::string& name) {
        self.error_code = 0;
        self.error_message.clear();
        self.file_name = name;
    }

    /// Expat would take a parse that a callback cut short for one document with the next.
    static void require_unused(const expat_parser_t& self) {
        XML_ParsingStatus status;
        XML_GetParsingStatus(self.parser, &status);
        if (status.parsing != XML_INITIALIZED) {
            const XML_Error error = XML_GetErrorCode(self.parser);
            throw_parse_error(self, error == XML_ERROR_NONE ? XML_ERROR_FINISHED : error);
        }
    }

    [[noreturn]] static void throw_parse_error(const expat_parser_t& self, XML_Error error) {
        throw errorcode_t(errorcode::xml_parse_error,
                          error_describe(error) + " " + self.position_describe());
    }

    /// Nothing but the limit of entities aborts a parse.
    static std::string error_describe(XML_Error error) {
        return error == XML_ERROR_ABORTED ? "more than " + std::to_string(entity_references_max) +
                                                " entities that refer to entities"
                                          : XML_ErrorString(error);
    }

    static void throw_expat_error(const expat_parser_t& self) {
        throw_parse_error(self, XML_GetErrorCode(self.parser));
    }

    /// Only the code is tested: an exception of unknown type left a message but no code, and
    /// callers rely on such a parse ending normally.
    static void throw_callback_error(const expat_parser_t& self) {
        if (self.error_code != 0) {
            throw errorcode_t(self.error_code, self.error_message);
        }
    }

    static void parse_file(expat_parser_t& self, const std::string& name) {
        begin(self, name);
        const file_t file(std::fopen(name.c_str(), "rt"));
        if (!file) {
            throw errorcode_t(errorcode::xml_file_open, name);
        }
        run_t run(self);
        while (parse_chunk(self, file.get(), name)) {
        }
    }

private:
    /// @return false when the end of the file was reached
    static bool parse_chunk(expat_parser_t& self, std::FILE* file, const std::string& name) {
        void* const buffer = XML_GetBuffer(self.parser, read_size);
        if (buffer == nullptr) {
            throw errorcode_t(errorcode::xml_internal, "XML_GetBuffer");
        }
        const int count = file_read(file, buffer, name);
        if (XML_ParseBuffer(self.parser, count, count == 0) == XML_STATUS_ERROR) {
            throw_expat_error(self);
        }
        throw_callback_error(self);
        return count != 0;
    }

    template <class A> static void guard(void* user, A action) noexcept {
        expat_parser_t& self = static_cast<run_t*>(user)->self;
        if (!self.error_message.empty()) {
            return;
        }
        try {
            action(self);
        } catch (const errorcode_t& e) {
            record(self, e.code_get(), e.what());
        } catch (const std::exception& e) {
            record(self, errorcode::xml_rethrow_exception, e.what());
        } catch (...) {
            record(self, self.error_code, "(unknown)");
        }
    }

    static void record(expat_parser_t& self, unsigned long code, const char* text) noexcept {
        try {
            self.error_message = std::string(text) + " " + self.position_describe();
            self.error_code = static_cast<unsigned>(code);
        } catch (...) {
            // Out of memory; this text fits into a string without an allocation.
            self.error_message = "std::bad_alloc";
            self.error_code = static_cast<unsigned>(errorcode::xml_rethrow_exception);
        }
    }
};

void expat_parser_t::start_element(const std::string&, const attribute_map_t&) {}
void expat_parser_t::end_element(const std::string&) {}
void expat_parser_t::character_data(const std::string&) {}
void expat_parser_t::start_cdata() {}
void expat_parser_t::end_cdata() {}

expat_parser_t::expat_parser_t(bool namespaces)
    : parser(namespaces ? XML_ParserCreateNS(nullptr, '|') : XML_ParserCreate(nullptr)),
      error_code(0) {
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    expat_callbacks_t::attach(*this);
}

expat_parser_t::~expat_parser_t() {
    XML_ParserFree(parser);
}

void expat_parser_t::parse(const std::string& name) {
    map_exceptions([&] { expat_callbacks_t::parse_file(*this, name); });
}

void expat_parser_t::parse_buffer(const std::string& text) {
    expat_callbacks_t::begin(*this, std::string());
    expat_callbacks_t::run_t run(*this);
    if (!feed(parser, text, feed_limit)) {
        expat_callbacks_t::throw_expat_error(*this);
    }
    expat_callbacks_t::throw_callback_error(*this);
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
