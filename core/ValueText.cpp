// Conversion of CIM-XML value text to TCIMValue, and of values back to text.
#include "core/Status.h"
#include "core/Text.h"
#include "core/Value.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace NQRN20 {

namespace {

[[noreturn]] void Invalid() {
    throw TQRNException(kQRNStatusInvalidValue);
}

struct TIntegerRange {
    ECIMType type;
    int64_t min;
    uint64_t max;
};

const TIntegerRange kIntegerRanges[] = {
    {kCIMTypeUint8, 0, std::numeric_limits<uint8_t>::max()},
    {kCIMTypeSint8, std::numeric_limits<int8_t>::min(), std::numeric_limits<int8_t>::max()},
    {kCIMTypeUint16, 0, std::numeric_limits<uint16_t>::max()},
    {kCIMTypeSint16, std::numeric_limits<int16_t>::min(), std::numeric_limits<int16_t>::max()},
    {kCIMTypeUint32, 0, std::numeric_limits<uint32_t>::max()},
    {kCIMTypeSint32, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()},
    {kCIMTypeUint64, 0, std::numeric_limits<uint64_t>::max()},
    {kCIMTypeSint64, std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max()},
};

const TIntegerRange& RangeOf(ECIMType type) {
    for (const TIntegerRange& range : kIntegerRanges) {
        if (range.type == type) {
            return range;
        }
    }
    throw TQRNException(kQRNStatusInvalidType);
}

// An integer as sign and magnitude: decimal digits, or hexadecimal after "0x".
void ParseInteger(const std::string& text, bool& negative, uint64_t& magnitude) {
    const char* p = text.data();
    const char* const end = p + text.size();
    negative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+')) {
        ++p;
    }
    int base = 10;
    if (end - p > 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
        base = 16;
        p += 2;
    }
    // from_chars would accept a second sign; digits must follow at once.
    if (p == end || *p == '-' || *p == '+') {
        Invalid();
    }
    const std::from_chars_result result = std::from_chars(p, end, magnitude, base);
    if (result.ec != std::errc() || result.ptr != end) {
        Invalid();
    }
}

uint64_t ParseUnsigned(const std::string& text, const TIntegerRange& range) {
    bool negative = false;
    uint64_t magnitude = 0;
    ParseInteger(text, negative, magnitude);
    if (magnitude > range.max || (negative && magnitude != 0)) {
        Invalid();
    }
    return magnitude;
}

int64_t ParseSigned(const std::string& text, const TIntegerRange& range) {
    bool negative = false;
    uint64_t magnitude = 0;
    ParseInteger(text, negative, magnitude);
    // The magnitude of the minimum, computed without overflowing int64_t.
    const uint64_t negativeLimit = static_cast<uint64_t>(-(range.min + 1)) + 1;
    if (negative ? magnitude > negativeLimit : magnitude > range.max) {
        Invalid();
    }
    return negative ? static_cast<int64_t>(0 - magnitude) : static_cast<int64_t>(magnitude);
}

bool ParseBoolean(const std::string& text) {
    if (EqualNoCase(text, "true")) {
        return true;
    }
    if (EqualNoCase(text, "false")) {
        return false;
    }
    Invalid();
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Decimal digits with optional fraction and exponent; from_chars alone would also take "inf",
// "nan(...)" and a missing mantissa.
bool IsDecimalReal(const char* p, const char* end) {
    unsigned mantissaDigits = 0;
    for (; p != end && IsDigit(*p); ++p) {
        ++mantissaDigits;
    }
    if (p != end && *p == '.') {
        for (++p; p != end && IsDigit(*p); ++p) {
            ++mantissaDigits;
        }
    }
    if (mantissaDigits == 0) {
        return false;
    }
    if (p != end && (*p == 'e' || *p == 'E')) {
        ++p;
        if (p != end && (*p == '+' || *p == '-')) {
            ++p;
        }
        if (p == end || !IsDigit(*p)) {
            return false;
        }
        while (p != end && IsDigit(*p)) {
            ++p;
        }
    }
    return p == end;
}

template <class T>
T ParseReal(const std::string& text) {
    const char* p = text.data();
    const char* const end = p + text.size();
    const bool negative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+')) {
        ++p;
    }
    const std::string body(p, end);
    if (EqualNoCase(body, "INF")) {
        return negative ? -std::numeric_limits<T>::infinity() : std::numeric_limits<T>::infinity();
    }
    if (EqualNoCase(body, "NaN") && p == text.data()) {
        return std::numeric_limits<T>::quiet_NaN();
    }
    if (!IsDecimalReal(p, end)) {
        Invalid();
    }
    T value = 0;
    const std::from_chars_result result = std::from_chars(p, end, value);
    if (result.ec != std::errc() || result.ptr != end) {
        Invalid();
    }
    return negative ? -value : value;
}

