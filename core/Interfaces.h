// The CIM object model's interfaces, the option map every operation takes, and the callbacks.
#pragma once

#include "core/Value.h"

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace NQRN20 {

// Every interface operation takes one as its last argument; none is defined yet.
typedef std::map<std::string, TCIMValue> TCIMOptions;

// Enumerations call back once per element, in the order stated, until the callback returns false.
template <class T>
using TEnumCallback = boost::function<bool(boost::shared_ptr<T>)>;

// Collects every enumerated element into a vector that outlives the callback.
template <class T>
class TAddToVectorCallback {
public:
    explicit TAddToVectorCallback(std::vector<boost::shared_ptr<T>>& target) : m_target(&target) {}
    bool operator()(boost::shared_ptr<T> element) const {
        m_target->push_back(element);
        return true;
    }

private:
    std::vector<boost::shared_ptr<T>>* m_target;
};

class ICIMInstance;

// What the text of a string property or parameter holds, as CIM-XML's EmbeddedObject attribute
// says: a class or instance ("object") or an instance ("instance").
enum EEmbeddedObject : uint8_t { kEmbeddedNone = 0, kEmbeddedObject = 1, kEmbeddedInstance = 2 };

class ICIMQualifierDecl {
public:
    enum EFlavor { kFlavorOverridable = 1, kFlavorToSubclass = 2, kFlavorTranslatable = 4 };
    // The kinds of element a qualifier may be applied to, as bits of a scope set.
    enum EScope {
        kScopeClass = 1,
        kScopeAssociation = 2,
        kScopeIndication = 4,
        kScopeProperty = 8,
        kScopeReference = 16,
        kScopeMethod = 32,
        kScopeParameter = 64,
        kScopeAny = 127
    };
    virtual ~ICIMQualifierDecl();
    virtual void Commit(TCIMOptions options) = 0;
    virtual TCIMValue::TCIMType GetType(TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    virtual const TCIMValue& GetValue(TCIMOptions options) = 0;
    virtual uint32_t GetScope(TCIMOptions options) = 0;
    virtual EFlavor GetFlavor(TCIMOptions options) = 0;
};

class ICIMQualifier {
public:
    virtual ~ICIMQualifier();
    virtual const TCIMValue& GetValue(TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    virtual ICIMQualifierDecl::EFlavor GetFlavor(TCIMOptions options) = 0;
};

class ICIMProperty {
public:
    virtual ~ICIMProperty();
    virtual TCIMValue::TCIMType GetType(TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    virtual const TCIMValue& GetValue(TCIMOptions options) = 0;
    // The instance's own word on it, else its declaration's.
    virtual EEmbeddedObject GetEmbeddedObject(TCIMOptions options);
};

class ICIMNamedElement {
public:
    virtual ~ICIMNamedElement();
    // Replaces an attached qualifier of the same name.
    virtual void AddQualifier(boost::shared_ptr<ICIMQualifier> qualifier, TCIMOptions options) = 0;
    // Gives a qualifier bound to its declaration, not yet attached.
    virtual boost::shared_ptr<ICIMQualifier>
    CreateQualifier(boost::shared_ptr<ICIMQualifierDecl> decl, const TCIMValue& value,
                    ICIMQualifierDecl::EFlavor flavor, TCIMOptions options) = 0;
    // Those inherited with the to-subclass flavor first, an own qualifier of the same name in
    // the inherited one's place; then the other own ones in attach order.
    virtual void EnumQualifiers(TEnumCallback<ICIMQualifier> callback, TCIMOptions options) = 0;
};

class ICIMParameterDecl : public ICIMNamedElement {
public:
    virtual void Commit(TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    virtual TCIMValue::TCIMType GetType(TCIMOptions options) = 0;

    // What a parameter's element says beyond its type, which names only the element type of an
    // array and only that a reference is one: whether it is an array (of a fixed size, or 0
    // for any) and which class a reference refers to. A model may keep only the type.
    virtual void SetShape(bool isArray, uint32_t arraySize, const std::string& referenceClass,
                          TCIMOptions options);
    virtual bool IsArray(TCIMOptions options);
    virtual uint32_t GetArraySize(TCIMOptions options);
    virtual std::string GetReferenceClass(TCIMOptions options);
    // What a string parameter's text holds; a model may keep none.
    virtual void SetEmbeddedObject(EEmbeddedObject kind, TCIMOptions options);
    virtual EEmbeddedObject GetEmbeddedObject(TCIMOptions options);
};

class ICIMMethodDecl : public ICIMNamedElement {
public:
    virtual void Commit(TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMParameterDecl>
    CreateParameterDecl(const std::string& name, TCIMValue::TCIMType type, TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    // The return type.
    virtual TCIMValue::TCIMType GetType(TCIMOptions options) = 0;
    // In declaration order.
    virtual void EnumParameterDecls(TEnumCallback<ICIMParameterDecl> callback,
                                    TCIMOptions options) = 0;
};

class ICIMPropertyDecl : public ICIMNamedElement {
public:
    virtual boost::shared_ptr<ICIMQualifier> GetQualifier(const std::string& name,
                                                          TCIMOptions options) = 0;
    virtual void Commit(TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    virtual TCIMValue::TCIMType GetType(TCIMOptions options) = 0;
    // Sets the type and the default value.
    virtual void SetValue(const TCIMValue& value, TCIMOptions options) = 0;
    // The default value.
    virtual const TCIMValue& GetValue(TCIMOptions options) = 0;
    // What a string property's text holds; a model may keep none.
    virtual void SetEmbeddedObject(EEmbeddedObject kind, TCIMOptions options);
    virtual EEmbeddedObject GetEmbeddedObject(TCIMOptions options);
};

class ICIMClass : public ICIMNamedElement {
public:
    virtual void Commit(TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMPropertyDecl>
    CreatePropertyDecl(const std::string& name, const TCIMValue& initial, TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMPropertyDecl> GetPropertyDecl(const std::string& name,
                                                                TCIMOptions options) = 0;
    // In declaration order, inherited first.
    virtual void EnumPropertyDecls(TEnumCallback<ICIMPropertyDecl> callback,
                                   TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMInstance> CreateInstance(TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMMethodDecl> CreateMethodDecl(const std::string& name,
                                                               TCIMValue::TCIMType returnType,
                                                               TCIMOptions options) = 0;
    // Empty for a root class.
    virtual boost::shared_ptr<ICIMClass> GetSuperClass(TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMMethodDecl> GetMethodDecl(const std::string& name,
                                                            TCIMOptions options) = 0;
    // In declaration order, inherited first.
    virtual void EnumMethodDecls(TEnumCallback<ICIMMethodDecl> callback, TCIMOptions options) = 0;
};

class ICIMInstance {
public:
    virtual ~ICIMInstance();
    virtual void Commit(TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMClass> GetClass(TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMProperty> GetProperty(const std::string& name,
                                                        TCIMOptions options) = 0;
    virtual void SetPropertyValue(const std::string& name, const TCIMValue& value,
                                  TCIMOptions options) = 0;
    // In the class's property order.
    virtual void EnumProperties(TEnumCallback<ICIMProperty> callback, TCIMOptions options) = 0;
    // What one property's text holds, where the instance says so itself; a model may keep none.
    virtual void SetPropertyEmbeddedObject(const std::string& name, EEmbeddedObject kind,
                                           TCIMOptions options);
};

class ICIMNamespace {
public:
    virtual ~ICIMNamespace();
    virtual boost::shared_ptr<ICIMClass> CreateClass(const std::string& name,
                                                     boost::shared_ptr<ICIMClass> superclass,
                                                     TCIMOptions options) = 0;
    // Empty for the empty name; throws kQRNStatusNotFound for a name not committed.
    virtual boost::shared_ptr<ICIMClass> GetClass(const std::string& name, TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMQualifierDecl>
    CreateQualifierDecl(const std::string& name, const TCIMValue& value, uint32_t scope,
                        ICIMQualifierDecl::EFlavor flavor, TCIMOptions options) = 0;
    virtual boost::shared_ptr<ICIMQualifierDecl> GetQualifierDecl(const std::string& name,
                                                                  TCIMOptions options) = 0;
    virtual const std::string& GetName(TCIMOptions options) = 0;
    // In commit order.
    virtual void EnumQualifierDecls(TEnumCallback<ICIMQualifierDecl> callback,
                                    TCIMOptions options) = 0;
    // In commit order.
    virtual void EnumClasses(TEnumCallback<ICIMClass> callback, TCIMOptions options) = 0;
    // In commit order; "" for all classes, else that class and its subclasses.
    virtual void EnumInstances(const std::string& className, TEnumCallback<ICIMInstance> callback,
                               TCIMOptions options) = 0;
};

} // namespace NQRN20
