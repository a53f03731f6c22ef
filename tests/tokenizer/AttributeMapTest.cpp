// Tests of TAttributeMap: name order whatever the order of adding, refused duplicates, erasing,
// and entries that keep their storage and text across clear.
#include "tokenizer/AttributeMap.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace NQRN20 {
namespace {

// The entries in iteration order, as "name=value" joined by blanks.
std::string Walk(const TAttributeMap& attributes) {
    std::string text;
    for (const auto& entry : attributes) {
        text += (text.empty() ? "" : " ") + entry.first + "=" + entry.second;
    }
    return text;
}

bool InsertText(TAttributeMap& attributes, const std::string& name, const std::string& value) {
    return attributes.Insert(name.data(), name.data() + name.size(), value.data(),
                             value.data() + value.size());
}

TEST(TAttributeMap, WalksItsEntriesInNameOrderWhateverTheOrderOfAdding) {
    const struct {
        std::vector<std::string> m_names;
        const char* m_walk;
    } kCases[] = {
        {{}, ""},
        {{"b"}, "b=b"},
        {{"name", "type", "overridable", "tosubclass"},
         "name=name overridable=overridable tosubclass=tosubclass type=type"},
        {{"c", "b", "a"}, "a=a b=b c=c"},
        {{"ab", "a", "b", ""}, "= a=a ab=ab b=b"},
        {{"b", "B", "a"}, "B=B a=a b=b"},
    };
    for (const auto& test : kCases) {
        TAttributeMap attributes;
        for (const std::string& name : test.m_names) {
            EXPECT_TRUE(InsertText(attributes, name, name));
        }
        EXPECT_EQ(test.m_walk, Walk(attributes));
        EXPECT_EQ(test.m_names.size(), attributes.size());
    }
}

TEST(TAttributeMap, RefusesANamePresentAndKeepsItsValue) {
    TAttributeMap attributes = {{"name", "first"}, {"type", "string"}};
    EXPECT_FALSE(InsertText(attributes, "name", "second"));
    const auto inserted = attributes.insert({"name", "third"});
    EXPECT_FALSE(inserted.second);
    EXPECT_EQ("first", inserted.first->second);
    EXPECT_EQ("name=first type=string", Walk(attributes));

    attributes["name"] = "fourth";
    attributes["added"];
    EXPECT_EQ("added= name=fourth type=string", Walk(attributes));
    EXPECT_EQ(1u, attributes.count("type"));
    EXPECT_EQ(0u, attributes.count("TYPE"));
    EXPECT_TRUE(attributes.find("absent") == attributes.end());
}

TEST(TAttributeMap, ErasesByNameAndKeepsTheOthersInOrder) {
    TAttributeMap attributes = {{"d", "4"}, {"a", "1"}, {"c", "3"}, {"b", "2"}};
    EXPECT_EQ(0u, attributes.erase("e"));
    EXPECT_EQ(1u, attributes.erase("d"));
    EXPECT_EQ(1u, attributes.erase("a"));
    EXPECT_EQ("b=2 c=3", Walk(attributes));
    EXPECT_TRUE(InsertText(attributes, "a", "5"));
    EXPECT_EQ("a=5 b=2 c=3", Walk(attributes));
    EXPECT_EQ(1u, attributes.erase("c"));
    EXPECT_EQ((TAttributeMap{{"b", "2"}, {"a", "5"}}), attributes);
}

// The tokenizer clears one map per tag; the next tag's strings go where the last ones were.
TEST(TAttributeMap, RefillsTheStorageOfClearedEntries) {
    TAttributeMap attributes;
    const std::string longValue(100, 'x');
    ASSERT_TRUE(InsertText(attributes, "superclass", longValue));
    const char* storage = attributes.begin()->second.data();
    attributes.clear();
    EXPECT_TRUE(attributes.empty());
    EXPECT_EQ(TAttributeMap(), attributes);

    ASSERT_TRUE(InsertText(attributes, "name", "CIM_ManagedElementWithALongName"));
    EXPECT_EQ(storage, attributes.begin()->second.data());
    EXPECT_EQ("name=CIM_ManagedElementWithALongName", Walk(attributes));
}

// An entry keeps the name and value it held when the next tag spells them again; whatever differs,
// by a letter or by length, must replace them.
TEST(TAttributeMap, RefilledEntriesHoldEachTagsOwnText) {
    const std::vector<std::vector<std::pair<std::string, std::string>>> kTags = {
        {{"name", "Caption"}, {"type", "string"}},
        {{"name", "Caption"}, {"type", "string"}},
        {{"name", "Captiom"}, {"type", "uint32"}},
        {{"nAme", "Cap"}, {"type", ""}},
        {{"type", "string"}, {"name", "Description"}},
        {{"name", ""}, {"tosubclass", "false"}, {"type", "boolean"}},
        {{"name", "Caption"}},
    };
    TAttributeMap attributes;
    for (const auto& tag : kTags) {
        attributes.clear();
        std::string expected;
        for (const auto& attribute : tag) {
            ASSERT_TRUE(InsertText(attributes, attribute.first, attribute.second));
        }
        for (const auto& entry : std::map<std::string, std::string>(tag.begin(), tag.end())) {
            expected += (expected.empty() ? "" : " ") + entry.first + "=" + entry.second;
        }
        EXPECT_EQ(expected, Walk(attributes));
    }
}

} // namespace
} // namespace NQRN20
