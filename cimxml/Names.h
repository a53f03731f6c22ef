// The CIM-XML element and attribute names, lowercased as they reach the parse states.
#pragma once

namespace NQRN20 {
namespace NCimXml {

// Elements: the document and its declaration groups.
constexpr char kCim[] = "cim";
constexpr char kDeclaration[] = "declaration";
constexpr char kDeclGroup[] = "declgroup";
constexpr char kDeclGroupWithName[] = "declgroup.withname";
constexpr char kDeclGroupWithPath[] = "declgroup.withpath";

// Elements: namespace, class and instance paths.
constexpr char kNamespacePath[] = "namespacepath";
constexpr char kLocalNamespacePath[] = "localnamespacepath";
constexpr char kHost[] = "host";
constexpr char kNamespace[] = "namespace";
constexpr char kClassPath[] = "classpath";
constexpr char kLocalClassPath[] = "localclasspath";
constexpr char kClassName[] = "classname";
constexpr char kInstancePath[] = "instancepath";
constexpr char kLocalInstancePath[] = "localinstancepath";
constexpr char kInstanceName[] = "instancename";
constexpr char kKeyBinding[] = "keybinding";
constexpr char kKeyValue[] = "keyvalue";

// Elements: value objects.
constexpr char kValueObject[] = "value.object";
constexpr char kValueNamedObject[] = "value.namedobject";
constexpr char kValueObjectWithPath[] = "value.objectwithpath";
constexpr char kValueObjectWithLocalPath[] = "value.objectwithlocalpath";
constexpr char kValueNamedInstance[] = "value.namedinstance";

// Elements: messages.
constexpr char kMessage[] = "message";
constexpr char kSimpleReq[] = "simplereq";
constexpr char kMultiReq[] = "multireq";
constexpr char kIMethodCall[] = "imethodcall";
constexpr char kIParamValue[] = "iparamvalue";
constexpr char kSimpleRsp[] = "simplersp";
constexpr char kIMethodResponse[] = "imethodresponse";
constexpr char kIReturnValue[] = "ireturnvalue";
constexpr char kError[] = "error";

// Elements: schema and instance content.
constexpr char kQualifierDeclaration[] = "qualifier.declaration";
constexpr char kScope[] = "scope";
constexpr char kQualifier[] = "qualifier";
constexpr char kClass[] = "class";
constexpr char kProperty[] = "property";
constexpr char kPropertyArray[] = "property.array";
constexpr char kPropertyReference[] = "property.reference";
constexpr char kMethod[] = "method";
constexpr char kParameter[] = "parameter";
constexpr char kParameterReference[] = "parameter.reference";
constexpr char kParameterArray[] = "parameter.array";
constexpr char kParameterRefArray[] = "parameter.refarray";
constexpr char kInstance[] = "instance";
constexpr char kValue[] = "value";
constexpr char kValueArray[] = "value.array";
constexpr char kValueReference[] = "value.reference";

// Attributes read through the attribute helpers.
constexpr char kAttrName[] = "name";
constexpr char kAttrType[] = "type";
constexpr char kAttrOverridable[] = "overridable";
constexpr char kAttrToSubclass[] = "tosubclass";
constexpr char kAttrTranslatable[] = "translatable";
constexpr char kAttrClassOrigin[] = "classorigin";
constexpr char kAttrPropagated[] = "propagated";
constexpr char kAttrArraySize[] = "arraysize";
constexpr char kAttrSuperClass[] = "superclass";
constexpr char kAttrClassName[] = "classname";
constexpr char kAttrReferenceClass[] = "referenceclass";

// Attributes the states read themselves.
constexpr char kAttrIsArray[] = "isarray";
constexpr char kAttrCimVersion[] = "cimversion";
constexpr char kAttrDtdVersion[] = "dtdversion";
constexpr char kAttrId[] = "id";
constexpr char kAttrProtocolVersion[] = "protocolversion";

// Attributes of SCOPE: each names an element kind a qualifier may be applied to.
constexpr char kAttrScopeClass[] = "class";
constexpr char kAttrScopeAssociation[] = "association";
constexpr char kAttrScopeReference[] = "reference";
constexpr char kAttrScopeProperty[] = "property";
constexpr char kAttrScopeMethod[] = "method";
constexpr char kAttrScopeParameter[] = "parameter";
constexpr char kAttrScopeIndication[] = "indication";

} // namespace NCimXml
} // namespace NQRN20
