// Tests of the value types: TCIMType, TCIMValue, TCIMDateTime and TCIMReference.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>

namespace NQRN20 {
namespace {

using test::StatusOf;
using test::Text;

TEST(TCIMType, ReadsTypeAttributeNamesInAnyCaseAndRefusesOthers) {
    const char* const names[] = {"",       "boolean", "string",   "char16",   "uint8",  "sint8",
                                 "uint16", "sint16",  "uint32",   "sint32",   "UINT64", "Sint64",
                                 "real32", "real64",  "datetime", "reference"};
    for (int type = kCIMTypeBoolean; type <= kCIMTypeReference; ++type) {
        EXPECT_EQ(type, ECIMType(TCIMType(std::string(names[type])))) << names[type];
    }
    for (const char* bad : {"", "int", "uint8[]", " uint8", "uint6", "sxring", "reference2"}) {
        EXPECT_EQ(kQRNStatusInvalidType, StatusOf([&] { TCIMType{std::string(bad)}; })) << bad;
    }
}

TEST(TCIMValue, ConvertsTheTextOfEachTypeOrRefusesIt) {
    const struct {
        ECIMType type;
        const char* text;
        const char* expected; // ToString() of the result
        uint32_t status = kQRNStatusOK;
    } cases[] = {
        {kCIMTypeBoolean, "FALSE", "false"},
        {kCIMTypeBoolean, "\n  True\n", "true"},
        {kCIMTypeBoolean, "1", "", kQRNStatusInvalidValue},
        {kCIMTypeBoolean, "trueish", "", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "255", "255"},
        {kCIMTypeUint8, "+7", "7"},
        {kCIMTypeUint8, "-0", "0"},
        {kCIMTypeUint8, "0x1F", "31"},
        {kCIMTypeUint8, "\n  42\n", "42"},
        {kCIMTypeUint8, "0x100", "", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "", "", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "1 2", "", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "+-1", "", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "1.0", "", kQRNStatusInvalidValue},
        {kCIMTypeSint8, "-128", "-128"},
        {kCIMTypeUint64, "18446744073709551615", "18446744073709551615"},
        {kCIMTypeSint64, "-9223372036854775808", "-9223372036854775808"},
        {kCIMTypeSint64, "-0x10", "-16"},
        {kCIMTypeReal32, "0.1", "0.1"},
        {kCIMTypeReal32, "3.4028235e38", "3.4028235e+38"},
        {kCIMTypeReal32, "-INF", "-INF"},
        {kCIMTypeReal32, "nan", "NaN"},
        {kCIMTypeReal32, "1e39", "", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "\t2.5E3 ", "2500"},
        {kCIMTypeReal64, ".5", "0.5"},
        {kCIMTypeReal64, "+1e-3", "0.001"},
        {kCIMTypeReal64, "1,5", "", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "0x1p3", "", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "1e400", "", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "-NaN", "", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "infinity", "", kQRNStatusInvalidValue},
        {kCIMTypeChar16, " ", " "},
        {kCIMTypeChar16, "\n  b\n", "b"},
        {kCIMTypeChar16, "\xE2\x82\xAC", "\xE2\x82\xAC"},
        {kCIMTypeChar16, "\xE9", "\xC3\xA9"},
        {kCIMTypeChar16, "ab", "", kQRNStatusInvalidValue},
        {kCIMTypeChar16, "\xF0\x9F\x98\x80", "", kQRNStatusInvalidValue},
        {kCIMTypeChar16, "\xED\xA0\x80", "", kQRNStatusInvalidValue},
        {kCIMTypeChar16, "\xC1\x81", "", kQRNStatusInvalidValue},
        {kCIMTypeString, "  padded text\n", "  padded text\n"},
        {kCIMTypeDateTime, "\n 00000012030405.000006:000 \n", "00000012030405.000006:000"},
        {kCIMTypeDateTime, "1970", "", kQRNStatusInvalidDateTime},
        {kCIMTypeReference, "CIM_Foo.Name=\"x\",Id=3", "CIM_Foo.Id=3,Name=\"x\""},
        {kCIMTypeReference, "\n root/cimv2:CIM_Foo \n", "root/cimv2:CIM_Foo"},
        {kCIMTypeReference, "", "", kQRNStatusInvalidValue},
        {kCIMTypeReference, "1CIM_Foo", "", kQRNStatusInvalidValue},
        {kCIMTypeReference, "CIM_Foo.=3", "", kQRNStatusInvalidValue},
        {kCIMTypeReference, "CIM_Foo.Id=\"a\"b", "", kQRNStatusInvalidValue},
        {kCIMTypeReference, "CIM_Foo.Id=abc", "", kQRNStatusInvalidValue},
        {kCIMTypeNone, "x", "", kQRNStatusInvalidType},
        {kCIMTypeArray, "1", "", kQRNStatusInvalidType},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.type) + " '" + c.text + "'");
        TCIMValue value;
        EXPECT_EQ(c.status, StatusOf([&] { value = Text(c.type, c.text); }));
        EXPECT_EQ(c.status == kQRNStatusOK ? c.type : kCIMTypeNone, ECIMType(value.GetType()));
        EXPECT_EQ(c.expected, value.ToString());
    }
    // Text holds no array: an array type gives one element.
    EXPECT_EQ(Text(kCIMTypeUint8, "5"), Text(TCIMType(kCIMTypeUint8).GetArrayType(), "5"));
}

