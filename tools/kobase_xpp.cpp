// kobase-xpp: the XML preprocessor as a program.

#include <charconv>
#include <iostream>
#include <iterator>
#include <string>

#include "command_line.h"
#include "include_path.h"
#include "kobase.h"

namespace {

const char* const help =
    "Usage: kobase-xpp [OPTION]... FILE.xml\n"
    "Carries out the preprocessor directives of a document and writes the result.\n"
    "FILE.xml is the document; - is standard input.\n"
    "\n"
    "  -D NAME=VALUE   set a variable: an integer, a float or else a string\n"
    "  -I DIR          search DIR for included files\n"
    "  -o FILE         write to FILE instead of standard output\n"
    "  --trim          strip white space around the text of elements with children\n"
    "  --pretty        break lines around the top element\n"
    "  --no-include    drop \"include\" directives\n"
    "  --help          show this text\n"
    "  --version       show the version\n"
    "\n"
    "Exit status: 0 success, 1 the input is at fault, 2 the command line is.\n";

/// Lends another buffer to `std::cout`, on which the library reports, for as long as it lives.
class report_scope_t {
public:
    explicit report_scope_t(std::ostream& reports)
        : standard_output(std::cout.rdbuf(reports.rdbuf())) {}
    report_scope_t(const report_scope_t&) = delete;
    report_scope_t& operator=(const report_scope_t&) = delete;
    ~report_scope_t() { std::cout.rdbuf(standard_output); }

    /// The buffer that `std::cout` had.
    std::streambuf* standard_output_get() const { return standard_output; }

private:
    std::streambuf* standard_output;
};

/// Reads the whole of `text` as a number of type `T`; a word such as "nan" is none.
template <class T> bool number_read(const std::string& text, T& number) {
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end &&
           text.find_first_of("0123456789") != std::string::npos;
}

void argument_insert(ko::xpp::preprocessor_t& preprocessor, const std::string& text) {
    const tool::definition_t definition = tool::definition_read("-D", text);
    int integer = 0;
    double real = 0;
    if (number_read(definition.value, integer)) {
        preprocessor.insert_argument(definition.name, integer);
    } else if (number_read(definition.value, real)) {
        preprocessor.insert_argument(definition.name, real);
    } else {
        preprocessor.insert_argument(definition.name, definition.value);
    }
}

void source_load(ko::lxml::document_t& source, const std::string& file) {
    if (file == "-") {
        source.load_from_string({std::istreambuf_iterator<char>(std::cin), {}});
        return;
    }
    source.file_name = file;
    source.root = source.load_raw(file);
}

void output_write(ko::lxml::document_t& output, const tool::command_line_t& line,
                  std::streambuf* standard_output) {
    const bool trim = line.flag_get("--trim");
    const bool pretty = line.flag_get("--pretty");
    const std::string file = line.value_get("-o");
    if (!file.empty()) {
        output.save(file, trim, pretty);
        return;
    }
    std::ostream out(standard_output);
    if (output.root) {
        output.root->print(out, 0, 0, trim, pretty);
    }
    if (!out.flush()) {
        throw ko::exception_t("error writing standard output");
    }
}

/// Prepares a preprocessor for the options of the command line.
void prepare(ko::xpp::preprocessor_t& preprocessor, const tool::command_line_t& line) {
    for (const std::string& dir : line.values_get("-I")) {
        preprocessor.search_path_add(dir);
    }
    for (const std::string& argument : line.values_get("-D")) {
        argument_insert(preprocessor, argument);
    }
}

void run(const tool::command_line_t& line, const std::string& file,
         std::streambuf* standard_output) {
    ko::xpp::file_cache_t cache;
    tool::include_path_t include_path(line.values_get("-I"), cache);
    ko::lxml::document_t source;
    ko::lxml::document_t output;
    ko::xpp::preprocessor_t preprocessor(output, &cache);
    prepare(preprocessor, line);
    source_load(source, file);

    auto flags = ko::xpp::preprocessor_t::flags_e{};
    if (!line.flag_get("--no-include")) {
        include_path.load(source.root);
        flags = ko::xpp::preprocessor_t::process_include;
    }
    try {
        output.root = preprocessor.process(source.root, flags);
    } catch (const ko::exception_t& e) {
        throw ko::exception_t(include_path.explain(e.what()));
    }
    output_write(output, line, standard_output);
}

/// Says which document is at fault where the message does not begin with it.
std::string message_of(const std::string& file, const std::string& text) {
    const std::string name = file == "-" ? "standard input" : file;
    return text.compare(0, name.size(), name) == 0 ? text : name + ": " + text;
}

int process(const tool::command_line_t& line, const std::string& file) {
    const report_scope_t reports(std::cerr);
    try {
        run(line, file, reports.standard_output_get());
        return tool::status_ok;
    } catch (const ko::exception_t& e) {
        std::cerr << "kobase-xpp: " << message_of(file, e.what()) << '\n';
        return tool::status_failed;
    }
}

int main_checked(int argc, char** argv) {
    const tool::command_line_t line(argc, argv,
                                    {"--trim", "--pretty", "--no-include", "--help", "--version"},
                                    {"-D", "-I", "-o"});
    if (line.flag_get("--help")) {
        std::cout << help;
        return tool::status_ok;
    }
    if (line.flag_get("--version")) {
        std::cout << "kobase-xpp " << ko::version() << '\n';
        return tool::status_ok;
    }
    if (line.operands_get().size() != 1) {
        throw tool::usage_error_t("give one document");
    }
    return process(line, line.operands_get().front());
}

} // namespace

int main(int argc, char** argv) {
    try {
        return main_checked(argc, argv);
    } catch (const tool::usage_error_t& e) {
        std::cerr << "kobase-xpp: " << e.what() << "\nTry kobase-xpp --help.\n";
        return tool::status_usage;
    } catch (const std::exception& e) {
        std::cerr << "kobase-xpp: " << e.what() << '\n';
        return tool::status_failed;
    }
}
