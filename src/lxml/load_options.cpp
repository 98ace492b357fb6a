#include "lxml/load_options.h"

namespace ko::lxml {

load_error_t::load_error_t(const errorcode_t& source, const std::string& source_file,
                           unsigned long source_line, unsigned long source_column)
    : errorcode_t(source.what(), source.code_get()), file(source_file), line(source_line),
      column(source_column) {}

load_error_t::~load_error_t() = default;

} // namespace ko::lxml
