#include "documents.h"

#include <iostream>
#include <iterator>

namespace tool {

namespace {

std::string standard_input_read() {
    return {std::istreambuf_iterator<char>(std::cin), {}};
}

/// What a message about a file says beside its name and the place in it.
std::string reason(std::string message, const std::string& file) {
    if (message.rfind(file + ": ", 0) == 0) {
        message.erase(0, file.size() + 2);
    }
    const std::string end = ": xml parse error";
    const std::size_t place = message.rfind(" line=");
    const bool placed = message.size() > end.size() && place != std::string::npos &&
                        message.compare(message.size() - end.size(), end.size(), end) == 0;
    return placed ? message.substr(0, place) : message;
}

} // namespace

std::string file_shown(const std::string& file) {
    return file.empty() || file == "-" ? "standard input" : file;
}

void document_load(ko::lxml::document_t& document, const std::string& file) {
    ko::lxml::load_options_t options;
    options.positions = true;
    options.quiet = true;
    if (file == "-") {
        document.load_from_string(standard_input_read(), options);
    } else {
        document.load(file, options);
    }
}

ko::xpp::place_t place_of(const ko::lxml::element_t& element) {
    ko::xpp::place_t place;
    place.file = element.document->file_name;
    if (const ko::lxml::position_t* position = element.document->position_get(&element)) {
        place.line = position->line;
        place.column = position->column;
    }
    place.directive = element.name_get();
    return place_shown(place);
}

ko::xpp::place_t place_shown(ko::xpp::place_t place) {
    place.file = file_shown(place.file);
    place.column += place.line == 0 ? 0 : 1;
    return place;
}

diagnostic_t load_diagnostic(const ko::exception_t& error, const std::string& file) {
    diagnostic_t diagnostic;
    diagnostic.code = "xml";
    diagnostic.place.file = file_shown(file);
    diagnostic.message = reason(error.what(), file);
    if (const auto* load = dynamic_cast<const ko::lxml::load_error_t*>(&error)) {
        diagnostic.place = place_shown({load->file, load->line, load->column, "", ""});
        diagnostic.message = reason(error.what(), load->file);
    }
    return diagnostic;
}

} // namespace tool
