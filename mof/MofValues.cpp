// Literals as the MOF parser reads them, and their conversion to values of a declared type.
#include "mof/MofValues.h"

#include <cctype>
#include <limits>

namespace NQRN20 {

namespace {

const char kNotAnInteger[] = "not an integer: ";
const char kTooLarge[] = "integer beyond 64 bits: ";
const char kDoesNotFit[] = " does not fit type ";
const char kArrayForScalar[] = "an array value for a scalar of type ";
const char kTrue[] = "true";
const char kFalse[] = "false";

struct TRadix {
    unsigned m_base;
    size_t m_skipFront;
    size_t m_skipBack;
};

// Which radix the body is written in, and how much of it is prefix or suffix.
TRadix RadixOf(std::string_view body) {
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

std::string Describe(const TMofConstant& literal) {
    switch (literal.m_kind) {
    case TMofConstant::kString:
        return "string \"" + std::string(literal.m_text) + "\"";
    case TMofConstant::kChar:
        return "character '" + std::string(literal.m_text) + "'";
    case TMofConstant::kAlias:
        return "alias $" + std::string(literal.m_text);
    default:
        return "value " + std::string(literal.m_text);
    }
}

[[noreturn]] void Mismatch(const TMofConstant& literal, TCIMValue::TCIMType type) {
    throw TMofValueError(Describe(literal) + kDoesNotFit + type.GetName());
}

// The kinds of literal each element type takes: a real also takes an integer, and a reference
// a path string or an alias.
bool Accepts(ECIMType type, TMofConstant::EKind kind) {
    switch (type) {
    case kCIMTypeBoolean:
        return kind == TMofConstant::kBoolean;
    case kCIMTypeString:
    case kCIMTypeDateTime:
        return kind == TMofConstant::kString;
    case kCIMTypeChar16:
        return kind == TMofConstant::kChar;
    case kCIMTypeReal32:
    case kCIMTypeReal64:
        return kind == TMofConstant::kReal || kind == TMofConstant::kInteger;
    case kCIMTypeReference:
        return kind == TMofConstant::kString || kind == TMofConstant::kAlias;
    default:
        return kind == TMofConstant::kInteger;
    }
}

// The text the core converts, by the same rules as element text, in the buffer given.
const std::string& CoreText(const TMofConstant& literal, ECIMType type, const TAliasLookup& aliases,
                            std::string& text) {
    const bool integer = type != kCIMTypeReal32 && type != kCIMTypeReal64;
    if (literal.m_kind == TMofConstant::kAlias) {
        text = aliases(literal.m_text);
    } else if (literal.m_kind == TMofConstant::kInteger && integer) {
        text = MofIntegerToDecimal(literal.m_text);
    } else {
        text.assign(literal.m_text);
    }
    return text;
}

// The literal as a scalar of the type, into the value given, whose string room serves again.
void ScalarToValue(const TMofConstant& literal, ECIMType type,
                   const boost::shared_ptr<ICIMNamespace>& ns, const TAliasLookup& aliases,
                   std::string& buffer, TCIMValue& value) {
    if (literal.m_kind == TMofConstant::kNull) {
        value = TCIMValue(type, 0);
        return;
    }
    if (!Accepts(type, literal.m_kind)) {
        Mismatch(literal, type);
    }
    // The commonest values need no conversion: a string as it stands, and a boolean's word.
    if (type == kCIMTypeString) {
        value.SetString(literal.m_text);
        return;
    }
    if (type == kCIMTypeBoolean) {
        static const TCIMValue kTrueValue(kCIMTypeBoolean, kTrue, nullptr);
        static const TCIMValue kFalseValue(kCIMTypeBoolean, kFalse, nullptr);
        value = literal.m_text.size() == sizeof kTrue - 1 ? kTrueValue : kFalseValue;
        return;
    }
    const std::string& text = CoreText(literal, type, aliases, buffer);
    try {
        value = TCIMValue(type, text, ns);
    } catch (const TQRNException&) {
        Mismatch(literal, type);
    }
}

} // namespace

std::string MofIntegerToDecimal(std::string_view literal) {
    const bool negative = !literal.empty() && literal[0] == '-';
    const std::string_view body =
        literal.substr(!literal.empty() && (negative || literal[0] == '+'));
    const TRadix radix = RadixOf(body);
    const size_t end = body.size() - radix.m_skipBack;
    if (body.empty() || radix.m_skipFront >= end) {
        throw TMofValueError(kNotAnInteger + std::string(literal));
    }
    uint64_t value = 0;
    for (size_t i = radix.m_skipFront; i < end; ++i) {
        const unsigned digit = DigitValue(body[i]);
        if (digit >= radix.m_base) {
            throw TMofValueError(kNotAnInteger + std::string(literal));
        }
        if (value > (std::numeric_limits<uint64_t>::max() - digit) / radix.m_base) {
            throw TMofValueError(kTooLarge + std::string(literal));
        }
        value = value * radix.m_base + digit;
    }
    return (negative ? "-" : "") + std::to_string(value);
}

// The names of TYPE attributes, reference aside: MOF writes a reference as "Class REF".
TCIMValue::TCIMType MofDataType(std::string_view word) {
    try {
        const TCIMValue::TCIMType type{std::string(word)};
        return type == kCIMTypeReference ? TCIMValue::TCIMType() : type;
    } catch (const TQRNException&) {
        return TCIMValue::TCIMType();
    }
}

void MofLiteralToValue(const TMofLiteral& literal, TCIMValue::TCIMType type, uint32_t arraySize,
                       const boost::shared_ptr<ICIMNamespace>& ns, const TAliasLookup& aliases,
                       std::string& text, TCIMValue& value) {
    const ECIMType element = type.GetElementType();
    if (!type.IsArray()) {
        if (literal.m_kind == TMofConstant::kArray) {
            throw TMofValueError(kArrayForScalar + type.GetName());
        }
        ScalarToValue(literal, element, ns, aliases, text, value);
        return;
    }
    if (literal.m_kind == TMofConstant::kNull) {
        value = TCIMValue(type, arraySize);
        return;
    }
    std::vector<TCIMValue> elements;
    const bool single = literal.m_kind != TMofConstant::kArray;
    elements.resize(single ? 1 : literal.m_elements.size());
    for (size_t i = 0; i < elements.size(); ++i) {
        ScalarToValue(single ? literal : literal.m_elements[i], element, ns, aliases, text,
                      elements[i]);
    }
    value.Set(type, arraySize, std::move(elements));
}

} // namespace NQRN20
