#include "expat_parser/run.h"

#include <cstdio>
#include <memory>

#include <expat.h>

#include "errorcode/errorcode.h"
#include "exception/uncancelled.h"
#include "expat_parser/feed.h"
#include "expat_parser/map_exceptions.h"
#include "expat_parser/memory.h"

namespace ko::xml {

namespace {

constexpr int read_size = 4096;

struct file_close_t {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using file_t = std::unique_ptr<std::FILE, file_close_t>;

/// @return the number of bytes read; 0 at the end of the file
std::size_t file_read(std::FILE* file, void* buffer, const std::string& name) {
    const std::size_t count = std::fread(buffer, 1, read_size, file);
    if (std::ferror(file) != 0) {
        throw errorcode_t(errorcode::xml_file_read, name);
    }
    return count;
}

/// @return the number of bytes read; 0 at the end of the stream
std::size_t stream_read(std::istream& in, void* buffer) {
    if (!in.good()) {
        if (in.bad() || !in.eof()) {
            throw errorcode_t(errorcode::xml_file_read);
        }
        return 0;
    }
    in.read(static_cast<char*>(buffer), read_size);
    if (in.bad()) {
        throw errorcode_t(errorcode::xml_file_read);
    }
    return static_cast<std::size_t>(in.gcount());
}

} // namespace

/// The functions that expat calls.
struct handlers_t {
    static void start_element(void* user, const char* name, const char** attributes) {
        run_t& run = *static_cast<run_t*>(user);
        run.guard([&] {
            run.refuse(run.limits.element_started(attributes));
            if (run.self.refusal.empty()) {
                run.events.start_element(name, attributes);
            }
        });
    }

    static void end_element(void* user, const char* name) {
        run_t& run = *static_cast<run_t*>(user);
        run.guard([&] { run.events.end_element(name); });
    }

    static void character_data(void* user, const char* text, int size) {
        run_t& run = *static_cast<run_t*>(user);
        run.guard([&] { run.events.character_data(text, size); });
    }

    static void start_cdata(void* user) {
        run_t& run = *static_cast<run_t*>(user);
        run.guard([&] { run.events.start_cdata(); });
    }

    static void end_cdata(void* user) {
        run_t& run = *static_cast<run_t*>(user);
        run.guard([&] { run.events.end_cdata(); });
    }

    static void start_namespace(void* user, const char* prefix, const char* uri) {
        run_t& run = *static_cast<run_t*>(user);
        run.refuse(run.limits.namespace_declared(prefix, uri));
    }

    /// Stops expat before a reference to one entity too many can be expanded. The text of a
    /// parameter entity is never expanded.
    static void entity_declaration(void* user, const char*, int is_parameter, const char* value,
                                   int size, const char*, const char*, const char*, const char*) {
        if (is_parameter == 0 && value != nullptr) {
            run_t& run = *static_cast<run_t*>(user);
            run.refuse(run.limits.entity_declared({value, static_cast<std::size_t>(size)}));
        }
    }

    static void attribute_declaration(void* user, const char* element, const char*, const char*,
                                      const char*, int) {
        run_t& run = *static_cast<run_t*>(user);
        run.guard([&] { run.refuse(run.limits.attribute_declared(element)); });
    }

    static void start_doctype(void* user, const char*, const char*, const char*, int) {
        static_cast<run_t*>(user)->refuse("document type declaration is forbidden");
    }

