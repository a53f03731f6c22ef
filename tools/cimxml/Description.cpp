// Schema elements and instances as JSON.
#include "tools/cimxml/Description.h"

#include "core/Text.h"
#include "tools/cimxml/MofWriter.h"
#include "tools/cimxml/SchemaView.h"

#include <algorithm>

namespace NQRN20 {
namespace NDescription {

namespace {

using namespace NSchemaView;

const char kKeyQualifier[] = "Key";

TJson Scalar(const TCIMValue& value) {
    switch (value.GetType().GetElementType()) {
    case kCIMTypeBoolean:
        return TJson(value.GetBoolean());
    case kCIMTypeUint8:
    case kCIMTypeUint16:
    case kCIMTypeUint32:
    case kCIMTypeUint64:
        return TJson::Number(value.GetUnsigned());
    case kCIMTypeSint8:
    case kCIMTypeSint16:
    case kCIMTypeSint32:
    case kCIMTypeSint64:
        return TJson::Number(value.GetSigned());
    case kCIMTypeReal32:
    case kCIMTypeReal64:
        return TJson::Number(value.GetReal());
    case kCIMTypeString:
        return TJson(value.GetString());
    case kCIMTypeReference:
        return TJson(static_cast<TCIMReference>(value).ToString());
    default:
        return TJson(value.ToString());
    }
}

std::string TypeName(TCIMValue::TCIMType type) {
    return TCIMValue::TCIMType(type.GetElementType()).GetName();
}

TJson Strings(const std::vector<std::string>& texts) {
    TJson array = TJson::Array();
    for (const std::string& text : texts) {
        array.Push(TJson(text));
    }
    return array;
}

TJson Qualifiers(const TQualifiers& qualifiers) {
    TJson object = TJson::Object();
    for (const auto& qualifier : qualifiers) {
        object.Set(qualifier->GetName(TCIMOptions()), Value(qualifier->GetValue(TCIMOptions())));
    }
    return object;
}

// Sets the member only where it says something.
void SetIfAny(TJson& object, const char* name, TJson value) {
    if (value.Kind() != TJson::kNull && !((value.Kind() == TJson::kObject) && value.Empty())) {
        object.Set(name, std::move(value));
    }
}

void SetShape(TJson& object, TCIMValue::TCIMType type, bool isArray, uint32_t arraySize,
              const std::string& referenceClass, EEmbeddedObject embedded) {
    object.Set("type", TypeName(type));
    if (isArray) {
        object.Set("array", TJson::Number(uint64_t(arraySize)));
    }
    if (!referenceClass.empty()) {
        object.Set("reference_class", referenceClass);
    }
    if (embedded != kEmbeddedNone) {
        object.Set("embedded_object", embedded == kEmbeddedInstance ? "instance" : "object");
    }
}

std::string ReferenceClass(const TCIMValue& value) {
    if (const boost::shared_ptr<ICIMClass> referenced = value.GetReferencedClass()) {
        return referenced->GetName(TCIMOptions());
    }
    return value.IsNull() ? "" : static_cast<TCIMReference>(value).GetClassName();
}

TJson Property(ICIMPropertyDecl& declaration, const TQualifiers& qualifiers) {
    const TCIMValue& value = declaration.GetValue(TCIMOptions());
    const TCIMValue::TCIMType type = declaration.GetType(TCIMOptions());
    TJson property = TJson::Object();
    SetShape(property, type, type.IsArray(), value.GetCount(),
             type.GetElementType() == kCIMTypeReference ? ReferenceClass(value) : "",
             declaration.GetEmbeddedObject(TCIMOptions()));
    if (!value.IsNull()) {
        property.Set("default", Value(value));
    }
    SetIfAny(property, "qualifiers", Qualifiers(qualifiers));
    return property;
}

TJson Method(ICIMMethodDecl& method, const TQualifiers& qualifiers) {
    TJson description = TJson::Object();
    description.Set("type", TypeName(method.GetType(TCIMOptions())));
    SetIfAny(description, "qualifiers", Qualifiers(qualifiers));
    TJson parameters = TJson::Object();
    for (const auto& parameter : ParameterDecls(method)) {
        TJson& described = parameters.Set(parameter->GetName(TCIMOptions()), TJson::Object());
        SetShape(described, parameter->GetType(TCIMOptions()), parameter->IsArray(TCIMOptions()),
                 parameter->GetArraySize(TCIMOptions()),
                 parameter->GetReferenceClass(TCIMOptions()),
                 parameter->GetEmbeddedObject(TCIMOptions()));
        SetIfAny(described, "qualifiers", Qualifiers(OwnQualifiers(*parameter, nullptr)));
    }
    SetIfAny(description, "parameters", std::move(parameters));
    return description;
}

template <class TDecl>
bool Contains(const std::vector<boost::shared_ptr<TDecl>>& decls,
              const boost::shared_ptr<TDecl>& decl) {
    return std::find(decls.begin(), decls.end(), decl) != decls.end();
}

template <class TDecl>
std::string Origin(ICIMClass& cimClass, const boost::shared_ptr<TDecl>& decl) {
    const boost::shared_ptr<ICIMClass> declaring = DeclaringClass(cimClass, decl);
    return declaring ? declaring->GetName(TCIMOptions()) : std::string();
}

} // namespace

TJson Value(const TCIMValue& value) {
    if (value.IsNull()) {
        return TJson();
    }
    if (!value.IsArray()) {
        return Scalar(value);
    }
    TJson array = TJson::Array();
    for (const TCIMValue& element : value.GetElements()) {
        array.Push(Scalar(element));
    }
    return array;
}

TJson QualifierDecl(ICIMQualifierDecl& declaration) {
    const TCIMValue& value = declaration.GetValue(TCIMOptions());
    const TCIMValue::TCIMType type = declaration.GetType(TCIMOptions());
    TJson description = TJson::Object();
    description.Set("name", declaration.GetName(TCIMOptions()));
    description.Set("type", TypeName(type));
    if (type.IsArray()) {
        description.Set("array", TJson::Number(uint64_t(value.GetCount())));
    }
    if (!value.IsNull()) {
        description.Set("default", Value(value));
    }
    description.Set("scope", Strings(NMof::ScopeKeywords(declaration.GetScope(TCIMOptions()))));
    description.Set("flavors", Strings(NMof::FlavorKeywords(declaration.GetFlavor(TCIMOptions()))));
    return description;
}

// The properties or methods of a class by name: those it states itself, or with inherited
// every one, each inherited member naming in "class_origin" the class that states it.
template <class TDecl, class TOwn, class TEnum, class TOverridden, class TDescribe>
TJson Members(ICIMClass& cimClass, bool inherited, TOwn ownDecls, TEnum enumerate,
              TOverridden overriddenDecl, TDescribe describe) {
    const std::vector<boost::shared_ptr<TDecl>> own = ownDecls(cimClass);
    std::vector<boost::shared_ptr<TDecl>> all;
    if (inherited) {
        (cimClass.*enumerate)(TAddToVectorCallback<TDecl>(all), TCIMOptions());
    }
    TJson members = TJson::Object();
    for (const auto& declaration : inherited ? all : own) {
        const std::string& name = declaration->GetName(TCIMOptions());
        const auto overridden = inherited ? nullptr : overriddenDecl(cimClass, name);
        TJson& member = members.Set(
            name, describe(*declaration, OwnQualifiers(*declaration, overridden.get())));
        if (inherited && !Contains(own, declaration)) {
            member.Set("class_origin", Origin(cimClass, declaration));
        }
    }
    return members;
}

TJson Class(ICIMClass& cimClass, bool inherited) {
    const boost::shared_ptr<ICIMClass> superClass = cimClass.GetSuperClass(TCIMOptions());
    TJson description = TJson::Object();
    description.Set("name", cimClass.GetName(TCIMOptions()));
    if (superClass) {
        description.Set("superclass", superClass->GetName(TCIMOptions()));
    }
    SetIfAny(description, "qualifiers",
             Qualifiers(OwnQualifiers(cimClass, inherited ? nullptr : superClass.get())));
    SetIfAny(description, "properties",
             Members<ICIMPropertyDecl>(cimClass, inherited, OwnPropertyDecls,
                                       &ICIMClass::EnumPropertyDecls, OverriddenPropertyDecl,
                                       [](ICIMPropertyDecl& decl, const TQualifiers& qualifiers) {
                                           return Property(decl, qualifiers);
                                       }));
    SetIfAny(description, "methods",
             Members<ICIMMethodDecl>(cimClass, inherited, OwnMethodDecls,
                                     &ICIMClass::EnumMethodDecls, OverriddenMethodDecl,
                                     [](ICIMMethodDecl& decl, const TQualifiers& qualifiers) {
                                         return Method(decl, qualifiers);
                                     }));
    return description;
}

std::string InstanceName(ICIMInstance& instance, bool folded) {
    const boost::shared_ptr<ICIMClass> cimClass = instance.GetClass(TCIMOptions());
    TPropertyDecls declarations;
    cimClass->EnumPropertyDecls(TAddToVectorCallback<ICIMPropertyDecl>(declarations),
                                TCIMOptions());
    std::vector<std::string> keys;
    for (const auto& declaration : declarations) {
        try {
            const TCIMValue& key =
                declaration->GetQualifier(kKeyQualifier, TCIMOptions())->GetValue(TCIMOptions());
            if (key.IsNull() || !static_cast<bool>(key)) {
                continue;
            }
        } catch (const TQRNException&) {
            continue; // not a key
        }
        const std::string& name = declaration->GetName(TCIMOptions());
        keys.push_back(
            (folded ? LowerAscii(name) : name) + "=" +
            NMof::Literal(instance.GetProperty(name, TCIMOptions())->GetValue(TCIMOptions())));
    }
    std::sort(keys.begin(), keys.end(), [](const std::string& a, const std::string& b) {
        return LowerAscii(a) < LowerAscii(b);
    });
    std::string text = cimClass->GetName(TCIMOptions());
    text = folded ? LowerAscii(text) : text;
    for (size_t i = 0; i < keys.size(); ++i) {
        text += (i == 0 ? "." : ",") + keys[i];
    }
    return text;
}

} // namespace NDescription
} // namespace NQRN20
