#include "include_path.h"

#include <memory>

#include "exception/exception.h"

namespace tool {

namespace {

bool is_include(const ko::lxml::element_t& element) {
    return element.name_get() == "include" && element.ns_get() == ko::xpp::default_xpp_uri;
}

/// The value of the first attribute of that name in any namespace, or `missing`.
std::string attribute_text(const ko::lxml::element_t& element, const std::string& name,
                           const std::string& missing) {
    for (const ko::lxml::attribute_t* attribute : element.attributes) {
        if (attribute->name_get() == name) {
            return attribute->value;
        }
    }
    return missing;
}

} // namespace

include_path_t::include_path_t(const std::vector<std::string>& dirs, ko::xpp::file_cache_t& files)
    : cache(files) {
    for (const std::string& dir : dirs) {
        directories.push_back(dir + "/");
    }
}

void include_path_t::load(ko::lxml::element_t* root) {
    pending.push_back(root);
    while (!pending.empty()) {
        ko::lxml::element_t* const element = pending.back();
        pending.pop_back();
        if (is_include(*element)) {
            include(element);
        }
        pending.insert(pending.end(), element->children.begin(), element->children.end());
    }
}

void include_path_t::include(ko::lxml::element_t* directive) {
    const std::string name = attribute_text(*directive, "file", "");
    const bool wanted = attribute_text(*directive, "searchpath", "true") == "true";
    std::string path;
    if (wanted && !cache.get(name) && failures.count(name) == 0 &&
        ko::find_file(name, directories, path)) {
        file_load(name, path);
    }
}

void include_path_t::file_load(const std::string& name, const std::string& path) {
    auto document = std::make_unique<ko::lxml::document_t>(&cache.atom_table_get());
    try {
        document->file_name = path;
        document->root = document->load_raw(path);
    } catch (const ko::exception_t& e) {
        failures[name] = path + ": " + e.what();
        return;
    }
    ko::lxml::element_t* const root = document->root;
    cache.insert(name, document.get());
    document.release();
    pending.push_back(root);
}

std::string include_path_t::explain(const std::string& message) const {
    const std::string start = "failed to load xml file:";
    if (message.compare(0, start.size(), start) == 0) {
        const auto failure = failures.find(message.substr(start.size()));
        if (failure != failures.end()) {
            return failure->second;
        }
    }
    return message;
}

} // namespace tool
