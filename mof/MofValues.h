// Literals as the MOF parser reads them, and their conversion to values of a declared type.
#pragma once

#include "core/Core.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace NQRN20 {

// A constant or an alias, before its type is known. The text is a view, of the document or of
// text the compiler keeps for the declaration being read.
struct TMofConstant {
    enum EKind { kNone, kInteger, kReal, kString, kChar, kBoolean, kNull, kAlias, kArray };
    EKind m_kind = kNone;
    std::string_view m_text;
};

// A constant, or an array of them (kArray): arrays hold constants only, so a literal nests one
// level at most and its elements are copied and dropped as plain values.
struct TMofLiteral : TMofConstant {
    TMofLiteral() = default;
    TMofLiteral(const TMofConstant& constant) : TMofConstant(constant) {}

    std::vector<TMofConstant> m_elements;
};

// Gives the object path an alias stands for; throws TMofValueError for one not defined.
using TAliasLookup = std::function<std::string(std::string_view alias)>;

// A literal that does not fit the type it is given, in words.
class TMofValueError : public std::exception {
public:
    explicit TMofValueError(std::string text) : m_text(std::move(text)) {}
    const char* what() const noexcept override { return m_text.c_str(); }

private:
    std::string m_text;
};

// The value of the literal as the type, an array of arraySize (0 for any) where the type is
// one, into the value given, whose room for a string serves again; a scalar literal for an array
// type gives an array of one, as qualifiers are often written. The text handed to the core is
// built in the buffer given, which the caller keeps so that its room serves every value. Throws
// TMofValueError, leaving the value as it was.
void MofLiteralToValue(const TMofLiteral& literal, TCIMValue::TCIMType type, uint32_t arraySize,
                       const boost::shared_ptr<ICIMNamespace>& ns, const TAliasLookup& aliases,
                       std::string& text, TCIMValue& value);

// The decimal spelling of a decimal, hexadecimal (0x), octal (leading 0) or binary (trailing
// b) integer literal; throws TMofValueError for any other text or one beyond 64 bits.
std::string MofIntegerToDecimal(std::string_view literal);

// The type a MOF data type keyword names, kCIMTypeNone for any other word.
TCIMValue::TCIMType MofDataType(std::string_view word);

} // namespace NQRN20
