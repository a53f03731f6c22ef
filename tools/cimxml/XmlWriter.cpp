// The CIM-XML writer: markup, values, references, qualifiers, classes and instances.
#include "tools/cimxml/XmlWriter.h"

#include "cimxml/Names.h"
#include "core/Text.h"
#include "tools/cimxml/SchemaView.h"

#include <utility>
#include <vector>

namespace NQRN20 {
namespace NXmlWriter {

namespace {

constexpr char kVersion[] = "2.0";
constexpr char kTrue[] = "true";
constexpr char kFalse[] = "false";

// The loader starts every qualifier from overridable and to-subclass, so only a flavor that
// differs from that needs its attribute.
constexpr unsigned kDefaultFlavor =
    ICIMQualifierDecl::kFlavorOverridable | ICIMQualifierDecl::kFlavorToSubclass;

using NCimXml::TName;

typedef std::vector<std::pair<TName, std::string>> TAttributes;

std::string TypeName(TCIMType type) {
    return TCIMType(type.GetElementType()).GetName();
}

// An attribute that may be left out, written only when it has a value.
void AddIfSet(TAttributes& attributes, TName name, const std::string& value) {
    if (!value.empty()) {
        attributes.emplace_back(name, value);
    }
}

void AddArraySize(TAttributes& attributes, uint32_t size) {
    if (size != 0) {
        attributes.emplace_back(NCimXml::kAttrArraySize, std::to_string(size));
    }
}

void AddEmbeddedObject(TAttributes& attributes, EEmbeddedObject kind) {
    if (kind != kEmbeddedNone) {
        attributes.emplace_back(NCimXml::kAttrEmbeddedObject,
                                kind == kEmbeddedInstance ? NCimXml::kEmbeddedInstance.Spelled()
                                                          : NCimXml::kEmbeddedObject.Spelled());
    }
}

void AddFlavors(TAttributes& attributes, ICIMQualifierDecl::EFlavor flavor) {
    for (const NCimXml::TBitAttribute& attribute : NCimXml::kFlavorAttributes) {
        const bool set = (flavor & attribute.m_bits) != 0;
        if (set != ((kDefaultFlavor & attribute.m_bits) != 0)) {
            attributes.emplace_back(attribute.m_name, set ? kTrue : kFalse);
        }
    }
}

const char* KeyValueType(TCIMType type) {
    switch (type) {
    case kCIMTypeNone:
    case kCIMTypeString:
    case kCIMTypeChar16:
    case kCIMTypeDateTime:
        return "string";
    case kCIMTypeBoolean:
        return "boolean";
    default:
        return "numeric";
    }
}

// The loader converts a key with its property's declared type and ignores these two; they are
// for other readers, and an untyped (null) key claims to be a string.
TAttributes KeyValueAttributes(const TCIMValue& value) {
    const std::string type = TypeName(value.GetType());
    return {{NCimXml::kAttrValueType, KeyValueType(value.GetType())},
            {NCimXml::kAttrType, type.empty() ? std::string("string") : type}};
}

TName PropertyElement(TCIMType type) {
    if (type.GetElementType() == kCIMTypeReference) {
        return NCimXml::kPropertyReference;
    }
    return type.IsArray() ? TName(NCimXml::kPropertyArray) : NCimXml::kProperty;
}

// A reference property names the class it may refer to where the model knows it.
TAttributes PropertyAttributes(const std::string& name, const TCIMValue& value,
                               EEmbeddedObject embeddedObject) {
    TAttributes attributes{{NCimXml::kAttrName, name}};
    if (value.GetType().GetElementType() == kCIMTypeReference) {
        const boost::shared_ptr<ICIMClass> referenced = value.GetReferencedClass();
        if (referenced) {
            attributes.emplace_back(NCimXml::kAttrReferenceClass,
                                    referenced->GetName(TCIMOptions()));
        }
        return attributes;
    }
    AddIfSet(attributes, NCimXml::kAttrType, TypeName(value.GetType()));
    if (value.IsArray()) {
        AddArraySize(attributes, value.GetCount());
    }
    AddEmbeddedObject(attributes, embeddedObject);
    return attributes;
}

TName ParameterElement(bool reference, bool array) {
    if (reference) {
        return array ? TName(NCimXml::kParameterRefArray) : NCimXml::kParameterReference;
    }
    return array ? TName(NCimXml::kParameterArray) : NCimXml::kParameter;
}

// The NAMESPACE elements of a namespace name, one a path segment.
std::vector<std::string> NamespaceSegments(const std::string& name) {
    std::vector<std::string> segments;
    std::string::size_type start = 0;
    for (;;) {
        const std::string::size_type slash = name.find('/', start);
        const std::string segment = name.substr(start, slash - start);
        if (!segment.empty()) {
            segments.push_back(segment);
        }
        if (slash == std::string::npos) {
            return segments.empty() ? std::vector<std::string>{name} : segments;
        }
        start = slash + 1;
    }
}

class TWriter {
public:
    TWriter(ICIMNamespace& cimNamespace, std::ostream& out)
        : m_namespace(cimNamespace), m_namespaceName(cimNamespace.GetName(TCIMOptions())),
          m_out(out) {}

