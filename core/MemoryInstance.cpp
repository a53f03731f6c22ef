// TMemoryInstance: property values checked against the class, and the identity of its keys.
#include "core/MemoryModel.h"

#include <algorithm>
#include <functional>

namespace NQRN20 {

namespace {

typedef std::pair<const std::string, TCIMValue> TKeyBinding;

// A multiply-xor step: every bit of the part reaches the high bits, and the shift brings them down.
size_t Combine(size_t hash, size_t part) {
    return (hash ^ part) * 0x9E3779B97F4A7C15ull + (hash >> 29);
}

bool LessNoCase(const TKeyBinding* a, const TKeyBinding* b) {
    const std::string& x = a->first;
    const std::string& y = b->first;
    return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(), [](char c, char d) {
        return LowerAscii(c) < LowerAscii(d);
    });
}

// The map orders a reference's keys by spelling; comparing them needs an order regardless of case.
std::vector<const TKeyBinding*> KeysNoCase(const TCIMReference& reference) {
    std::vector<const TKeyBinding*> keys;
    keys.reserve(reference.GetKeys().size());
    for (const TKeyBinding& key : reference.GetKeys()) {
        keys.push_back(&key);
    }
    std::sort(keys.begin(), keys.end(), LessNoCase);
    return keys;
}

// Key values are equal when their types are, and both are null or hold the same value: strings
// exactly, references with their names regardless of letter case, anything else as its text.
bool SameValue(const TCIMValue& a, const TCIMValue& b);

bool SameReference(const TCIMReference& a, const TCIMReference& b) {
    if (!EqualNoCase(a.GetHost(), b.GetHost()) ||
        !EqualNoCase(a.GetNamespaceName(), b.GetNamespaceName()) ||
        !EqualNoCase(a.GetClassName(), b.GetClassName()) ||
        a.GetKeys().size() != b.GetKeys().size()) {
        return false;
    }
    const std::vector<const TKeyBinding*> x = KeysNoCase(a);
    const std::vector<const TKeyBinding*> y = KeysNoCase(b);
    for (size_t i = 0; i < x.size(); ++i) {
        if (!EqualNoCase(x[i]->first, y[i]->first) || !SameValue(x[i]->second, y[i]->second)) {
            return false;
        }
    }
    return true;
}

bool SameValue(const TCIMValue& a, const TCIMValue& b) {
    if (ECIMType(a.GetType()) != ECIMType(b.GetType()) || a.IsNull() != b.IsNull()) {
        return false;
    }
    if (a.IsNull()) {
        return true;
    }
    if (a.GetType() == kCIMTypeReference) {
        return SameReference(TValueAccess::Reference(a), TValueAccess::Reference(b));
    }
    if (a.GetType() == kCIMTypeString) {
        return a.GetString() == b.GetString();
    }
    return a.ToString() == b.ToString();
}

// Equal values hash alike: the names in a reference are hashed regardless of letter case, and its
// keys are summed, so that their order does not count. Texts are hashed exactly, so that values
// differing only in letter case do not pile up under one hash.
size_t ValueHash(const TCIMValue& value) {
    const size_t hash = Combine(ECIMType(value.GetType()), value.IsNull());
    if (value.IsNull()) {
        return hash;
    }
    if (value.GetType() == kCIMTypeReference) {
        const THashNoCase name;
        const TCIMReference& reference = TValueAccess::Reference(value);
        size_t keys = 0;
        for (const TKeyBinding& key : reference.GetKeys()) {
            keys += Combine(name(key.first), ValueHash(key.second));
        }
        return Combine(Combine(Combine(Combine(hash, name(reference.GetHost())),
                                       name(reference.GetNamespaceName())),
                               name(reference.GetClassName())),
                       keys);
    }
    const std::hash<std::string> text;
    if (value.GetType() == kCIMTypeString) {
        return Combine(hash, text(value.GetString()));
    }
    return Combine(hash, text(value.ToString()));
}

} // namespace

TMemoryInstance::TMemoryInstance(const boost::shared_ptr<TMemoryClass>& cimClass,
                                 const boost::weak_ptr<TMemoryNamespaceImpl>& owner)
    : m_class(cimClass), m_owner(owner) {
    cimClass->PrefetchForInstance();
    const size_t count = cimClass->Properties().All().size();
    m_slots.reserve(count);
    for (size_t index = 0; index < count; ++index) {
        m_slots.emplace_back(this);
    }
}

void TMemoryInstance::Commit(TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusAlreadyExists);
    }
    // Room was made for every property of the class, and instances set a few: what stays in the
    // namespace keeps only what it holds. A failed shrink keeps the room.
    m_values.shrink_to_fit();
    LockOwner(m_owner)->CommitInstance(shared_from_this(), KeyHash());
}

boost::shared_ptr<ICIMProperty> TMemoryInstance::GetProperty(const std::string& name, TCIMOptions) {
    return Slot(IndexOf(name));
}

boost::shared_ptr<ICIMProperty> TMemoryInstance::Slot(size_t index) {
    return boost::shared_ptr<ICIMProperty>(shared_from_this(), &m_slots[index]);
}

void TMemoryInstance::SetPropertyValue(const std::string& name, const TCIMValue& value,
                                       TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusReadOnly);
    }
    const size_t index = IndexOf(name);
    const TCIMValue::TCIMType declared = m_class->PropertyType(index);
    if (value.GetType() == kCIMTypeNone && value.IsNull()) {
        Store(index, TCIMValue(declared, 0));
    } else if (value.GetType() != declared) {
        throw TQRNException(kQRNStatusTypeMismatch);
    } else {
        Store(index, value);
    }
}

void TMemoryInstance::SetPropertyEmbeddedObject(const std::string& name, EEmbeddedObject kind,
                                                TCIMOptions) {
    if (m_committed) {
        throw TQRNException(kQRNStatusReadOnly);
    }
    m_slots[IndexOf(name)].m_embeddedObject = kind;
}

void TMemoryInstance::EnumProperties(TEnumCallback<ICIMProperty> callback, TCIMOptions) {
    if (!callback) {
        throw TQRNException(kQRNStatusInvalidArgument);
    }
    for (size_t index = 0; index < m_slots.size(); ++index) {
        if (!callback(Slot(index))) {
            return;
        }
    }
}

size_t TMemoryInstance::IndexOf(const std::string& name) const {
    const size_t index = m_class->Properties().IndexOf(name);
    if (index == m_slots.size()) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return index;
}

void TMemoryInstance::Store(size_t index, const TCIMValue& value) {
    uint32_t& position = m_slots[index].m_value;
    if (position == 0) {
        // Room for every property at once: growing step by step would move the values each time.
        if (m_values.empty()) {
            m_values.reserve(m_slots.size());
        }
        m_values.push_back(value);
        position = static_cast<uint32_t>(m_values.size());
    } else {
        m_values[position - 1] = value;
    }
}

size_t TMemoryInstance::KeyHash() const {
    size_t hash = 0;
    for (size_t index : m_class->KeyProperties()) {
        hash = Combine(hash, ValueHash(Value(index)));
    }
    return hash;
}

bool TMemoryInstance::SameKeys(const TMemoryInstance& other) const {
    for (size_t index : m_class->KeyProperties()) {
        if (!SameValue(Value(index), other.Value(index))) {
            return false;
        }
    }
    return true;
}

} // namespace NQRN20
