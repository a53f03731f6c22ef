// TMemoryClass: property and method declarations with inheritance, and its iterative release.
#include "core/MemoryModel.h"

#include <algorithm>

namespace NQRN20 {

void TClassDeleter::operator()(TMemoryClass* cimClass) const {
    thread_local std::vector<TMemoryClass*>* pending = nullptr;
    if (pending) {
        pending->push_back(cimClass);
        return;
    }
    std::vector<TMemoryClass*> queue{cimClass};
    pending = &queue;
    while (!queue.empty()) {
        TMemoryClass* next = queue.back();
        queue.pop_back();
        delete next;
    }
    pending = nullptr;
}

TMemoryClass::TMemoryClass(boost::weak_ptr<TMemoryNamespaceImpl> owner, const std::string& name,
                           const boost::shared_ptr<TMemoryClass>& superClass)
    : TNamedElement(name), m_owner(std::move(owner)), m_superClass(superClass),
      m_depth(superClass ? superClass->m_depth + 1 : 0) {
    if (superClass) {
        m_qualifiers.Inherit(superClass->Qualifiers());
    }
}

TMemoryClass::~TMemoryClass() = default;

void TMemoryClass::Commit(TCIMOptions) {
    if (IsCommitted()) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    const boost::shared_ptr<TMemoryNamespaceImpl> owner = LockOwner(m_owner);
    m_properties = MergedProperties();
    m_methods = MergedMethods();
    const auto& properties = m_properties.All();
    m_keyProperties.clear();
    m_keyProperties.reserve(size_t(std::count_if(properties.begin(), properties.end(),
                                                 [](const auto& decl) { return decl->IsKey(); })));
    m_propertyTypes.clear();
    m_propertyTypes.reserve(properties.size());
    for (size_t i = 0; i < properties.size(); ++i) {
        if (properties[i]->IsKey()) {
            m_keyProperties.push_back(i);
        }
        m_propertyTypes.push_back(properties[i]->Value().GetType());
    }
    owner->CommitClass(shared_from_this());
}

boost::shared_ptr<ICIMPropertyDecl>
TMemoryClass::CreatePropertyDecl(const std::string& name, const TCIMValue& initial, TCIMOptions) {
    CheckWritable();
    const boost::shared_ptr<TMemoryPropertyDecl> overridden =
        m_superClass ? m_superClass->m_properties.Find(name) : nullptr;
    // One block for the declaration and its count: a schema declares thousands.
    return boost::make_shared<TMemoryPropertyDecl>(
        weak_from_this(), name, initial, overridden ? &overridden->Qualifiers() : nullptr);
}

boost::shared_ptr<ICIMPropertyDecl> TMemoryClass::GetPropertyDecl(const std::string& name,
                                                                  TCIMOptions) {
    boost::shared_ptr<TMemoryPropertyDecl> decl;
    if (IsCommitted()) {
        decl = m_properties.Find(name);
    } else {
        decl = m_localProperties.Find(name);
        if (!decl && m_superClass) {
            decl = m_superClass->m_properties.Find(name);
        }
    }
    if (!decl) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return decl;
}

void TMemoryClass::EnumPropertyDecls(TEnumCallback<ICIMPropertyDecl> callback, TCIMOptions) {
    if (IsCommitted()) {
        Enumerate(m_properties.All(), callback);
    } else {
        Enumerate(MergedProperties().All(), callback);
    }
}

boost::shared_ptr<ICIMInstance> TMemoryClass::CreateInstance(TCIMOptions) {
    if (!IsCommitted()) {
        throw TQRNException(kQRNStatusNotCommitted);
    }
    return boost::make_shared<TMemoryInstance>(shared_from_this(), m_owner);
}

boost::shared_ptr<ICIMMethodDecl> TMemoryClass::CreateMethodDecl(const std::string& name,
                                                                 TCIMValue::TCIMType returnType,
                                                                 TCIMOptions) {
    CheckWritable();
    const boost::shared_ptr<TMemoryMethodDecl> overridden =
        m_superClass ? m_superClass->m_methods.Find(name) : nullptr;
    return boost::make_shared<TMemoryMethodDecl>(weak_from_this(), name, returnType,
                                                 overridden ? &overridden->Qualifiers() : nullptr);
}

boost::shared_ptr<ICIMMethodDecl> TMemoryClass::GetMethodDecl(const std::string& name,
                                                              TCIMOptions) {
    boost::shared_ptr<TMemoryMethodDecl> decl;
    if (IsCommitted()) {
        decl = m_methods.Find(name);
    } else {
        decl = m_localMethods.Find(name);
        if (!decl && m_superClass) {
            decl = m_superClass->m_methods.Find(name);
        }
    }
    if (!decl) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return decl;
}

void TMemoryClass::EnumMethodDecls(TEnumCallback<ICIMMethodDecl> callback, TCIMOptions) {
    if (IsCommitted()) {
        Enumerate(m_methods.All(), callback);
    } else {
        Enumerate(MergedMethods().All(), callback);
    }
}

void TMemoryClass::AddPropertyDecl(const boost::shared_ptr<TMemoryPropertyDecl>& decl) {
    CheckWritable();
    if (m_localProperties.Find(decl->Name())) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    // An override may narrow a reference's class but keeps the type.
    const boost::shared_ptr<TMemoryPropertyDecl> overridden =
        m_superClass ? m_superClass->m_properties.Find(decl->Name()) : nullptr;
    const ECIMType type = decl->Value().GetType();
    if (overridden && type != kCIMTypeNone && overridden->Value().GetType() != kCIMTypeNone &&
        type != overridden->Value().GetType()) {
        throw TQRNException(kQRNStatusTypeMismatch);
    }
    m_localProperties.Put(decl);
}

void TMemoryClass::AddMethodDecl(const boost::shared_ptr<TMemoryMethodDecl>& decl) {
    CheckWritable();
    if (m_localMethods.Find(decl->Name())) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    m_localMethods.Put(decl);
}

bool TMemoryClass::IsSameOrSubclassOf(const TMemoryClass* ancestor) const {
    const TMemoryClass* cimClass = this;
    while (cimClass->m_depth > ancestor->m_depth) {
        cimClass = cimClass->m_superClass.get();
    }
    return cimClass == ancestor;
}

bool TMemoryClass::BelongsTo(const boost::shared_ptr<TMemoryNamespaceImpl>& owner) const {
    return !m_owner.owner_before(owner) && !owner.owner_before(m_owner);
}

// Overrides keep the place of the member they override; new members follow in commit order.
TMemberTable<TMemoryPropertyDecl> TMemoryClass::MergedProperties() const {
    static const TMemberTable<TMemoryPropertyDecl> kNone;
    return TMemberTable<TMemoryPropertyDecl>(m_superClass ? m_superClass->m_properties : kNone,
                                             m_localProperties);
}

TMemberTable<TMemoryMethodDecl> TMemoryClass::MergedMethods() const {
    static const TMemberTable<TMemoryMethodDecl> kNone;
    return TMemberTable<TMemoryMethodDecl>(m_superClass ? m_superClass->m_methods : kNone,
                                           m_localMethods);
}

} // namespace NQRN20
