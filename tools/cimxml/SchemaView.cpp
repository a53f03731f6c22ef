// What each element of a namespace states itself, as opposed to what it inherits.
#include "tools/cimxml/SchemaView.h"

#include "core/Text.h"

#include <algorithm>

namespace NQRN20 {
namespace NSchemaView {

namespace {

template <class TObject, class TOwner, class TEnum>
std::vector<boost::shared_ptr<TObject>> Collect(TOwner& owner, TEnum enumerate) {
    std::vector<boost::shared_ptr<TObject>> objects;
    (owner.*enumerate)(TAddToVectorCallback<TObject>(objects), TCIMOptions());
    return objects;
}

template <class TObject>
bool Contains(const std::vector<boost::shared_ptr<TObject>>& objects,
              const boost::shared_ptr<TObject>& object) {
    return std::find(objects.begin(), objects.end(), object) != objects.end();
}

// The model shares inherited declarations with the superclass, so a declaration the superclass
// holds too is inherited, and any other one is the class's own.
template <class TDecl, class TEnum>
std::vector<boost::shared_ptr<TDecl>> OwnDecls(ICIMClass& cimClass, TEnum enumerate) {
    std::vector<boost::shared_ptr<TDecl>> all = Collect<TDecl>(cimClass, enumerate);
    const boost::shared_ptr<ICIMClass> superClass = cimClass.GetSuperClass(TCIMOptions());
    if (!superClass) {
        return all;
    }
    const std::vector<boost::shared_ptr<TDecl>> inherited = Collect<TDecl>(*superClass, enumerate);
    all.erase(std::remove_if(
                  all.begin(), all.end(),
                  [&](const boost::shared_ptr<TDecl>& decl) { return Contains(inherited, decl); }),
              all.end());
    return all;
}

// The superclass's member of that name, found among its declarations since a lookup of a
// missing name throws.
template <class TDecl, class TEnum>
boost::shared_ptr<TDecl> Overridden(ICIMClass& cimClass, const std::string& name, TEnum enumerate) {
    const boost::shared_ptr<ICIMClass> superClass = cimClass.GetSuperClass(TCIMOptions());
    if (!superClass) {
        return boost::shared_ptr<TDecl>();
    }
    for (const boost::shared_ptr<TDecl>& decl : Collect<TDecl>(*superClass, enumerate)) {
        if (EqualNoCase(decl->GetName(TCIMOptions()), name)) {
            return decl;
        }
    }
    return boost::shared_ptr<TDecl>();
}

template <class TDecl, class TOwn>
boost::shared_ptr<ICIMClass> Declaring(ICIMClass& cimClass, const boost::shared_ptr<TDecl>& decl,
                                       TOwn own) {
    for (auto ancestor = cimClass.GetSuperClass(TCIMOptions()); ancestor;
         ancestor = ancestor->GetSuperClass(TCIMOptions())) {
        if (Contains(own(*ancestor), decl)) {
            return ancestor;
        }
    }
    return boost::shared_ptr<ICIMClass>();
}

} // namespace

TQualifierDecls QualifierDecls(ICIMNamespace& cimNamespace) {
    return Collect<ICIMQualifierDecl>(cimNamespace, &ICIMNamespace::EnumQualifierDecls);
}

TClasses Classes(ICIMNamespace& cimNamespace) {
    return Collect<ICIMClass>(cimNamespace, &ICIMNamespace::EnumClasses);
}

TInstances Instances(ICIMNamespace& cimNamespace) {
    TInstances instances;
    cimNamespace.EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), TCIMOptions());
    return instances;
}

TQualifiers OwnQualifiers(ICIMNamedElement& element, ICIMNamedElement* inheritedFrom) {
    TQualifiers own = Collect<ICIMQualifier>(element, &ICIMNamedElement::EnumQualifiers);
    if (inheritedFrom == nullptr) {
        return own;
    }
    const TQualifiers inherited =
        Collect<ICIMQualifier>(*inheritedFrom, &ICIMNamedElement::EnumQualifiers);
    own.erase(std::remove_if(own.begin(), own.end(),
                             [&](const boost::shared_ptr<ICIMQualifier>& qualifier) {
                                 return Contains(inherited, qualifier);
                             }),
              own.end());
    return own;
}

TPropertyDecls OwnPropertyDecls(ICIMClass& cimClass) {
    return OwnDecls<ICIMPropertyDecl>(cimClass, &ICIMClass::EnumPropertyDecls);
}

TMethodDecls OwnMethodDecls(ICIMClass& cimClass) {
    return OwnDecls<ICIMMethodDecl>(cimClass, &ICIMClass::EnumMethodDecls);
}

TParameterDecls ParameterDecls(ICIMMethodDecl& method) {
    return Collect<ICIMParameterDecl>(method, &ICIMMethodDecl::EnumParameterDecls);
}

boost::shared_ptr<ICIMPropertyDecl> OverriddenPropertyDecl(ICIMClass& cimClass,
                                                           const std::string& name) {
    return Overridden<ICIMPropertyDecl>(cimClass, name, &ICIMClass::EnumPropertyDecls);
}

boost::shared_ptr<ICIMMethodDecl> OverriddenMethodDecl(ICIMClass& cimClass,
                                                       const std::string& name) {
    return Overridden<ICIMMethodDecl>(cimClass, name, &ICIMClass::EnumMethodDecls);
}

boost::shared_ptr<ICIMClass> DeclaringClass(ICIMClass& cimClass,
                                            const boost::shared_ptr<ICIMPropertyDecl>& decl) {
    return Declaring(cimClass, decl, OwnPropertyDecls);
}

boost::shared_ptr<ICIMClass> DeclaringClass(ICIMClass& cimClass,
                                            const boost::shared_ptr<ICIMMethodDecl>& decl) {
    return Declaring(cimClass, decl, OwnMethodDecls);
}

TProperties SetProperties(ICIMInstance& instance) {
    TProperties set = Collect<ICIMProperty>(instance, &ICIMInstance::EnumProperties);
    const boost::shared_ptr<ICIMClass> cimClass = instance.GetClass(TCIMOptions());
    set.erase(std::remove_if(set.begin(), set.end(),
                             [&](const boost::shared_ptr<ICIMProperty>& property) {
                                 const boost::shared_ptr<ICIMPropertyDecl> decl =
                                     cimClass->GetPropertyDecl(property->GetName(TCIMOptions()),
                                                               TCIMOptions());
                                 return decl->GetValue(TCIMOptions()) ==
                                            property->GetValue(TCIMOptions()) &&
                                        decl->GetEmbeddedObject(TCIMOptions()) ==
                                            property->GetEmbeddedObject(TCIMOptions());
                             }),
              set.end());
    return set;
}

} // namespace NSchemaView
} // namespace NQRN20
