// Literals as the MOF parser reads them, and their conversion to values of a declared type.
#include "mof/MofValues.h"

#include "core/Text.h"

#include <cctype>
#include <limits>

namespace NQRN20 {

namespace {

const char kNotAnInteger[] = "not an integer: ";
const char kTooLarge[] = "integer beyond 64 bits: ";
const char kDoesNotFit[] = " does not fit type ";
const char kArrayForScalar[] = "an array value for a scalar of type ";

const char* const kDataTypes[] = {"boolean", "string", "char16", "uint8",   "sint8",
                                  "uint16",  "sint16", "uint32", "sint32",  "uint64",
                                  "sint64",  "real32", "real64", "datetime"};

struct TRadix {
    unsigned m_base;
    size_t m_skipFront;
    size_t m_skipBack;
};

// Which radix the body is written in, and how much of it is prefix or suffix.
TRadix RadixOf(const std::string& body) {
    if (body.size() > 2 && body[0] == '0' && (body[1] == 'x' || body[1] == 'X')) {
        return {16, 2, 0};
    }
    const char last = body.empty() ? 0 : body.back();
    if (body.size() > 1 && (last == 'b' || last == 'B')) {
        return {2, 0, 1};
    }
    return {body.size() > 1 && body[0] == '0' ? 8u : 10u, 0, 0};
}

unsigned DigitValue(char c) {
    const int lower = std::tolower(static_cast<unsigned char>(c));
    if (std::isdigit(lower)) {
        return unsigned(lower - '0');
    }
    return std::isxdigit(lower) ? unsigned(lower - 'a' + 10) : 99;
}

std::string Describe(const TMofLiteral& literal) {
    switch (literal.m_kind) {
    case TMofLiteral::kString:
        return "string \"" + literal.m_text + "\"";
    case TMofLiteral::kChar:
        return "character '" + literal.m_text + "'";
    case TMofLiteral::kAlias:
        return "alias $" + literal.m_text;
    default:
        return "value " + literal.m_text;
    }
}

[[noreturn]] void Mismatch(const TMofLiteral& literal, TCIMValue::TCIMType type) {
    throw TMofValueError(Describe(literal) + kDoesNotFit + type.GetName());
}

// The kinds of literal each element type takes: a real also takes an integer, and a reference
// a path string or an alias.
bool Accepts(ECIMType type, TMofLiteral::EKind kind) {
    switch (type) {
    case kCIMTypeBoolean:
        return kind == TMofLiteral::kBoolean;
    case kCIMTypeString:
    case kCIMTypeDateTime:
        return kind == TMofLiteral::kString;
    case kCIMTypeChar16:
        return kind == TMofLiteral::kChar;
    case kCIMTypeReal32:
    case kCIMTypeReal64:
        return kind == TMofLiteral::kReal || kind == TMofLiteral::kInteger;
    case kCIMTypeReference:
        return kind == TMofLiteral::kString || kind == TMofLiteral::kAlias;
    default:
        return kind == TMofLiteral::kInteger;
    }
}

// The text the core converts, by the same rules as element text.
std::string CoreText(const TMofLiteral& literal, ECIMType type, const TAliasLookup& aliases) {
    if (literal.m_kind == TMofLiteral::kAlias) {
        return aliases(literal.m_text);
    }
    const bool integer = type != kCIMTypeReal32 && type != kCIMTypeReal64;
    return literal.m_kind == TMofLiteral::kInteger && integer ? MofIntegerToDecimal(literal.m_text)
                                                              : literal.m_text;
}

TCIMValue ScalarToValue(const TMofLiteral& literal, ECIMType type,
                        const boost::shared_ptr<ICIMNamespace>& ns, const TAliasLookup& aliases) {
    if (literal.m_kind == TMofLiteral::kNull) {
        return TCIMValue(type, 0);
    }
    if (!Accepts(type, literal.m_kind)) {
        Mismatch(literal, type);
    }
    const std::string text = CoreText(literal, type, aliases);
    try {
        return TCIMValue(type, text, ns);
    } catch (const TQRNException&) {
        Mismatch(literal, type);
    }
}

} // namespace

std::string MofIntegerToDecimal(const std::string& literal) {
    const bool negative = !literal.empty() && literal[0] == '-';
    const std::string body = literal.substr(!literal.empty() && (negative || literal[0] == '+'));
    const TRadix radix = RadixOf(body);
    const size_t end = body.size() - radix.m_skipBack;
    if (body.empty() || radix.m_skipFront >= end) {
        throw TMofValueError(kNotAnInteger + literal);
    }
    uint64_t value = 0;
    for (size_t i = radix.m_skipFront; i < end; ++i) {
        const unsigned digit = DigitValue(body[i]);
        if (digit >= radix.m_base) {
            throw TMofValueError(kNotAnInteger + literal);
        }
        if (value > (std::numeric_limits<uint64_t>::max() - digit) / radix.m_base) {
            throw TMofValueError(kTooLarge + literal);
        }
        value = value * radix.m_base + digit;
    }
    return (negative ? "-" : "") + std::to_string(value);
}

TCIMValue::TCIMType MofDataType(const std::string& word) {
    for (const char* name : kDataTypes) {
        if (EqualNoCase(word, name)) {
            return TCIMValue::TCIMType(std::string(name));
        }
    }
    return kCIMTypeNone;
}

TCIMValue MofLiteralToValue(const TMofLiteral& literal, TCIMValue::TCIMType type,
                            uint32_t arraySize, const boost::shared_ptr<ICIMNamespace>& ns,
                            const TAliasLookup& aliases) {
    const ECIMType element = type.GetElementType();
    if (!type.IsArray()) {
        if (literal.m_kind == TMofLiteral::kArray) {
            throw TMofValueError(kArrayForScalar + type.GetName());
        }
        return ScalarToValue(literal, element, ns, aliases);
    }
    if (literal.m_kind == TMofLiteral::kNull) {
        return TCIMValue(type, arraySize);
    }
    std::vector<TCIMValue> elements;
    if (literal.m_kind != TMofLiteral::kArray) {
        elements.push_back(ScalarToValue(literal, element, ns, aliases));
    }
    for (const TMofLiteral& each : literal.m_elements) {
        elements.push_back(ScalarToValue(each, element, ns, aliases));
    }
    TCIMValue value;
    value.Set(type, arraySize, std::move(elements));
    return value;
}

} // namespace NQRN20
