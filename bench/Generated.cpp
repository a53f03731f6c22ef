// Generated documents for the scaling and error-count measurements.
#include "Generated.h"

#include <string>

namespace NBench {

namespace {

const char kHeader[] = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                       "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n<DECLARATION>\n<DECLGROUP>\n";
const char kFooter[] = "</DECLGROUP>\n</DECLARATION>\n</CIM>\n";

const char kQualifierDeclarations[] =
    "<QUALIFIER.DECLARATION NAME=\"Description\" TYPE=\"string\" TRANSLATABLE=\"true\">\n"
    "<SCOPE CLASS=\"true\" PROPERTY=\"true\" METHOD=\"true\" PARAMETER=\"true\"/>\n"
    "</QUALIFIER.DECLARATION>\n"
    "<QUALIFIER.DECLARATION NAME=\"Key\" TYPE=\"boolean\" OVERRIDABLE=\"false\">\n"
    "<SCOPE PROPERTY=\"true\" REFERENCE=\"true\"/>\n<VALUE>false</VALUE>\n"
    "</QUALIFIER.DECLARATION>\n"
    "<QUALIFIER.DECLARATION NAME=\"ValueMap\" TYPE=\"string\" ISARRAY=\"true\">\n"
    "<SCOPE PROPERTY=\"true\" METHOD=\"true\" PARAMETER=\"true\"/>\n"
    "</QUALIFIER.DECLARATION>\n";

// One class: each # stands for its number, the @ for its SUPERCLASS attribute or nothing.
const char kClass[] =
    "<VALUE.OBJECT>\n<CLASS NAME=\"Gen_Class#\"@>\n"
    "<QUALIFIER NAME=\"Description\" TYPE=\"string\" TRANSLATABLE=\"true\">\n"
    "<VALUE>Class # of a generated schema. It describes a managed element whose properties "
    "follow, with the meaning and units of each.</VALUE>\n</QUALIFIER>\n"
    "<PROPERTY NAME=\"Id#\" TYPE=\"string\">\n"
    "<QUALIFIER NAME=\"Key\" TYPE=\"boolean\" OVERRIDABLE=\"false\">\n<VALUE>true</VALUE>\n"
    "</QUALIFIER>\n"
    "<QUALIFIER NAME=\"Description\" TYPE=\"string\" TRANSLATABLE=\"true\">\n"
    "<VALUE>Identifies the element within its scope.</VALUE>\n</QUALIFIER>\n</PROPERTY>\n"
    "<PROPERTY NAME=\"Count\" TYPE=\"uint32\">\n"
    "<QUALIFIER NAME=\"Description\" TYPE=\"string\" TRANSLATABLE=\"true\">\n"
    "<VALUE>How many times the element was used.</VALUE>\n</QUALIFIER>\n"
    "<VALUE>#</VALUE>\n</PROPERTY>\n"
    "<PROPERTY.ARRAY NAME=\"States\" TYPE=\"uint16\">\n"
    "<QUALIFIER NAME=\"ValueMap\" TYPE=\"string\">\n<VALUE.ARRAY>\n<VALUE>0</VALUE>\n"
    "<VALUE>1</VALUE>\n<VALUE>2</VALUE>\n</VALUE.ARRAY>\n</QUALIFIER>\n</PROPERTY.ARRAY>\n"
    "<PROPERTY.REFERENCE NAME=\"Owner\" REFERENCECLASS=\"Gen_Class0\"/>\n"
    "<METHOD NAME=\"Reset\" TYPE=\"uint32\">\n"
    "<QUALIFIER NAME=\"Description\" TYPE=\"string\" TRANSLATABLE=\"true\">\n"
    "<VALUE>Starts the element over.</VALUE>\n</QUALIFIER>\n"
    "<PARAMETER NAME=\"Force\" TYPE=\"boolean\"/>\n</METHOD>\n"
    "</CLASS>\n</VALUE.OBJECT>\n";

// Each class derives from the first of its group of four, so no chain is longer than two.
std::string SuperclassOf(int number) {
    if (number % 4 == 0) {
        return std::string();
    }
    return " SUPERCLASS=\"Gen_Class" + std::to_string(number - number % 4) + "\"";
}

void AppendClass(std::string& document, int number) {
    const std::string digits = std::to_string(number);
    for (const char* p = kClass; *p != 0; ++p) {
        if (*p == '#') {
            document += digits;
        } else if (*p == '@') {
            document += SuperclassOf(number);
        } else {
            document += *p;
        }
    }
}

} // namespace

std::string GenerateSchema(size_t bytes) {
    std::string document = kHeader;
    document += kQualifierDeclarations;
    for (int number = 0; document.size() + sizeof kFooter < bytes; ++number) {
        AppendClass(document, number);
    }
    return document + kFooter;
}

std::string GenerateErrors(size_t errors) {
    std::string document = kHeader;
    for (size_t i = 0; i < errors; ++i) {
        document += "<VALUE.OBJECT/>\n";
    }
    return document + kFooter;
}

} // namespace NBench
