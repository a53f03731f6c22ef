// The in-memory object model behind TMemoryNamespace; internal to the core library.
#pragma once

#include "core/Interfaces.h"
#include "core/Status.h"
#include "core/Text.h"

#include <boost/enable_shared_from_this.hpp>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace NQRN20 {

class TMemoryClass;
class TMemoryInstance;
class TMemoryMethodDecl;
class TMemoryNamespaceImpl;

typedef std::vector<boost::shared_ptr<ICIMQualifier>> TQualifierList;

// Reads inside a value without copying what it holds.
class TValueAccess {
public:
    // Only for a non-null scalar reference.
    static const TCIMReference& Reference(const TCIMValue& value) {
        return *std::get<TCIMValue::TReferenceContent>(value.m_content).m_reference;
    }
};

// Calls back for each element until the callback asks to stop.
template <class TInterface, class TElement>
void Enumerate(const std::vector<boost::shared_ptr<TElement>>& elements,
               const TEnumCallback<TInterface>& callback) {
    if (!callback) {
        throw TQRNException(kQRNStatusInvalidArgument);
    }
    for (const boost::shared_ptr<TElement>& element : elements) {
        if (!callback(element)) {
            return;
        }
    }
}

// Asks for the cache lines of a block ahead of their use, so that their misses overlap instead of
// coming one after the other.
inline void PrefetchBlock(const void* data, size_t bytes) {
    const char* begin = static_cast<const char*>(data);
    for (size_t offset = 0; offset < bytes; offset += 64) {
        __builtin_prefetch(begin + offset);
    }
}

// Named members in order, found by name regardless of letter case. Each class holds a copy of its
// superclass's table, so the index is flat arrays that copy as blocks. The table keeps the names
// itself: a lookup then reads a slot and the name's bytes, instead of following the member and its
// string to memory that a large document has long pushed out of the cache.
template <class T>
class TMemberTable {
public:
    TMemberTable() = default;
    // The base's members, then the other's put in, each block sized once for both: a class
    // commit merges its superclass's table with its own.
    TMemberTable(const TMemberTable& base, const TMemberTable& other) {
        const size_t count = base.m_members.size() + other.m_members.size();
        if (count == 0) {
            return;
        }
        m_members.reserve(count);
        m_members.assign(base.m_members.begin(), base.m_members.end());
        m_names.reserve(base.m_names.size() + other.m_names.size());
        m_names.assign(base.m_names);
        const size_t slots = SlotsFor(count);
        m_slots = slots == base.m_slots.size() ? base.m_slots : Reindexed(slots, base.m_slots);
        for (const boost::shared_ptr<T>& member : other.m_members) {
            Put(member);
        }
    }

    // Appends, or replaces a member of the same name where it stands.
    void Put(const boost::shared_ptr<T>& member) {
        if (2 * (m_members.size() + 1) > m_slots.size()) {
            // Most tables hold a few members: room for several from the start.
            m_members.reserve(std::max<size_t>(kFirstRoom, m_members.size()));
            m_slots = Reindexed(std::max(SlotsFor(kFirstRoom), 2 * m_slots.size()), m_slots);
        }
        const std::string& name = member->Name();
        TSlot& slot = m_slots[Probe(m_slots, name.data(), name.size())];
        if (slot.m_member != 0) {
            m_members[slot.m_member - 1] = member;
        } else {
            m_members.push_back(member);
            try {
                slot = TSlot{static_cast<uint32_t>(m_members.size()), AddName(name)};
            } catch (...) {
                m_members.pop_back(); // listed only when it can be found
                throw;
            }
        }
    }
    boost::shared_ptr<T> Find(const std::string& name) const {
        const size_t index = IndexOf(name);
        return index == m_members.size() ? boost::shared_ptr<T>() : m_members[index];
    }
    // The position of a member, or the member count when absent.
    size_t IndexOf(const std::string& name) const {
        const uint32_t member =
            m_slots.empty() ? 0 : m_slots[Probe(m_slots, name.data(), name.size())].m_member;
        return member == 0 ? m_members.size() : member - 1;
    }
    const std::vector<boost::shared_ptr<T>>& All() const { return m_members; }
    void Prefetch() const {
        PrefetchBlock(m_slots.data(), m_slots.size() * sizeof(TSlot));
        PrefetchBlock(m_names.data(), m_names.size());
    }

private:
    struct TSlot {
        uint32_t m_member; // 0 when empty, else the member's position plus one
        uint32_t m_name;   // where the member's name starts in m_names
    };

