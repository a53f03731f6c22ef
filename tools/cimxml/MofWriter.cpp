// Writes the contents of a namespace as MOF.
#include "tools/cimxml/MofWriter.h"
#include "tools/cimxml/Quote.h"

#include "tools/cimxml/SchemaView.h"

#include <cstdio>

namespace NQRN20 {
namespace NMof {

namespace {

using namespace NSchemaView;

const char kIndent[] = "    ";
const char kEmbeddedObjectQualifier[] = "EmbeddedObject";
const char kEmbeddedInstanceQualifier[] = "EmbeddedInstance";

const struct {
    uint32_t m_bit;
    const char* m_name;
} kScopes[] = {
    {ICIMQualifierDecl::kScopeClass, "class"},
    {ICIMQualifierDecl::kScopeAssociation, "association"},
    {ICIMQualifierDecl::kScopeIndication, "indication"},
    {ICIMQualifierDecl::kScopeProperty, "property"},
    {ICIMQualifierDecl::kScopeReference, "reference"},
    {ICIMQualifierDecl::kScopeMethod, "method"},
    {ICIMQualifierDecl::kScopeParameter, "parameter"},
};

// The flavor keywords for each bit, set and clear; translatable has no keyword to clear it.
const struct {
    ICIMQualifierDecl::EFlavor m_bit;
    const char* m_set;
    const char* m_clear;
} kFlavors[] = {
    {ICIMQualifierDecl::kFlavorOverridable, "EnableOverride", "DisableOverride"},
    {ICIMQualifierDecl::kFlavorToSubclass, "ToSubclass", "Restricted"},
    {ICIMQualifierDecl::kFlavorTranslatable, "Translatable", nullptr},
};

std::string Join(const std::vector<std::string>& parts, const char* separator) {
    std::string joined;
    for (const std::string& part : parts) {
        joined += (joined.empty() ? "" : separator) + part;
    }
    return joined;
}

// A real literal needs a decimal point to be read back as a real.
std::string RealLiteral(std::string text) {
    if (text.find_first_of(".nN") != std::string::npos) {
        return text;
    }
    const size_t exponent = text.find_first_of("eE");
    return text.insert(exponent == std::string::npos ? text.size() : exponent, ".0");
}

std::string CharLiteral(uint64_t code) {
    if (code >= 0x20 && code < 0x7F && code != '\'' && code != '\\') {
        return std::string("'") + char(code) + "'";
    }
    char escaped[16];
    std::snprintf(escaped, sizeof escaped, "'\\x%04X'", unsigned(code));
    return escaped;
}

std::string ScalarLiteral(const TCIMValue& value) {
    switch (value.GetType().GetElementType()) {
    case kCIMTypeBoolean:
        return value.GetBoolean() ? "true" : "false";
    case kCIMTypeReal32:
    case kCIMTypeReal64:
        return RealLiteral(value.ToString());
    case kCIMTypeChar16:
        return CharLiteral(value.GetUnsigned());
    case kCIMTypeString:
        return QuoteString(value.GetString());
    case kCIMTypeDateTime:
        return QuoteString(value.GetDateTime().ToString());
    case kCIMTypeReference:
        return QuoteString(static_cast<TCIMReference>(value).ToString());
    default:
        return value.ToString();
    }
}

std::string TypeName(TCIMValue::TCIMType type) {
    return TCIMValue::TCIMType(type.GetElementType()).GetName();
}

std::string ArraySuffix(bool isArray, uint32_t size) {
    return isArray ? "[" + (size != 0 ? std::to_string(size) : "") + "]" : "";
}

} // namespace

std::string QuoteString(const std::string& text) {
    return QuoteEscaped(text, "\\x%02X");
}

std::string Literal(const TCIMValue& value) {
    if (value.IsNull()) {
        return "NULL";
    }
    if (!value.IsArray()) {
        return ScalarLiteral(value);
    }
    std::vector<std::string> elements;
    for (const TCIMValue& element : value.GetElements()) {
        elements.push_back(Literal(element));
    }
    return "{" + Join(elements, ", ") + "}";
}

namespace {

// Name, Name(value), Name{values} or, for a true boolean, the name alone; then the flavors in
// which the qualifier differs from its declaration.
std::string QualifierText(ICIMNamespace& cimNamespace, ICIMQualifier& qualifier) {
    const std::string& name = qualifier.GetName(TCIMOptions());
    const TCIMValue& value = qualifier.GetValue(TCIMOptions());
    std::string text = name;
    if (value.IsArray() && !value.IsNull()) {
        text += Literal(value);
    } else if (value.IsNull() || value.GetType() != kCIMTypeBoolean || !value.GetBoolean()) {
        text += "(" + Literal(value) + ")";
    }
    const uint32_t declared =
        cimNamespace.GetQualifierDecl(name, TCIMOptions())->GetFlavor(TCIMOptions());
    const uint32_t flavor = qualifier.GetFlavor(TCIMOptions());
    std::vector<std::string> flavors;
    for (const auto& bit : kFlavors) {
        const bool set = (flavor & bit.m_bit) != 0;
        if (set != ((declared & bit.m_bit) != 0) && (set || bit.m_clear != nullptr)) {
            flavors.push_back(set ? bit.m_set : bit.m_clear);
        }
    }
    return flavors.empty() ? text : text + ": " + Join(flavors, " ");
}

// "[A, B(1)]" for the qualifiers an element states, and the text of one more where given, or
// nothing.
std::string QualifierList(ICIMNamespace& cimNamespace, const TQualifiers& qualifiers,
                          const std::string& more = std::string()) {
    std::vector<std::string> texts;
    for (const auto& qualifier : qualifiers) {
        texts.push_back(QualifierText(cimNamespace, *qualifier));
    }
    if (!more.empty()) {
        texts.push_back(more);
    }
    return texts.empty() ? "" : "[" + Join(texts, ", ") + "]";
}

// The qualifier for the kind, of NULL value.
std::string KindMarker(EEmbeddedObject kind) {
    return std::string(kind == kEmbeddedInstance ? kEmbeddedInstanceQualifier
                                                 : kEmbeddedObjectQualifier) +
           "(NULL)";
}

// MOF says what a string's text holds only by a qualifier: the one for the kind, of NULL value.
// The NULL tells it from a qualifier of that name the element states, which is written beside
// it, so that reading the MOF back gives both what the text holds and the qualifiers as they were.
std::string EmbeddedQualifier(EEmbeddedObject kind) {
    return kind == kEmbeddedNone ? std::string() : KindMarker(kind);
}

} // namespace

std::vector<std::string> ScopeKeywords(uint32_t scope) {
    if (scope == ICIMQualifierDecl::kScopeAny) {
        return {"any"};
    }
    std::vector<std::string> keywords;
    for (const auto& kind : kScopes) {
        if ((scope & kind.m_bit) != 0) {
            keywords.push_back(kind.m_name);
        }
    }
    return keywords;
}

std::vector<std::string> FlavorKeywords(uint32_t flavor) {
    std::vector<std::string> keywords;
    for (const auto& bit : kFlavors) {
        const bool set = (flavor & bit.m_bit) != 0;
        if (set || bit.m_clear != nullptr) {
            keywords.push_back(set ? bit.m_set : bit.m_clear);
        }
    }
    return keywords;
}

// MOF has no form for an empty scope; "any" is its word for all of them.
void WriteQualifierDecl(ICIMQualifierDecl& declaration, std::ostream& out) {
    const TCIMValue& value = declaration.GetValue(TCIMOptions());
    const TCIMValue::TCIMType type = declaration.GetType(TCIMOptions());
    out << "Qualifier " << declaration.GetName(TCIMOptions()) << " : " << TypeName(type)
        << ArraySuffix(type.IsArray(), value.GetCount());
    if (!value.IsNull()) {
        out << " = " << Literal(value);
    }
    const std::vector<std::string> scopes = ScopeKeywords(declaration.GetScope(TCIMOptions()));
    out << ",\n    Scope(" << (scopes.empty() ? "any" : Join(scopes, ", ")) << "),\n    Flavor("
        << Join(FlavorKeywords(declaration.GetFlavor(TCIMOptions())), ", ") << ");\n\n";
}

namespace {

// A reference declaration names the class it refers to: the one its null default records, or
// the class of the path it defaults to.
std::string ReferenceClassName(const TCIMValue& value) {
    const boost::shared_ptr<ICIMClass> referenced = value.GetReferencedClass();
    if (referenced) {
        return referenced->GetName(TCIMOptions());
    }
    return value.IsNull() ? "object" : static_cast<TCIMReference>(value).GetClassName();
}

std::string PropertyText(ICIMPropertyDecl& declaration) {
    const TCIMValue& value = declaration.GetValue(TCIMOptions());
    const TCIMValue::TCIMType type = declaration.GetType(TCIMOptions());
    const std::string& name = declaration.GetName(TCIMOptions());
    std::string text =
        type.GetElementType() == kCIMTypeReference
            ? ReferenceClassName(value) + " REF " + name
            : TypeName(type) + " " + name + ArraySuffix(type.IsArray(), value.GetCount());
    return value.IsNull() ? text : text + " = " + Literal(value);
}

std::string ParameterText(ICIMNamespace& cimNamespace, ICIMParameterDecl& parameter) {
    const std::string qualifiers =
        QualifierList(cimNamespace, OwnQualifiers(parameter, nullptr),
                      EmbeddedQualifier(parameter.GetEmbeddedObject(TCIMOptions())));
    const TCIMValue::TCIMType type = parameter.GetType(TCIMOptions());
    const std::string& name = parameter.GetName(TCIMOptions());
    const std::string typeName = type.GetElementType() == kCIMTypeReference
                                     ? parameter.GetReferenceClass(TCIMOptions()) + " REF"
                                     : TypeName(type);
    return (qualifiers.empty() ? "" : qualifiers + " ") + typeName + " " + name +
           ArraySuffix(parameter.IsArray(TCIMOptions()), parameter.GetArraySize(TCIMOptions()));
}

// An element's qualifiers on a line of their own above it, then the element itself.
void WriteMember(const std::string& qualifiers, const std::string& text, std::ostream& out) {
    if (!qualifiers.empty()) {
        out << kIndent << qualifiers << "\n";
    }
    out << kIndent << text << ";\n";
}

void WriteMethod(ICIMNamespace& cimNamespace, ICIMClass& cimClass, ICIMMethodDecl& method,
                 std::ostream& out) {
    const std::string& name = method.GetName(TCIMOptions());
    const boost::shared_ptr<ICIMMethodDecl> overridden = OverriddenMethodDecl(cimClass, name);
    std::vector<std::string> parameters;
    for (const auto& parameter : ParameterDecls(method)) {
        parameters.push_back(ParameterText(cimNamespace, *parameter));
    }
    const std::string separator = std::string(",\n") + kIndent + kIndent;
    WriteMember(QualifierList(cimNamespace, OwnQualifiers(method, overridden.get())),
                TypeName(method.GetType(TCIMOptions())) + " " + name + "(" +
                    (parameters.empty() ? "" : "\n" + std::string(kIndent) + kIndent) +
                    Join(parameters, separator.c_str()) + ")",
                out);
}

// An inherited member is shown with a comment naming the class that states it, and with the
// qualifiers that class gives it.
void WriteOrigin(ICIMClass& cimClass, const boost::shared_ptr<ICIMClass>& declaring,
                 std::ostream& out) {
    if (declaring && declaring.get() != &cimClass) {
        out << kIndent << "// from " << declaring->GetName(TCIMOptions()) << "\n";
    }
}

} // namespace

void WriteClass(ICIMNamespace& cimNamespace, ICIMClass& cimClass, std::ostream& out,
                bool inherited) {
    const boost::shared_ptr<ICIMClass> superClass = cimClass.GetSuperClass(TCIMOptions());
    const std::string qualifiers =
        QualifierList(cimNamespace, OwnQualifiers(cimClass, superClass.get()));
    out << (qualifiers.empty() ? "" : qualifiers + "\n") << "class "
        << cimClass.GetName(TCIMOptions());
    if (superClass) {
        out << " : " << superClass->GetName(TCIMOptions());
    }
    out << " {\n";
    TPropertyDecls properties = OwnPropertyDecls(cimClass);
    if (inherited) {
        properties.clear();
        cimClass.EnumPropertyDecls(TAddToVectorCallback<ICIMPropertyDecl>(properties),
                                   TCIMOptions());
    }
    for (const auto& declaration : properties) {
        const boost::shared_ptr<ICIMClass> declaring =
            inherited ? DeclaringClass(cimClass, declaration) : nullptr;
        ICIMClass& stating = declaring ? *declaring : cimClass;
        WriteOrigin(cimClass, declaring, out);
        const boost::shared_ptr<ICIMPropertyDecl> overridden =
            OverriddenPropertyDecl(stating, declaration->GetName(TCIMOptions()));
        WriteMember(QualifierList(cimNamespace, OwnQualifiers(*declaration, overridden.get()),
                                  EmbeddedQualifier(declaration->GetEmbeddedObject(TCIMOptions()))),
                    PropertyText(*declaration), out);
    }
    TMethodDecls methods = OwnMethodDecls(cimClass);
    if (inherited) {
        methods.clear();
        cimClass.EnumMethodDecls(TAddToVectorCallback<ICIMMethodDecl>(methods), TCIMOptions());
    }
    for (const auto& method : methods) {
        const boost::shared_ptr<ICIMClass> declaring =
            inherited ? DeclaringClass(cimClass, method) : nullptr;
        WriteOrigin(cimClass, declaring, out);
        WriteMethod(cimNamespace, declaring ? *declaring : cimClass, *method, out);
    }
    out << "};\n\n";
}

namespace {

// A property says what its text holds only where its class does not say the same.
void WriteInstance(ICIMInstance& instance, std::ostream& out) {
    const boost::shared_ptr<ICIMClass> cimClass = instance.GetClass(TCIMOptions());
    out << "instance of " << cimClass->GetName(TCIMOptions()) << " {\n";
    for (const auto& property : SetProperties(instance)) {
        const std::string& name = property->GetName(TCIMOptions());
        const boost::shared_ptr<ICIMPropertyDecl> declaration =
            cimClass->GetPropertyDecl(name, TCIMOptions());
        const EEmbeddedObject kind = property->GetEmbeddedObject(TCIMOptions());
        // The declaration's qualifiers say nothing of the instance's own word.
        const std::string embedded = kind == declaration->GetEmbeddedObject(TCIMOptions())
                                         ? std::string()
                                         : KindMarker(kind);
        out << kIndent << (embedded.empty() ? "" : "[" + embedded + "] ") << name << " = "
            << Literal(property->GetValue(TCIMOptions())) << ";\n";
    }
    out << "};\n\n";
}

} // namespace

void WriteNamespace(ICIMNamespace& cimNamespace, std::ostream& out) {
    for (const auto& declaration : QualifierDecls(cimNamespace)) {
        WriteQualifierDecl(*declaration, out);
    }
    for (const auto& cimClass : Classes(cimNamespace)) {
        WriteClass(cimNamespace, *cimClass, out);
    }
    for (const auto& instance : Instances(cimNamespace)) {
        WriteInstance(*instance, out);
    }
}

} // namespace NMof
} // namespace NQRN20
