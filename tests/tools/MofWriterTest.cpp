// Tests of the MOF writer: the literal of every kind of value, and declarations as written.
#include "tools/cimxml/MofWriter.h"

#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace NQRN20 {
namespace {

TCIMValue Value(ECIMType type, const std::string& text) {
    return TCIMValue(TCIMValue::TCIMType(type), text, boost::shared_ptr<ICIMNamespace>());
}

TCIMValue Array(ECIMType type, const std::vector<std::string>& texts) {
    std::vector<TCIMValue> elements;
    for (const std::string& text : texts) {
        elements.push_back(Value(type, text));
    }
    TCIMValue array;
    array.Set(TCIMValue::TCIMType(ECIMType(type | kCIMTypeArray)), 0, elements);
    return array;
}

TEST(NMof, WritesTheLiteralOfEveryKindOfValue) {
    const struct {
        TCIMValue m_value;
        const char* m_literal;
    } cases[] = {
        {TCIMValue(), "NULL"},
        {TCIMValue(TCIMValue::TCIMType(kCIMTypeUint32), 0), "NULL"},
        {Value(kCIMTypeBoolean, "TRUE"), "true"},
        {Value(kCIMTypeBoolean, "false"), "false"},
        {Value(kCIMTypeUint8, "255"), "255"},
        {Value(kCIMTypeSint8, "-128"), "-128"},
        {Value(kCIMTypeUint64, "18446744073709551615"), "18446744073709551615"},
        {Value(kCIMTypeSint64, "-9223372036854775808"), "-9223372036854775808"},
        {Value(kCIMTypeReal32, "2"), "2.0"},
        {Value(kCIMTypeReal64, "-1.5e-3"), "-0.0015"},
        {Value(kCIMTypeReal64, "1e300"), "1.0e+300"},
        {Value(kCIMTypeChar16, "x"), "'x'"},
        {Value(kCIMTypeChar16, "'"), "'\\x0027'"},
        {Value(kCIMTypeChar16, "\xC3\xA9"), "'\\x00E9'"},
        {Value(kCIMTypeString, "say \"hi\"\\\n\t\x01 Gr\xC3\xB6\xC3\x9F"
                               "e"),
         "\"say \\\"hi\\\"\\\\\\n\\t\\x01 Gr\xC3\xB6\xC3\x9F"
         "e\""},
        {Value(kCIMTypeDateTime, "20240315093000.000000+060"), "\"20240315093000.000000+060\""},
        {Value(kCIMTypeDateTime, "00000012030405.000000:000"), "\"00000012030405.000000:000\""},
        {Value(kCIMTypeReference, "root/cimv2:EX_Disk.DeviceID=\"d0\""),
         "\"root/cimv2:EX_Disk.DeviceID=\\\"d0\\\"\""},
        {Array(kCIMTypeUint16, {"1", "2"}), "{1, 2}"},
        {Array(kCIMTypeString, {"a", "b,c"}), "{\"a\", \"b,c\"}"},
        {Array(kCIMTypeString, {}), "{}"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.m_literal, NMof::Literal(c.m_value));
    }
}

std::string MofOf(const std::string& document) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    const TParseResult parsed = ParseDocument(cimNamespace, document);
    EXPECT_EQ("", parsed.m_log);
    std::ostringstream mof;
    NMof::WriteNamespace(*cimNamespace, mof);
    return mof.str();
}

