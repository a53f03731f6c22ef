// Tests of the value types: TCIMType, TCIMValue, TCIMDateTime and TCIMReference.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

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

TEST(TCIMValue, ConvertsTheTextOfEachTypeAndWritesItBack) {
    const struct {
        ECIMType type;
        const char* text;
        const char* written;
    } cases[] = {
        {kCIMTypeBoolean, "FALSE", "false"},
        {kCIMTypeBoolean, "\n  True\n", "true"},
        {kCIMTypeUint8, "255", "255"},
        {kCIMTypeUint8, "+7", "7"},
        {kCIMTypeUint8, "0x1F", "31"},
        {kCIMTypeUint8, "\n  42\n", "42"},
        {kCIMTypeSint8, "-128", "-128"},
        {kCIMTypeUint64, "18446744073709551615", "18446744073709551615"},
        {kCIMTypeSint64, "-9223372036854775808", "-9223372036854775808"},
        {kCIMTypeSint64, "-0x10", "-16"},
        {kCIMTypeReal32, "0.1", "0.1"}, // the shortest text that reads back the same
        {kCIMTypeReal32, "3.4028235e38", "3.4028235e+38"},
        {kCIMTypeReal32, "-INF", "-INF"},
        {kCIMTypeReal32, "nan", "NaN"},
        {kCIMTypeReal64, "\t2.5E3 ", "2500"},
        {kCIMTypeReal64, ".5", "0.5"},
        {kCIMTypeReal64, "+1e-3", "0.001"},
        {kCIMTypeReal64, "0.33333333333333331", "0.3333333333333333"},
        {kCIMTypeReal64, "4.9e-324", "5e-324"},
        {kCIMTypeReal64, "1.7976931348623157e308", "1.7976931348623157e+308"},
        {kCIMTypeChar16, " ", " "},
        {kCIMTypeChar16, "\n  b\n", "b"},
        {kCIMTypeChar16, "\xE2\x82\xAC", "\xE2\x82\xAC"},
        {kCIMTypeChar16, "\xE9", "\xC3\xA9"}, // Latin-1 read as its code point
        {kCIMTypeString, "  padded text\n", "  padded text\n"},
        {kCIMTypeDateTime, "\n 00000012030405.000006:000 \n", "00000012030405.000006:000"},
        {kCIMTypeReference, "\n root/cimv2:C_A \n", "root/cimv2:C_A"},
        {kCIMTypeReference, "//host:5988/root/cimv2:C_A.I=1", "//host:5988/root/cimv2:C_A.I=1"},
        {kCIMTypeReference, "C_A.N=-5,F=TRUE,R=1.5,C='c'", "C_A.C='c',F=true,N=-5,R=1.5"},
        {kCIMTypeReference, "C_A.T=\"a:b=c,d\\\"\"", "C_A.T=\"a:b=c,d\\\"\""},
        {kCIMTypeReference, "C_A.R=\"C_B.I=\\\"7\\\"\"", "C_A.R=\"C_B.I=\\\"7\\\"\""},
    };
    for (const auto& c : cases) {
        const TCIMValue value = Text(c.type, c.text);
        EXPECT_EQ(c.type, ECIMType(value.GetType())) << c.text;
        EXPECT_EQ(c.written, value.ToString()) << c.text;
        EXPECT_EQ(c.written, Text(c.type, c.written).ToString()) << c.text;
    }
    // Text holds no array: an array type gives one element.
    EXPECT_EQ(Text(kCIMTypeUint8, "5"), Text(TCIMType(kCIMTypeUint8).GetArrayType(), "5"));
}

TEST(TCIMValue, RefusesTextThatIsNotAValueOfTheType) {
    const struct {
        ECIMType type;
        std::vector<const char*> texts;
        uint32_t status = kQRNStatusInvalidValue;
    } cases[] = {
        {kCIMTypeBoolean, {"1", "trueish"}},
        {kCIMTypeUint8, {"0x100", "", "1 2", "+-1", "1.0"}},
        {kCIMTypeReal32, {"1e39"}},
        {kCIMTypeReal64, {"1,5", "0x1p3", "1e400", "-NaN", "infinity"}},
        {kCIMTypeChar16, {"ab", "\xF0\x9F\x98\x80", "\xED\xA0\x80", "\xC1\x81"}},
        {kCIMTypeDateTime, {"1970"}, kQRNStatusInvalidDateTime},
        {kCIMTypeReference, {"", "1CIM_Foo", "CIM_Foo.=3", "CIM_Foo.Id=\"a\"b", "CIM_Foo.Id=abc"}},
        {kCIMTypeNone, {"x"}, kQRNStatusInvalidType},
        {kCIMTypeArray, {"1"}, kQRNStatusInvalidType},
    };
    for (const auto& c : cases) {
        for (const char* text : c.texts) {
            EXPECT_EQ(c.status, StatusOf([&] { Text(c.type, text); })) << c.type << " " << text;
        }
    }
}

