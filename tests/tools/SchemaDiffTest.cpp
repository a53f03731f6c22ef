// Tests of the schema comparison: pairs of small schemas and what they give, as JSON and as a
// changelog, and the shared DMTF schema against a copy changed in known ways.
#include "tools/cimxml/SchemaDiff.h"
#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace NQRN20 {
namespace {

const char kDecls[] =
    R"(<QUALIFIER.DECLARATION NAME="Description" TYPE="string"><SCOPE CLASS="true" )"
    R"(PROPERTY="true" METHOD="true" PARAMETER="true"/></QUALIFIER.DECLARATION>)"
    R"(<QUALIFIER.DECLARATION NAME="Deprecated" TYPE="string" ISARRAY="true"><SCOPE )"
    R"(CLASS="true" PROPERTY="true" METHOD="true"/></QUALIFIER.DECLARATION>)"
    R"(<QUALIFIER.DECLARATION NAME="Key" TYPE="boolean"><SCOPE PROPERTY="true" )"
    R"(REFERENCE="true"/><VALUE>false</VALUE></QUALIFIER.DECLARATION>)";

// Objects of a declaration group, or a whole document.
boost::shared_ptr<ICIMNamespace> Load(const std::string& content) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    const bool whole = content.compare(0, 5, "<?xml") == 0;
    const TParseResult result = ParseDocument(cimNamespace, whole ? content : InDeclGroup(content));
    EXPECT_EQ("", result.m_log) << content;
    return cimNamespace;
}

// Each side's objects after the common qualifier declarations; the instances follow the
// schema into the same namespace.
struct TPair {
    const char* m_case;
    std::string m_old;
    std::string m_new;
    std::string m_difference;
};

std::string Class(const std::string& name, const std::string& content,
                  const std::string& superclass = "") {
    return "<VALUE.OBJECT><CLASS NAME=\"" + name + "\"" +
           (superclass.empty() ? "" : " SUPERCLASS=\"" + superclass + "\"") + ">" + content +
           "</CLASS></VALUE.OBJECT>";
}

std::string Instance(const std::string& name, const std::string& key) {
    return "<VALUE.OBJECT><INSTANCE CLASSNAME=\"" + name + "\"><PROPERTY NAME=\"Id\" " +
           "TYPE=\"string\"><VALUE>" + key + "</VALUE></PROPERTY></INSTANCE></VALUE.OBJECT>";
}

const std::string kKeyed =
    Class("EX_Keyed", R"(<PROPERTY NAME="Id" TYPE="string"><QUALIFIER NAME="Key" TYPE="boolean">)"
                      R"(<VALUE>true</VALUE></QUALIFIER></PROPERTY>)");
const std::string kString = R"(<PROPERTY NAME="Size" TYPE="string"/>)";
const std::string kDescribed =
    R"(<QUALIFIER NAME="Description" TYPE="string"><VALUE>old</VALUE></QUALIFIER>)";
const std::string kDeprecated = R"(<QUALIFIER NAME="Deprecated" TYPE="string"><VALUE.ARRAY>)"
                                R"(<VALUE>EX_B</VALUE></VALUE.ARRAY></QUALIFIER>)";

