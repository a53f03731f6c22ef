// Qualifiers, qualifier declarations, and the property, method and parameter declarations.
#include "core/MemoryModel.h"

#include <algorithm>

namespace NQRN20 {

namespace {

// An empty value takes the declared type; any other value must already have it, except that a
// lone element of an array-typed qualifier becomes a one-element array, as some writers put it.
TCIMValue Conform(const TCIMValue& value, TCIMValue::TCIMType declared) {
    if (value.GetType() == kCIMTypeNone && value.IsNull()) {
        return TCIMValue(declared, 0);
    }
    if (declared.IsArray() && !value.IsNull() && value.GetType() == declared.GetElementType()) {
        TCIMValue array;
        array.Set(declared, 1, {value});
        return array;
    }
    if (declared != kCIMTypeNone && value.GetType() != declared) {
        throw TQRNException(kQRNStatusTypeMismatch);
    }
    return value;
}

TCIMValue::TCIMType DeclaredType(const boost::shared_ptr<ICIMQualifierDecl>& decl) {
    if (!decl) {
        throw TQRNException(kQRNStatusInvalidArgument);
    }
    return decl->GetType(TCIMOptions());
}

} // namespace

TMemoryQualifierDecl::TMemoryQualifierDecl(boost::weak_ptr<TMemoryNamespaceImpl> owner,
                                           const std::string& name, const TCIMValue& value,
                                           uint32_t scope, EFlavor flavor)
    : m_owner(std::move(owner)), m_name(name), m_value(value), m_scope(scope), m_flavor(flavor) {
    if (name.empty()) {
        throw TQRNException(kQRNStatusInvalidArgument);
    }
}

void TMemoryQualifierDecl::Commit(TCIMOptions) {
    LockOwner(m_owner)->CommitQualifierDecl(shared_from_this());
}

TMemoryQualifier::TMemoryQualifier(boost::shared_ptr<ICIMQualifierDecl> decl,
                                   const TCIMValue& value, ICIMQualifierDecl::EFlavor flavor)
    : m_decl(std::move(decl)), m_value(Conform(value, DeclaredType(m_decl))), m_flavor(flavor) {}

void TQualifierSet::Inherit(const TQualifierSet& from) {
    m_inherited.reserve(from.m_inherited.size() + from.m_own.size());
    from.ForEachEffective([this](const boost::shared_ptr<ICIMQualifier>& qualifier) {
        if (qualifier->GetFlavor(TCIMOptions()) & ICIMQualifierDecl::kFlavorToSubclass) {
            m_inherited.push_back(qualifier);
        }
    });
}

// Few own qualifiers are compared one by one; the index of many is looked into apart, so that
// this stays small enough to go inline.
inline const TQualifierSet::TOwn* TQualifierSet::FindOwn(const std::string& name) const {
    if (m_ownIndex) {
        return FindIndexed(name);
    }
    for (const TOwn& own : m_own) {
        if (EqualNoCase(*own.m_name, name)) {
            return &own;
        }
    }
    return nullptr;
}

const TQualifierSet::TOwn* TQualifierSet::FindIndexed(const std::string& name) const {
    const auto found = m_ownIndex->find(name);
    return found == m_ownIndex->end() ? nullptr : &m_own[found->second];
}

void TQualifierSet::Add(boost::shared_ptr<ICIMQualifier> qualifier) {
    const std::string& name = qualifier->GetName(TCIMOptions());
    if (const TOwn* found = FindOwn(name)) {
        TOwn& own = m_own[size_t(found - m_own.data())];
        if (m_ownIndex) {
            // The key views the name of the qualifier replaced: it moves to the new one's.
            auto node = m_ownIndex->extract(*own.m_name);
            node.key() = name;
            m_ownIndex->insert(std::move(node));
        }
        own = TOwn{std::move(qualifier), &name};
        return;
    }
    // Elements mostly carry a few qualifiers: one block then, rather than one per growth step.
    // The room and the index entry come first, so that a failure leaves the set as it was.
    if (m_own.size() == m_own.capacity()) {
        m_own.reserve(std::max<size_t>(4, 2 * m_own.size()));
    }
    if (m_ownIndex) {
        m_ownIndex->emplace(name, m_own.size());
    }
    m_own.push_back(TOwn{std::move(qualifier), &name});
    if (!m_ownIndex && m_own.size() > kIndexedFrom) {
        auto index = std::make_unique<TOwnIndex>();
        for (size_t position = 0; position < m_own.size(); ++position) {
            index->emplace(*m_own[position].m_name, position);
        }
        m_ownIndex = std::move(index);
    }
}

boost::shared_ptr<ICIMQualifier> TQualifierSet::Find(const std::string& name) const {
    if (const TOwn* own = FindOwn(name)) {
        return own->m_qualifier;
    }
    for (const boost::shared_ptr<ICIMQualifier>& qualifier : m_inherited) {
        if (EqualNoCase(qualifier->GetName(TCIMOptions()), name)) {
            return qualifier;
        }
    }
    return boost::shared_ptr<ICIMQualifier>();
}

template <class TFunction>
void TQualifierSet::ForEachEffective(TFunction&& function) const {
    std::unordered_set<std::string_view, THashNoCase, TEqualNoCase> inheritedNames;
    const bool indexed = m_inherited.size() > kIndexedFrom && m_own.size() > kIndexedFrom;
    for (size_t i = 0; indexed && i < m_inherited.size(); ++i) {
        inheritedNames.insert(m_inherited[i]->GetName(TCIMOptions()));
    }
    const auto inheritedNamed = [&](const std::string& name) {
        if (indexed) {
            return inheritedNames.count(name) != 0;
        }
        return std::any_of(m_inherited.begin(), m_inherited.end(), [&name](const auto& qualifier) {
            return EqualNoCase(qualifier->GetName(TCIMOptions()), name);
        });
    };
    for (const boost::shared_ptr<ICIMQualifier>& inherited : m_inherited) {
        const TOwn* own = FindOwn(inherited->GetName(TCIMOptions()));
        function(own ? own->m_qualifier : inherited);
    }
    for (const TOwn& own : m_own) {
        if (!inheritedNamed(*own.m_name)) {
            function(own.m_qualifier);
        }
    }
}

TQualifierList TQualifierSet::Effective() const {
    TQualifierList effective;
    effective.reserve(m_inherited.size() + m_own.size());
    ForEachEffective([&effective](const boost::shared_ptr<ICIMQualifier>& qualifier) {
        effective.push_back(qualifier);
    });
    return effective;
}

TMemoryParameterDecl::TMemoryParameterDecl(boost::weak_ptr<TMemoryMethodDecl> method,
                                           const std::string& name, TCIMValue::TCIMType type)
    : TNamedElement(name), m_method(std::move(method)), m_type(type) {}

void TMemoryParameterDecl::Commit(TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    LockOwner(m_method)->AddParameterDecl(shared_from_this());
    m_committed = true;
}

void TMemoryParameterDecl::SetShape(bool isArray, uint32_t arraySize,
                                    const std::string& referenceClass, TCIMOptions) {
    CheckWritable();
    m_isArray = isArray;
    m_arraySize = arraySize;
    m_referenceClass = referenceClass;
}

TMemoryMethodDecl::TMemoryMethodDecl(boost::weak_ptr<TMemoryClass> owner, const std::string& name,
                                     TCIMValue::TCIMType returnType, const TQualifierSet* inherited)
    : TNamedElement(name), m_owner(std::move(owner)), m_type(returnType) {
    if (inherited) {
        m_qualifiers.Inherit(*inherited);
    }
}

void TMemoryMethodDecl::Commit(TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    LockOwner(m_owner)->AddMethodDecl(shared_from_this());
    m_committed = true;
}

boost::shared_ptr<ICIMParameterDecl>
TMemoryMethodDecl::CreateParameterDecl(const std::string& name, TCIMValue::TCIMType type,
                                       TCIMOptions) {
    CheckWritable();
    return boost::make_shared<TMemoryParameterDecl>(weak_from_this(), name, type);
}

void TMemoryMethodDecl::AddParameterDecl(const boost::shared_ptr<TMemoryParameterDecl>& parameter) {
    CheckWritable();
    if (m_parameters.Find(parameter->Name())) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    m_parameters.Put(parameter);
}

TMemoryPropertyDecl::TMemoryPropertyDecl(boost::weak_ptr<TMemoryClass> owner,
                                         const std::string& name, const TCIMValue& initial,
                                         const TQualifierSet* inherited)
    : TNamedElement(name), m_owner(std::move(owner)), m_value(initial) {
    if (inherited) {
        m_qualifiers.Inherit(*inherited);
    }
}

boost::shared_ptr<ICIMQualifier> TMemoryPropertyDecl::GetQualifier(const std::string& name,
                                                                   TCIMOptions) {
    boost::shared_ptr<ICIMQualifier> qualifier = m_qualifiers.Find(name);
    if (!qualifier) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return qualifier;
}

void TMemoryPropertyDecl::Commit(TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    // The qualifiers are fixed from here on, and every subclass's commit asks again.
    const boost::shared_ptr<ICIMQualifier> key = m_qualifiers.Find("Key");
    m_key = key && static_cast<bool>(key->GetValue(TCIMOptions()));
    LockOwner(m_owner)->AddPropertyDecl(shared_from_this());
    m_committed = true;
}

void TMemoryPropertyDecl::SetValue(const TCIMValue& value, TCIMOptions) {
    CheckWritable();
    m_value = value;
}

} // namespace NQRN20
