// Tests of TCIMValue and TCIMType: text conversion per type, arrays, truth and comparison.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>

namespace NQRN20 {
namespace {

using test::StatusOf;
using test::Text;

TEST(TCIMType, ReadsTypeAttributeNamesInAnyCaseAndRefusesOthers) {
    const struct {
        const char* name;
        ECIMType type;
    } known[] = {{"boolean", kCIMTypeBoolean},    {"string", kCIMTypeString},
                 {"char16", kCIMTypeChar16},      {"uint8", kCIMTypeUint8},
                 {"sint8", kCIMTypeSint8},        {"uint16", kCIMTypeUint16},
                 {"sint16", kCIMTypeSint16},      {"uint32", kCIMTypeUint32},
                 {"sint32", kCIMTypeSint32},      {"uint64", kCIMTypeUint64},
                 {"SINT64", kCIMTypeSint64},      {"real32", kCIMTypeReal32},
                 {"Real64", kCIMTypeReal64},      {"datetime", kCIMTypeDateTime},
                 {"reference", kCIMTypeReference}};
    for (const auto& c : known) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.type, ECIMType(TCIMType(std::string(c.name))));
    }
    for (const char* bad : {"", "int", "uint8[]", "object", " uint8", "none", "uint6", "sxring",
                            "real16", "reference2"}) {
        SCOPED_TRACE(bad);
        EXPECT_EQ(kQRNStatusInvalidType, StatusOf([&] { TCIMType{std::string(bad)}; }));
    }
}

struct TConversion {
    ECIMType type;
    const char* text;
    const char* expected; // ToString() of the result
};

TEST(TCIMValue, ConvertsValidTextOfEveryType) {
    const TConversion cases[] = {
        {kCIMTypeBoolean, "true", "true"},
        {kCIMTypeBoolean, "FALSE", "false"},
        {kCIMTypeBoolean, "\n  True\n", "true"},
        {kCIMTypeUint8, "0", "0"},
        {kCIMTypeUint8, "255", "255"},
        {kCIMTypeUint8, "+7", "7"},
        {kCIMTypeUint8, "-0", "0"},
        {kCIMTypeUint8, "0x1F", "31"},
        {kCIMTypeUint8, "\n  42\n", "42"},
        {kCIMTypeSint8, "-128", "-128"},
        {kCIMTypeSint8, "127", "127"},
        {kCIMTypeUint16, "65535", "65535"},
        {kCIMTypeSint16, "-32768", "-32768"},
        {kCIMTypeUint32, "4294967295", "4294967295"},
        {kCIMTypeSint32, "-2147483648", "-2147483648"},
        {kCIMTypeUint64, "18446744073709551615", "18446744073709551615"},
        {kCIMTypeSint64, "-9223372036854775808", "-9223372036854775808"},
        {kCIMTypeSint64, "9223372036854775807", "9223372036854775807"},
        {kCIMTypeSint64, "-0x10", "-16"},
        {kCIMTypeReal32, "0.1", "0.1"},
        {kCIMTypeReal32, "3.4028235e38", "3.4028235e+38"},
        {kCIMTypeReal32, "-INF", "-INF"},
        {kCIMTypeReal32, "nan", "NaN"},
        {kCIMTypeReal64, "0.1", "0.1"},
        {kCIMTypeReal64, "\t2.5E3 ", "2500"},
        {kCIMTypeReal64, ".5", "0.5"},
        {kCIMTypeReal64, "+1e-3", "0.001"},
        {kCIMTypeReal64, "1.7976931348623157e308", "1.7976931348623157e+308"},
        {kCIMTypeChar16, "a", "a"},
        {kCIMTypeChar16, " ", " "},
        {kCIMTypeChar16, "\n  b\n", "b"},
        {kCIMTypeChar16, "\xE2\x82\xAC", "\xE2\x82\xAC"},
        {kCIMTypeChar16, "\xE9", "\xC3\xA9"},
        {kCIMTypeString, "  padded text\n", "  padded text\n"},
        {kCIMTypeString, "", ""},
        {kCIMTypeDateTime, "19700101000000.000000+000", "19700101000000.000000+000"},
        {kCIMTypeDateTime, "\n 00000012030405.000006:000 \n", "00000012030405.000006:000"},
        {kCIMTypeReference, "CIM_Foo.Name=\"x\",Id=3", "CIM_Foo.Id=3,Name=\"x\""},
        {kCIMTypeReference, "\n root/cimv2:CIM_Foo \n", "root/cimv2:CIM_Foo"},
    };
    for (const TConversion& c : cases) {
        SCOPED_TRACE(std::string(TCIMType(c.type).GetName()) + " '" + c.text + "'");
        const TCIMValue value = Text(c.type, c.text);
        EXPECT_EQ(c.type, ECIMType(value.GetType()));
        EXPECT_FALSE(value.IsNull());
        EXPECT_FALSE(value.IsArray());
        EXPECT_EQ(c.expected, value.ToString());
    }
}

struct TRefusal {
    ECIMType type;
    const char* text;
    uint32_t status;
};

