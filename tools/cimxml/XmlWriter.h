// The CIM-XML writer: a whole namespace as one declaration document that loads back into the
// same content.
#pragma once

#include "core/Core.h"

#include <ostream>
#include <string>

namespace NQRN20 {
namespace NXmlWriter {

// The qualifier declarations, then the classes with superclasses first, then the instances, each
// class and instance in a VALUE.OBJECT of one DECLGROUP; one element a line, indented.
void WriteCimXml(ICIMNamespace& cimNamespace, std::ostream& out);

// The text as it may stand in element content or in a quoted attribute value: the markup
// characters as entity references, control characters as character references. Bytes from 0x80
// on are left alone, so UTF-8 passes unchanged.
std::string EscapeXml(const std::string& text);

} // namespace NXmlWriter
} // namespace NQRN20
