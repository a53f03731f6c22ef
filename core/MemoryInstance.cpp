// TMemoryInstance: property values checked against the class, and the identity of its keys.
#include "core/MemoryModel.h"

#include <boost/make_shared.hpp>

#include <charconv>

namespace NQRN20 {

namespace {

// Length-prefixed, so no text inside a part can imitate a separator. Parts are appended in place:
// every committed instance builds one such text.
void AppendPart(std::string& out, const char* data, size_t size) {
    char digits[24];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, size);
    out.append(digits, end.ptr);
    out += ':';
    out.append(data, size);
}

void AppendPart(std::string& out, const std::string& part) {
    AppendPart(out, part.data(), part.size());
}

void AppendLoweredPart(std::string& out, const std::string& part) {
    AppendPart(out, part);
    for (auto it = out.end() - std::string::difference_type(part.size()); it != out.end(); ++it) {
        *it = LowerAscii(*it);
    }
}

// Equal key values give equal texts: names and references compare regardless of letter case.
void AppendKeyValue(std::string& out, const TCIMValue& value) {
    char type[8];
    const std::to_chars_result typeEnd =
        std::to_chars(type, type + sizeof type, static_cast<unsigned>(value.GetType()));
    AppendPart(out, type, size_t(typeEnd.ptr - type));
    if (value.IsNull()) {
        AppendPart(out, "null", 4);
    } else if (value.GetType() == kCIMTypeReference) {
        const TCIMReference reference = value;
        AppendLoweredPart(out, reference.GetHost());
        AppendLoweredPart(out, reference.GetNamespaceName());
        AppendLoweredPart(out, reference.GetClassName());
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
    } else if (value.GetType() == kCIMTypeString) {
        AppendPart(out, value.GetString());
    } else {
        AppendPart(out, value.ToString());
    }
}

} // namespace

TMemoryInstance::TMemoryInstance(const boost::shared_ptr<TMemoryClass>& cimClass,
                                 const boost::weak_ptr<TMemoryNamespaceImpl>& owner)
    : m_class(cimClass), m_owner(owner) {
    for (const boost::shared_ptr<TMemoryPropertyDecl>& decl : cimClass->Properties().All()) {
        // One block for the property and its count: an instance makes one per class property.
        m_properties.push_back(boost::make_shared<TMemoryProperty>(decl));
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
        AppendLoweredPart(text, m_properties[index]->GetName(TCIMOptions()));
        AppendKeyValue(text, m_properties[index]->Value());
    }
    return text;
}

} // namespace NQRN20
