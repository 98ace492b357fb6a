// The ways in which a document is loaded.

#include <cxxabi.h>

#include "exception/diagnosis.h"
#include "expat_parser/run.h"
#include "lxml/document.h"
#include "lxml/sax.h"

namespace ko::lxml {

namespace {

/// A load that keeps what it made when it fails, as those without options do.
constexpr load_options_t plain = {false, false, false, 0, 0, false};

/// One load: the parser, the builder and what feeds them.
struct loading_t {
    loading_t(document_t& target, const load_options_t& options)
        : builder(target, options, parser), run(parser, builder) {
        if (options.forbid_doctype) {
            run.doctype_forbid();
        }
    }

    xml::expat_parser_t parser{true};
    sax_t builder;
    xml::run_t run;
};

} // namespace

bool document_t::load(const std::string& file) {
    file_name = file;
    try {
        root = load_raw(file);
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (...) {
        diagnose("Caught exception in ", file);
        throw;
    }
    return true;
}

element_t* document_t::load_raw(const std::string& file) {
    loading_t loading(*this, plain);
    loading.run.parse_file(file);
    return loading.builder.root_get();
}

bool document_t::load_from_string(const std::string& text) {
    root = load_from_string_raw(text);
    return true;
}

element_t* document_t::load_from_string_raw(const std::string& text) {
    loading_t loading(*this, plain);
    loading.run.parse_text(text);
    return loading.builder.root_get();
}

/// What a load with options does when it ends early, by an exception or a cancellation.
class document_t::load_guard_t {
public:
    load_guard_t(document_t& target, const load_options_t& settings)
        : loading(target, settings), document(target), options(settings) {
        if (options.discard_on_failure) {
            uri_to_prefix = document.uri_to_prefix;
            prefix_to_uri = document.prefix_to_uri;
        }
    }
    load_guard_t(const load_guard_t&) = delete;
    load_guard_t& operator=(const load_guard_t&) = delete;
    ~load_guard_t() {
        if (!is_done && options.discard_on_failure) {
            loading.builder.discard();
            document.uri_to_prefix.swap(uri_to_prefix);
            document.prefix_to_uri.swap(prefix_to_uri);
        }
    }

    template <class P> bool load(const std::string& file, const P& parse) {
        try {
            parse(loading.run);
        } catch (const errorcode_t& e) {
            throw load_error_t(e, file, loading.run.line_get(), loading.run.column_get());
        }
        document.root = loading.builder.root_get();
        is_done = true;
        return true;
    }

private:
    loading_t loading;
    document_t& document;
    const load_options_t& options;
    std::map<int, int> uri_to_prefix;
    std::map<int, int> prefix_to_uri;
    bool is_done = false;
};

bool document_t::load(const std::string& file, const load_options_t& options) {
    try {
        std::string name = file;
        load_guard_t(*this, options).load(file, [&](xml::run_t& run) { run.parse_file(file); });
        file_name.swap(name);
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (...) {
        if (!options.quiet) {
            diagnose("Caught exception in ", file);
        }
        throw;
    }
    return true;
}

bool document_t::load(std::istream& in, const load_options_t& options) {
    return load_guard_t(*this, options).load(std::string(), [&](xml::run_t& run) {
        run.parse_stream(in);
    });
}

bool document_t::load_from_string(const std::string& text, const load_options_t& options) {
    return load_guard_t(*this, options).load(std::string(), [&](xml::run_t& run) {
        run.parse_text(text);
    });
}

} // namespace ko::lxml
