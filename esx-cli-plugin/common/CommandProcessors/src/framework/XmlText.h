/// @file
/// Untrusted text in an XML document.
#pragma once

#include "TavuString.h"

#include <string_view>

/// Appends `text` as XML 1.0 in UTF-8, for an element or a quoted attribute: a parser returns the same bytes, carriage
/// returns included. In an attribute, tabs and line feeds come back as blanks. What XML can't hold is replaced by
/// U+FFFD, one for each:
///  - control byte other than tab, line feed and carriage return
///  - character U+FFFE and U+FFFF
///  - start of a UTF-8 sequence that is cut short, by the end of the text or by a byte that doesn't continue it
///  - byte of anything else that isn't UTF-8: overlong forms, surrogates, values above U+10FFFF, stray bytes
/// For invalid UTF-8 this is the replacement of maximal subparts that Unicode recommends.
void AppendXmlText(TavuString& document, std::string_view text);