    // The names one after the other, each after its length in four bytes.
    uint32_t AddName(const std::string& name) {
        const uint32_t at = static_cast<uint32_t>(m_names.size());
        const uint32_t size = static_cast<uint32_t>(name.size());
        m_names.append(reinterpret_cast<const char*>(&size), sizeof size).append(name);
        return at;
    }
    uint32_t LengthAt(uint32_t at) const {
        uint32_t length;
        std::memcpy(&length, m_names.data() + at, sizeof length);
        return length;
    }
    bool NameAt(uint32_t at, const char* name, size_t size) const {
        return LengthAt(at) == size &&
               EqualNoCase(m_names.data() + at + sizeof(uint32_t), name, size);
    }
    // The slot of the member of that name, or the empty slot where it would go. The slots are at
    // most half full, so an empty one is never far.
    size_t Probe(const std::vector<TSlot>& slots, const char* name, size_t size) const {
        const size_t mask = slots.size() - 1;
        for (size_t i = THashNoCase()(name, size) & mask;; i = (i + 1) & mask) {
            const TSlot& slot = slots[i];
            if (slot.m_member == 0 || NameAt(slot.m_name, name, size)) {
                return i;
            }
        }
    }
    static constexpr size_t kFirstRoom = 8;

    // Slots for that many members at most half full, a power of two.
    static size_t SlotsFor(size_t members) {
        size_t slots = 2 * kFirstRoom;
        while (slots < 2 * members) {
            slots *= 2;
        }
        return slots;
    }
    // Slots of the size for the members the slots given index; built aside, so that a table
    // that cannot have the room stays as it was.
    std::vector<TSlot> Reindexed(size_t size, const std::vector<TSlot>& from) const {
        std::vector<TSlot> slots(size, TSlot{0, 0});
        for (const TSlot& slot : from) {
            if (slot.m_member != 0) {
                const char* name = m_names.data() + slot.m_name + sizeof(uint32_t);
                slots[Probe(slots, name, LengthAt(slot.m_name))] = slot;
            }
        }
        return slots;
    }

    std::vector<boost::shared_ptr<T>> m_members;
    // Empty or a power of two in size.
    std::vector<TSlot> m_slots;
    std::string m_names;
};

class TMemoryQualifierDecl : public ICIMQualifierDecl,
                             public boost::enable_shared_from_this<TMemoryQualifierDecl> {
public:
    TMemoryQualifierDecl(boost::weak_ptr<TMemoryNamespaceImpl> owner, const std::string& name,
                         const TCIMValue& value, uint32_t scope, EFlavor flavor);
    void Commit(TCIMOptions options) override;
    TCIMValue::TCIMType GetType(TCIMOptions) override { return m_value.GetType(); }
    const std::string& GetName(TCIMOptions) override { return m_name; }
    const TCIMValue& GetValue(TCIMOptions) override { return m_value; }
    uint32_t GetScope(TCIMOptions) override { return m_scope; }
    EFlavor GetFlavor(TCIMOptions) override { return m_flavor; }

    const std::string& Name() const { return m_name; }

private:
    boost::weak_ptr<TMemoryNamespaceImpl> m_owner;
    std::string m_name;
    TCIMValue m_value;
    uint32_t m_scope;
    EFlavor m_flavor;
};

class TMemoryQualifier : public ICIMQualifier {
public:
    TMemoryQualifier(boost::shared_ptr<ICIMQualifierDecl> decl, const TCIMValue& value,
                     ICIMQualifierDecl::EFlavor flavor);
    const TCIMValue& GetValue(TCIMOptions) override { return m_value; }
    // The declaration's: qualifiers are many, and the declaration is kept anyway.
    const std::string& GetName(TCIMOptions) override { return m_decl->GetName(TCIMOptions()); }
    ICIMQualifierDecl::EFlavor GetFlavor(TCIMOptions) override { return m_flavor; }

private:
    boost::shared_ptr<ICIMQualifierDecl> m_decl;
    TCIMValue m_value;
    ICIMQualifierDecl::EFlavor m_flavor;
};