TEST(NSchemaDiff, ReportsWhatChangedAsOneObjectOfSortedNames) {
    const TPair kPairs[] = {
        {"the same schema, names spelled otherwise", kKeyed + Class("EX_B", kString, "EX_Keyed"),
         Class("ex_keyed", R"(<PROPERTY NAME="ID" TYPE="string"><QUALIFIER NAME="KEY" )"
                           R"(TYPE="boolean"><VALUE>true</VALUE></QUALIFIER></PROPERTY>)") +
             Class("Ex_b", R"(<PROPERTY NAME="size" TYPE="string"/>)", "EX_KEYED"),
         "{}"},
        {"classes added, removed, given another superclass and other qualifiers",
         Class("EX_b", "") + Class("EX_C", "") + Class("EX_X", kDescribed, "EX_C"),
         Class("EX_a", "") + Class("EX_D", "") + Class("EX_c", "") +
             Class("EX_X", kDeprecated, "EX_D"),
         R"({"classes": {"added": ["EX_a", "EX_D"], "removed": ["EX_b"], "changed": {"EX_X": )"
         R"({"superclass": {"old": "EX_C", "new": "EX_D"}, "qualifiers": {"added": )"
         R"(["Deprecated"], "removed": ["Description"]}}}}})"},
        {"properties: added, removed, type, array shape, default, qualifier",
         Class("EX_A", kString + R"(<PROPERTY NAME="Gone" TYPE="uint8"/>)"
                                 R"(<PROPERTY.ARRAY NAME="List" TYPE="uint8" ARRAYSIZE="2"/>)"
                                 R"(<PROPERTY NAME="Mode" TYPE="uint8"><VALUE>1</VALUE>)"
                                 R"(</PROPERTY>)"),
         Class("EX_A", R"(<PROPERTY NAME="Size" TYPE="uint64"><QUALIFIER NAME="Description" )"
                       R"(TYPE="string"><VALUE>bytes</VALUE></QUALIFIER></PROPERTY>)"
                       R"(<PROPERTY.ARRAY NAME="List" TYPE="uint8"/>)"
                       R"(<PROPERTY NAME="Mode" TYPE="uint8"><VALUE>2</VALUE></PROPERTY>)"
                       R"(<PROPERTY NAME="New" TYPE="boolean"/>)"),
         R"({"classes": {"changed": {"EX_A": {"properties": {"added": ["New"], )"
         R"("removed": ["Gone"], "changed": {"List": {"array": {"old": 2, "new": 0}}, )"
         R"("Mode": {"default": {"old": 1, "new": 2}}, "Size": {"type": {"old": "string", )"
         R"("new": "uint64"}, "qualifiers": {"added": ["Description"]}}}}}}}})"},
        {"methods and their parameters",
         Class("EX_A", R"(<METHOD NAME="Stop" TYPE="uint32"><PARAMETER NAME="Force" )"
                       R"(TYPE="boolean"/></METHOD><METHOD NAME="Gone" TYPE="uint32"/>)"),
         Class("EX_A", R"(<METHOD NAME="Stop" TYPE="uint16"><PARAMETER.ARRAY NAME="Force" )"
                       R"(TYPE="boolean"/><PARAMETER NAME="Why" TYPE="string"/></METHOD>)"),
         R"({"classes": {"changed": {"EX_A": {"methods": {"removed": ["Gone"], "changed": )"
         R"({"Stop": {"type": {"old": "uint32", "new": "uint16"}, "parameters": {"added": )"
         R"(["Why"], "changed": {"Force": {"array": {"old": null, "new": 0}}}}}}}}}}})"},
        {"instances by their keys", kKeyed + Instance("EX_Keyed", "a") + Instance("EX_Keyed", "b"),
         kKeyed + Instance("EX_Keyed", "b") + Instance("EX_Keyed", "C"),
         R"({"instances": {"added": ["EX_Keyed.Id=\"C\""], "removed": ["EX_Keyed.Id=\"a\""]}})"},
    };
    for (const TPair& pair : kPairs) {
        const TJson difference =
            NSchemaDiff::Compare(*Load(kDecls + pair.m_old), *Load(kDecls + pair.m_new));
        EXPECT_EQ(pair.m_difference, difference.Compact()) << pair.m_case;
    }
}

TEST(NSchemaDiff, ComparesQualifierDeclarationsByTypeDefaultScopeAndFlavor) {
    const std::string changed =
        R"(<QUALIFIER.DECLARATION NAME="Description" TYPE="string" TRANSLATABLE="true">)"
        R"(<SCOPE CLASS="true" PROPERTY="true" METHOD="true"/></QUALIFIER.DECLARATION>)"
        R"(<QUALIFIER.DECLARATION NAME="Key" TYPE="boolean"><SCOPE PROPERTY="true" )"
        R"(REFERENCE="true"/><VALUE>true</VALUE></QUALIFIER.DECLARATION>)"
        R"(<QUALIFIER.DECLARATION NAME="Units" TYPE="string"><SCOPE PROPERTY="true"/>)"
        R"(</QUALIFIER.DECLARATION>)";
    EXPECT_EQ(R"({"qualifier_declarations": {"added": ["Units"], "removed": ["Deprecated"], )"
              R"("changed": {"Description": {"scope": {"old": ["class", "property", "method", )"
              R"("parameter"], "new": ["class", "property", "method"]}, "flavors": {"old": )"
              R"(["EnableOverride", "ToSubclass"], "new": ["EnableOverride", "ToSubclass", )"
              R"("Translatable"]}}, "Key": {"default": {"old": false, "new": true}}}}})",
              NSchemaDiff::Compare(*Load(kDecls), *Load(changed)).Compact());
}

