// Compiling small MOF texts over a base schema, and describing what they leave, for the tests.
#pragma once

#include "mof/MofLoader.h"
#include "support/LogRecorder.h"
#include "support/SchemaCases.h"
#include "support/TempDir.h"

#include <string>

namespace NQRN20 {

// Key, Description and In to qualify with; T_A, keyed by Id, to derive from and refer to.
const char kMofBase[] =
    "Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride);\n"
    "Qualifier Description : string, Scope(any), Flavor(Translatable);\n"
    "Qualifier In : boolean = true, Scope(parameter);\n"
    "Qualifier EmbeddedInstance : string, Scope(property, parameter);\n"
    "class T_A { [Key] string Id; };\n";

// The errors and warnings, "LINE:COL: text" one a line, with the file where it is another.
inline std::string DescribeLog(const TLoadReport& report) {
    std::string text;
    for (const TLoadLogEntry& entry : report.m_log) {
        text += (entry.m_file.empty() ? "" : entry.m_file + ":") + std::to_string(entry.m_line) +
                ":" + std::to_string(entry.m_column) + ": " + entry.m_message + "\n";
    }
    return text;
}

// What the namespace holds beyond the base schema: qualifier declarations, classes, instances.
inline std::string DescribeAdded(ICIMNamespace& space) {
    std::string text;
    for (const auto& decl : All<ICIMQualifierDecl>(space, &ICIMNamespace::EnumQualifierDecls)) {
        text += "qualifier " + decl->GetName(TCIMOptions()) + " " +
                DescribeValue(decl->GetValue(TCIMOptions())) + " scope " +
                std::to_string(decl->GetScope(TCIMOptions())) + " flavor " +
                std::to_string(decl->GetFlavor(TCIMOptions())) + "\n";
    }
    for (const auto& cimClass : All<ICIMClass>(space, &ICIMNamespace::EnumClasses)) {
        text += cimClass->GetName(TCIMOptions()) == "T_A" ? "" : DescribeClass(*cimClass);
    }
    std::vector<boost::shared_ptr<ICIMInstance>> instances;
    space.EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), TCIMOptions());
    for (const auto& instance : instances) {
        text += DescribeInstance(*instance);
    }
    return text;
}

struct TCompiled {
    std::string m_log;
    std::string m_objects;
};

// Compiles the base and then the text, as one file, in a fresh namespace; the qualifier
// declarations of the base are left out of what is described.
inline TCompiled CompileMof(const std::string& text) {
    const TTempDir dir;
    const std::string base = std::string(kMofBase);
    const boost::shared_ptr<ICIMNamespace> space = TMemoryNamespace::Create();
    TLogRecorder quiet;
    TLoadReport report;
    TMofLoader::PopulateFromMOFFile(space, dir.Write("base.mof", base), report);
    TMofLoader::PopulateFromMOFFile(space, dir.Write("t.mof", text), report);
    std::string objects = DescribeAdded(*space);
    for (int skipped = 0; skipped < 4; ++skipped) {
        objects.erase(0, objects.find('\n') + 1);
    }
    return {DescribeLog(report), objects};
}

} // namespace NQRN20
