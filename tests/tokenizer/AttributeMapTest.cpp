// Tests of TAttributeMap: name order, refused duplicates, erasing, one map refilled tag after tag.
#include "tokenizer/AttributeMap.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

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

// One map takes every tag, cleared in between as the tokenizer does: whatever differs from the
// tag before, by a letter or by length, must show, and nothing of the tag before.
TEST(TAttributeMap, WalksEachTagsEntriesInNameOrderWhateverTheOrderOfAdding) {
    const struct {
        const char* m_added; // "name=value" in the order of adding
        const char* m_walk;
    } kTags[] = {
        {"name=Caption type=string", "name=Caption type=string"},
        {"name=Caption type=string", "name=Caption type=string"},
        {"name=Captiom type=uint32", "name=Captiom type=uint32"},
        {"", ""},
        {"nAme=Cap type=", "nAme=Cap type="},
        {"type=string name=Description", "name=Description type=string"},
        {"c=3 b=2 a=1", "a=1 b=2 c=3"},
        {"ab=1 a=2 b=3 =4", "=4 a=2 ab=1 b=3"},
        {"b=1 B=2 a=3", "B=2 a=3 b=1"},
        {"name= tosubclass=false type=boolean", "name= tosubclass=false type=boolean"},
        {"name=Caption", "name=Caption"},
    };
    TAttributeMap attributes;
    for (const auto& tag : kTags) {
        SCOPED_TRACE(tag.m_added);
        attributes.clear();
        std::istringstream added(tag.m_added);
        size_t count = 0;
        for (std::string entry; added >> entry; ++count) {
            const size_t equals = entry.find('=');
            EXPECT_TRUE(InsertText(attributes, entry.substr(0, equals), entry.substr(equals + 1)));
        }
        EXPECT_EQ(tag.m_walk, Walk(attributes));
        EXPECT_EQ(count, attributes.size());
    }
    attributes.clear();
    EXPECT_TRUE(attributes.empty());
    EXPECT_EQ(TAttributeMap(), attributes);
}

TEST(TAttributeMap, RefusesANamePresentAndErasesByName) {
    TAttributeMap attributes = {{"name", "first"}, {"type", "string"}, {"d", "4"}};
    EXPECT_FALSE(InsertText(attributes, "name", "second"));
    const auto inserted = attributes.insert({"name", "third"});
    EXPECT_FALSE(inserted.second);
    EXPECT_EQ("first", inserted.first->second);
    attributes["type"] = "fourth";
    attributes["added"];
    EXPECT_EQ("added= d=4 name=first type=fourth", Walk(attributes));
    EXPECT_EQ(1u, attributes.count("type"));
    EXPECT_EQ(0u, attributes.count("TYPE"));
    EXPECT_TRUE(attributes.find("absent") == attributes.end());
    EXPECT_EQ(0u, attributes.erase("e"));
    EXPECT_EQ(1u, attributes.erase("added"));
    EXPECT_EQ(1u, attributes.erase("name"));
    EXPECT_TRUE(InsertText(attributes, "a", "5"));
    EXPECT_EQ("a=5 d=4 type=fourth", Walk(attributes));
    EXPECT_EQ(1u, attributes.erase("type"));
    EXPECT_EQ((TAttributeMap{{"d", "4"}, {"a", "5"}}), attributes);
}

} // namespace
} // namespace NQRN20