// The qualifiers of one element: its own, in attach order, and those it inherits with the
// to-subclass flavor from the element it overrides or the class it derives from.
class TQualifierSet {
public:
    // Takes the effective qualifiers of the set with the to-subclass flavor.
    void Inherit(const TQualifierSet& from);
    void Add(boost::shared_ptr<ICIMQualifier> qualifier);
    boost::shared_ptr<ICIMQualifier> Find(const std::string& name) const;
    // Inherited first, each replaced in place by an own qualifier of its name; then the others.
    TQualifierList Effective() const;

private:
    // Calls the function with each effective qualifier in order, without gathering them.
    template <class TFunction>
    void ForEachEffective(TFunction&& function) const;

    // An own qualifier with its name, which it keeps alive: attaching one compares its name with
    // every other's, and asking a qualifier for it costs a call through the interface.
    struct TOwn {
        boost::shared_ptr<ICIMQualifier> m_qualifier;
        const std::string* m_name;
    };
    // Own qualifiers by name, to the position of each.
    using TOwnIndex = std::unordered_map<std::string_view, size_t, THashNoCase, TEqualNoCase>;

    // Only a hostile document attaches more than a few qualifiers to one element, or inherits
    // more: beyond this many, names are found through a hash rather than compared one by one,
    // lest thousands cost the square.
    static constexpr size_t kIndexedFrom = 16;

    const TOwn* FindOwn(const std::string& name) const;
    const TOwn* FindIndexed(const std::string& name) const;

    std::vector<TOwn> m_own;
    // Made once there are more than kIndexedFrom own qualifiers; its keys view their names.
    std::unique_ptr<TOwnIndex> m_ownIndex;
    TQualifierList m_inherited;
};

// The qualifier operations every named element shares.
template <class TInterface>
class TNamedElement : public TInterface {
public:
    void AddQualifier(boost::shared_ptr<ICIMQualifier> qualifier, TCIMOptions) override {
        CheckWritable();
        if (!qualifier) {
            throw TQRNException(kQRNStatusInvalidArgument);
        }
        m_qualifiers.Add(std::move(qualifier));
    }
    boost::shared_ptr<ICIMQualifier> CreateQualifier(boost::shared_ptr<ICIMQualifierDecl> decl,
                                                     const TCIMValue& value,
                                                     ICIMQualifierDecl::EFlavor flavor,
                                                     TCIMOptions) override {
        return boost::make_shared<TMemoryQualifier>(std::move(decl), value, flavor);
    }
    void EnumQualifiers(TEnumCallback<ICIMQualifier> callback, TCIMOptions) override {
        Enumerate(m_qualifiers.Effective(), callback);
    }

    const std::string& Name() const { return m_name; }
    const TQualifierSet& Qualifiers() const { return m_qualifiers; }

protected:
    explicit TNamedElement(const std::string& name) : m_name(name) {
        if (name.empty()) {
            throw TQRNException(kQRNStatusInvalidArgument);
        }
    }
    virtual bool IsCommitted() const = 0;
    void CheckWritable() const {
        if (IsCommitted()) {
            throw TQRNException(kQRNStatusReadOnly);
        }
    }

    std::string m_name;
    TQualifierSet m_qualifiers;
};

class TMemoryParameterDecl : public TNamedElement<ICIMParameterDecl>,
                             public boost::enable_shared_from_this<TMemoryParameterDecl> {
public:
    TMemoryParameterDecl(boost::weak_ptr<TMemoryMethodDecl> method, const std::string& name,
                         TCIMValue::TCIMType type);
    void Commit(TCIMOptions options) override;
    const std::string& GetName(TCIMOptions) override { return m_name; }
    TCIMValue::TCIMType GetType(TCIMOptions) override { return m_type; }
    void SetShape(bool isArray, uint32_t arraySize, const std::string& referenceClass,
                  TCIMOptions options) override;
    bool IsArray(TCIMOptions) override { return m_isArray; }
    uint32_t GetArraySize(TCIMOptions) override { return m_arraySize; }
    std::string GetReferenceClass(TCIMOptions) override { return m_referenceClass; }
    void SetEmbeddedObject(EEmbeddedObject kind, TCIMOptions) override {
        CheckWritable();
        m_embeddedObject = kind;
    }
    EEmbeddedObject GetEmbeddedObject(TCIMOptions) override { return m_embeddedObject; }

private:
    bool IsCommitted() const override { return m_committed; }

    boost::weak_ptr<TMemoryMethodDecl> m_method;
    TCIMValue::TCIMType m_type;
    bool m_isArray = false;
    uint32_t m_arraySize = 0;
    std::string m_referenceClass;
    EEmbeddedObject m_embeddedObject = kEmbeddedNone;
    bool m_committed = false;
};