    void Document();

private:
    void Open(TName element, const TAttributes& attributes = TAttributes());
    void Close(TName element);
    void Empty(TName element, const TAttributes& attributes = TAttributes());
    void TextElement(TName element, const TAttributes& attributes, const std::string& text);
    void StartTag(TName element, const TAttributes& attributes);
    void FinishParentTag();
    void Indent();

    void Value(const TCIMValue& value);
    void ValueReference(const TCIMReference& reference);
    void ReferencePath(const TCIMReference& reference);
    void NamespacePath(const TCIMReference& reference);
    void LocalNamespacePath(const std::string& name);
    void ObjectName(const TCIMReference& reference);
    void KeyBinding(const std::string& name, const TCIMValue& value);

    void QualifierDecl(ICIMQualifierDecl& decl);
    void Scope(uint32_t scope);
    void Qualifiers(ICIMNamedElement& element, ICIMNamedElement* inheritedFrom);
    void Qualifier(ICIMQualifier& qualifier);
    void Class(ICIMClass& cimClass);
    void Property(const std::string& name, const TCIMValue& value, EEmbeddedObject embeddedObject,
                  ICIMNamedElement* decl, ICIMNamedElement* inheritedFrom);
    void Method(ICIMClass& cimClass, ICIMMethodDecl& method);
    void Parameter(ICIMParameterDecl& parameter);
    void Instance(ICIMInstance& instance);

