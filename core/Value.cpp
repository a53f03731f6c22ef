// TCIMValue: construction, arrays, comparison and typed reads; TCIMType names.
#include "core/Value.h"
#include "core/Status.h"
#include "core/Text.h"

namespace NQRN20 {

namespace {

// The TYPE attribute spelling of each element type, indexed by ECIMType.
const char* const kTypeNames[] = {"",       "boolean", "string",   "char16",   "uint8",  "sint8",
                                  "uint16", "sint16",  "uint32",   "sint32",   "uint64", "sint64",
                                  "real32", "real64",  "datetime", "reference"};
constexpr unsigned kTypeNameCount = sizeof kTypeNames / sizeof kTypeNames[0];

constexpr unsigned FirstAndLast(char first, char last) {
    return static_cast<unsigned char>(first) << 8 | static_cast<unsigned char>(last);
}

// The one type name a TYPE attribute text can be: no two names share both their first and their
// last letter. Documents carry one such text per property and qualifier, so the names are not
// tried in turn.
ECIMType CandidateType(const std::string& name) {
    if (name.empty()) {
        return kCIMTypeNone;
    }
    switch (FirstAndLast(LowerAscii(name.front()), LowerAscii(name.back()))) {
    case FirstAndLast('b', 'n'):
        return kCIMTypeBoolean;
    case FirstAndLast('s', 'g'):
        return kCIMTypeString;
    case FirstAndLast('c', '6'):
        return kCIMTypeChar16;
    case FirstAndLast('u', '8'):
        return kCIMTypeUint8;
    case FirstAndLast('s', '8'):
        return kCIMTypeSint8;
    case FirstAndLast('u', '6'):
        return kCIMTypeUint16;
    case FirstAndLast('s', '6'):
        return kCIMTypeSint16;
    case FirstAndLast('u', '2'):
        return kCIMTypeUint32;
    case FirstAndLast('s', '2'):
        return kCIMTypeSint32;
    case FirstAndLast('u', '4'):
        return kCIMTypeUint64;
    case FirstAndLast('s', '4'):
        return kCIMTypeSint64;
    case FirstAndLast('r', '2'):
        return kCIMTypeReal32;
    case FirstAndLast('r', '4'):
        return kCIMTypeReal64;
    case FirstAndLast('d', 'e'):
        return kCIMTypeDateTime;
    case FirstAndLast('r', 'e'):
        return kCIMTypeReference;
    default:
        return kCIMTypeNone;
    }
}

[[noreturn]] void Mismatch() {
    throw TQRNException(kQRNStatusTypeMismatch);
}

bool IsUnsignedType(ECIMType type) {
    return type == kCIMTypeUint8 || type == kCIMTypeUint16 || type == kCIMTypeUint32 ||
           type == kCIMTypeUint64 || type == kCIMTypeChar16;
}

bool IsSignedType(ECIMType type) {
    return type == kCIMTypeSint8 || type == kCIMTypeSint16 || type == kCIMTypeSint32 ||
           type == kCIMTypeSint64;
}

} // namespace

TCIMValue::TCIMType::TCIMType(const std::string& name) : m_type(CandidateType(name)) {
    if (m_type == kCIMTypeNone || !EqualNoCase(name, kTypeNames[m_type])) {
        throw TQRNException(kQRNStatusInvalidType);
    }
}

std::string TCIMValue::TCIMType::GetName() const {
    const unsigned element = GetElementType();
    if (element == kCIMTypeNone || element >= kTypeNameCount) {
        return std::string();
    }
    return std::string(kTypeNames[element]) + (IsArray() ? "[]" : "");
}

TCIMValue::TCIMValue(TCIMType type, const std::string& text,
                     const boost::shared_ptr<ICIMNamespace>& cimNamespace) {
    AssignText(type.GetElementType(), text, cimNamespace);
}

TCIMValue::TCIMValue(TCIMType type, uint32_t count) : m_type(type), m_count(count) {}

TCIMValue::TCIMValue(const TCIMDateTime& dateTime)
    : m_type(kCIMTypeDateTime), m_null(false), m_content(dateTime) {}

void TCIMValue::SetString(std::string_view text) {
    if (std::string* held = std::get_if<std::string>(&m_content)) {
        held->assign(text.data(), text.size());
    } else {
        // Made aside and moved in, so that running out of memory leaves the value as it was.
        m_content = std::string(text);
    }
    m_type = kCIMTypeString;
    m_null = false;
    m_count = 0;
}

void TCIMValue::Set(TCIMType type, uint32_t count, const std::vector<TCIMValue>& elements) {
    Set(type, count, std::vector<TCIMValue>(elements));
}

void TCIMValue::Set(TCIMType type, uint32_t count, std::vector<TCIMValue>&& elements) {
    const TCIMType element = type.GetElementType();
    for (TCIMValue& value : elements) {
        if (value.IsNull()) {
            value.ResetNull(element);
        } else if (value.GetType() != element) {
            Mismatch();
        }
    }
    // Arrays are kept for as long as their owner lives: room the builder reserved goes back.
    elements.shrink_to_fit();
    *this = TCIMValue();
    m_type = type.GetArrayType();
    m_null = false;
    m_count = count;
    m_content =
        TArrayContent{std::make_shared<const std::vector<TCIMValue>>(std::move(elements)), {}};
}

void TCIMValue::ResetNull(TCIMType type) {
    m_type = type;
    m_count = 0;
    m_content = TContent();
}

void TCIMValue::Set(const TCIMReference& reference) {
    Set(TCIMReference(reference));
}

void TCIMValue::Set(TCIMReference&& reference) {
    *this = TCIMValue();
    m_type = kCIMTypeReference;
    m_null = false;
    m_content = TReferenceContent{std::make_shared<const TCIMReference>(std::move(reference)), {}};
}

void TCIMValue::SetReferencedClass(const boost::shared_ptr<ICIMClass>& referencedClass) {
    if (m_type.GetElementType() != kCIMTypeReference) {
        Mismatch();
    }
    // A null value gets content that holds the class alone.
    const auto record = [&](auto kind) {
        using TKind = decltype(kind);
        if (!std::holds_alternative<TKind>(m_content)) {
            m_content = kind;
        }
        std::get<TKind>(m_content).m_class = referencedClass;
    };
    IsArray() ? record(TArrayContent()) : record(TReferenceContent());
}

boost::shared_ptr<ICIMClass> TCIMValue::GetReferencedClass() const {
    if (const TReferenceContent* reference = std::get_if<TReferenceContent>(&m_content)) {
        return reference->m_class.lock();
    }
    if (const TArrayContent* array = std::get_if<TArrayContent>(&m_content)) {
        return array->m_class.lock();
    }
    return boost::shared_ptr<ICIMClass>();
}

// The referenced class is not compared, and only non-null values hold what is.
bool TCIMValue::TReferenceContent::operator==(const TReferenceContent& other) const {
    return *m_reference == *other.m_reference;
}

bool TCIMValue::TArrayContent::operator==(const TArrayContent& other) const {
    return *m_elements == *other.m_elements;
}

TCIMValue::operator bool() const {
    if (m_null) {
        return false;
    }
    return m_type == kCIMTypeBoolean ? std::get<bool>(m_content) : true;
}

TCIMValue::operator TCIMReference() const {
    if (m_type != kCIMTypeReference) {
        Mismatch();
    }
    return m_null ? TCIMReference() : *std::get<TReferenceContent>(m_content).m_reference;
}

TCIMValue& TCIMValue::operator=(const TCIMValue& other) {
    if (this != &other) {
        *this = TCIMValue(other);
    }
    return *this;
}

bool TCIMValue::operator==(const TCIMValue& other) const {
    if (m_type != other.m_type || m_null != other.m_null || m_count != other.m_count) {
        return false;
    }
    return m_null || m_content == other.m_content;
}

std::string TCIMValue::ToString() const {
    if (m_null) {
        return std::string();
    }
    if (!IsArray()) {
        return ScalarToString();
    }
    std::string text;
    for (const TCIMValue& element : GetElements()) {
        if (&element != &GetElements().front()) {
            text += ", ";
        }
        text += element.ToString();
    }
    return text;
}

const std::vector<TCIMValue>& TCIMValue::GetElements() const {
    static const std::vector<TCIMValue> kNoElements;
    const TArrayContent* array = std::get_if<TArrayContent>(&m_content);
    return array != nullptr && array->m_elements ? *array->m_elements : kNoElements;
}

template <class T>
const T& TCIMValue::Scalar(bool accepted) const {
    if (!accepted || m_null || IsArray()) {
        Mismatch();
    }
    return std::get<T>(m_content);
}

bool TCIMValue::GetBoolean() const {
    return Scalar<bool>(m_type == kCIMTypeBoolean);
}

uint64_t TCIMValue::GetUnsigned() const {
    return Scalar<uint64_t>(IsUnsignedType(m_type));
}

int64_t TCIMValue::GetSigned() const {
    return Scalar<int64_t>(IsSignedType(m_type));
}

double TCIMValue::GetReal() const {
    return Scalar<double>(m_type == kCIMTypeReal32 || m_type == kCIMTypeReal64);
}

const std::string& TCIMValue::GetString() const {
    return Scalar<std::string>(m_type == kCIMTypeString);
}

const TCIMDateTime& TCIMValue::GetDateTime() const {
    return Scalar<TCIMDateTime>(m_type == kCIMTypeDateTime);
}

} // namespace NQRN20
