// Comparing two namespaces through their descriptions, and the changelog of the comparison.
#include "tools/cimxml/SchemaDiff.h"

#include "core/Text.h"
#include "tools/cimxml/Description.h"
#include "tools/cimxml/SchemaView.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace NQRN20 {
namespace NSchemaDiff {

namespace {

// Fields whose members are named elements, compared by name; with their singular.
const struct {
    const char* m_plural;
    const char* m_singular;
} kNamedMembers[] = {
    {"qualifiers", "qualifier"},
    {"properties", "property"},
    {"methods", "method"},
    {"parameters", "parameter"},
};
// Fields that hold a class name, which compares without regard to case.
const char* const kClassNameFields[] = {"superclass", "reference_class", "class_origin"};
const char kNameField[] = "name";
const char kDeprecated[] = "Deprecated";
// Values longer than this are shortened in the changelog.
const size_t kShortValue = 60;

const char* SingularOf(const std::string& field) {
    for (const auto& named : kNamedMembers) {
        if (field == named.m_plural) {
            return named.m_singular;
        }
    }
    return nullptr;
}

bool IsClassNameField(const std::string& field) {
    return std::any_of(std::begin(kClassNameFields), std::end(kClassNameFields),
                       [&](const char* name) { return field == name; });
}

// A member of an object under the key it is matched by.
struct TKeyed {
    std::string m_key;
    const std::string* m_name;
    const TJson* m_value;
};

// How members are matched: by name without regard to case, or by what they hold.
enum EMatch { kByName, kByValue };

// The members of an object (or of nothing) ordered by their keys, so that two sides can be
// walked together in one pass.
std::vector<TKeyed> Sorted(const TJson* object, EMatch match) {
    std::vector<TKeyed> keyed;
    if (object != nullptr) {
        for (const auto& member : object->Members()) {
            keyed.push_back({match == kByName ? LowerAscii(member.first) : member.second.Text(),
                             &member.first, &member.second});
        }
    }
    std::sort(keyed.begin(), keyed.end(),
              [](const TKeyed& a, const TKeyed& b) { return a.m_key < b.m_key; });
    return keyed;
}

TJson OldAndNew(const TJson* oldValue, const TJson* newValue) {
    TJson change = TJson::Object();
    change.Set("old", oldValue != nullptr ? *oldValue : TJson());
    change.Set("new", newValue != nullptr ? *newValue : TJson());
    return change;
}

bool Same(const std::string& field, const TJson* a, const TJson* b) {
    if (a == nullptr || b == nullptr) {
        return a == b;
    }
    if (IsClassNameField(field) && a->Kind() == TJson::kString && b->Kind() == TJson::kString) {
        return EqualNoCase(a->Text(), b->Text());
    }
    return *a == *b;
}

TJson CompareNamed(const TJson* oldSet, const TJson* newSet, EMatch match = kByName);

TJson CompareRecords(const TJson& oldRecord, const TJson& newRecord) {
    std::vector<std::string> fields;
    for (const TJson* record : {&oldRecord, &newRecord}) {
        for (const auto& member : record->Members()) {
            if (std::find(fields.begin(), fields.end(), member.first) == fields.end()) {
                fields.push_back(member.first);
            }
        }
    }
    TJson changes = TJson::Object();
    for (const std::string& field : fields) {
        const TJson* before = oldRecord.Find(field);
        const TJson* after = newRecord.Find(field);
        if (field == kNameField) {
            continue;
        }
        if (SingularOf(field) != nullptr) {
            TJson named = CompareNamed(before, after);
            if (!named.Empty()) {
                changes.Set(field, std::move(named));
            }
        } else if (!Same(field, before, after)) {
            changes.Set(field, OldAndNew(before, after));
        }
    }
    return changes;
}

// Both sides walked in the order of their keys: each member is added, removed, or on both
// sides and then compared.
TJson CompareNamed(const TJson* oldSet, const TJson* newSet, EMatch match) {
    const std::vector<TKeyed> before = Sorted(oldSet, match);
    const std::vector<TKeyed> after = Sorted(newSet, match);
    TJson added = TJson::Array();
    TJson removed = TJson::Array();
    TJson changed = TJson::Object();
    size_t i = 0;
    size_t j = 0;
    while (i < before.size() || j < after.size()) {
        if (j == after.size() || (i < before.size() && before[i].m_key < after[j].m_key)) {
            removed.Push(*before[i++].m_name);
        } else if (i == before.size() || after[j].m_key < before[i].m_key) {
            added.Push(*after[j++].m_name);
        } else {
            const TJson& left = *before[i++].m_value;
            const TKeyed& right = after[j++];
            if (left.Kind() == TJson::kObject && right.m_value->Kind() == TJson::kObject) {
                TJson change = CompareRecords(left, *right.m_value);
                if (!change.Empty()) {
                    changed.Append(*right.m_name, std::move(change));
                }
            } else if (left != *right.m_value) {
                changed.Append(*right.m_name, OldAndNew(&left, right.m_value));
            }
        }
    }
    TJson changes = TJson::Object();
    if (!added.Empty()) {
        changes.Set("added", std::move(added));
    }
    if (!removed.Empty()) {
        changes.Set("removed", std::move(removed));
    }
    if (!changed.Empty()) {
        changes.Set("changed", std::move(changed));
    }
    return changes;
}

TJson Describe(ICIMNamespace& cimNamespace, bool classes) {
    TJson described = TJson::Object();
    if (classes) {
        for (const auto& cimClass : NSchemaView::Classes(cimNamespace)) {
            described.Append(cimClass->GetName(TCIMOptions()), NDescription::Class(*cimClass));
        }
    } else {
        for (const auto& declaration : NSchemaView::QualifierDecls(cimNamespace)) {
            described.Append(declaration->GetName(TCIMOptions()),
                             NDescription::QualifierDecl(*declaration));
        }
    }
    return described;
}

// Each instance under its name, holding the name with class and key names folded, by which it
// is matched: key values compare exactly.
TJson InstanceNames(ICIMNamespace& cimNamespace) {
    TJson names = TJson::Object();
    for (const auto& instance : NSchemaView::Instances(cimNamespace)) {
        names.Append(NDescription::InstanceName(*instance),
                     NDescription::InstanceName(*instance, true));
    }
    return names;
}

// Instances are named by value alone: they are added or removed, never changed.
TJson CompareInstances(ICIMNamespace& oldNamespace, ICIMNamespace& newNamespace) {
    const TJson before = InstanceNames(oldNamespace);
    const TJson after = InstanceNames(newNamespace);
    TJson changes = CompareNamed(&before, &after, kByValue);
    TJson named = TJson::Object();
    for (const char* side : {"added", "removed"}) {
        if (const TJson* list = changes.Find(side)) {
            named.Set(side, *list).SortByName();
        }
    }
    return named;
}

// The changelog: a value on one line, shortened on a character boundary.
std::string Short(const TJson* value) {
    std::string text = value != nullptr ? value->Compact() : "null";
    if (text.size() <= kShortValue) {
        return text;
    }
    const bool quoted = text[0] == '"';
    size_t end = kShortValue - (quoted ? 4 : 3);
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;
    }
    return text.substr(0, end) + (quoted ? "...\"" : "...");
}

std::string Names(const TJson& list) {
    std::string text;
    for (const auto& element : list.Members()) {
        text += (text.empty() ? "" : ", ") + element.second.Text();
    }
    return text;
}

bool AddsDeprecation(const TJson& record) {
    const TJson* qualifiers = record.Find("qualifiers");
    const TJson* added = qualifiers != nullptr ? qualifiers->Find("added") : nullptr;
    if (added == nullptr) {
        return false;
    }
    return std::any_of(added->Members().begin(), added->Members().end(), [](const auto& name) {
        return EqualNoCase(name.second.Text(), kDeprecated);
    });
}

void WriteRecord(const TJson& record, const std::string& indent, std::ostream& out);

// "properties added: A, B", then a line or a block for each changed member.
void WriteNamed(const std::string& field, const TJson& changes, const std::string& indent,
                std::ostream& out) {
    for (const char* side : {"added", "removed"}) {
        if (const TJson* names = changes.Find(side)) {
            out << indent << field << " " << side << ": " << Names(*names) << "\n";
        }
    }
    const TJson* changed = changes.Find("changed");
    if (changed == nullptr) {
        return;
    }
    for (const auto& member : changed->Members()) {
        const TJson& change = member.second;
        out << indent << SingularOf(field) << " " << member.first;
        if (field == "qualifiers") {
            out << ": " << Short(change.Find("old")) << " -> " << Short(change.Find("new")) << "\n";
        } else {
            out << (AddsDeprecation(change) ? " (deprecated)" : "") << ":\n";
            WriteRecord(change, indent + "  ", out);
        }
    }
}

void WriteRecord(const TJson& record, const std::string& indent, std::ostream& out) {
    for (const auto& field : record.Members()) {
        if (SingularOf(field.first) != nullptr) {
            WriteNamed(field.first, field.second, indent, out);
        } else {
            out << indent << field.first << ": " << Short(field.second.Find("old")) << " -> "
                << Short(field.second.Find("new")) << "\n";
        }
    }
}

// One line a name, under a heading that counts them.
void WriteList(const char* heading, const TJson* names, std::ostream& out) {
    if (names == nullptr) {
        return;
    }
    out << heading << " (" << names->Size() << "):\n";
    for (const auto& name : names->Members()) {
        out << "  " << name.second.Text() << "\n";
    }
}

void WriteChanged(const char* heading, const TJson* changed, std::ostream& out) {
    if (changed == nullptr) {
        return;
    }
    for (const auto& member : changed->Members()) {
        out << heading << " " << member.first
            << (AddsDeprecation(member.second) ? " (deprecated)" : "") << ":\n";
        WriteRecord(member.second, "  ", out);
    }
}

} // namespace