class TMemoryMethodDecl : public TNamedElement<ICIMMethodDecl>,
                          public boost::enable_shared_from_this<TMemoryMethodDecl> {
public:
    TMemoryMethodDecl(boost::weak_ptr<TMemoryClass> owner, const std::string& name,
                      TCIMValue::TCIMType returnType, const TQualifierSet* inherited);
    void Commit(TCIMOptions options) override;
    boost::shared_ptr<ICIMParameterDecl> CreateParameterDecl(const std::string& name,
                                                             TCIMValue::TCIMType type,
                                                             TCIMOptions options) override;
    const std::string& GetName(TCIMOptions) override { return m_name; }
    TCIMValue::TCIMType GetType(TCIMOptions) override { return m_type; }
    void EnumParameterDecls(TEnumCallback<ICIMParameterDecl> callback, TCIMOptions) override {
        Enumerate(m_parameters.All(), callback);
    }

    void AddParameterDecl(const boost::shared_ptr<TMemoryParameterDecl>& parameter);

private:
    bool IsCommitted() const override { return m_committed; }

    boost::weak_ptr<TMemoryClass> m_owner;
    TCIMValue::TCIMType m_type;
    TMemberTable<TMemoryParameterDecl> m_parameters;
    bool m_committed = false;
};

class TMemoryPropertyDecl : public TNamedElement<ICIMPropertyDecl>,
                            public boost::enable_shared_from_this<TMemoryPropertyDecl> {
public:
    TMemoryPropertyDecl(boost::weak_ptr<TMemoryClass> owner, const std::string& name,
                        const TCIMValue& initial, const TQualifierSet* inherited);
    boost::shared_ptr<ICIMQualifier> GetQualifier(const std::string& name, TCIMOptions) override;
    void Commit(TCIMOptions options) override;
    const std::string& GetName(TCIMOptions) override { return m_name; }
    TCIMValue::TCIMType GetType(TCIMOptions) override { return m_value.GetType(); }
    void SetValue(const TCIMValue& value, TCIMOptions) override;
    const TCIMValue& GetValue(TCIMOptions) override { return m_value; }
    void SetEmbeddedObject(EEmbeddedObject kind, TCIMOptions) override {
        CheckWritable();
        m_embeddedObject = kind;
    }
    EEmbeddedObject GetEmbeddedObject(TCIMOptions) override { return m_embeddedObject; }

    const TCIMValue& Value() const { return m_value; }
    EEmbeddedObject EmbeddedObject() const { return m_embeddedObject; }
    // Valid once committed.
    bool IsKey() const { return m_key; }

private:
    bool IsCommitted() const override { return m_committed; }

    boost::weak_ptr<TMemoryClass> m_owner;
    TCIMValue m_value;
    EEmbeddedObject m_embeddedObject = kEmbeddedNone;
    bool m_key = false;
    bool m_committed = false;
};

