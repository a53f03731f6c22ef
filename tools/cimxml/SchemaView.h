// What each element of a namespace states itself, as opposed to what it inherits: the view the
// writers need to print every class with only its own and overriding members.
#pragma once

#include "core/Core.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace NQRN20 {
namespace NSchemaView {

typedef std::vector<boost::shared_ptr<ICIMQualifierDecl>> TQualifierDecls;
typedef std::vector<boost::shared_ptr<ICIMQualifier>> TQualifiers;
typedef std::vector<boost::shared_ptr<ICIMClass>> TClasses;
typedef std::vector<boost::shared_ptr<ICIMPropertyDecl>> TPropertyDecls;
typedef std::vector<boost::shared_ptr<ICIMMethodDecl>> TMethodDecls;
typedef std::vector<boost::shared_ptr<ICIMParameterDecl>> TParameterDecls;
typedef std::vector<boost::shared_ptr<ICIMInstance>> TInstances;
typedef std::vector<boost::shared_ptr<ICIMProperty>> TProperties;

// The contents of a namespace in commit order. A class can only be committed after its
// superclass and the classes its references name, so that order puts them first.
TQualifierDecls QualifierDecls(ICIMNamespace& cimNamespace);
TClasses Classes(ICIMNamespace& cimNamespace);
TInstances Instances(ICIMNamespace& cimNamespace);

// The qualifiers an element states itself: all it carries, less those it inherits unchanged
// from the element it overrides or derives from (which may be null).
TQualifiers OwnQualifiers(ICIMNamedElement& element, ICIMNamedElement* inheritedFrom);

// The declarations a class makes itself, new or overriding, in the class's order.
TPropertyDecls OwnPropertyDecls(ICIMClass& cimClass);
TMethodDecls OwnMethodDecls(ICIMClass& cimClass);
TParameterDecls ParameterDecls(ICIMMethodDecl& method);

// The superclass's declaration of that name, or an empty handle.
boost::shared_ptr<ICIMPropertyDecl> OverriddenPropertyDecl(ICIMClass& cimClass,
                                                           const std::string& name);
boost::shared_ptr<ICIMMethodDecl> OverriddenMethodDecl(ICIMClass& cimClass,
                                                       const std::string& name);

// The nearest class above this one that states the inherited member itself.
boost::shared_ptr<ICIMClass> DeclaringClass(ICIMClass& cimClass,
                                            const boost::shared_ptr<ICIMPropertyDecl>& decl);
boost::shared_ptr<ICIMClass> DeclaringClass(ICIMClass& cimClass,
                                            const boost::shared_ptr<ICIMMethodDecl>& decl);

// The properties of an instance whose value, or what its text holds, is not the class's: what
// the instance itself says.
TProperties SetProperties(ICIMInstance& instance);

} // namespace NSchemaView
} // namespace NQRN20
