// TMemoryNamespaceImpl: the guarded tables of classes, qualifier declarations and instances.
#include "core/MemoryNamespace.h"

#include "core/MemoryModel.h"

namespace NQRN20 {

boost::shared_ptr<ICIMNamespace> TMemoryNamespace::Create(const std::string& name) {
    return boost::shared_ptr<ICIMNamespace>(new TMemoryNamespaceImpl(name));
}

boost::shared_ptr<ICIMClass>
TMemoryNamespaceImpl::CreateClass(const std::string& name, boost::shared_ptr<ICIMClass> superclass,
                                  TCIMOptions) {
    boost::shared_ptr<TMemoryClass> parent;
    if (superclass) {
        parent = boost::dynamic_pointer_cast<TMemoryClass>(superclass);
        if (!parent || !parent->BelongsTo(shared_from_this())) {
            throw TQRNException(kQRNStatusInvalidArgument);
        }
        if (!parent->IsCommitted()) {
            throw TQRNException(kQRNStatusNotCommitted);
        }
    }
    return boost::shared_ptr<TMemoryClass>(new TMemoryClass(weak_from_this(), name, parent),
                                           TClassDeleter());
}

boost::shared_ptr<ICIMClass> TMemoryNamespaceImpl::GetClass(const std::string& name, TCIMOptions) {
    if (name.empty()) {
        return boost::shared_ptr<ICIMClass>();
    }
    return FindClass(name);
}

boost::shared_ptr<TMemoryClass> TMemoryNamespaceImpl::FindClass(const std::string& name) {
    std::lock_guard<std::mutex> lock(m_mutex);
    boost::shared_ptr<TMemoryClass> cimClass = m_classes.Find(name);
    if (!cimClass) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return cimClass;
}

boost::shared_ptr<ICIMQualifierDecl>
TMemoryNamespaceImpl::CreateQualifierDecl(const std::string& name, const TCIMValue& value,
                                          uint32_t scope, ICIMQualifierDecl::EFlavor flavor,
                                          TCIMOptions) {
    return boost::shared_ptr<ICIMQualifierDecl>(
        new TMemoryQualifierDecl(weak_from_this(), name, value, scope, flavor));
}

boost::shared_ptr<ICIMQualifierDecl> TMemoryNamespaceImpl::GetQualifierDecl(const std::string& name,
                                                                            TCIMOptions) {
    std::lock_guard<std::mutex> lock(m_mutex);
    boost::shared_ptr<TMemoryQualifierDecl> decl = m_qualifierDecls.Find(name);
    if (!decl) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return decl;
}

// Enumerations call back on a copy taken under the lock, so a callback may use the namespace.
void TMemoryNamespaceImpl::EnumQualifierDecls(TEnumCallback<ICIMQualifierDecl> callback,
                                              TCIMOptions) {
    std::vector<boost::shared_ptr<TMemoryQualifierDecl>> decls;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        decls = m_qualifierDecls.All();
    }
    Enumerate(decls, callback);
}

void TMemoryNamespaceImpl::EnumClasses(TEnumCallback<ICIMClass> callback, TCIMOptions) {
    std::vector<boost::shared_ptr<TMemoryClass>> classes;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        classes = m_classes.All();
    }
    Enumerate(classes, callback);
}

void TMemoryNamespaceImpl::EnumInstances(const std::string& className,
                                         TEnumCallback<ICIMInstance> callback, TCIMOptions) {
    const boost::shared_ptr<TMemoryClass> ancestor =
        className.empty() ? nullptr : FindClass(className);
    std::vector<boost::shared_ptr<TMemoryInstance>> all;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        all = m_instances;
    }
    std::vector<boost::shared_ptr<TMemoryInstance>> matching;
    for (const boost::shared_ptr<TMemoryInstance>& instance : all) {
        if (!ancestor || instance->Class()->IsSameOrSubclassOf(ancestor.get())) {
            matching.push_back(instance);
        }
    }
    Enumerate(matching, callback);
}

void TMemoryNamespaceImpl::CommitClass(const boost::shared_ptr<TMemoryClass>& cimClass) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_classes.Find(cimClass->Name())) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    m_classes.Put(cimClass);
    cimClass->MarkCommitted();
}

void TMemoryNamespaceImpl::CommitQualifierDecl(
    const boost::shared_ptr<TMemoryQualifierDecl>& decl) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_qualifierDecls.Find(decl->Name())) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    m_qualifierDecls.Put(decl);
}

// Instances of a class without key properties are not identified by keys, so any number of them
// may be committed; the others must differ in their key values. An instance is either listed
// and known by its keys or neither, also when memory runs out on the way.
void TMemoryNamespaceImpl::CommitInstance(const boost::shared_ptr<TMemoryInstance>& instance,
                                          size_t keyHash) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (instance->Class()->KeyProperties().empty()) {
        m_instances.push_back(instance);
    } else {
        auto& committed = m_instanceKeys[instance->Class()];
        const auto sameHash = committed.equal_range(keyHash);
        for (auto it = sameHash.first; it != sameHash.second; ++it) {
            if (it->second->SameKeys(*instance)) {
                throw TQRNException(kQRNStatusAlreadyExists);
            }
        }
        const auto key = committed.emplace(keyHash, instance.get());
        try {
            m_instances.push_back(instance);
        } catch (...) {
            committed.erase(key);
            throw;
        }
    }
    instance->MarkCommitted();
}

} // namespace NQRN20