class TMemoryClass : public TNamedElement<ICIMClass>,
                     public boost::enable_shared_from_this<TMemoryClass> {
public:
    TMemoryClass(boost::weak_ptr<TMemoryNamespaceImpl> owner, const std::string& name,
                 const boost::shared_ptr<TMemoryClass>& superClass);
    ~TMemoryClass() override;

    void Commit(TCIMOptions options) override;
    const std::string& GetName(TCIMOptions) override { return m_name; }
    boost::shared_ptr<ICIMPropertyDecl> CreatePropertyDecl(const std::string& name,
                                                           const TCIMValue& initial,
                                                           TCIMOptions options) override;
    boost::shared_ptr<ICIMPropertyDecl> GetPropertyDecl(const std::string& name,
                                                        TCIMOptions options) override;
    void EnumPropertyDecls(TEnumCallback<ICIMPropertyDecl> callback, TCIMOptions) override;
    boost::shared_ptr<ICIMInstance> CreateInstance(TCIMOptions options) override;
    boost::shared_ptr<ICIMMethodDecl> CreateMethodDecl(const std::string& name,
                                                       TCIMValue::TCIMType returnType,
                                                       TCIMOptions options) override;
    boost::shared_ptr<ICIMClass> GetSuperClass(TCIMOptions) override { return m_superClass; }
    boost::shared_ptr<ICIMMethodDecl> GetMethodDecl(const std::string& name,
                                                    TCIMOptions options) override;
    void EnumMethodDecls(TEnumCallback<ICIMMethodDecl> callback, TCIMOptions) override;

    void AddPropertyDecl(const boost::shared_ptr<TMemoryPropertyDecl>& decl);
    void AddMethodDecl(const boost::shared_ptr<TMemoryMethodDecl>& decl);
    bool IsSameOrSubclassOf(const TMemoryClass* ancestor) const;
    bool BelongsTo(const boost::shared_ptr<TMemoryNamespaceImpl>& owner) const;
    bool IsCommitted() const override { return m_committed.load(); }
    void MarkCommitted() { m_committed.store(true); }
    // Valid once committed.
    const TMemberTable<TMemoryPropertyDecl>& Properties() const { return m_properties; }
    const std::vector<size_t>& KeyProperties() const { return m_keyProperties; }
    TCIMValue::TCIMType PropertyType(size_t index) const { return m_propertyTypes[index]; }
    // An instance document may name another class every few instances, whose tables have long
    // left the cache by then: fetching them as the instance is made spares each property of its
    // own wait.
    void PrefetchForInstance() const {
        m_properties.Prefetch();
        PrefetchBlock(m_propertyTypes.data(), m_propertyTypes.size() * sizeof(TCIMValue::TCIMType));
    }

private:
    TMemberTable<TMemoryPropertyDecl> MergedProperties() const;
    TMemberTable<TMemoryMethodDecl> MergedMethods() const;

    boost::weak_ptr<TMemoryNamespaceImpl> m_owner;
    boost::shared_ptr<TMemoryClass> m_superClass;
    size_t m_depth;
    std::atomic<bool> m_committed{false};
    // Declared in this class, in commit order.
    TMemberTable<TMemoryPropertyDecl> m_localProperties;
    TMemberTable<TMemoryMethodDecl> m_localMethods;
    // Inherited and local, fixed at commit.
    TMemberTable<TMemoryPropertyDecl> m_properties;
    TMemberTable<TMemoryMethodDecl> m_methods;
    std::vector<size_t> m_keyProperties;
    // The declared type of each property, so that instances check values without reading every
    // declaration.
    std::vector<TCIMValue::TCIMType> m_propertyTypes;
};

// Frees a class when its last handle goes. A long superclass chain would otherwise be freed by
// nested destructor calls, one stack frame per class: freeing one class may drop its superclass's
// last handle, and that class is then queued and freed by the outermost call.
struct TClassDeleter {
    void operator()(TMemoryClass* cimClass) const;
};

class TMemoryInstance : public ICIMInstance,
                        public boost::enable_shared_from_this<TMemoryInstance> {
public:
    explicit TMemoryInstance(const boost::shared_ptr<TMemoryClass>& cimClass,
                             const boost::weak_ptr<TMemoryNamespaceImpl>& owner);
    // The slots point back to the instance.
    TMemoryInstance(const TMemoryInstance&) = delete;
    TMemoryInstance& operator=(const TMemoryInstance&) = delete;
    void Commit(TCIMOptions options) override;
    boost::shared_ptr<ICIMClass> GetClass(TCIMOptions) override { return m_class; }
    boost::shared_ptr<ICIMProperty> GetProperty(const std::string& name, TCIMOptions) override;
    void SetPropertyValue(const std::string& name, const TCIMValue& value, TCIMOptions) override;
    void EnumProperties(TEnumCallback<ICIMProperty> callback, TCIMOptions) override;
    void SetPropertyEmbeddedObject(const std::string& name, EEmbeddedObject kind,
                                   TCIMOptions) override;

    const TMemoryClass* Class() const { return m_class.get(); }
    // Called under the namespace's lock.
    void MarkCommitted() { m_committed = true; }
    // For the namespace's check that no two instances of a class have the same keys: instances
    // with the same keys have the same hash, and SameKeys compares two of one class.
    size_t KeyHash() const;
    bool SameKeys(const TMemoryInstance& other) const;
    const TMemoryPropertyDecl& Declaration(size_t index) const {
        return *m_class->Properties().All()[index];
    }
    // The value set last, else the declared default. The reference is good until the next
    // SetPropertyValue or Commit, which may replace or move it; a committed instance no longer
    // changes.
    const TCIMValue& Value(size_t index) const {
        const uint32_t value = m_slots[index].m_value;
        return value == 0 ? Declaration(index).Value() : m_values[value - 1];
    }

private:
    // One per class property: where its value is, and the property that GetProperty and
    // EnumProperties hand out. Handed out under the instance's own count, a slot costs no
    // allocation, and it always shows the current value.
    class TPropertySlot : public ICIMProperty {
    public:
        explicit TPropertySlot(const TMemoryInstance* instance) : m_instance(instance) {}
        TCIMValue::TCIMType GetType(TCIMOptions) override {
            return m_instance->m_class->PropertyType(Index());
        }
        const std::string& GetName(TCIMOptions) override {
            return m_instance->Declaration(Index()).Name();
        }
        const TCIMValue& GetValue(TCIMOptions) override { return m_instance->Value(Index()); }
        EEmbeddedObject GetEmbeddedObject(TCIMOptions) override {
            return m_embeddedObject != kEmbeddedNone
                       ? m_embeddedObject
                       : m_instance->Declaration(Index()).EmbeddedObject();
        }

        // 0 when unset, else the position in m_values plus one.
        uint32_t m_value = 0;
        // Beside the position, where the slot has room to spare.
        EEmbeddedObject m_embeddedObject = kEmbeddedNone;

    private:
        size_t Index() const { return size_t(this - m_instance->m_slots.data()); }

        const TMemoryInstance* m_instance;
    };

    size_t IndexOf(const std::string& name) const;
    boost::shared_ptr<ICIMProperty> Slot(size_t index);
    void Store(size_t index, const TCIMValue& value);

    boost::shared_ptr<TMemoryClass> m_class;
    boost::weak_ptr<TMemoryNamespaceImpl> m_owner;
    // Only the values set are kept, in set order, so an instance does not copy every default;
    // the others read the declaration.
    std::vector<TPropertySlot> m_slots;
    std::vector<TCIMValue> m_values;
    bool m_committed = false;
};

