// Typed CIM values: the type enumeration, TCIMValue with its nested TCIMType, and TCIMReference.
#pragma once

#include "core/DateTime.h"

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace NQRN20 {

class ICIMClass;
class ICIMNamespace;
class TCIMReference;

enum ECIMType {
    kCIMTypeNone = 0,
    kCIMTypeBoolean = 1,
    kCIMTypeString = 2,
    kCIMTypeChar16 = 3,
    kCIMTypeUint8 = 4,
    kCIMTypeSint8 = 5,
    kCIMTypeUint16 = 6,
    kCIMTypeSint16 = 7,
    kCIMTypeUint32 = 8,
    kCIMTypeSint32 = 9,
    kCIMTypeUint64 = 10,
    kCIMTypeSint64 = 11,
    kCIMTypeReal32 = 12,
    kCIMTypeReal64 = 13,
    kCIMTypeDateTime = 14,
    kCIMTypeReference = 15,
    kCIMTypeArray = 0x10 // or-ed into an element type
};

// A value of one CIM type: null, a scalar, or an array of scalars of the element type.
//
// Text conversion, TCIMValue(type, text, namespace), follows the CIM-XML value syntax:
//   boolean          "true" or "false" in any letter case
//   integers         decimal with an optional sign, or hexadecimal "0x1F"; out of range throws
//   real32, real64   decimal with optional fraction and exponent, or INF, -INF, NaN
//   char16           one character (one byte, or one UTF-8 sequence of a 16-bit code point)
//   string           the text as it stands
//   datetime         either form of TCIMDateTime; a bad text throws kQRNStatusInvalidDateTime
//   reference        a model path: [//host/][namespace:]Class[.Key=value,...]
// Surrounding XML white space (blank, tab, CR, LF) is ignored for every type except string,
// because documents pad numbers and key values with line breaks and indentation. A char16 text
// of exactly one character is taken as it stands, so a lone blank is a valid char16.
// Text cannot hold an array: an array type converts the text as one element and gives a scalar
// of the element type, to be gathered with Set(type, count, elements).
// Failures throw TQRNException: kQRNStatusInvalidValue for bad text, kQRNStatusInvalidType for
// kCIMTypeNone or an unknown type.
class TCIMValue {
public:
    class TCIMType {
    public:
        TCIMType(ECIMType type = kCIMTypeNone) : m_type(type) {}
        // From a TYPE attribute text ("uint8", "datetime", "reference", in any letter case);
        // throws TQRNException(kQRNStatusInvalidType) for any other text.
        explicit TCIMType(const std::string& name);
        operator ECIMType() const { return m_type; }

        bool IsArray() const { return (m_type & kCIMTypeArray) != 0; }
        ECIMType GetElementType() const { return static_cast<ECIMType>(m_type & ~kCIMTypeArray); }
        TCIMType GetArrayType() const { return static_cast<ECIMType>(m_type | kCIMTypeArray); }
        // The type name, with "[]" for arrays; empty for kCIMTypeNone.
        std::string GetName() const;

    private:
        ECIMType m_type;
    };

    TCIMValue() = default;
    TCIMValue(TCIMType type, const std::string& text,
              const boost::shared_ptr<ICIMNamespace>& cimNamespace);
    // A null value of the type; the count is an array size and costs nothing per element.
    TCIMValue(TCIMType type, uint32_t count);
    explicit TCIMValue(const TCIMDateTime& dateTime);
    // Copies that run out of memory unwind cleanly, and assignment copies into a new value and
    // moves that in, leaving this value whole rather than with its type changed and its content
    // not.
    TCIMValue(const TCIMValue& other);
    TCIMValue(TCIMValue&& other) noexcept = default;
    TCIMValue& operator=(const TCIMValue& other);
    TCIMValue& operator=(TCIMValue&& other) noexcept = default;
    ~TCIMValue() = default;

    // Makes an array of the type's element type. Null elements of any type become nulls of the
    // element type; other elements must have the element type (kQRNStatusTypeMismatch).
    void Set(TCIMType type, uint32_t count, const std::vector<TCIMValue>& elements);
    // The same, taking the elements over instead of copying them.
    void Set(TCIMType type, uint32_t count, std::vector<TCIMValue>&& elements);
    // Makes this a string value of the text, in the room of the string it holds already, so
    // that a value refilled with one string after another allocates only to grow.
    void SetString(std::string_view text);
    void Set(const TCIMReference& reference);
    // The same, taking the reference over instead of copying it.
    void Set(TCIMReference&& reference);
    // Records the class a reference value points to; only for reference types. The class is
    // held weakly: a value names a class, the namespace owns it.
    void SetReferencedClass(const boost::shared_ptr<ICIMClass>& referencedClass);

    bool IsNull() const { return m_null; }
    bool IsArray() const { return m_type.IsArray(); }
    // The value's truth: a boolean's value; any other non-null value is true, null is false.
    explicit operator bool() const;
    TCIMType GetType() const { return m_type; }
    // A null reference gives an empty reference; another type throws kQRNStatusTypeMismatch.
    operator TCIMReference() const;

    // Equal type, count and content; the referenced class is not compared.
    bool operator==(const TCIMValue& other) const;
    bool operator!=(const TCIMValue& other) const { return !(*this == other); }
    uint32_t GetCount() const { return m_count; }
    const std::vector<TCIMValue>& GetElements() const;
    boost::shared_ptr<ICIMClass> GetReferencedClass() const;
    // The text as CIM-XML writes it; array elements joined with ", "; empty for null.
    std::string ToString() const;

    // Typed reads of a non-null scalar; kQRNStatusTypeMismatch for null or another type.
    bool GetBoolean() const;
    uint64_t GetUnsigned() const; // uint8 to uint64, and char16's code
    int64_t GetSigned() const;    // sint8 to sint64
    double GetReal() const;
    const std::string& GetString() const;
    const TCIMDateTime& GetDateTime() const;

private:
    friend class TValueAccess;
    // A reference, or the elements of an array, shared once made, so that copying the value
    // copies neither; each beside the class its references point to, which only reference values
    // record, held weakly. A null value may hold the class alone.
    struct TReferenceContent {
        std::shared_ptr<const TCIMReference> m_reference;
        boost::weak_ptr<ICIMClass> m_class;
        bool operator==(const TReferenceContent& other) const;
    };
    struct TArrayContent {
        std::shared_ptr<const std::vector<TCIMValue>> m_elements;
        boost::weak_ptr<ICIMClass> m_class;
        bool operator==(const TArrayContent& other) const;
    };
    // One field for scalars, arrays and references keeps every value, of which a schema holds
    // hundreds of thousands, at 56 bytes.
    using TContent = std::variant<std::monostate, bool, uint64_t, int64_t, double, std::string,
                                  TCIMDateTime, TReferenceContent, TArrayContent>;

    // Null values hold no content: only the type and the count change.
    void ResetNull(TCIMType type);
    void AssignText(ECIMType type, const std::string& text,
                    const boost::shared_ptr<ICIMNamespace>& cimNamespace);
    std::string ScalarToString() const;
    template <class T>
    const T& Scalar(bool accepted) const;

    TCIMType m_type;
    bool m_null = true;
    uint32_t m_count = 0;
    TContent m_content;
};

// Only a string's copy allocates: it is built over a whole scalar, so that a copy that runs out
// of memory unwinds from a scalar it can destroy. Inline, since values are copied often.
inline TCIMValue::TCIMValue(const TCIMValue& other)
    : m_type(other.m_type), m_null(other.m_null), m_count(other.m_count),
      m_content(std::holds_alternative<std::string>(other.m_content) ? TContent()
                                                                     : other.m_content) {
    if (const std::string* text = std::get_if<std::string>(&other.m_content)) {
        m_content.emplace<std::string>(*text);
    }
}

using TCIMType = TCIMValue::TCIMType;

// A path to a CIM class or instance: host, namespace, class name and key bindings.
// Key names compare case-insensitively and keep the spelling they were added with.
class TCIMReference {
public:
    TCIMReference() = default;
    TCIMReference(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                  const std::map<std::string, TCIMValue>& keys);
    // Parses a model path; key values are converted with the declared types of the class's
    // properties when the namespace holds the class, else by their literal form.
    static TCIMReference FromPath(const std::string& path,
                                  const boost::shared_ptr<ICIMNamespace>& cimNamespace);

    void SetClassName(const std::string& className) { m_className = className; }
    // Also takes the namespace's name. The handle is held weakly: references live in instances
    // that the namespace owns.
    void SetNamespace(const boost::shared_ptr<ICIMNamespace>& cimNamespace);
    void SetNamespaceName(const std::string& name) { m_namespaceName = name; }
    void SetHost(const std::string& host) { m_host = host; }
    // Replaces a key whose name differs only in letter case. Takes the name and value over: a
    // caller done with them moves them in.
    void AddKeyValue(std::string name, TCIMValue value);

    const std::string& GetClassName() const { return m_className; }
    boost::shared_ptr<ICIMNamespace> GetNamespace() const { return m_namespace.lock(); }
    const std::string& GetNamespaceName() const { return m_namespaceName; }
    const std::string& GetHost() const { return m_host; }
    const std::map<std::string, TCIMValue>& GetKeys() const { return m_keys; }

    // The model path, the form FromPath reads.
    std::string ToString() const;
    bool operator==(const TCIMReference& other) const;
    bool operator!=(const TCIMReference& other) const { return !(*this == other); }

private:
    boost::weak_ptr<ICIMNamespace> m_namespace;
    std::string m_namespaceName;
    std::string m_host;
    std::string m_className;
    std::map<std::string, TCIMValue> m_keys;
};

} // namespace NQRN20