TEST(TCIMValue, WritesRealsThatReadBackAsTheSameNumber) {
    for (double real : {0.1, 1.0 / 3, -2.5e-300, 4.9e-324, std::numeric_limits<double>::max()}) {
        char text[64];
        std::snprintf(text, sizeof text, "%.17g", real);
        const TCIMValue value = Text(kCIMTypeReal64, text);
        EXPECT_EQ(real, value.GetReal()) << text;
        EXPECT_EQ(value, Text(kCIMTypeReal64, value.ToString())) << text;
    }
    const TCIMValue single = Text(kCIMTypeReal32, "0.3");
    EXPECT_EQ(0.3f, static_cast<float>(single.GetReal()));
    EXPECT_EQ(single, Text(kCIMTypeReal32, single.ToString()));
}

TEST(TCIMValue, ArraysTakeTheElementTypeAndANullOneOnlyRecordsItsCount) {
    const TCIMValue huge(TCIMType(kCIMTypeUint32).GetArrayType(), 4294967295u);
    EXPECT_TRUE(huge.IsNull() && huge.IsArray() && huge.GetElements().empty());
    EXPECT_EQ(4294967295u, huge.GetCount());

    TCIMValue array;
    array.Set(kCIMTypeUint16, 5,
              {Text(kCIMTypeUint16, "1"), TCIMValue(), Text(kCIMTypeUint16, "3")});
    EXPECT_EQ(TCIMType(kCIMTypeUint16).GetArrayType(), array.GetType());
    EXPECT_FALSE(array.IsNull());
    EXPECT_EQ(5u, array.GetCount());
    ASSERT_EQ(3u, array.GetElements().size());
    EXPECT_EQ(TCIMValue(kCIMTypeUint16, 0), array.GetElements()[1]);
    EXPECT_EQ("1, , 3", array.ToString());
    EXPECT_EQ(kQRNStatusTypeMismatch, StatusOf([] {
                  TCIMValue mixed;
                  mixed.Set(kCIMTypeUint16, 0, {Text(kCIMTypeUint8, "1")});
              }));
}

TEST(TCIMValue, TruthIsABooleansValueOrAnyOtherValuesPresence) {
    EXPECT_FALSE(static_cast<bool>(TCIMValue()));
    EXPECT_FALSE(static_cast<bool>(TCIMValue(kCIMTypeBoolean, 0)));
    EXPECT_FALSE(static_cast<bool>(Text(kCIMTypeBoolean, "false")));
    EXPECT_TRUE(static_cast<bool>(Text(kCIMTypeBoolean, "true")));
    EXPECT_TRUE(static_cast<bool>(Text(kCIMTypeUint8, "0")));
}