// One byte, or one UTF-8 sequence of a code point up to U+FFFF.
uint64_t ParseChar16(const std::string& text) {
    const std::string t = text.size() == 1 ? text : TrimXmlSpace(text);
    const auto byte = [&t](std::string::size_type i) { return static_cast<unsigned char>(t[i]); };
    const auto continuation = [&byte](std::string::size_type i) {
        return (byte(i) & 0xC0) == 0x80;
    };
    if (t.size() == 1) {
        return byte(0);
    }
    if (t.size() == 2 && (byte(0) & 0xE0) == 0xC0 && continuation(1)) {
        const uint64_t code = ((byte(0) & 0x1Fu) << 6) | (byte(1) & 0x3Fu);
        if (code >= 0x80) {
            return code;
        }
    }
    if (t.size() == 3 && (byte(0) & 0xF0) == 0xE0 && continuation(1) && continuation(2)) {
        const uint64_t code =
            ((byte(0) & 0x0Fu) << 12) | ((byte(1) & 0x3Fu) << 6) | (byte(2) & 0x3Fu);
        if (code >= 0x800 && (code < 0xD800 || code > 0xDFFF)) {
            return code;
        }
    }
    Invalid();
}

std::string Char16ToText(uint64_t code) {
    std::string text;
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | (code >> 6));
        text += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (code >> 12));
        text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code & 0x3F));
    }
    return text;
}

// The shortest text that reads back as the same number.
template <class T>
std::string RealToText(T value) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-INF" : "INF";
    }
    char buffer[64];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

template <class T>
std::string IntegerToText(T value) {
    char buffer[32];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

} // namespace

void TCIMValue::AssignText(ECIMType type, const std::string& text,
                           const boost::shared_ptr<ICIMNamespace>& cimNamespace) {
    // Strings and char16 take the text as it stands, so only the other types pay for the copy.
    const auto trimmed = [&text] { return TrimXmlSpace(text); };
    switch (type) {
    case kCIMTypeBoolean:
        m_content = ParseBoolean(trimmed());
        break;
    case kCIMTypeString:
        // In place: assigning would copy the text into a temporary first.
        m_content.emplace<std::string>(text);
        break;
    case kCIMTypeChar16:
        m_content = ParseChar16(text);
        break;
    case kCIMTypeUint8:
    case kCIMTypeUint16:
    case kCIMTypeUint32:
    case kCIMTypeUint64:
        m_content = ParseUnsigned(trimmed(), RangeOf(type));
        break;
    case kCIMTypeSint8:
    case kCIMTypeSint16:
    case kCIMTypeSint32:
    case kCIMTypeSint64:
        m_content = ParseSigned(trimmed(), RangeOf(type));
        break;
    case kCIMTypeReal32:
        m_content = static_cast<double>(ParseReal<float>(trimmed()));
        break;
    case kCIMTypeReal64:
        m_content = ParseReal<double>(trimmed());
        break;
    case kCIMTypeDateTime:
        m_content = TCIMDateTime(trimmed());
        break;
    case kCIMTypeReference:
        m_content = TReferenceContent{
            std::make_shared<const TCIMReference>(TCIMReference::FromPath(trimmed(), cimNamespace)),
            {}};
        break;
    default:
        throw TQRNException(kQRNStatusInvalidType);
    }
    m_type = type;
    m_null = false;
}

std::string TCIMValue::ScalarToString() const {
    switch (m_type) {
    case kCIMTypeBoolean:
        return std::get<bool>(m_content) ? "true" : "false";
    case kCIMTypeString:
        return std::get<std::string>(m_content);
    case kCIMTypeChar16:
        return Char16ToText(std::get<uint64_t>(m_content));
    case kCIMTypeUint8:
    case kCIMTypeUint16:
    case kCIMTypeUint32:
    case kCIMTypeUint64:
        return IntegerToText(std::get<uint64_t>(m_content));
    case kCIMTypeSint8:
    case kCIMTypeSint16:
    case kCIMTypeSint32:
    case kCIMTypeSint64:
        return IntegerToText(std::get<int64_t>(m_content));
    case kCIMTypeReal32:
        return RealToText(static_cast<float>(std::get<double>(m_content)));
    case kCIMTypeReal64:
        return RealToText(std::get<double>(m_content));
    case kCIMTypeDateTime:
        return std::get<TCIMDateTime>(m_content).ToString();
    case kCIMTypeReference:
        return std::get<TReferenceContent>(m_content).m_reference->ToString();
    default:
        return std::string();
    }
}

} // namespace NQRN20
