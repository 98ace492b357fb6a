/// @file
/// The receiver of what a parse finds, in expat's own terms.
#pragma once

namespace ko::xml {

/// Is told what a document holds. Texts are expat's and valid during the call; names have the
/// forms that `ko::xml::expat_parser_t` describes. An exception ends the events.
class events_t {
public:
    events_t() = default;
    events_t(const events_t&) = delete;
    events_t& operator=(const events_t&) = delete;

    /// @param attributes "name, value, name, value, ..., null"
    virtual void start_element(const char* name, const char* const* attributes) = 0;
    virtual void end_element(const char* name) = 0;
    virtual void character_data(const char* text, int size) = 0;
    virtual void start_cdata() = 0;
    virtual void end_cdata() = 0;

protected:
    ~events_t() = default;
};

} // namespace ko::xml