TEST(TCIMValue, RefusesTextThatIsNotAValueOfTheType) {
    const TRefusal cases[] = {
        {kCIMTypeBoolean, "yes", kQRNStatusInvalidValue},
        {kCIMTypeBoolean, "1", kQRNStatusInvalidValue},
        {kCIMTypeBoolean, "trueish", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "256", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "-1", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "0x100", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "1 2", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "+-1", kQRNStatusInvalidValue},
        {kCIMTypeUint8, "1.0", kQRNStatusInvalidValue},
        {kCIMTypeSint8, "128", kQRNStatusInvalidValue},
        {kCIMTypeSint8, "-129", kQRNStatusInvalidValue},
        {kCIMTypeUint16, "65536", kQRNStatusInvalidValue},
        {kCIMTypeSint16, "-32769", kQRNStatusInvalidValue},
        {kCIMTypeUint32, "4294967296", kQRNStatusInvalidValue},
        {kCIMTypeSint32, "-2147483649", kQRNStatusInvalidValue},
        {kCIMTypeUint64, "18446744073709551616", kQRNStatusInvalidValue},
        {kCIMTypeSint64, "9223372036854775808", kQRNStatusInvalidValue},
        {kCIMTypeSint64, "-9223372036854775809", kQRNStatusInvalidValue},
        {kCIMTypeReal32, "1e39", kQRNStatusInvalidValue},
        {kCIMTypeReal32, "1,5", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "e5", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "0x1p3", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "1e400", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "-NaN", kQRNStatusInvalidValue},
        {kCIMTypeReal64, "infinity", kQRNStatusInvalidValue},
        {kCIMTypeChar16, "ab", kQRNStatusInvalidValue},
        {kCIMTypeChar16, "\xF0\x9F\x98\x80", kQRNStatusInvalidValue},
        {kCIMTypeChar16, "\xED\xA0\x80", kQRNStatusInvalidValue},
        {kCIMTypeChar16, "\xC1\x81", kQRNStatusInvalidValue},
        {kCIMTypeDateTime, "1970", kQRNStatusInvalidDateTime},
        {kCIMTypeReference, "", kQRNStatusInvalidValue},
        {kCIMTypeReference, "1CIM_Foo", kQRNStatusInvalidValue},
        {kCIMTypeReference, "CIM_Foo.=3", kQRNStatusInvalidValue},
        {kCIMTypeReference, "CIM_Foo.Id=\"open", kQRNStatusInvalidValue},
        {kCIMTypeReference, "CIM_Foo.Id=\"a\"b", kQRNStatusInvalidValue},
        {kCIMTypeReference, "CIM_Foo.Id=abc", kQRNStatusInvalidValue},
        {kCIMTypeNone, "x", kQRNStatusInvalidType},
        {kCIMTypeArray, "1", kQRNStatusInvalidType},
    };
    for (const TRefusal& c : cases) {
        SCOPED_TRACE(std::to_string(c.type) + " '" + c.text + "'");
        EXPECT_EQ(c.status, StatusOf([&] { Text(c.type, c.text); }));
    }
}

TEST(TCIMValue, WritesRealsThatReadBackAsTheSameNumber) {
    const double reals[] = {
        0.1, 1.0 / 3, -2.5e-300, 123456789.123456789, 4.9e-324, std::numeric_limits<double>::max()};
    for (double real : reals) {
        char text[64];
        std::snprintf(text, sizeof text, "%.17g", real);
        SCOPED_TRACE(text);
        const TCIMValue original = Text(kCIMTypeReal64, text);
        EXPECT_EQ(real, original.GetReal());
        EXPECT_EQ(original, Text(kCIMTypeReal64, original.ToString()));
    }
    const TCIMValue single = Text(kCIMTypeReal32, "0.3");
    EXPECT_EQ(0.3f, static_cast<float>(single.GetReal()));
    EXPECT_EQ(single, Text(kCIMTypeReal32, single.ToString()));
}

TEST(TCIMValue, ConvertsTextForAnArrayTypeAsOneElement) {
    const TCIMValue element = Text(TCIMType(kCIMTypeUint8).GetArrayType(), "5");
    EXPECT_EQ(kCIMTypeUint8, ECIMType(element.GetType()));
    EXPECT_EQ(5u, element.GetUnsigned());
}

TEST(TCIMValue, CountConstructorMakesANullValueThatOnlyRecordsTheCount) {
    const TCIMValue huge(TCIMType(kCIMTypeUint32).GetArrayType(), 4294967295u);
    EXPECT_TRUE(huge.IsNull());
    EXPECT_TRUE(huge.IsArray());
    EXPECT_EQ(4294967295u, huge.GetCount());
    EXPECT_TRUE(huge.GetElements().empty());
    EXPECT_EQ("", huge.ToString());
    EXPECT_FALSE(static_cast<bool>(huge));

    const TCIMValue empty;
    EXPECT_TRUE(empty.IsNull());
    EXPECT_EQ(kCIMTypeNone, ECIMType(empty.GetType()));
}

TEST(TCIMValue, SetMakesAnArrayOfTheElementType) {
    const TCIMValue elements[] = {Text(kCIMTypeUint16, "1"), TCIMValue(),
                                  Text(kCIMTypeUint16, "3")};
    const std::vector<TCIMValue> list(std::begin(elements), std::end(elements));
    TCIMValue array;
    array.Set(kCIMTypeUint16, 5, list);
    EXPECT_EQ(kCIMTypeNone, ECIMType(list[1].GetType()));
    TCIMValue moved;
    moved.Set(kCIMTypeUint16, 5, std::vector<TCIMValue>(list));
    EXPECT_EQ(array, moved);
    // Copies are cheap: they share the elements.
    const TCIMValue copy = array;
    EXPECT_EQ(&array.GetElements(), &copy.GetElements());

    EXPECT_EQ(TCIMType(kCIMTypeUint16).GetArrayType(), array.GetType());
    EXPECT_FALSE(array.IsNull());
    EXPECT_EQ(5u, array.GetCount());
    ASSERT_EQ(3u, array.GetElements().size());
    EXPECT_TRUE(array.GetElements()[1].IsNull());
    EXPECT_EQ(kCIMTypeUint16, ECIMType(array.GetElements()[1].GetType()));
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

} // namespace
} // namespace NQRN20
