#include "include_search.h"

#include <filesystem>
#include <unistd.h>

#include "survey.h"

namespace tool {

namespace {

bool is_readable_file(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), R_OK) == 0;
}

/// The folder of a document, with its "/".
std::string folder_of(const ko::lxml::document_t& document) {
    return document.file_name.substr(0, document.file_name.rfind('/') + 1);
}

} // namespace

std::string include_search_t::operator()(const std::string& file,
                                         const ko::lxml::element_t& directive) const {
    const ko::lxml::attribute_t* search = attribute_of(directive, "searchpath");
    if (search == nullptr || search->value == "true") {
        // An entry of the library's own search path ends in a backslash.
        for (const char* separator : {"/", "\\"}) {
            for (const std::string& directory : directories) {
                const std::string path = directory + separator + file;
                if (is_readable_file(path)) {
                    return path;
                }
            }
        }
    }
    const std::string path = folder_of(*directive.document) + file;
    return is_readable_file(path) ? path : std::string();
}

} // namespace tool