// A described property, with its description or without.
std::string Described(const std::string& description) {
    return R"(<PROPERTY NAME="Size" TYPE="string"><QUALIFIER NAME="Description" )"
           R"(TYPE="string"><VALUE>)" +
           description + "</VALUE></QUALIFIER></PROPERTY>";
}

TEST(NSchemaDiff, WritesAChangelogThatCallsOutDeprecationsAndShortensLongValues) {
    const TJson difference = NSchemaDiff::Compare(
        *Load(kDecls + Class("EX_A", "") + Class("EX_B", Described("short"))),
        *Load(kDecls + Class("EX_A", kDeprecated) +
              Class("EX_B", Described(std::string(54, 'x') + "\xc3\xa9" + std::string(9, 'y'))) +
              Class("EX_C", "")));
    std::ostringstream text;
    NSchemaDiff::WriteText(difference, text);
    EXPECT_EQ("Classes added (1):\n"
              "  EX_C\n"
              "Class EX_A (deprecated):\n"
              "  qualifiers added: Deprecated\n"
              "Class EX_B:\n"
              "  property Size:\n"
              "    qualifier Description: \"short\" -> \"" +
                  std::string(54, 'x') + "...\"\n",
              text.str());
}

// The schema against a copy with one change of each kind made to its text.
TEST(NSchemaDiff, FindsEachKnownChangeInTheDmtfSchema) {
    std::ifstream file(XMLPARSER_SHARED_DIR "/corpus/dmtf/cim_schema.xml", std::ios::binary);
    if (!file) {
        GTEST_SKIP() << "the DMTF schema of the shared corpus is absent";
    }
    const std::string schema((std::istreambuf_iterator<char>(file)),
                             std::istreambuf_iterator<char>());
    std::string changed = schema;
    const auto change = [&](const std::string& anchor, const std::string& old,
                            const std::string& now) {
        const size_t at = changed.find(old, changed.find(anchor));
        ASSERT_NE(std::string::npos, at) << anchor;
        changed.replace(at, old.size(), now);
    };
    const size_t removed =
        changed.rfind("<VALUE.OBJECT>", changed.find("<CLASS NAME=\"CIM_MediaAccessStatData\""));
    changed.erase(removed, changed.find("</VALUE.OBJECT>", removed) + 15 - removed);
    change("<CLASS NAME=\"CIM_ManagedElement\"", "<PROPERTY ",
           "<PROPERTY NAME=\"InventoryNote\" TYPE=\"string\"/><PROPERTY ");
    change("<CLASS NAME=\"CIM_StatisticalSetting\"", "<VALUE>CIM_StatisticalSetting is",
           "<VALUE>Gathers statistics. CIM_StatisticalSetting is");
    change("<CLASS NAME=\"CIM_FCSwitchSettings\"", "SUPERCLASS=\"CIM_SettingData\"",
           "SUPERCLASS=\"CIM_ManagedElement\"");
    change("<QUALIFIER.DECLARATION NAME=\"Abstract\"", "INDICATION=\"true\"",
           "INDICATION=\"false\"");
    const std::string description = "CIM_StatisticalSetting is the class for setting the "
                                    "collection criteria of statistical data and/or metrics "
                                    "applicable to one or more ManagedElements.";
    EXPECT_EQ(R"({"qualifier_declarations": {"changed": {"Abstract": {"scope": {"old": )"
              R"(["class", "association", "indication"], "new": ["class", "association"]}}}}, )"
              R"("classes": {"removed": ["CIM_MediaAccessStatData"], "changed": )"
              R"({"CIM_FCSwitchSettings": {"superclass": {"old": "CIM_SettingData", "new": )"
              R"("CIM_ManagedElement"}}, "CIM_ManagedElement": {"properties": {"added": )"
              R"(["InventoryNote"]}}, "CIM_StatisticalSetting": {"qualifiers": {"changed": )"
              R"({"Description": {"old": ")" +
                  description + R"(", "new": "Gathers statistics. )" + description + R"("}}}}}}})",
              NSchemaDiff::Compare(*Load(schema), *Load(changed)).Compact());
}

} // namespace
} // namespace NQRN20