    ICIMNamespace& m_namespace;
    const std::string m_namespaceName;
    std::ostream& m_out;
    unsigned m_depth = 0;
    // The last start tag still lacks its '>': it becomes an empty element if no child follows.
    bool m_tagOpen = false;
};

void TWriter::Document() {
    m_out << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    Open(NCimXml::kCim,
         {{NCimXml::kAttrCimVersion, kVersion}, {NCimXml::kAttrDtdVersion, kVersion}});
    Open(NCimXml::kDeclaration);
    Open(NCimXml::kDeclGroup);
    for (const boost::shared_ptr<ICIMQualifierDecl>& decl :
         NSchemaView::QualifierDecls(m_namespace)) {
        QualifierDecl(*decl);
    }
    for (const boost::shared_ptr<ICIMClass>& cimClass : NSchemaView::Classes(m_namespace)) {
        Open(NCimXml::kValueObject);
        Class(*cimClass);
        Close(NCimXml::kValueObject);
    }
    for (const boost::shared_ptr<ICIMInstance>& instance : NSchemaView::Instances(m_namespace)) {
        Open(NCimXml::kValueObject);
        Instance(*instance);
        Close(NCimXml::kValueObject);
    }
    Close(NCimXml::kDeclGroup);
    Close(NCimXml::kDeclaration);
    Close(NCimXml::kCim);
}

void TWriter::Open(TName element, const TAttributes& attributes) {
    StartTag(element, attributes);
    m_tagOpen = true;
    ++m_depth;
}

void TWriter::Close(TName element) {
    --m_depth;
    if (m_tagOpen) {
        m_out << "/>\n";
        m_tagOpen = false;
        return;
    }
    Indent();
    m_out << "</" << element.m_spelled << ">\n";
}

void TWriter::Empty(TName element, const TAttributes& attributes) {
    StartTag(element, attributes);
    m_out << "/>\n";
}

// On one line and unindented inside, since every character between the tags is content.
void TWriter::TextElement(TName element, const TAttributes& attributes, const std::string& text) {
    StartTag(element, attributes);
    m_out << '>' << EscapeXml(text) << "</" << element.m_spelled << ">\n";
}

void TWriter::StartTag(TName element, const TAttributes& attributes) {
    FinishParentTag();
    Indent();
    m_out << '<' << element.m_spelled;
    for (const auto& attribute : attributes) {
        m_out << ' ' << attribute.first.m_spelled << "=\"" << EscapeXml(attribute.second) << '"';
    }
}

void TWriter::FinishParentTag() {
    if (m_tagOpen) {
        m_out << ">\n";
        m_tagOpen = false;
    }
}

void TWriter::Indent() {
    for (unsigned i = 0; i < m_depth; ++i) {
        m_out << "  ";
    }
}

// A null element of an array has no form of its own that the loader reads; an empty VALUE comes
// closest: it reads back as null for every type but string (an empty string) and datetime (the
// loader's default date-time, with a log line).
void TWriter::Value(const TCIMValue& value) {
    if (value.GetType() == kCIMTypeReference) {
        ValueReference(value);
    } else if (value.IsArray()) {
        Open(NCimXml::kValueArray);
        for (const TCIMValue& element : value.GetElements()) {
            TextElement(NCimXml::kValue, TAttributes(), element.ToString());
        }
        Close(NCimXml::kValueArray);
    } else {
        TextElement(NCimXml::kValue, TAttributes(), value.ToString());
    }
}

void TWriter::ValueReference(const TCIMReference& reference) {
    Open(NCimXml::kValueReference);
    ReferencePath(reference);
    Close(NCimXml::kValueReference);
}

// A reference in this namespace is written as a bare name, one in another namespace or in none
// (relative to this one) in a local path; a host needs the full path.
void TWriter::ReferencePath(const TCIMReference& reference) {
    const bool instance = !reference.GetKeys().empty();
    if (!reference.GetHost().empty()) {
        const TName element = instance ? TName(NCimXml::kInstancePath) : NCimXml::kClassPath;
        Open(element);
        NamespacePath(reference);
        ObjectName(reference);
        Close(element);
    } else if (EqualNoCase(reference.GetNamespaceName(), m_namespaceName)) {
        ObjectName(reference);
    } else {
        const TName element =
            instance ? TName(NCimXml::kLocalInstancePath) : NCimXml::kLocalClassPath;
        Open(element);
        LocalNamespacePath(reference.GetNamespaceName());
        ObjectName(reference);
        Close(element);
    }
}

void TWriter::NamespacePath(const TCIMReference& reference) {
    Open(NCimXml::kNamespacePath);
    TextElement(NCimXml::kHost, TAttributes(), reference.GetHost());
    LocalNamespacePath(reference.GetNamespaceName());
    Close(NCimXml::kNamespacePath);
}

// A path needs a namespace; a reference without one is relative to this one.
void TWriter::LocalNamespacePath(const std::string& name) {
    Open(NCimXml::kLocalNamespacePath);
    for (const std::string& segment : NamespaceSegments(name.empty() ? m_namespaceName : name)) {
        Empty(NCimXml::kNamespace, {{NCimXml::kAttrName, segment}});
    }
    Close(NCimXml::kLocalNamespacePath);
}

// A reference without keys names a class.
void TWriter::ObjectName(const TCIMReference& reference) {
    if (reference.GetKeys().empty()) {
        Empty(NCimXml::kClassName, {{NCimXml::kAttrName, reference.GetClassName()}});
        return;
    }
    Open(NCimXml::kInstanceName, {{NCimXml::kAttrClassName, reference.GetClassName()}});
    for (const auto& key : reference.GetKeys()) {
        KeyBinding(key.first, key.second);
    }
    Close(NCimXml::kInstanceName);
}

void TWriter::KeyBinding(const std::string& name, const TCIMValue& value) {
    Open(NCimXml::kKeyBinding, {{NCimXml::kAttrName, name}});
    if (value.GetType() == kCIMTypeReference && !value.IsNull()) {
        ValueReference(value);
    } else {
        TextElement(NCimXml::kKeyValue, KeyValueAttributes(value), value.ToString());
    }
    Close(NCimXml::kKeyBinding);
}

// The loader takes an array default only with a fixed size, so a default of any size is given
// the size of its elements; an empty one of any size cannot be written and is left out.
void TWriter::QualifierDecl(ICIMQualifierDecl& decl) {
    const TCIMValue& value = decl.GetValue(TCIMOptions());
    const bool array = value.IsArray();
    uint32_t size = value.GetCount();
    if (array && !value.IsNull() && size == 0) {
        size = static_cast<uint32_t>(value.GetElements().size());
    }
    TAttributes attributes{{NCimXml::kAttrName, decl.GetName(TCIMOptions())},
                           {NCimXml::kAttrType, TypeName(value.GetType())},
                           {NCimXml::kAttrIsArray, array ? kTrue : kFalse}};
    AddArraySize(attributes, array ? size : 0);
    AddFlavors(attributes, decl.GetFlavor(TCIMOptions()));
    Open(NCimXml::kQualifierDeclaration, attributes);
    Scope(decl.GetScope(TCIMOptions()));
    if (!value.IsNull() && (!array || size != 0)) {
        Value(value);
    }
    Close(NCimXml::kQualifierDeclaration);
}

void TWriter::Scope(uint32_t scope) {
    TAttributes attributes;
    for (const NCimXml::TBitAttribute& attribute : NCimXml::kScopeAttributes) {
        if ((scope & attribute.m_bits) != 0) {
            attributes.emplace_back(attribute.m_name, kTrue);
        }
    }
    Empty(NCimXml::kScope, attributes);
}

// Inherited qualifiers come back with the inheritance, so only the element's own are written.
void TWriter::Qualifiers(ICIMNamedElement& element, ICIMNamedElement* inheritedFrom) {
    for (const boost::shared_ptr<ICIMQualifier>& qualifier :
         NSchemaView::OwnQualifiers(element, inheritedFrom)) {
        Qualifier(*qualifier);
    }
}

// The loader parses the value with the TYPE given here; a null value is the declaration's null.
void TWriter::Qualifier(ICIMQualifier& qualifier) {
    const TCIMValue& value = qualifier.GetValue(TCIMOptions());
    TAttributes attributes{{NCimXml::kAttrName, qualifier.GetName(TCIMOptions())}};
    AddIfSet(attributes, NCimXml::kAttrType, TypeName(value.GetType()));
    AddFlavors(attributes, qualifier.GetFlavor(TCIMOptions()));
    Open(NCimXml::kQualifier, attributes);
    if (!value.IsNull()) {
        Value(value);
    }
    Close(NCimXml::kQualifier);
}

void TWriter::Class(ICIMClass& cimClass) {
    const boost::shared_ptr<ICIMClass> superClass = cimClass.GetSuperClass(TCIMOptions());
    TAttributes attributes{{NCimXml::kAttrName, cimClass.GetName(TCIMOptions())}};
    if (superClass) {
        attributes.emplace_back(NCimXml::kAttrSuperClass, superClass->GetName(TCIMOptions()));
    }
    Open(NCimXml::kClass, attributes);
    Qualifiers(cimClass, superClass.get());
    for (const boost::shared_ptr<ICIMPropertyDecl>& decl :
         NSchemaView::OwnPropertyDecls(cimClass)) {
        const std::string& name = decl->GetName(TCIMOptions());
        Property(name, decl->GetValue(TCIMOptions()), decl->GetEmbeddedObject(TCIMOptions()),
                 decl.get(), NSchemaView::OverriddenPropertyDecl(cimClass, name).get());
    }
    for (const boost::shared_ptr<ICIMMethodDecl>& method : NSchemaView::OwnMethodDecls(cimClass)) {
        Method(cimClass, *method);
    }
    Close(NCimXml::kClass);
}

// A declaration in a class, with its qualifiers, or a value in an instance, without: the loader
// gives a property declaration the type of its default, so a null default is written as a typed
// element without a value.
void TWriter::Property(const std::string& name, const TCIMValue& value,
                       EEmbeddedObject embeddedObject, ICIMNamedElement* decl,
                       ICIMNamedElement* inheritedFrom) {
    const TName element = PropertyElement(value.GetType());
    Open(element, PropertyAttributes(name, value, embeddedObject));
    if (decl != nullptr) {
        Qualifiers(*decl, inheritedFrom);
    }
    if (!value.IsNull()) {
        Value(value);
    }
    Close(element);
}

void TWriter::Method(ICIMClass& cimClass, ICIMMethodDecl& method) {
    const std::string& name = method.GetName(TCIMOptions());
    TAttributes attributes{{NCimXml::kAttrName, name}};
    AddIfSet(attributes, NCimXml::kAttrType, TypeName(method.GetType(TCIMOptions())));
    Open(NCimXml::kMethod, attributes);
    Qualifiers(method, NSchemaView::OverriddenMethodDecl(cimClass, name).get());
    for (const boost::shared_ptr<ICIMParameterDecl>& parameter :
         NSchemaView::ParameterDecls(method)) {
        Parameter(*parameter);
    }
    Close(NCimXml::kMethod);
}

// The type names only the element type of an array and only that a reference is one; the shape
// says the rest.
void TWriter::Parameter(ICIMParameterDecl& parameter) {
    const TCIMType type = parameter.GetType(TCIMOptions());
    const bool reference = type.GetElementType() == kCIMTypeReference;
    const bool array = type.IsArray() || parameter.IsArray(TCIMOptions());
    TAttributes attributes{{NCimXml::kAttrName, parameter.GetName(TCIMOptions())}};
    if (reference) {
        AddIfSet(attributes, NCimXml::kAttrReferenceClass,
                 parameter.GetReferenceClass(TCIMOptions()));
    } else {
        AddIfSet(attributes, NCimXml::kAttrType, TypeName(type));
    }
    if (array) {
        AddArraySize(attributes, parameter.GetArraySize(TCIMOptions()));
    }
    // Servers write it on parameters as on properties, though the DTD has it only on the latter.
    AddEmbeddedObject(attributes, parameter.GetEmbeddedObject(TCIMOptions()));
    const TName element = ParameterElement(reference, array);
    Open(element, attributes);
    Qualifiers(parameter, nullptr);
    Close(element);
}

// Properties left at the class's default come back from the class.
void TWriter::Instance(ICIMInstance& instance) {
    Open(NCimXml::kInstance,
         {{NCimXml::kAttrClassName, instance.GetClass(TCIMOptions())->GetName(TCIMOptions())}});
    for (const boost::shared_ptr<ICIMProperty>& property : NSchemaView::SetProperties(instance)) {
        Property(property->GetName(TCIMOptions()), property->GetValue(TCIMOptions()),
                 property->GetEmbeddedObject(TCIMOptions()), nullptr, nullptr);
    }
    Close(NCimXml::kInstance);
}

} // namespace

void WriteCimXml(ICIMNamespace& cimNamespace, std::ostream& out) {
    TWriter(cimNamespace, out).Document();
}

// Character references below 0x20 only, where XML does not take the characters as they stand;
// text is UTF-8 already. A carriage return is written as one too, since XML readers turn a
// literal one into a line feed.
std::string EscapeXml(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            if (byte < 0x20 && c != '\t' && c != '\n') {
                escaped += "&#" + std::to_string(byte) + ';';
            } else {
                escaped += c;
            }
        }
    }
    return escaped;
}

} // namespace NXmlWriter
} // namespace NQRN20
