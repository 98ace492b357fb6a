/// @file
/// The library's exception.
#pragma once

#include <exception>
#include <string>

#include "export.h"

namespace ko {

/// An error of the library: a message text, whole and ready to be shown.
///
/// Every failure of the library is a `ko::exception_t` or the derived `ko::errorcode_t`; what the
/// standard library throws of its own accord (allocation failure) passes through unchanged.
///
/// @par Owns
/// Its text.
/// @par Lives
/// As a plain value, copied freely.
/// @par Threads
/// Used by one thread at a time.
/// @par After an exception
/// Whoever catches it has the whole message; an assignment that throws leaves the one from
/// before.
/// @code
/// lxml::document_t document;
/// try {
///     document.load_raw("missing.xml");
/// } catch (const errorcode_t& e) { // reading XML
///     std::cout << e.what() << '\n'; // missing.xml: xml file open failure
/// } catch (const exception_t& e) { // everything else
///     std::cout << e.what() << '\n';
/// }
/// @endcode
class KO_API exception_t : public std::exception {
public:
    /// Takes `text` as the message, whole, whatever `%` it holds.
    explicit exception_t(const std::string& text);

    /// Formats the message as `printf` does, in the "C" locale.
    ///
    /// The expansion is cut after 510 characters, at an embedded zero byte, and before what
    /// cannot be formatted. A text that comes from a user or a file belongs into the arguments or
    /// into the other constructor, never into `format`. A null `format` gives "(null)".
    explicit exception_t(const char* format, ...) __attribute__((format(printf, 2, 3)));

    exception_t(const exception_t& other);            ///< copies the message
    exception_t& operator=(const exception_t& other); ///< copies the message
    ~exception_t() override;

    /// The message. The pointer is into this object and lives as long as it.
    const char* what() const noexcept override;

private:
    friend struct ko::layout_t;

    std::string message;
};

} // namespace ko
