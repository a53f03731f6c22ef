// The CIM-XML element and attribute names, lowercased as they reach the parse states.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>

namespace NQRN20 {
namespace NCimXml {

// A name that knows its length. The states compare every element and attribute name they are
// given with several of these; a length that differs settles most comparisons at once.
struct TName {
    template <size_t N>
    constexpr TName(const char (&text)[N]) : m_text(text), m_size(N - 1) {}
    constexpr operator const char*() const { return m_text; }

    const char* m_text;
    size_t m_size;
};

inline bool operator==(const std::string& text, TName name) {
    return text.size() == name.m_size && std::memcmp(text.data(), name.m_text, name.m_size) == 0;
}
inline bool operator!=(const std::string& text, TName name) {
    return !(text == name);
}

// Elements: the document and its declaration groups.
constexpr TName kCim{"cim"};
constexpr TName kDeclaration{"declaration"};
constexpr TName kDeclGroup{"declgroup"};
constexpr TName kDeclGroupWithName{"declgroup.withname"};
constexpr TName kDeclGroupWithPath{"declgroup.withpath"};

// Elements: namespace, class and instance paths.
constexpr TName kNamespacePath{"namespacepath"};
constexpr TName kLocalNamespacePath{"localnamespacepath"};
constexpr TName kHost{"host"};
constexpr TName kNamespace{"namespace"};
constexpr TName kClassPath{"classpath"};
constexpr TName kLocalClassPath{"localclasspath"};
constexpr TName kClassName{"classname"};
constexpr TName kInstancePath{"instancepath"};
constexpr TName kLocalInstancePath{"localinstancepath"};
constexpr TName kInstanceName{"instancename"};
constexpr TName kKeyBinding{"keybinding"};
constexpr TName kKeyValue{"keyvalue"};

// Elements: value objects.
constexpr TName kValueObject{"value.object"};
constexpr TName kValueNamedObject{"value.namedobject"};
constexpr TName kValueObjectWithPath{"value.objectwithpath"};
constexpr TName kValueObjectWithLocalPath{"value.objectwithlocalpath"};
constexpr TName kValueNamedInstance{"value.namedinstance"};

// Elements: messages.
constexpr TName kMessage{"message"};
constexpr TName kSimpleReq{"simplereq"};
constexpr TName kMultiReq{"multireq"};
constexpr TName kIMethodCall{"imethodcall"};
constexpr TName kIParamValue{"iparamvalue"};
constexpr TName kSimpleRsp{"simplersp"};
constexpr TName kIMethodResponse{"imethodresponse"};
constexpr TName kIReturnValue{"ireturnvalue"};
constexpr TName kError{"error"};

// Elements: schema and instance content.
constexpr TName kQualifierDeclaration{"qualifier.declaration"};
constexpr TName kScope{"scope"};
constexpr TName kQualifier{"qualifier"};
constexpr TName kClass{"class"};
constexpr TName kProperty{"property"};
constexpr TName kPropertyArray{"property.array"};
constexpr TName kPropertyReference{"property.reference"};
constexpr TName kMethod{"method"};
constexpr TName kParameter{"parameter"};
constexpr TName kParameterReference{"parameter.reference"};
constexpr TName kParameterArray{"parameter.array"};
constexpr TName kParameterRefArray{"parameter.refarray"};
constexpr TName kInstance{"instance"};
constexpr TName kValue{"value"};
constexpr TName kValueArray{"value.array"};
constexpr TName kValueReference{"value.reference"};

// Attributes read through the attribute helpers.
constexpr TName kAttrName{"name"};
constexpr TName kAttrType{"type"};
constexpr TName kAttrOverridable{"overridable"};
constexpr TName kAttrToSubclass{"tosubclass"};
constexpr TName kAttrTranslatable{"translatable"};
constexpr TName kAttrClassOrigin{"classorigin"};
constexpr TName kAttrPropagated{"propagated"};
constexpr TName kAttrArraySize{"arraysize"};
constexpr TName kAttrSuperClass{"superclass"};
constexpr TName kAttrClassName{"classname"};
constexpr TName kAttrReferenceClass{"referenceclass"};
constexpr TName kAttrEmbeddedObject{"embeddedobject"};

// Attributes the states read themselves.
constexpr TName kAttrIsArray{"isarray"};
constexpr TName kAttrCimVersion{"cimversion"};
constexpr TName kAttrDtdVersion{"dtdversion"};
constexpr TName kAttrId{"id"};
constexpr TName kAttrProtocolVersion{"protocolversion"};

// Values of the embeddedobject attribute.
constexpr TName kEmbeddedObject{"object"};
constexpr TName kEmbeddedInstance{"instance"};

// Attributes of SCOPE: each names an element kind a qualifier may be applied to.
constexpr TName kAttrScopeClass{"class"};
constexpr TName kAttrScopeAssociation{"association"};
constexpr TName kAttrScopeReference{"reference"};
constexpr TName kAttrScopeProperty{"property"};
constexpr TName kAttrScopeMethod{"method"};
constexpr TName kAttrScopeParameter{"parameter"};
constexpr TName kAttrScopeIndication{"indication"};
// Not in the DTD, but written by some producers: every element kind at once.
constexpr TName kAttrScopeAny{"any"};

} // namespace NCimXml
} // namespace NQRN20
