// What the state groups share: commits that tolerate duplicates, and the messages several
// groups report.
#pragma once

#include "cimxml/CIMXMLParser.h"
#include "core/Core.h"
#include "core/Text.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace NQRN20 {
namespace NCimXml {

constexpr char kSyntaxError[] = "CIM element syntax error";
constexpr char kCouldntFindClass[] = "TCIMXMLParser: Couldn't find class ";
constexpr char kCouldntFindQualifier[] = "TCIMXMLParser: Couldn't find qualifier ";
constexpr char kCouldntFindProperty[] = "TCIMXMLParser: Couldn't find property ";
// The level of the lookup failures that states log themselves.
constexpr uint32_t kLookupLogLevel = 3;

// The qualifier that makes a property part of an instance's name.
constexpr char kKeyQualifier[] = "KEY";

// A key property's KEY qualifier, its own or inherited, is present and true. One lookup, for a
// property named as a key; it throws inside when the qualifier is missing.
inline bool IsKeyProperty(ICIMPropertyDecl& declaration) {
    try {
        const TCIMValue& key =
            declaration.GetQualifier(kKeyQualifier, TCIMOptions())->GetValue(TCIMOptions());
        return !key.IsNull() && static_cast<bool>(key);
    } catch (const TQRNException&) {
        return false;
    }
}

// The class's key properties, in its order. Their qualifiers are looked through rather than
// looked up: most properties are not keys, and each lookup that misses throws, which made naming
// every instance of a MOF file cost five times its compile.
inline std::vector<boost::shared_ptr<ICIMPropertyDecl>> KeyPropertyDecls(ICIMClass& cimClass) {
    std::vector<boost::shared_ptr<ICIMPropertyDecl>> keys;
    cimClass.EnumPropertyDecls(
        [&keys](const boost::shared_ptr<ICIMPropertyDecl>& declaration) {
            declaration->EnumQualifiers(
                [&](const boost::shared_ptr<ICIMQualifier>& qualifier) {
                    if (!EqualNoCase(qualifier->GetName(TCIMOptions()), kKeyQualifier)) {
                        return true;
                    }
                    const TCIMValue& value = qualifier->GetValue(TCIMOptions());
                    if (!value.IsNull() && static_cast<bool>(value)) {
                        keys.push_back(declaration);
                    }
                    return false;
                },
                TCIMOptions());
            return true;
        },
        TCIMOptions());
    return keys;
}

// The path that names an instance, as text: its class and its key values.
inline std::string InstancePathText(ICIMInstance& instance) {
    const boost::shared_ptr<ICIMClass> cimClass = instance.GetClass(TCIMOptions());
    TCIMReference path;
    path.SetClassName(cimClass->GetName(TCIMOptions()));
    for (const boost::shared_ptr<ICIMPropertyDecl>& declaration : KeyPropertyDecls(*cimClass)) {
        const std::string& key = declaration->GetName(TCIMOptions());
        path.AddKeyValue(key, instance.GetProperty(key, TCIMOptions())->GetValue(TCIMOptions()));
    }
    return path.ToString();
}

// Every two-part path has the same content model: its first part, then its second, then
// nothing. Returns which part the child is (0 or 1), having advanced the phase past it; any
// other child is rejected and leaves the phase as it was.
inline int32_t AdvancePathPart(TCIMXMLParser& parser, int32_t& phase, const std::string& name,
                               const char* first, const char* second) {
    if (phase < 0 || phase > 2) {
        parser.ReportStateCorrupt();
    }
    const char* expected = phase == 0 ? first : phase == 1 ? second : nullptr;
    if (expected == nullptr || name != expected) {
        parser.RejectElement(name);
    }
    return phase++;
}

// Runs a lookup of the name. A name it does not find (status 6) is logged with the message before
// the failure goes on, so that whatever needed the name is not left out without a word.
template <class TLookup>
auto LookUpOrLog(const char* message, const std::string& name, const TLookup& lookup) {
    try {
        return lookup();
    } catch (const TQRNException& error) {
        if (error.GetStatus() == kQRNStatusNotFound) {
            TRootObject::GetCoreLogger()->Log(kLookupLogLevel, message + name);
        }
        throw;
    }
}

inline boost::shared_ptr<ICIMClass>
GetClassOrLog(const boost::shared_ptr<ICIMNamespace>& cimNamespace, const std::string& name) {
    return LookUpOrLog(kCouldntFindClass, name,
                       [&] { return cimNamespace->GetClass(name, TCIMOptions()); });
}

// Looks up the class a reference in a class names: one the namespace holds, else the class
// being built itself, whose members may name it before it is committed (a list node's link to
// the next node). Another name the namespace lacks is logged and thrown as GetClassOrLog does.
inline boost::shared_ptr<ICIMClass>
GetReferencedClassOrLog(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                        const std::string& name, const boost::shared_ptr<ICIMClass>& building) {
    if (building && EqualNoCase(building->GetName(TCIMOptions()), name)) {
        try {
            return cimNamespace->GetClass(name, TCIMOptions());
        } catch (const TQRNException& error) {
            if (error.GetStatus() != kQRNStatusNotFound) {
                throw;
            }
            return building;
        }
    }
    return GetClassOrLog(cimNamespace, name);
}

// Commits a class, declaration or qualifier declaration. A second definition of the same name
// (status 16) leaves the first in place and is not an error: schemas are often loaded twice.
// Returns false for such a duplicate.
template <class TObject>
bool CommitAllowingDuplicate(const boost::shared_ptr<TObject>& object) {
    try {
        object->Commit(TCIMOptions());
    } catch (const TQRNException& error) {
        if (error.GetStatus() != kQRNStatusAlreadyExists) {
            throw;
        }
        return false;
    }
    return true;
}

} // namespace NCimXml
} // namespace NQRN20