TEST(TCIMValue, ComparesTypeCountAndContent) {
    EXPECT_EQ(Text(kCIMTypeUint8, "0x10"), Text(kCIMTypeUint8, "16"));
    EXPECT_NE(Text(kCIMTypeUint8, "16"), Text(kCIMTypeUint16, "16"));
    EXPECT_NE(Text(kCIMTypeString, "a"), Text(kCIMTypeString, "A"));
    EXPECT_NE(TCIMValue(kCIMTypeString, 0), Text(kCIMTypeString, ""));
    EXPECT_NE(TCIMValue(kCIMTypeUint8, 1), TCIMValue(kCIMTypeUint8, 2));
    EXPECT_EQ(Text(kCIMTypeReference, "cim_foo.ID=3"), Text(kCIMTypeReference, "CIM_Foo.Id=3"));
    EXPECT_EQ(TCIMValue(TCIMDateTime(1970, 1, 1, 0, 0, 0, 0, 0)),
              Text(kCIMTypeDateTime, "19700101000000.000000+000"));
}

TEST(TCIMDateTime, ReadsBothFormsAndWritesThemBack) {
    const struct {
        const char* text;
        const char* ui; // empty: refused
    } cases[] = {
        {"19700101000000.000000+000", "1970-01-01 00:00:00.000000 UTC+00:00"},
        {"20240315093000.000000+060", "2024-03-15 09:30:00.000000 UTC+01:00"},
        {"20220510113045.000***-480", "2022-05-10 11:30:45.000*** UTC-08:00"},
        {"2022051011****.******+000", "2022-05-10 11:**:**.****** UTC+00:00"},
        {"20000229235959.999999-999", "2000-02-29 23:59:59.999999 UTC-16:39"},
        {"00000012030405.000006:000", "12 days 03:04:05.000006"},
        {"99999999235959.999999:000", "99999999 days 23:59:59.999999"},
        {"00000001******.******:000", "1 days **:**:**.******"},
        {"1970010100000.000000+000", ""},
        {"19700101000000.000000+0000", ""},
        {"19700101000000,000000+000", ""},
        {"19700101000000.000000+0*0", ""},
        {"19700101000000.000000+-10", ""},
        {"19**0101000000.000000+000", ""}, // only whole fields become asterisks
        {"197001010000**.*****0+000", ""}, // no digit after an asterisk
        {"19700001000000.000000+000", ""},
        {"19701301000000.000000+000", ""},
        {"19000229000000.000000+000", ""}, // 1900 was no leap year
        {"19700101240000.000000+000", ""},
        {"19700101000060.000000+000", ""},
        {"00000012030405.000006:001", ""},
        {"00000012240000.000000:000", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        if (*c.ui == '\0') {
            EXPECT_EQ(kQRNStatusInvalidDateTime, StatusOf([&] { TCIMDateTime{c.text}; }));
            continue;
        }
        const TCIMDateTime dateTime{std::string(c.text)};
        EXPECT_EQ(c.text[21] == ':', dateTime.IsInterval());
        EXPECT_EQ(c.text, dateTime.ToString());
        EXPECT_EQ(c.ui, dateTime.ToUIString());
    }
    EXPECT_EQ(TCIMDateTime(1970, 1, 1, 0, 0, 0, 0, 0), TCIMDateTime(cases[0].text));
}

TCIMReference Path(const std::string& text, const boost::shared_ptr<ICIMNamespace>& ns = nullptr) {
    return TCIMReference::FromPath(text, ns);
}

TEST(TCIMReference, ReadsAndWritesModelPathsWithoutASchema) {
    const struct {
        const char* path;
        const char* host;
        const char* ns;
        const char* written;
    } cases[] = {
        {"CIM_Foo", "", "", "CIM_Foo"},
        {"root/cimv2:CIM_Foo.Name=\"x\"", "", "root/cimv2", "root/cimv2:CIM_Foo.Name=\"x\""},
        {"//host:5988/root/cimv2:CIM_Foo.Name=\"a\\\"b\"", "host:5988", "root/cimv2",
         "//host:5988/root/cimv2:CIM_Foo.Name=\"a\\\"b\""},
        {"CIM_Foo.Flag=TRUE,Neg=-5,R=1.5,C='c',T=\"a:b=c,d\"", "", "",
         "CIM_Foo.C='c',Flag=true,Neg=-5,R=1.5,T=\"a:b=c,d\""},
        {"CIM_Foo.Ref=\"CIM_Bar.Id=\\\"7\\\"\"", "", "", "CIM_Foo.Ref=\"CIM_Bar.Id=\\\"7\\\"\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const TCIMReference reference = Path(c.path);
        EXPECT_EQ(c.host, reference.GetHost());
        EXPECT_EQ(c.ns, reference.GetNamespaceName());
        EXPECT_EQ("CIM_Foo", reference.GetClassName());
        EXPECT_EQ(c.written, reference.ToString());
        EXPECT_EQ(reference, Path(reference.ToString()));
    }
}

TEST(TCIMReference, ConvertsKeysWithTheDeclaredTypesWhenTheNamespaceHoldsTheClass) {
    auto ns = test::MakeNamespace();
    test::MakeClass(ns, "EX_Thing", "",
                    {{"Id", kCIMTypeUint8, "", true}, {"When", kCIMTypeDateTime, "", true}});
    const TCIMReference reference =
        Path("EX_Thing.id=\"7\",When=\"19700101000000.000000+000\"", ns);
    EXPECT_EQ(Text(kCIMTypeUint8, "7"), reference.GetKeys().at("id"));
    EXPECT_EQ(TCIMValue(TCIMDateTime(1970, 1, 1, 0, 0, 0, 0, 0)), reference.GetKeys().at("When"));
    EXPECT_EQ("root/cimv2", reference.GetNamespaceName());
    EXPECT_EQ(ns, reference.GetNamespace());
    EXPECT_EQ(kQRNStatusInvalidValue, StatusOf([&] { Path("EX_Thing.Id=300", ns); }));
    EXPECT_EQ(kQRNStatusInvalidDateTime, StatusOf([&] { Path("EX_Thing.When=\"soon\"", ns); }));
    EXPECT_EQ(kCIMTypeUint64, ECIMType(Path("EX_Other.Id=3", ns).GetKeys().at("Id").GetType()));
    EXPECT_FALSE(Path("other/ns:EX_Thing", ns).GetNamespace());
}

TEST(TCIMReference, ComparesNamesInAnyCaseButValuesExactly) {
    EXPECT_EQ(Path("ROOT/cimv2:cim_foo.NAME=\"x\""), Path("root/cimv2:CIM_Foo.Name=\"x\""));
    EXPECT_NE(Path("CIM_Foo.Name=\"X\""), Path("CIM_Foo.Name=\"x\""));
    EXPECT_NE(Path("CIM_Foo.Name=\"x\""), Path("CIM_Foo.Name=\"x\",Id=1"));
    EXPECT_NE(Path("CIM_Foo.Name=\"x\""), Path("CIM_Bar.Name=\"x\""));

    TCIMReference reference(nullptr, {{"Id", Text(kCIMTypeUint8, "1")}});
    reference.AddKeyValue("ID", Text(kCIMTypeUint8, "2"));
    EXPECT_EQ((std::map<std::string, TCIMValue>{{"ID", Text(kCIMTypeUint8, "2")}}),
              reference.GetKeys());
    EXPECT_EQ(kQRNStatusInvalidArgument,
              StatusOf([&] { reference.AddKeyValue("", Text(kCIMTypeUint8, "2")); }));
}

} // namespace
} // namespace NQRN20
