/// @file
/// Every public header of the library.
#pragma once

#include "algebra/algebra.h"
#include "cmd_arg_parser/cmd_arg_parser.h"
#include "errorcode/errorcode.h"
#include "exception/exception.h"
#include "expat_parser/expat_parser.h"
#include "export.h"
#include "lxml/lxml.h"
#include "lxpath/lxpath.h"
#include "str/str.h"
#include "tokenizer/tokenizer.h"
#include "version.h"
#include "xml_preprocessor/xml_preprocessor.h"
