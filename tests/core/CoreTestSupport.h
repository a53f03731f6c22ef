// Helpers shared by the core tests: status capture, values from text and small schema builders.
#pragma once

#include "core/Core.h"

#include <functional>
#include <string>
#include <vector>

namespace NQRN20 {
namespace test {

typedef std::vector<std::string> TNames;

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

// Attaches a qualifier of a committed declaration, with that declaration's flavor.
inline void Qualify(const boost::shared_ptr<ICIMNamespace>& ns,
                    const boost::shared_ptr<ICIMNamedElement>& element, const std::string& name,
                    const TCIMValue& value) {
    auto decl = ns->GetQualifierDecl(name, {});
    element->AddQualifier(element->CreateQualifier(decl, value, decl->GetFlavor({}), {}), {});
}

// Key and Description are inherited by subclasses, Abstract is not.
inline boost::shared_ptr<ICIMNamespace> MakeNamespace() {
    auto ns = TMemoryNamespace::Create();
    const struct {
        const char* name;
        ECIMType type;
        int flavor;
    } decls[] = {{"Key", kCIMTypeBoolean, ICIMQualifierDecl::kFlavorToSubclass},
                 {"Description", kCIMTypeString, ICIMQualifierDecl::kFlavorToSubclass},
                 {"Abstract", kCIMTypeBoolean, 0}};
    for (const auto& d : decls) {
        ns->CreateQualifierDecl(d.name, TCIMValue(d.type, 0), 0xFF,
                                ICIMQualifierDecl::EFlavor(d.flavor), {})
            ->Commit({});
    }
    return ns;
}

struct TPropertyDef {
    std::string name;
    ECIMType type;
    std::string defaultText; // empty: a null default
    bool key;
};

inline boost::shared_ptr<ICIMClass> MakeClass(const boost::shared_ptr<ICIMNamespace>& ns,
                                              const std::string& name, const std::string& superName,
                                              const std::vector<TPropertyDef>& properties) {
    auto cimClass = ns->CreateClass(name, ns->GetClass(superName, {}), {});
    for (const TPropertyDef& def : properties) {
        auto decl = cimClass->CreatePropertyDecl(
            def.name,
            def.defaultText.empty() ? TCIMValue(def.type, 0) : Text(def.type, def.defaultText), {});
        if (def.key) {
            Qualify(ns, decl, "Key", Text(kCIMTypeBoolean, "true"));
        }
        decl->Commit({});
    }
    cimClass->Commit({});
    return cimClass;
}

// What an enumeration such as EnumPropertyDecls gives, in its order.
template <class T, class TOwner, class TEnum>
std::vector<boost::shared_ptr<T>> All(const boost::shared_ptr<TOwner>& owner, TEnum method) {
    std::vector<boost::shared_ptr<T>> elements;
    ((*owner).*method)(TAddToVectorCallback<T>(elements), {});
    return elements;
}

template <class T>
TNames Names(const std::vector<boost::shared_ptr<T>>& elements) {
    TNames names;
    for (const auto& element : elements) {
        names.push_back(element->GetName({}));
    }
    return names;
}

} // namespace test
} // namespace NQRN20
