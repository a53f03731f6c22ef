// The CIM-XML element and attribute names: as documents spell them, for the writer, and
// lowercased, as they reach the parse states.
#pragma once

#include "core/Interfaces.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace NQRN20 {
namespace NCimXml {

// A name that knows its length. The states compare every element and attribute name they are
// given with several of these; a length that differs settles most comparisons at once.
struct TName {
    constexpr operator const char*() const { return m_text; }

    // Lowercased.
    const char* m_text;
    size_t m_size;
    // As documents spell it.
    const char* m_spelled;
};

inline bool operator==(const std::string& text, TName name) {
    return text.size() == name.m_size && std::memcmp(text.data(), name.m_text, name.m_size) == 0;
}
inline bool operator!=(const std::string& text, TName name) {
    return !(text == name);
}

// An entry of the table below: the documents' spelling, and its lowercase made from it when
// compiling, so that each name is written once.
template <size_t N>
class TNameEntry {
public:
    constexpr TNameEntry(const char (&spelled)[N]) {
        for (size_t i = 0; i < N; ++i) {
            const char c = spelled[i];
            m_spelled[i] = c;
            m_lower[i] = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    constexpr operator TName() const { return {m_lower, N - 1, m_spelled}; }
    constexpr operator const char*() const { return m_lower; }
    constexpr const char* Spelled() const { return m_spelled; }

private:
    char m_lower[N] = {};
    char m_spelled[N] = {};
};

// Elements: the document and its declaration groups.
constexpr TNameEntry kCim{"CIM"};
constexpr TNameEntry kDeclaration{"DECLARATION"};
constexpr TNameEntry kDeclGroup{"DECLGROUP"};
constexpr TNameEntry kDeclGroupWithName{"DECLGROUP.WITHNAME"};
constexpr TNameEntry kDeclGroupWithPath{"DECLGROUP.WITHPATH"};

// Elements: namespace, class and instance paths.
constexpr TNameEntry kNamespacePath{"NAMESPACEPATH"};
constexpr TNameEntry kLocalNamespacePath{"LOCALNAMESPACEPATH"};
constexpr TNameEntry kHost{"HOST"};
constexpr TNameEntry kNamespace{"NAMESPACE"};
constexpr TNameEntry kClassPath{"CLASSPATH"};
constexpr TNameEntry kLocalClassPath{"LOCALCLASSPATH"};
constexpr TNameEntry kClassName{"CLASSNAME"};
constexpr TNameEntry kInstancePath{"INSTANCEPATH"};
constexpr TNameEntry kLocalInstancePath{"LOCALINSTANCEPATH"};
constexpr TNameEntry kInstanceName{"INSTANCENAME"};
constexpr TNameEntry kKeyBinding{"KEYBINDING"};
constexpr TNameEntry kKeyValue{"KEYVALUE"};

// Elements: value objects.
constexpr TNameEntry kValueObject{"VALUE.OBJECT"};
constexpr TNameEntry kValueNamedObject{"VALUE.NAMEDOBJECT"};
constexpr TNameEntry kValueObjectWithPath{"VALUE.OBJECTWITHPATH"};
constexpr TNameEntry kValueObjectWithLocalPath{"VALUE.OBJECTWITHLOCALPATH"};
constexpr TNameEntry kValueNamedInstance{"VALUE.NAMEDINSTANCE"};

// Elements: messages.
constexpr TNameEntry kMessage{"MESSAGE"};
constexpr TNameEntry kSimpleReq{"SIMPLEREQ"};
constexpr TNameEntry kMultiReq{"MULTIREQ"};
constexpr TNameEntry kIMethodCall{"IMETHODCALL"};
constexpr TNameEntry kIParamValue{"IPARAMVALUE"};
constexpr TNameEntry kSimpleRsp{"SIMPLERSP"};
constexpr TNameEntry kIMethodResponse{"IMETHODRESPONSE"};
constexpr TNameEntry kIReturnValue{"IRETURNVALUE"};
constexpr TNameEntry kError{"ERROR"};

// Elements: schema and instance content.
constexpr TNameEntry kQualifierDeclaration{"QUALIFIER.DECLARATION"};
constexpr TNameEntry kScope{"SCOPE"};
constexpr TNameEntry kQualifier{"QUALIFIER"};
constexpr TNameEntry kClass{"CLASS"};
constexpr TNameEntry kProperty{"PROPERTY"};
constexpr TNameEntry kPropertyArray{"PROPERTY.ARRAY"};
constexpr TNameEntry kPropertyReference{"PROPERTY.REFERENCE"};
constexpr TNameEntry kMethod{"METHOD"};
constexpr TNameEntry kParameter{"PARAMETER"};
constexpr TNameEntry kParameterReference{"PARAMETER.REFERENCE"};
constexpr TNameEntry kParameterArray{"PARAMETER.ARRAY"};
constexpr TNameEntry kParameterRefArray{"PARAMETER.REFARRAY"};
constexpr TNameEntry kInstance{"INSTANCE"};
constexpr TNameEntry kValue{"VALUE"};
constexpr TNameEntry kValueArray{"VALUE.ARRAY"};
constexpr TNameEntry kValueReference{"VALUE.REFERENCE"};

// Attributes read through the attribute helpers.
constexpr TNameEntry kAttrName{"NAME"};
constexpr TNameEntry kAttrType{"TYPE"};
constexpr TNameEntry kAttrOverridable{"OVERRIDABLE"};
constexpr TNameEntry kAttrToSubclass{"TOSUBCLASS"};
constexpr TNameEntry kAttrTranslatable{"TRANSLATABLE"};
constexpr TNameEntry kAttrClassOrigin{"CLASSORIGIN"};
constexpr TNameEntry kAttrPropagated{"PROPAGATED"};
constexpr TNameEntry kAttrArraySize{"ARRAYSIZE"};
constexpr TNameEntry kAttrSuperClass{"SUPERCLASS"};
constexpr TNameEntry kAttrClassName{"CLASSNAME"};
constexpr TNameEntry kAttrReferenceClass{"REFERENCECLASS"};
constexpr TNameEntry kAttrEmbeddedObject{"EmbeddedObject"};

// Attributes the states read themselves.
constexpr TNameEntry kAttrIsArray{"ISARRAY"};
constexpr TNameEntry kAttrCimVersion{"CIMVERSION"};
constexpr TNameEntry kAttrDtdVersion{"DTDVERSION"};
constexpr TNameEntry kAttrId{"ID"};
constexpr TNameEntry kAttrProtocolVersion{"PROTOCOLVERSION"};

// An attribute of KEYVALUE that the writer gives other readers; the loader ignores it.
constexpr TNameEntry kAttrValueType{"VALUETYPE"};

// Values of EmbeddedObject.
constexpr TNameEntry kEmbeddedObject{"object"};
constexpr TNameEntry kEmbeddedInstance{"instance"};

// Attributes of SCOPE: each names an element kind a qualifier may be applied to.
constexpr TNameEntry kAttrScopeClass{"CLASS"};
constexpr TNameEntry kAttrScopeAssociation{"ASSOCIATION"};
constexpr TNameEntry kAttrScopeReference{"REFERENCE"};
constexpr TNameEntry kAttrScopeProperty{"PROPERTY"};
constexpr TNameEntry kAttrScopeMethod{"METHOD"};
constexpr TNameEntry kAttrScopeParameter{"PARAMETER"};
constexpr TNameEntry kAttrScopeIndication{"INDICATION"};
// Not in the DTD, but written by some producers: every element kind at once.
constexpr TNameEntry kAttrScopeAny{"ANY"};

// An attribute that stands for bits of a qualifier's flavor or scope.
struct TBitAttribute {
    TName m_name;
    uint32_t m_bits;
};

constexpr TBitAttribute kFlavorAttributes[] = {
    {kAttrOverridable, ICIMQualifierDecl::kFlavorOverridable},
    {kAttrToSubclass, ICIMQualifierDecl::kFlavorToSubclass},
    {kAttrTranslatable, ICIMQualifierDecl::kFlavorTranslatable},
};

// In the DTD's order, which the writer keeps.
constexpr TBitAttribute kScopeAttributes[] = {
    {kAttrScopeClass, ICIMQualifierDecl::kScopeClass},
    {kAttrScopeAssociation, ICIMQualifierDecl::kScopeAssociation},
    {kAttrScopeReference, ICIMQualifierDecl::kScopeReference},
    {kAttrScopeProperty, ICIMQualifierDecl::kScopeProperty},
    {kAttrScopeMethod, ICIMQualifierDecl::kScopeMethod},
    {kAttrScopeParameter, ICIMQualifierDecl::kScopeParameter},
    {kAttrScopeIndication, ICIMQualifierDecl::kScopeIndication},
};

} // namespace NCimXml
} // namespace NQRN20
