// Helpers shared by the core tests: status capture and small schema builders.
#pragma once

#include "core/Core.h"

#include <functional>
#include <string>
#include <vector>

namespace NQRN20 {
namespace test {

// The status an action throws, or kQRNStatusOK when it returns.
inline uint32_t StatusOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const TQRNException& e) {
        return e.GetStatus();
    }
    return kQRNStatusOK;
}

inline TCIMValue Text(TCIMType type, const std::string& text) {
    return TCIMValue(type, text, boost::shared_ptr<ICIMNamespace>());
}

inline const uint32_t kToSubclass = ICIMQualifierDecl::kFlavorToSubclass;
inline const uint32_t kRestricted = 0;

inline boost::shared_ptr<ICIMQualifierDecl>
DeclareQualifier(const boost::shared_ptr<ICIMNamespace>& ns, const std::string& name,
                 const TCIMValue& value, uint32_t flavor = kToSubclass) {
    auto decl = ns->CreateQualifierDecl(name, value, 0xFF,
                                        static_cast<ICIMQualifierDecl::EFlavor>(flavor), {});
    decl->Commit({});
    return decl;
}

// Attaches a qualifier of a committed declaration, with that declaration's flavor.
inline void Qualify(const boost::shared_ptr<ICIMNamespace>& ns,
                    const boost::shared_ptr<ICIMNamedElement>& element, const std::string& name,
                    const TCIMValue& value) {
    auto decl = ns->GetQualifierDecl(name, {});
    element->AddQualifier(element->CreateQualifier(decl, value, decl->GetFlavor({}), {}), {});
}

struct TPropertyDef {
    std::string name;
    ECIMType type;
    std::string defaultText; // empty: a null default
    bool key;
};

// A namespace holding the Key, Description (to-subclass) and Abstract (restricted) qualifiers.
inline boost::shared_ptr<ICIMNamespace> MakeNamespace() {
    auto ns = TMemoryNamespace::Create();
    DeclareQualifier(ns, "Key", Text(kCIMTypeBoolean, "false"));
    DeclareQualifier(ns, "Description", TCIMValue(kCIMTypeString, 0));
    DeclareQualifier(ns, "Abstract", Text(kCIMTypeBoolean, "false"), kRestricted);
    return ns;
}

inline boost::shared_ptr<ICIMClass> MakeClass(const boost::shared_ptr<ICIMNamespace>& ns,
                                              const std::string& name, const std::string& superName,
                                              const std::vector<TPropertyDef>& properties) {
    auto cimClass = ns->CreateClass(name, ns->GetClass(superName, {}), {});
    for (const TPropertyDef& def : properties) {
        auto decl = cimClass->CreatePropertyDecl(def.name, TCIMValue(), {});
        decl->SetValue(
            def.defaultText.empty() ? TCIMValue(def.type, 0) : Text(def.type, def.defaultText), {});
        if (def.key) {
            Qualify(ns, decl, "Key", Text(kCIMTypeBoolean, "true"));
        }
        decl->Commit({});
    }
    cimClass->Commit({});
    return cimClass;
}

template <class T>
std::vector<std::string> Names(const std::vector<boost::shared_ptr<T>>& elements) {
    std::vector<std::string> names;
    for (const auto& element : elements) {
        names.push_back(element->GetName({}));
    }
    return names;
}

inline std::vector<boost::shared_ptr<ICIMPropertyDecl>>
PropertyDecls(const boost::shared_ptr<ICIMClass>& cimClass) {
    std::vector<boost::shared_ptr<ICIMPropertyDecl>> decls;
    cimClass->EnumPropertyDecls(TAddToVectorCallback<ICIMPropertyDecl>(decls), {});
    return decls;
}

inline std::vector<boost::shared_ptr<ICIMQualifier>>
Qualifiers(const boost::shared_ptr<ICIMNamedElement>& element) {
    std::vector<boost::shared_ptr<ICIMQualifier>> qualifiers;
    element->EnumQualifiers(TAddToVectorCallback<ICIMQualifier>(qualifiers), {});
    return qualifiers;
}

} // namespace test
} // namespace NQRN20
