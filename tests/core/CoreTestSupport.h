// Helpers shared by the core tests: status capture, values from text and small schema builders.
#pragma once

#include "core/Core.h"

#include <functional>
#include <sstream>
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
    return TCIMValue(type, text, nullptr);
}

// Attaches a qualifier of a committed declaration, with that declaration's flavor.
inline void Qualify(const boost::shared_ptr<ICIMNamespace>& ns,
                    const boost::shared_ptr<ICIMNamedElement>& element, const std::string& name,
                    const TCIMValue& value) {
    auto decl = ns->GetQualifierDecl(name, {});
    element->AddQualifier(element->CreateQualifier(decl, value, decl->GetFlavor({}), {}), {});
}

inline void Declare(const boost::shared_ptr<ICIMNamespace>& ns, const std::string& name,
                    const TCIMValue& value, int flavor = ICIMQualifierDecl::kFlavorToSubclass) {
    ns->CreateQualifierDecl(name, value, ICIMQualifierDecl::kScopeAny,
                            ICIMQualifierDecl::EFlavor(flavor), {})
        ->Commit({});
}

// Key and Description are inherited by subclasses, Abstract is not.
inline boost::shared_ptr<ICIMNamespace> MakeNamespace() {
    auto ns = TMemoryNamespace::Create();
    Declare(ns, "Key", TCIMValue(kCIMTypeBoolean, 0));
    Declare(ns, "Description", TCIMValue(kCIMTypeString, 0));
    Declare(ns, "Abstract", TCIMValue(kCIMTypeBoolean, 0), 0);
    return ns;
}

// Commits a class whose properties are listed as "Name type[=default] [key|instance], ...", where
// the type is a type attribute name, "[]" after it for an array, and "instance" says that a
// string holds an embedded instance.
inline boost::shared_ptr<ICIMClass> MakeClass(const boost::shared_ptr<ICIMNamespace>& ns,
                                              const std::string& name, const std::string& superName,
                                              const std::string& properties) {
    auto cimClass = ns->CreateClass(name, ns->GetClass(superName, {}), {});
    std::istringstream list(properties);
    for (std::string property; std::getline(list, property, ',');) {
        std::istringstream words(property);
        std::string propertyName, type, mark;
        words >> propertyName >> type >> mark;
        const size_t equals = type.find('=');
        const TCIMType element(type.substr(0, type.find_first_of("=[")));
        const TCIMType cimType = type.find('[') < equals ? element.GetArrayType() : element;
        const TCIMValue initial = equals == std::string::npos
                                      ? TCIMValue(cimType, 0)
                                      : Text(cimType, type.substr(equals + 1));
        auto decl = cimClass->CreatePropertyDecl(propertyName, initial, {});
        if (mark == "key") {
            Qualify(ns, decl, "Key", Text(kCIMTypeBoolean, "true"));
        }
        decl->SetEmbeddedObject(mark == "instance" ? kEmbeddedInstance : kEmbeddedNone, {});
        decl->Commit({});
    }
    cimClass->Commit({});
    return cimClass;
}

// What an enumeration such as EnumPropertyDecls gives, in its order; arguments go ahead of the
// callback.
template <class T, class TOwner, class TEnum, class... TArgs>
std::vector<boost::shared_ptr<T>> All(const boost::shared_ptr<TOwner>& owner, TEnum method,
                                      TArgs... args) {
    std::vector<boost::shared_ptr<T>> elements;
    ((*owner).*method)(args..., TAddToVectorCallback<T>(elements), {});
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