TEST(NMof, WritesOnlyWhatEachClassStatesItself) {
    const std::string mof = MofOf(InDeclGroup(
        "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean' OVERRIDABLE='false'>"
        "<SCOPE PROPERTY='true'/><VALUE>false</VALUE></QUALIFIER.DECLARATION>"
        "<QUALIFIER.DECLARATION NAME='Note' TYPE='string' TOSUBCLASS='false'>"
        "<SCOPE CLASS='true' PROPERTY='true'/></QUALIFIER.DECLARATION>"
        "<VALUE.OBJECT><CLASS NAME='T_A'><QUALIFIER NAME='Note' TYPE='string'>"
        "<VALUE>a</VALUE></QUALIFIER><PROPERTY NAME='Id' TYPE='string'>"
        "<QUALIFIER NAME='Key' TYPE='boolean' OVERRIDABLE='false'><VALUE>true</VALUE>"
        "</QUALIFIER></PROPERTY><PROPERTY NAME='N' TYPE='sint32'><VALUE>1</VALUE></PROPERTY>"
        "</CLASS></VALUE.OBJECT>"
        "<VALUE.OBJECT><CLASS NAME='T_B' SUPERCLASS='T_A'><PROPERTY NAME='N' TYPE='sint32'>"
        "<VALUE>2</VALUE></PROPERTY></CLASS></VALUE.OBJECT>"));
    EXPECT_EQ("Qualifier Key : boolean = false,\n"
              "    Scope(property),\n"
              "    Flavor(DisableOverride, ToSubclass);\n\n"
              "Qualifier Note : string,\n"
              "    Scope(class, property),\n"
              "    Flavor(EnableOverride, Restricted);\n\n"
              "[Note(\"a\"): ToSubclass]\n"
              "class T_A {\n"
              "    [Key]\n"
              "    string Id;\n"
              "    sint32 N = 1;\n"
              "};\n\n"
              "class T_B : T_A {\n"
              "    sint32 N = 2;\n"
              "};\n\n",
              mof);
}

// MOF has only qualifiers to say what a string holds: one is added where the element and its
// class carry none. Scopes read back from their attribute values, all of them as "any".
TEST(NMof, SaysWhatAStringHoldsByAQualifierWhereNothingSaysItAlready) {
    const std::string mof = MofOf(InDeclGroup(
        "<QUALIFIER.DECLARATION NAME='EmbeddedInstance' TYPE='string'>"
        "<SCOPE ANY='true' CLASS='false'/></QUALIFIER.DECLARATION>"
        "<QUALIFIER.DECLARATION NAME='Note' TYPE='string'><SCOPE CLASS='true' INDICATION='true' "
        "ASSOCIATION='false'/></QUALIFIER.DECLARATION>"
        "<VALUE.OBJECT><CLASS NAME='T_A'>"
        "<PROPERTY NAME='O' TYPE='string' EmbeddedObject='object'/>"
        "<PROPERTY NAME='I' TYPE='string' EmbeddedObject='instance'><QUALIFIER "
        "NAME='EmbeddedInstance' TYPE='string'><VALUE>T_X</VALUE></QUALIFIER></PROPERTY>"
        "<PROPERTY NAME='S' TYPE='string'/>"
        "<METHOD NAME='M' TYPE='uint32'><PARAMETER NAME='P' TYPE='string' "
        "EmbeddedObject='instance'/></METHOD></CLASS></VALUE.OBJECT>"
        "<VALUE.OBJECT><INSTANCE CLASSNAME='T_A'><PROPERTY NAME='O' TYPE='string' "
        "EmbeddedObject='object'><VALUE>o</VALUE></PROPERTY><PROPERTY NAME='S' TYPE='string' "
        "EmbeddedObject='object'><VALUE>s</VALUE></PROPERTY></INSTANCE></VALUE.OBJECT>"));
    EXPECT_EQ("Qualifier EmbeddedInstance : string,\n"
              "    Scope(any),\n"
              "    Flavor(EnableOverride, ToSubclass);\n\n"
              "Qualifier Note : string,\n"
              "    Scope(class, indication),\n"
              "    Flavor(EnableOverride, ToSubclass);\n\n"
              "class T_A {\n"
              "    [EmbeddedObject]\n"
              "    string O;\n"
              "    [EmbeddedInstance(\"T_X\")]\n"
              "    string I;\n"
              "    string S;\n"
              "    uint32 M(\n"
              "        [EmbeddedInstance(NULL)] string P);\n"
              "};\n\n"
              "instance of T_A {\n"
              "    O = \"o\";\n"
              "    [EmbeddedObject] S = \"s\";\n"
              "};\n\n",
              mof);
}

} // namespace
} // namespace NQRN20
