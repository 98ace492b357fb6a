/// @file
/// A parser that writes down what it is called with.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "expat_parser/expat_parser.h"

namespace test {

using events_t = std::vector<std::string>;

/// Collects one line an event; neighbouring pieces of character data become one line.
class recorder_t : public ko::xml::expat_parser_t {
public:
    explicit recorder_t(bool namespaces = true) : expat_parser_t(namespaces) {}

    void start_element(const std::string& name, const attribute_map_t& attributes) override {
        std::string line = "start " + name;
        for (const auto& [key, value] : attributes) {
            line += std::string(" ") + key + "=" + value;
        }
        add(line);
    }
    void end_element(const std::string& name) override { add("end " + name); }
    void character_data(const std::string& text) override {
        ++text_calls;
        if (!events.empty() && events.back().rfind("text ", 0) == 0) {
            events.back() += text;
            act(events.back());
        } else {
            add("text " + text);
        }
    }
    void start_cdata() override { add("start_cdata"); }
    void end_cdata() override { add("end_cdata"); }

    events_t events;
    int text_calls = 0;
    /// Called with every line after it is recorded.
    std::function<void(const std::string&)> on_event;

private:
    void add(const std::string& line) {
        events.push_back(line);
        act(line);
    }
    void act(const std::string& line) const {
        if (on_event) {
            on_event(line);
        }
    }
};

/// The events of a document that parses.
inline events_t events_of(const std::string& text, bool namespaces = true) {
    recorder_t recorder(namespaces);
    recorder.parse_buffer(text);
    return recorder.events;
}

} // namespace test
