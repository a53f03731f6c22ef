// Conversion of element text and attribute values to typed CIM values, booleans and counts.
#include "cimxml/CIMXMLParser.h"

#include "core/Text.h"

namespace NQRN20 {

namespace {

const uint32_t kErrorLogLevel = 3;

// White space as formatted stream input skips it: blank, and tab to carriage return.
const char* SkipSpace(const char* p) {
    while (*p == ' ' || (*p >= '\t' && *p <= '\r')) {
        ++p;
    }
    return p;
}

} // namespace

// Every VALUE goes through here: the value is built where the caller receives it.
TCIMValue TCIMXMLParser::ParseValue(TCIMValue::TCIMType type, std::string& text) {
    // Only a reference's keys are looked up in the namespace.
    const boost::shared_ptr<ICIMNamespace> cimNamespace = type.GetElementType() == kCIMTypeReference
                                                              ? LockNamespace()
                                                              : boost::shared_ptr<ICIMNamespace>();
    try {
        return TCIMValue(type, text, cimNamespace);
    } catch (const TQRNException& error) {
        if (error.GetStatus() == kQRNStatusInvalidValue) {
            // The element keeps its declared type, so that it still says what it holds. An empty
            // text states no value: it is null without a word.
            const std::string trimmed = TrimXmlSpace(text);
            if (!trimmed.empty()) {
                LogError("Invalid value '" + trimmed + "' for type " +
                         TCIMValue::TCIMType(type.GetElementType()).GetName());
            }
            return TCIMValue(type, 0);
        }
        if (error.GetStatus() != kQRNStatusInvalidDateTime) {
            return TCIMValue();
        }
    }
    const TCIMDateTime fallback(1970, 1, 1, 0, 0, 0, 0, 0);
    TRootObject::GetCoreLogger()->Log(
        kErrorLogLevel, "Invalid datetime found on line " + std::to_string(GetCurLine()) +
                            ".  Defaulting the datetime to " + fallback.ToUIString() + ".");
    return TCIMValue(fallback);
}

bool TCIMXMLParser::ConvertBool(std::string& text) {
    const char* p = SkipSpace(text.c_str());
    return p[0] == 't' && p[1] == 'r' && p[2] == 'u' && p[3] == 'e';
}

uint32_t TCIMXMLParser::ConvertUnsignedInt(std::string& text) {
    const char* p = SkipSpace(text.c_str());
    const bool negative = *p == '-';
    if (*p == '-' || *p == '+') {
        ++p;
    }
    if (*p < '0' || *p > '9') {
        return 0;
    }
    uint64_t magnitude = 0;
    for (; *p >= '0' && *p <= '9'; ++p) {
        magnitude = magnitude * 10 + uint64_t(*p - '0');
        if (magnitude > UINT32_MAX) {
            return 0;
        }
    }
    return negative ? uint32_t(0 - magnitude) : uint32_t(magnitude);
}

} // namespace NQRN20
