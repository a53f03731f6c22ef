// TMemoryInstance: property values checked against the class, and the identity of its keys.
#include "core/MemoryModel.h"

namespace NQRN20 {

namespace {

// Length-prefixed, so no text inside a part can imitate a separator.
void AppendPart(std::string& out, const std::string& part) {
    out += std::to_string(part.size());
    out += ':';
    out += part;
}

// Equal key values give equal texts: names and references compare regardless of letter case.
void AppendKeyValue(std::string& out, const TCIMValue& value) {
    AppendPart(out, std::to_string(static_cast<unsigned>(value.GetType())));
    if (value.IsNull()) {
        AppendPart(out, "null");
    } else if (value.GetType() == kCIMTypeReference) {
        const TCIMReference reference = value;
        AppendPart(out, LowerAscii(reference.GetHost()));
        AppendPart(out, LowerAscii(reference.GetNamespaceName()));
        AppendPart(out, LowerAscii(reference.GetClassName()));
        std::map<std::string, const TCIMValue*> keys;
        for (const auto& key : reference.GetKeys()) {
            keys[LowerAscii(key.first)] = &key.second;
        }
        for (const auto& key : keys) {
            AppendPart(out, key.first);
            std::string nested;
            AppendKeyValue(nested, *key.second);
            AppendPart(out, nested);
        }
    } else {
        AppendPart(out, value.ToString());
    }
}

} // namespace

TMemoryInstance::TMemoryInstance(const boost::shared_ptr<TMemoryClass>& cimClass,
                                 const boost::weak_ptr<TMemoryNamespaceImpl>& owner)
    : m_class(cimClass), m_owner(owner) {
    for (const boost::shared_ptr<TMemoryPropertyDecl>& decl : cimClass->Properties().All()) {
        m_properties.push_back(boost::shared_ptr<TMemoryProperty>(
            new TMemoryProperty(decl->Name(), decl->Value().GetType(), decl->Value())));
    }
}

void TMemoryInstance::Commit(TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    LockOwner(m_owner)->CommitInstance(shared_from_this(), KeyText());
}

boost::shared_ptr<ICIMProperty> TMemoryInstance::GetProperty(const std::string& name, TCIMOptions) {
    return Find(name);
}

void TMemoryInstance::SetPropertyValue(const std::string& name, const TCIMValue& value,
                                       TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusReadOnly);
    }
    const boost::shared_ptr<TMemoryProperty> property = Find(name);
    const TCIMValue::TCIMType declared = property->GetType(TCIMOptions());
    if (value.GetType() == kCIMTypeNone && value.IsNull()) {
        property->SetValue(TCIMValue(declared, 0));
    } else if (value.GetType() != declared) {
        throw TQRNException(kQRNStatusTypeMismatch);
    } else {
        property->SetValue(value);
    }
}

boost::shared_ptr<TMemoryProperty> TMemoryInstance::Find(const std::string& name) const {
    const size_t index = m_class->Properties().IndexOf(name);
    if (index == m_properties.size()) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return m_properties[index];
}

std::string TMemoryInstance::KeyText() const {
    std::string text;
    for (size_t index : m_class->KeyProperties()) {
        AppendPart(text, LowerAscii(m_properties[index]->GetName(TCIMOptions())));
        AppendKeyValue(text, m_properties[index]->Value());
    }
    return text;
}

} // namespace NQRN20
