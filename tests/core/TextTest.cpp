// Tests of the name helpers: lowering, comparing and hashing regardless of ASCII letter case.
#include "core/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

TEST(EqualNoCase, FoldsOnlyAsciiLettersAndHashesAlike) {
    const struct {
        const char* a;
        const char* b;
        bool equal;
    } cases[] = {
        {"", "", true},           {"Name", "nAME", true},  {"EX_Element", "ex_element", true},
        {"Name", "Names", false}, {"Name", "Nama", false}, {"Nam", "Name", false},
        {"a@", "a`", false},      {"[x]", "{x}", false},   {"\xC4", "\xE4", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.a) + " / " + c.b);
        EXPECT_EQ(c.equal, EqualNoCase(std::string(c.a), std::string(c.b)));
        EXPECT_EQ(c.equal, EqualNoCase(std::string(c.b), c.a));
        if (c.equal) {
            EXPECT_EQ(THashNoCase()(c.a), THashNoCase()(c.b));
        }
    }
}

// The word-wise lowering against the byte-wise one, in place and into another buffer, at every
// length and offset, with every byte next to the capitals' range.
TEST(LowerAscii, LowersOnlyAsciiCapitalsAtEveryLength) {
    const std::string kBytes = "@AZ[`az{\x80\xC4\xFF\x01 .QUALIFIER.ARRAY";
    for (size_t length = 0; length <= kBytes.size(); ++length) {
        for (size_t start = 0; start + length <= kBytes.size(); start += 3) {
            std::string text = kBytes.substr(start, length);
            const std::string expected = LowerAscii(text);
            std::string copy(length + 2, '#');
            LowerAsciiCopy(text.data(), length, &copy[0]);
            EXPECT_EQ(expected + "##", copy) << length << " from " << start;
            LowerAscii(&text[0], text.size());
            EXPECT_EQ(expected, text) << length << " from " << start;
        }
    }
}

} // namespace
} // namespace NQRN20