class TMemoryNamespaceImpl : public ICIMNamespace,
                             public boost::enable_shared_from_this<TMemoryNamespaceImpl> {
public:
    explicit TMemoryNamespaceImpl(const std::string& name) : m_name(name) {}

    boost::shared_ptr<ICIMClass> CreateClass(const std::string& name,
                                             boost::shared_ptr<ICIMClass> superclass,
                                             TCIMOptions options) override;
    boost::shared_ptr<ICIMClass> GetClass(const std::string& name, TCIMOptions options) override;
    boost::shared_ptr<ICIMQualifierDecl> CreateQualifierDecl(const std::string& name,
                                                             const TCIMValue& value, uint32_t scope,
                                                             ICIMQualifierDecl::EFlavor flavor,
                                                             TCIMOptions options) override;
    boost::shared_ptr<ICIMQualifierDecl> GetQualifierDecl(const std::string& name,
                                                          TCIMOptions options) override;
    const std::string& GetName(TCIMOptions) override { return m_name; }
    void EnumQualifierDecls(TEnumCallback<ICIMQualifierDecl> callback,
                            TCIMOptions options) override;
    void EnumClasses(TEnumCallback<ICIMClass> callback, TCIMOptions options) override;
    void EnumInstances(const std::string& className, TEnumCallback<ICIMInstance> callback,
                       TCIMOptions options) override;

    void CommitClass(const boost::shared_ptr<TMemoryClass>& cimClass);
    void CommitQualifierDecl(const boost::shared_ptr<TMemoryQualifierDecl>& decl);
    void CommitInstance(const boost::shared_ptr<TMemoryInstance>& instance, size_t keyHash);

private:
    boost::shared_ptr<TMemoryClass> FindClass(const std::string& name);

    const std::string m_name;
    std::mutex m_mutex; // guards every table below
    TMemberTable<TMemoryClass> m_classes;
    TMemberTable<TMemoryQualifierDecl> m_qualifierDecls;
    std::vector<boost::shared_ptr<TMemoryInstance>> m_instances;
    // The instances of each class that has keys, by the hash of their keys; m_instances keeps
    // them alive.
    std::unordered_map<const TMemoryClass*, std::unordered_multimap<size_t, const TMemoryInstance*>>
        m_instanceKeys;
};

// The object that created this one (namespace, class or method); a commit needs it alive.
template <class T>
boost::shared_ptr<T> LockOwner(const boost::weak_ptr<T>& owner) {
    boost::shared_ptr<T> locked = owner.lock();
    if (!locked) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return locked;
}

} // namespace NQRN20
