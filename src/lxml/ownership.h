/// @file
/// The test that an element is still there.
#pragma once

namespace ko::lxml {

class document_t;
class element_t;

/// Makes sure that `document` owns `e`, before which nothing of `e` may be touched: an element
/// that is linked in two places is freed when the first of them is.
/// @throws ko::exception_t "element_free() -- given element not in document"
void require_owned(const document_t& document, const element_t* e);

} // namespace ko::lxml
