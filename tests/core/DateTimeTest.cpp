// Tests of TCIMDateTime: both text forms, asterisk wildcards, field ranges and display text.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

namespace NQRN20 {
namespace {

using test::StatusOf;

TEST(TCIMDateTime, DefaultOfTheParserIsMidnightFirstJanuary1970Utc) {
    const TCIMDateTime epoch(1970, 1, 1, 0, 0, 0, 0, 0);
    EXPECT_FALSE(epoch.IsInterval());
    EXPECT_EQ("19700101000000.000000+000", epoch.ToString());
    EXPECT_EQ("1970-01-01 00:00:00.000000 UTC+00:00", epoch.ToUIString());
    EXPECT_EQ(TCIMDateTime("19700101000000.000000+000"), epoch);
}

TEST(TCIMDateTime, ReadsBothFormsAndWritesThemBack) {
    const struct {
        const char* text;
        bool interval;
        const char* ui;
    } cases[] = {
        {"20240315093000.000000+060", false, "2024-03-15 09:30:00.000000 UTC+01:00"},
        {"20220510113045.000***-480", false, "2022-05-10 11:30:45.000*** UTC-08:00"},
        {"2022051011****.******+000", false, "2022-05-10 11:**:**.****** UTC+00:00"},
        {"**************.******+000", false, "****-**-** **:**:**.****** UTC+00:00"},
        {"20000229235959.999999-999", false, "2000-02-29 23:59:59.999999 UTC-16:39"},
        {"00010101000000.000000+000", false, "0001-01-01 00:00:00.000000 UTC+00:00"},
        {"00000012030405.000006:000", true, "12 days 03:04:05.000006"},
        {"00000000000000.000000:000", true, "0 days 00:00:00.000000"},
        {"99999999235959.999999:000", true, "99999999 days 23:59:59.999999"},
        {"00000001******.******:000", true, "1 days **:**:**.******"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const TCIMDateTime dateTime{std::string(c.text)};
        EXPECT_EQ(c.interval, dateTime.IsInterval());
        EXPECT_EQ(c.text, dateTime.ToString());
        EXPECT_EQ(c.ui, dateTime.ToUIString());
        EXPECT_EQ(dateTime, TCIMDateTime(dateTime.ToString()));
    }
}

TEST(TCIMDateTime, IgnoresSurroundingXmlWhiteSpace) {
    EXPECT_EQ(TCIMDateTime(1970, 1, 1, 0, 0, 0, 0, 0),
              TCIMDateTime(std::string("\n  19700101000000.000000+000\r\n\t")));
}

TEST(TCIMDateTime, RefusesMalformedTextAndFieldsOutOfRange) {
    const char* const cases[] = {
        "",
        "1970010100000.000000+000",   // 24 characters
        "19700101000000.000000+0000", // 26 characters
        "19700101000000,000000+000",
        "19700101000000.000000+0*0", // the offset never has asterisks
        "19700101000000.000000+-10",
        "19**0101000000.000000+000", // only whole fields become asterisks
        "197001010000**.000000+000", // digits after an asterisk
        "197001010000**.*****0+000",
        "19700001000000.000000+000", // month 0
        "19701301000000.000000+000",
        "19700230000000.000000+000",
        "19000229000000.000000+000", // 1900 was no leap year
        "19700101240000.000000+000",
        "19700101000060.000000+000",
        "00000012030405.000006:001", // an interval ends in ":000"
        "00000012240000.000000:000",
        " 1970 0101000000.000000+000",
    };
    for (const char* text : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(kQRNStatusInvalidDateTime, StatusOf([&] { TCIMDateTime{std::string(text)}; }));
    }
}

} // namespace
} // namespace NQRN20