    static void attach(run_t& run, XML_Parser parser) {
        XML_SetUserData(parser, &run);
        XML_SetElementHandler(parser, start_element, end_element);
        XML_SetCharacterDataHandler(parser, character_data);
        XML_SetCdataSectionHandler(parser, start_cdata, end_cdata);
        XML_SetStartNamespaceDeclHandler(parser, start_namespace);
        XML_SetEntityDeclHandler(parser, entity_declaration);
        XML_SetAttlistDeclHandler(parser, attribute_declaration);
    }
};

run_t::~run_t() {
    if (is_attached) {
        XML_SetUserData(self.parser, nullptr);
    }
}

void run_t::doctype_forbid() {
    XML_SetStartDoctypeDeclHandler(self.parser, handlers_t::start_doctype);
}

void run_t::parse_file(const std::string& name) {
    map_exceptions([&] {
        begin(name);
        const file_t file(std::fopen(name.c_str(), "rt"));
        if (!file) {
            throw errorcode_t(errorcode::xml_file_open, name);
        }
        require_unused();
        parse_pieces([&](void* buffer) { return file_read(file.get(), buffer, name); });
    });
}

void run_t::parse_stream(std::istream& in) {
    map_exceptions([&] {
        begin(std::string());
        require_unused();
        parse_pieces([&](void* buffer) { return stream_read(in, buffer); });
    });
}

void run_t::parse_text(std::string_view text) {
    begin(std::string());
    require_unused();
    const uncancelled_t uncancelled;
    const expat_memory_t::use_t use(*self.memory);
    self.memory->input_add(text.size());
    if (!feed(self.parser, text, feed_limit)) {
        throw_parse_error();
    }
    throw_callback_error();
}

/// Where the next piece is to be put.
void* run_t::piece_buffer() {
    const expat_memory_t::use_t use(*self.memory);
    void* const buffer = XML_GetBuffer(self.parser, read_size);
    if (buffer == nullptr) {
        throw errorcode_t(errorcode::xml_internal, "XML_GetBuffer");
    }
    return buffer;
}

template <class R> void run_t::parse_pieces(const R& read) {
    for (bool is_final = false; !is_final;) {
        const std::size_t count = read(piece_buffer());
        is_final = count == 0;
        const uncancelled_t uncancelled;
        const expat_memory_t::use_t use(*self.memory);
        self.memory->input_add(count);
        if (XML_ParseBuffer(self.parser, static_cast<int>(count), is_final ? 1 : 0) ==
            XML_STATUS_ERROR) {
            throw_parse_error();
        }
        throw_callback_error();
    }
}

void run_t::begin(const std::string& name) {
    self.error_code = 0;
    self.error_message.clear();
    self.file_name = name;
}

void run_t::require_unused() {
    XML_ParsingStatus status;
    XML_GetParsingStatus(self.parser, &status);
    if (status.parsing != XML_INITIALIZED) {
        throw_parse_error();
    }
    handlers_t::attach(*this, self.parser);
    is_attached = true;
}

void run_t::throw_parse_error() {
    if (self.memory->is_denied()) {
        throw_callback_error();
        throw errorcode_t(errorcode::xml_parse_error, self.refusal);
    }
    throw errorcode_t(errorcode::xml_parse_error, error_text() + (" " + position_describe()));
}

/// What expat complains of.
const char* run_t::error_text() const {
    static_assert(memory_factor == 250 && memory_free == 8388608);
    if (self.memory->is_exceeded()) {
        return "names and values take more memory than 8 MiB and 250 times the input";
    }
    const XML_Error error = XML_GetErrorCode(self.parser);
    return XML_ErrorString(error == XML_ERROR_NONE ? XML_ERROR_FINISHED : error);
}

std::string run_t::position_describe() {
    line = self.line_number_get();
    column = self.column_number_get();
    return self.position_describe();
}

/// Only the code is tested: an exception of unknown type left a message but no code, and callers
/// rely on such a parse ending normally (quirk "silent strangers").
void run_t::throw_callback_error() const {
    if (self.error_code != 0) {
        throw errorcode_t(self.error_code, self.error_message);
    }
}

template <class A> void run_t::guard(const A& action) noexcept {
    if (!self.error_message.empty() || !self.refusal.empty()) {
        return;
    }
    try {
        action();
    } catch (const refusal_t& e) {
        refuse(e.text.c_str());
    } catch (const errorcode_t& e) {
        record(e.code_get(), e.what());
    } catch (const std::exception& e) {
        record(errorcode::xml_rethrow_exception, e.what());
    } catch (...) {
        record(self.error_code, "(unknown)");
    }
}

void run_t::record(unsigned long code, const char* text) noexcept {
    try {
        self.error_message = std::string(text) + " " + position_describe();
        self.error_code = static_cast<unsigned>(code);
    } catch (...) {
        // Out of memory; this text fits into a string without an allocation.
        self.error_message = "std::bad_alloc";
        self.error_code = static_cast<unsigned>(errorcode::xml_rethrow_exception);
    }
}

/// Expat looks only now and then whether it was stopped; without memory it goes no further.
void run_t::refuse(const char* why) noexcept {
    if (why == nullptr || !self.refusal.empty()) {
        return;
    }
    try {
        self.refusal = std::string(why) + " " + position_describe();
    } catch (const std::exception& e) {
        record(errorcode::xml_rethrow_exception, e.what());
    }
    XML_StopParser(self.parser, XML_FALSE);
    self.memory->deny();
}

} // namespace ko::xml
