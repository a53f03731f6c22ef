// TMemoryInstance: property values checked against the class, and the identity of its keys.
#include "core/MemoryModel.h"

#include <algorithm>
#include <charconv>

namespace NQRN20 {

namespace {

// Marks a null value where a non-null one would start with a digit.
const char kNullMark = '~';

// A number, then a colon. Appended in place: every committed instance builds one key text.
void AppendNumber(std::string& out, size_t number) {
    char digits[24];
    char* end = std::to_chars(digits, digits + sizeof digits - 1, number).ptr;
    *end++ = ':';
    out.append(digits, size_t(end - digits));
}

// Length-prefixed, so no text inside a part can imitate what follows it.
void AppendPart(std::string& out, const std::string& part) {
    AppendNumber(out, part.size());
    out.append(part);
}

void AppendLoweredPart(std::string& out, const std::string& part) {
    AppendPart(out, part);
    LowerAscii(&out[out.size() - part.size()], part.size());
}

typedef std::pair<const std::string, TCIMValue> TKeyBinding;

bool LessNoCase(const TKeyBinding* a, const TKeyBinding* b) {
    const std::string& x = a->first;
    const std::string& y = b->first;
    return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(), [](char c, char d) {
        return LowerAscii(c) < LowerAscii(d);
    });
}

// Equal key values give equal texts: names and references compare regardless of letter case.
// A text reads back one way only (a type byte; then a null mark, one part, or a reference's
// parts and its key count), so the texts of several keys in a row cannot run into each other.
void AppendKeyValue(std::string& out, const TCIMValue& value) {
    out += static_cast<char>(value.GetType());
    if (value.IsNull()) {
        out += kNullMark;
    } else if (value.GetType() == kCIMTypeReference) {
        const TCIMReference& reference = TValueAccess::Reference(value);
        AppendLoweredPart(out, reference.GetHost());
        AppendLoweredPart(out, reference.GetNamespaceName());
        AppendLoweredPart(out, reference.GetClassName());
        // The map orders names by spelling; equal keys need an order regardless of case.
        std::vector<const TKeyBinding*> keys;
        keys.reserve(reference.GetKeys().size());
        for (const TKeyBinding& key : reference.GetKeys()) {
            keys.push_back(&key);
        }
        std::sort(keys.begin(), keys.end(), LessNoCase);
        AppendNumber(out, keys.size());
        for (const TKeyBinding* key : keys) {
            AppendLoweredPart(out, key->first);
            AppendKeyValue(out, key->second);
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
    LockOwner(m_owner)->CommitInstance(shared_from_this(), KeyText());
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

std::string TMemoryInstance::KeyText() const {
    // Room for most key texts, references included, so that the text grows in one step; the
    // namespace keeps a copy of its own size.
    std::string text;
    text.reserve(256);
    for (size_t index : m_class->KeyProperties()) {
        AppendLoweredPart(text, Declaration(index).Name());
        AppendKeyValue(text, Value(index));
    }
    return text;
}

} // namespace NQRN20
