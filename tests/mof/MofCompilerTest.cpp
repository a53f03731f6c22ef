// Tests of the MOF compiler over small texts: literals, declarations, and the errors that each
// cost one declaration.
#include "mof/MofSupport.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <utility>
#include <vector>

namespace NQRN20 {
namespace {

struct TValueCase {
    const char* m_declaration; // a property declaration of class T_V
    std::string m_expected;    // the property's value described, or the log
};

TEST(TMofCompiler, ConvertsLiteralsToTheDeclaredType) {
    const TValueCase cases[] = {
        {"uint8 p = 0x1F;", "uint8 '31'"},
        {"sint32 p = -017;", "sint32 '-15'"},
        {"uint8 p = 101b;", "uint8 '5'"},
        {"uint64 p = 18446744073709551615;", "uint64 '18446744073709551615'"},
        {"real64 p = -1.5e3;", "real64 '-1500'"},
        {"real32 p = 2;", "real32 '2'"},
        {"boolean p = TRUE;", "boolean 'true'"},
        {"string p = null;", "string null"},
        {"string p = \"a\\x41\" \"\\b\\t\\n\\f\\r\\\"\\'\\\\\";", "string 'aA\b\t\n\f\r\"'\\'"},
        {"char16 p = '\\x263A';", "char16 '\xE2\x98\xBA'"},
        {"datetime p = \"20240102030405.000000+000\";", "datetime '20240102030405.000000+000'"},
        {"uint16 p[] = {1, 0x2, 03};", "uint16[] '1, 2, 3' count 0"},
        {"string p[3];", "string[] null count 3"},
        {"uint8 p = 256;", "1:23: value 256 does not fit type uint8"},
        {"uint8 p = 019;", "1:23: not an integer: 019"},
        {"uint64 p = 0x10000000000000000;", "1:24: integer beyond 64 bits: 0x10000000000000000"},
        {"string p = 1;", "1:24: value 1 does not fit type string"},
        {"uint8 p = {1};", "1:23: an array value for a scalar of type uint8"},
        {"datetime p = \"soon\";", "1:26: string \"soon\" does not fit type datetime"},
        {"string p = \"\\q\";", "1:24: unknown escape \\q"},
        {"string p[0];", "1:22: expected an array size but found '0'"},
    };
    for (const TValueCase& c : cases) {
        SCOPED_TRACE(c.m_declaration);
        const TCompiled compiled =
            CompileMof(std::string("class T_V { ") + c.m_declaration + " };");
        const bool error = std::isdigit(static_cast<unsigned char>(c.m_expected[0])) != 0;
        EXPECT_EQ(error ? c.m_expected + "\n" : "", compiled.m_log);
        EXPECT_EQ(error ? "" : "class T_V\n  property p " + c.m_expected + "\n",
                  compiled.m_objects);
    }
}

struct TMofCase {
    const char* m_title;
    std::string m_mof;
    std::string m_log;
    std::string m_objects;
};

void RunMofCases(const std::vector<TMofCase>& cases) {
    for (const TMofCase& c : cases) {
        SCOPED_TRACE(c.m_title);
        const TCompiled compiled = CompileMof(c.m_mof);
        EXPECT_EQ(c.m_log, compiled.m_log);
        EXPECT_EQ(c.m_objects, compiled.m_objects);
    }
}

TEST(TMofCompiler, BuildsDeclarationsThroughTheCore) {
    RunMofCases({
        {"a qualifier declaration: array shape, default, scope and flavors",
         "qualifier Q : uint8[2] = {1, 2}, scope(class, indication), "
         "flavor(DisableOverride, Restricted, Translatable);",
         "", "qualifier Q uint8[] '1, 2' count 2 scope 5 flavor 4\n"},
        {"scope any, default flavor", "Qualifier Q : string, Scope(any);", "",
         "qualifier Q string null scope 127 flavor 3\n"},
        {"qualifier declarations without commas, each policy as flavors",
         "Qualifier E : uint8 = 1 Scope(class) Policy(EnableOverride);\n"
         "Qualifier D : string Scope(property), Policy(disableoverride);\n"
         "Qualifier R : boolean Scope(reference) Policy(Restricted);",
         "",
         "qualifier E uint8 '1' scope 1 flavor 3\nqualifier D string null scope 8 flavor 2\n"
         "qualifier R boolean null scope 16 flavor 0\n"},
        {"an association is a class marked as one, unless its list says otherwise",
         "Qualifier Association : boolean = false Scope(association) Policy(DisableOverride);\n"
         "[Description(\"d\")] association T_L { T_A REF a; };\n"
         "[Association(false)] association T_N : T_L { };",
         "",
         "qualifier Association boolean 'false' scope 2 flavor 2\n"
         "class T_L [Association=boolean 'true' flavor 2, Description=string 'd' flavor 7]\n"
         "  property a reference null -> T_A\n"
         "class T_N : T_L [Association=boolean 'false' flavor 2, Description=string 'd' flavor 7]\n"
         "  property a reference null -> T_A\n"},
        {"a class: qualifiers with flavors, inherited key, reference, default",
         "[Description(\"d\" \"e\"): Restricted] class T_B : T_A {\n"
         "  uint32 Count = 5; T_A REF Peer; };",
         "",
         "class T_B : T_A [Description=string 'de' flavor 5]\n"
         "  property Id string null [Key=boolean 'true' flavor 2]\n"
         "  property Count uint32 '5'\n  property Peer reference null -> T_A\n"},
        {"a method: array, reference and qualified parameters",
         "class T_M { uint32 Go([In] string a[], T_M REF b, uint8 c[4]); };", "",
         "class T_M\n  method Go uint32\n    parameter a string [In=boolean 'true' flavor 3]\n"
         "    parameter b reference\n    parameter c uint8\n"},
        {"parameter defaults are checked, dropped, and said once to have no effect",
         "class T_M { uint32 Go([In] uint32 t = 30, uint8 c[2] = {1, 2}, T_A REF r = null); };",
         "1:39: a parameter's default value has no effect here\n",
         "class T_M\n  method Go uint32\n    parameter t uint32 [In=boolean 'true' flavor 3]\n"
         "    parameter c uint8\n    parameter r reference\n"},
        {"a NULL EmbeddedInstance says what the text holds; a stated one is kept",
         "class T_E { [EmbeddedInstance(NULL)] string a; [EmbeddedInstance(\"T_A\")] string b;};",
         "",
         "class T_E\n  property a string null embedded instance\n"
         "  property b string null [EmbeddedInstance=string 'T_A' flavor 3]\n"},
        {"instances: an alias stands for the instance's path",
         "instance of T_A as $a { Id = \"x\"; };\n"
         "class T_R { T_A REF r; };\ninstance of T_R { r = $A; };\n"
         "instance of T_R { r = \"T_A.Id=\\\"y\\\"\"; };",
         "",
         "class T_R\n  property r reference null -> T_A\ninstance T_A Id='x'\n"
         "instance T_R r='root/cimv2:T_A.Id=\"x\"'\ninstance T_R r='root/cimv2:T_A.Id=\"y\"'\n"},
        {"a byte order mark is no token",
         "\xEF\xBB\xBF"
         "class T_B { };",
         "", "class T_B\n"},
        {"pragmas that do nothing say so once",
         "#pragma locale (\"en_US\")\n#pragma namespace (\"a\")\n#pragma namespace (\"b\")",
         "1:9: #pragma locale has no effect here\n2:9: #pragma namespace has no effect here\n", ""},
    });
}

// The declaration after each error is read whole.
TEST(TMofCompiler, ReportsAnErrorAndSkipsOnlyItsDeclaration) {
    const std::string next = "class T_Next { };";
    const std::string loaded = "class T_Next\n";
    RunMofCases({
        {"unknown superclass", "class T_B : T_Nope {\n};\n" + next,
         "1:13: unknown superclass T_Nope of class T_B\n", loaded},
        {"unknown qualifier", "[Nope] class T_B { };\n" + next, "1:2: unknown qualifier Nope\n",
         loaded},
        {"unknown type inside braces", "class T_B { int p; uint8 q; };" + next,
         "1:13: unknown data type int\n", loaded},
        {"unknown class of an instance", "instance of T_Nope { };" + next,
         "1:13: unknown class T_Nope\n", loaded},
        {"unknown property", "instance of T_A { Nope = 1; };" + next,
         "1:19: no property Nope in class T_A\n", loaded},
        {"unknown alias", "class T_R { T_A REF r; };\ninstance of T_R { r = $a; };" + next,
         "2:23: unknown alias $a\n", "class T_R\n  property r reference null -> T_A\n" + loaded},
        {"alias defined twice",
         "instance of T_A as $a { Id = \"1\"; };\ninstance of T_A as $a { Id = \"2\"; };" + next,
         "2:20: alias defined twice: $a\n", loaded + "instance T_A Id='1'\n"},
        {"a string left open swallows its line's braces", "instance of T_A { Id = \"x; };\n" + next,
         "1:24: string not closed on its line\n", loaded},
        {"a comment left open", next + " /* ...", "1:19: comment not closed\n", loaded},
        {"a stray character", "class T_B { @ };" + next, "1:13: unexpected character '@'\n",
         loaded},
        {"a missing semicolon", "class T_B { uint8 p }; " + next,
         "1:21: expected ';' but found '}'\n", loaded},
        {"a scope with no bit here", "Qualifier Q : string Scope(class, EnumerationValue);" + next,
         "1:35: scope EnumerationValue is not supported\n", loaded},
        {"an unknown policy", "Qualifier Q : string Scope(class) Policy(ToSubclass);" + next,
         "1:42: unknown policy ToSubclass\n", loaded},
        {"an association needs the Association declaration", "association T_L {\n};" + next,
         "1:1: unknown qualifier Association\n", loaded},
        {"a parameter default of the wrong type", "class T_B { uint32 Go(uint8 t = 300); };" + next,
         "1:33: value 300 does not fit type uint8\n", loaded},
        {"declarations of kinds with no object here, nested braces and all",
         "[Description(\"s\")] structure T_S { uint8 a; structure T_I { uint8 b; }; };\n"
         "enumeration T_E : uint32 { a = 1, b };\nvalue of T_A as $v { Id = \"x\"; };\n" +
             next,
         "1:20: structure declarations are not supported\n"
         "2:1: enumeration declarations are not supported\n"
         "3:1: 'value of' declarations are not supported\n",
         loaded},
        {"a duplicate instance is only counted",
         "instance of T_A { Id = \"1\"; };\n"
         "instance of T_A { Id = \"1\"; };" +
             next,
         "", loaded + "instance T_A Id='1'\n"},
    });
}

// Each is linear, where attaching or taking out qualifiers one by one among all the others would
// take minutes at these counts.
TEST(TMofCompiler, AttachesAndInheritsHundredsOfThousandsOfQualifiersInLinearTime) {
    const int kCount = 100000;
    std::string declarations = "Qualifier EmbeddedObject : boolean = false, Scope(property);\n";
    std::string names;
    std::string markers;
    for (int i = 0; i < kCount; ++i) {
        declarations += "Qualifier Q" + std::to_string(i) + " : uint32, Scope(class, property);\n";
        names += (i > 0 ? ", Q" : "Q") + std::to_string(i) + "(" + std::to_string(i) + ")";
        markers += (i > 0 ? ", " : "") + std::string("EmbeddedObject(NULL)");
    }
    const std::string text = declarations + "[" + names + "] class T_A { [" + names +
                             "] string p; [" + markers + "] string q; };\n[" + names +
                             "] class T_B : T_A { [" + names + "] string p; };";
    const auto space = TMemoryNamespace::Create();
    TLoadReport report;
    TMofLoader::PopulateFromMOFText(space, text.c_str(), text.size(), "t.mof", report);
    ASSERT_EQ("", DescribeLog(report));
    const auto qualifiers = [](ICIMNamedElement& element) {
        return All<ICIMQualifier>(element, &ICIMNamedElement::EnumQualifiers).size();
    };
    const auto sub = space->GetClass("T_B", TCIMOptions());
    EXPECT_EQ(size_t(kCount), qualifiers(*sub));
    EXPECT_EQ(size_t(kCount), qualifiers(*sub->GetPropertyDecl("p", TCIMOptions())));
    const auto q = sub->GetPropertyDecl("q", TCIMOptions());
    EXPECT_EQ(kEmbeddedObject, q->GetEmbeddedObject(TCIMOptions()));
    EXPECT_EQ(0u, qualifiers(*q));
}

TEST(TMofLoader, TellsMofFromXmlByTheFirstCharacter) {
    const std::pair<std::string, bool> cases[] = {
        {" \n<?xml version='1.0'?>", false},
        {"\xEF\xBB\xBF<CIM>", false},
        {"", false},
        {"class A {};", true},
        {"// <CIM>", true},
        {"  #pragma", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.second, TMofLoader::IsMof(c.first.data(), c.first.size())) << c.first;
    }
}

} // namespace
} // namespace NQRN20