TEST(TCIMValue, SetMakesAnArrayOfTheElementType) {
    TCIMValue array;
    array.Set(kCIMTypeUint16, 5,
              {Text(kCIMTypeUint16, "1"), TCIMValue(), Text(kCIMTypeUint16, "3")});
    EXPECT_EQ(TCIMType(kCIMTypeUint16).GetArrayType(), array.GetType());
    EXPECT_EQ(5u, array.GetCount());
    ASSERT_EQ(3u, array.GetElements().size());
    EXPECT_EQ(TCIMValue(kCIMTypeUint16, 0), array.GetElements()[1]);
    EXPECT_EQ("1, , 3", array.ToString());
    EXPECT_EQ(kQRNStatusTypeMismatch,
              StatusOf([&] { array.Set(kCIMTypeUint16, 0, {Text(kCIMTypeUint8, "1")}); }));
}

TEST(TCIMValue, ComparesTypeCountAndContentAndIsTrueWhenPresentOrABooleanTrue) {
    EXPECT_NE(Text(kCIMTypeUint8, "16"), Text(kCIMTypeUint16, "16"));
    EXPECT_NE(TCIMValue(kCIMTypeString, 0), Text(kCIMTypeString, ""));
    TCIMValue refilled(TCIMValue::TCIMType(kCIMTypeUint8).GetArrayType(), 3);
    for (const char* text : {"b", "a text longer than the room of the string before", ""}) {
        refilled.SetString(text);
        EXPECT_EQ(Text(kCIMTypeString, text), refilled);
    }
    EXPECT_NE(TCIMValue(kCIMTypeUint8, 1), TCIMValue(kCIMTypeUint8, 2));
    EXPECT_FALSE(TCIMValue() || TCIMValue(kCIMTypeBoolean, 0) || Text(kCIMTypeBoolean, "false"));
    EXPECT_TRUE(Text(kCIMTypeBoolean, "true") && Text(kCIMTypeUint8, "0"));
}

TEST(TCIMDateTime, ReadsBothFormsWritesThemBackAndRefusesMalformedText) {
    const std::pair<const char*, const char*> cases[] = {
        {"19700101000000.000000+000", "1970-01-01 00:00:00.000000 UTC+00:00"},
        {"20240315093000.000000+060", "2024-03-15 09:30:00.000000 UTC+01:00"},
        {"20220510113045.000***-480", "2022-05-10 11:30:45.000*** UTC-08:00"},
        {"2022051011****.******+000", "2022-05-10 11:**:**.****** UTC+00:00"},
        {"20000229235959.999999-999", "2000-02-29 23:59:59.999999 UTC-16:39"},
        {"00000012030405.000006:000", "12 days 03:04:05.000006"},
        {"99999999235959.999999:000", "99999999 days 23:59:59.999999"},
        {"00000001******.******:000", "1 days **:**:**.******"},
    };
    for (const auto& c : cases) {
        const TCIMDateTime dateTime{std::string(c.first)};
        EXPECT_EQ(c.first[21] == ':', dateTime.IsInterval()) << c.first;
        EXPECT_EQ(c.first, dateTime.ToString());
        EXPECT_EQ(c.second, dateTime.ToUIString());
    }
    // Wrong lengths and separators, asterisks in part of a field or before a digit, fields out
    // of range (1900 was no leap year), and an interval not ending in ":000".
    for (const char* text :
         {"1970010100000.000000+000", "19700101000000.000000+0000", "19700101000000,000000+000",
          "19700101000000.000000+0*0", "19700101000000.000000+-10", "19**0101000000.000000+000",
          "197001010000**.*****0+000", "19700001000000.000000+000", "19701301000000.000000+000",
          "19000229000000.000000+000", "19700101240000.000000+000", "19700101000060.000000+000",
          "00000012030405.000006:001", "00000012240000.000000:000"}) {
        EXPECT_EQ(kQRNStatusInvalidDateTime, StatusOf([&] { TCIMDateTime{std::string(text)}; }))
            << text;
    }
}

TCIMReference Path(const std::string& text, const boost::shared_ptr<ICIMNamespace>& ns = nullptr) {
    return TCIMReference::FromPath(text, ns);
}

TEST(TCIMReference, ConvertsKeysWithTheDeclaredTypesWhenTheNamespaceHoldsTheClass) {
    auto ns = test::MakeNamespace();
    test::MakeClass(ns, "EX_Thing", "", "Id uint8 key, When datetime key");
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
    EXPECT_EQ(kQRNStatusInvalidArgument, StatusOf([&] { reference.AddKeyValue("", {}); }));
}

} // namespace
} // namespace NQRN20