TJson Compare(ICIMNamespace& oldNamespace, ICIMNamespace& newNamespace) {
    TJson difference = TJson::Object();
    const char* const kGroups[] = {"qualifier_declarations", "classes"};
    for (const bool classes : {false, true}) {
        const TJson before = Describe(oldNamespace, classes);
        const TJson after = Describe(newNamespace, classes);
        TJson changes = CompareNamed(&before, &after);
        if (!changes.Empty()) {
            difference.Set(kGroups[classes], std::move(changes));
        }
    }
    TJson instances = CompareInstances(oldNamespace, newNamespace);
    if (!instances.Empty()) {
        difference.Set("instances", std::move(instances));
    }
    return difference;
}

void WriteText(const TJson& difference, std::ostream& out) {
    static const TJson kNothing = TJson::Object();
    const TJson* declarations = difference.Find("qualifier_declarations");
    const TJson* classes = difference.Find("classes");
    const TJson* instances = difference.Find("instances");
    declarations = declarations != nullptr ? declarations : &kNothing;
    classes = classes != nullptr ? classes : &kNothing;
    instances = instances != nullptr ? instances : &kNothing;
    WriteList("Qualifier declarations added", declarations->Find("added"), out);
    WriteList("Qualifier declarations removed", declarations->Find("removed"), out);
    WriteChanged("Qualifier declaration", declarations->Find("changed"), out);
    WriteList("Classes added", classes->Find("added"), out);
    WriteList("Classes removed", classes->Find("removed"), out);
    WriteChanged("Class", classes->Find("changed"), out);
    WriteList("Instances added", instances->Find("added"), out);
    WriteList("Instances removed", instances->Find("removed"), out);
}

} // namespace NSchemaDiff
} // namespace NQRN20
