// Tests of in-memory instances: property values, type checks, key uniqueness and enumeration.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

namespace NQRN20 {
namespace {

using test::MakeClass;
using test::MakeNamespace;
using test::Names;
using test::StatusOf;
using test::Text;

typedef std::vector<std::string> TNames;

std::vector<boost::shared_ptr<ICIMProperty>>
Properties(const boost::shared_ptr<ICIMInstance>& instance) {
    std::vector<boost::shared_ptr<ICIMProperty>> properties;
    instance->EnumProperties(TAddToVectorCallback<ICIMProperty>(properties), {});
    return properties;
}

boost::shared_ptr<ICIMInstance>
Instance(const boost::shared_ptr<ICIMNamespace>& ns, const std::string& className,
         const std::vector<std::pair<std::string, TCIMValue>>& values) {
    auto instance = ns->GetClass(className, {})->CreateInstance({});
    for (const auto& value : values) {
        instance->SetPropertyValue(value.first, value.second, {});
    }
    return instance;
}

TEST(TMemoryInstance, StartsWithTheClassDefaultsInClassOrder) {
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_Base", "",
              {{"Name", kCIMTypeString, "", true}, {"Size", kCIMTypeUint32, "7", false}});
    MakeClass(ns, "EX_Sub", "EX_Base", {{"Flag", kCIMTypeBoolean, "true", false}});
    auto instance = ns->GetClass("EX_Sub", {})->CreateInstance({});
    const auto properties = Properties(instance);
    EXPECT_EQ((TNames{"Name", "Size", "Flag"}), Names(properties));
    EXPECT_TRUE(properties[0]->GetValue({}).IsNull());
    const ECIMType kTypes[] = {kCIMTypeString, kCIMTypeUint32, kCIMTypeBoolean};
    for (size_t i = 0; i < properties.size(); ++i) {
        EXPECT_EQ(kTypes[i], ECIMType(properties[i]->GetType({}))) << properties[i]->GetName({});
    }
    EXPECT_EQ("7", properties[1]->GetValue({}).ToString());
    EXPECT_EQ("true", properties[2]->GetValue({}).ToString());
    EXPECT_EQ(ns->GetClass("EX_Sub", {}), instance->GetClass({}));
}

TEST(TMemoryInstance, SetPropertyValueChecksNameAndType) {
    auto ns = MakeNamespace();
    auto cimClass = ns->CreateClass("EX_Thing", nullptr, {});
    cimClass->CreatePropertyDecl("Size", Text(kCIMTypeUint32, "7"), {})->Commit({});
    auto list = cimClass->CreatePropertyDecl("List", TCIMValue(), {});
    list->SetValue(TCIMValue(TCIMType(kCIMTypeUint16).GetArrayType(), 3), {});
    list->Commit({});
    cimClass->Commit({});
    auto instance = cimClass->CreateInstance({});

    instance->SetPropertyValue("SIZE", Text(kCIMTypeUint32, "9"), {});
    EXPECT_EQ("9", instance->GetProperty("size", {})->GetValue({}).ToString());
    EXPECT_EQ("Size", instance->GetProperty("size", {})->GetName({}));
    instance->SetPropertyValue("Size", TCIMValue(), {});
    EXPECT_TRUE(instance->GetProperty("Size", {})->GetValue({}).IsNull());
    EXPECT_EQ(kCIMTypeUint32, ECIMType(instance->GetProperty("Size", {})->GetValue({}).GetType()));

    const struct {
        const char* situation;
        const char* name;
        TCIMValue value;
        uint32_t status;
    } refusals[] = {
        {"unknown property", "Color", Text(kCIMTypeString, "red"), kQRNStatusNotFound},
        {"other scalar type", "Size", Text(kCIMTypeUint16, "1"), kQRNStatusTypeMismatch},
        {"scalar for an array", "List", Text(kCIMTypeUint16, "1"), kQRNStatusTypeMismatch},
    };
    for (const auto& c : refusals) {
        SCOPED_TRACE(c.situation);
        EXPECT_EQ(c.status, StatusOf([&] { instance->SetPropertyValue(c.name, c.value, {}); }));
    }
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { instance->GetProperty("Color", {}); }));

    instance->Commit({});
    EXPECT_EQ(kQRNStatusReadOnly,
              StatusOf([&] { instance->SetPropertyValue("Size", Text(kCIMTypeUint32, "1"), {}); }));
    EXPECT_EQ(kQRNStatusAlreadyExists, StatusOf([&] { instance->Commit({}); }));
}

TEST(TMemoryInstance, APropertySaysWhatItsTextHoldsAsItselfOrItsDeclarationSays) {
    auto ns = MakeNamespace();
    auto cimClass = ns->CreateClass("EX_Thing", nullptr, {});
    auto inst = cimClass->CreatePropertyDecl("Inst", Text(kCIMTypeString, ""), {});
    inst->SetEmbeddedObject(kEmbeddedInstance, {});
    inst->Commit({});
    cimClass->CreatePropertyDecl("Plain", Text(kCIMTypeString, ""), {})->Commit({});
    cimClass->Commit({});
    EXPECT_EQ(kQRNStatusReadOnly, StatusOf([&] { inst->SetEmbeddedObject(kEmbeddedObject, {}); }));
    auto instance = cimClass->CreateInstance({});
    instance->SetPropertyEmbeddedObject("plain", kEmbeddedObject, {});
    EXPECT_EQ(kEmbeddedInstance, instance->GetProperty("Inst", {})->GetEmbeddedObject({}));
    EXPECT_EQ(kEmbeddedObject, instance->GetProperty("Plain", {})->GetEmbeddedObject({}));
    EXPECT_EQ(kQRNStatusNotFound,
              StatusOf([&] { instance->SetPropertyEmbeddedObject("Color", kEmbeddedObject, {}); }));
    instance->Commit({});
    EXPECT_EQ(kQRNStatusReadOnly,
              StatusOf([&] { instance->SetPropertyEmbeddedObject("Inst", kEmbeddedNone, {}); }));
}

TEST(TMemoryInstance, EachPropertyReadsTheValueSetLastOrItsDefault) {
    typedef std::vector<std::pair<std::string, TCIMValue>> TValues;
    const TCIMValue null;
    const struct {
        const char* situation;
        TValues values;
        TNames texts; // A to E; "" for null
    } cases[] = {
        {"none set", {}, {"", "", "3", "", ""}},
        {"default replaced", {{"C", Text(kCIMTypeUint8, "9")}}, {"", "", "9", "", ""}},
        {"default nulled", {{"C", null}}, {"", "", "", "", ""}},
        {"set against class order, one twice",
         {{"E", Text(kCIMTypeUint8, "5")},
          {"A", Text(kCIMTypeUint8, "1")},
          {"e", Text(kCIMTypeUint8, "6")}},
         {"1", "", "3", "", "6"}},
        {"all set",
         {{"D", Text(kCIMTypeUint8, "4")},
          {"C", Text(kCIMTypeUint8, "30")},
          {"B", Text(kCIMTypeUint8, "2")},
          {"E", Text(kCIMTypeUint8, "5")},
          {"A", Text(kCIMTypeUint8, "1")}},
         {"1", "2", "30", "4", "5"}},
    };
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_Five", "",
              {{"A", kCIMTypeUint8, "", false},
               {"B", kCIMTypeUint8, "", false},
               {"C", kCIMTypeUint8, "3", false},
               {"D", kCIMTypeUint8, "", false},
               {"E", kCIMTypeUint8, "", false}});
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        auto instance = Instance(ns, "EX_Five", c.values);
        TNames texts;
        for (const auto& property : Properties(instance)) {
            texts.push_back(property->GetValue({}).ToString());
            EXPECT_EQ(kCIMTypeUint8, ECIMType(property->GetValue({}).GetType()));
        }
        EXPECT_EQ(c.texts, texts);
        EXPECT_EQ(c.texts[2], instance->GetProperty("c", {})->GetValue({}).ToString());
    }
}

TEST(TMemoryInstance, PropertyHandlesShowLaterValuesAndKeepTheInstance) {
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_Pair", "",
              {{"A", kCIMTypeString, "a", false}, {"B", kCIMTypeString, "", false}});
    auto instance = ns->GetClass("EX_Pair", {})->CreateInstance({});
    auto a = instance->GetProperty("A", {});
    const auto enumerated = Properties(instance);
    instance->SetPropertyValue("B", Text(kCIMTypeString, "b"), {});
    instance->SetPropertyValue("A", Text(kCIMTypeString, "a2"), {});
    EXPECT_EQ("a2", a->GetValue({}).ToString());
    EXPECT_EQ("b", enumerated[1]->GetValue({}).ToString());

    std::vector<boost::shared_ptr<ICIMProperty>> first;
    instance->EnumProperties(
        [&first](boost::shared_ptr<ICIMProperty> property) {
            first.push_back(property);
            return false;
        },
        {});
    EXPECT_EQ(1u, first.size());
    EXPECT_EQ(kQRNStatusInvalidArgument,
              StatusOf([&] { instance->EnumProperties(TEnumCallback<ICIMProperty>(), {}); }));

    instance.reset();
    ns.reset();
    EXPECT_EQ("A", a->GetName({}));
    EXPECT_EQ("a2", a->GetValue({}).ToString());
}

// Schema: EX_Named (Name key), EX_Pair (A and B keys, Note), EX_Sub overriding Name without Key,
// EX_Keyless (Note only), EX_Link (Target reference key).
boost::shared_ptr<ICIMNamespace> KeySchema() {
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_Named", "",
              {{"Name", kCIMTypeString, "", true}, {"Note", kCIMTypeString, "", false}});
    MakeClass(ns, "EX_Pair", "",
              {{"A", kCIMTypeUint8, "", true},
               {"B", kCIMTypeUint8, "", true},
               {"Note", kCIMTypeString, "", false}});
    MakeClass(ns, "EX_Sub", "EX_Named", {{"NAME", kCIMTypeString, "", false}});
    MakeClass(ns, "EX_Keyless", "", {{"Note", kCIMTypeString, "", false}});
    MakeClass(ns, "EX_Link", "", {{"Target", kCIMTypeReference, "", true}});
    return ns;
}

TEST(TMemoryInstance, CommitRefusesASecondInstanceWithTheSameKeys) {
    typedef std::vector<std::pair<std::string, TCIMValue>> TValues;
    const TCIMValue x = Text(kCIMTypeString, "x");
    const TCIMValue one = Text(kCIMTypeUint8, "1");
    const TCIMValue two = Text(kCIMTypeUint8, "2");
    const struct {
        const char* situation;
        const char* firstClass;
        TValues first;
        const char* secondClass;
        TValues second;
        uint32_t status;
    } cases[] = {
        {"same key", "EX_Named", {{"Name", x}}, "EX_Named", {{"Name", x}}, kQRNStatusAlreadyExists},
        {"same key, other non-key",
         "EX_Named",
         {{"Name", x}, {"Note", x}},
         "EX_Named",
         {{"Name", x}},
         kQRNStatusAlreadyExists},
        {"key set twice, the last counts",
         "EX_Named",
         {{"Name", x}},
         "EX_Named",
         {{"Name", Text(kCIMTypeString, "y")}, {"Name", x}},
         kQRNStatusAlreadyExists},
        {"key differing in case",
         "EX_Named",
         {{"Name", x}},
         "EX_Named",
         {{"Name", Text(kCIMTypeString, "X")}},
         kQRNStatusOK},
        {"both keys equal",
         "EX_Pair",
         {{"A", one}, {"B", two}},
         "EX_Pair",
         {{"b", two}, {"a", one}},
         kQRNStatusAlreadyExists},
        {"one of two keys differs",
         "EX_Pair",
         {{"A", one}, {"B", two}},
         "EX_Pair",
         {{"A", one}, {"B", one}},
         kQRNStatusOK},
        {"key inherited by an override",
         "EX_Sub",
         {{"Name", x}},
         "EX_Sub",
         {{"Name", x}},
         kQRNStatusAlreadyExists},
        {"same key in a subclass",
         "EX_Named",
         {{"Name", x}},
         "EX_Sub",
         {{"Name", x}},
         kQRNStatusOK},
        {"null keys", "EX_Named", {}, "EX_Named", {}, kQRNStatusAlreadyExists},
        {"null key and the text null",
         "EX_Named",
         {},
         "EX_Named",
         {{"Name", Text(kCIMTypeString, "null")}},
         kQRNStatusOK},
        {"class without keys",
         "EX_Keyless",
         {{"Note", x}},
         "EX_Keyless",
         {{"Note", x}},
         kQRNStatusOK},
        {"reference keys differing in name case",
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Named.Name=\"x\"")}},
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "ex_named.NAME=\"x\"")}},
         kQRNStatusAlreadyExists},
        {"reference keys whose names' case changes their order",
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Pair.a=1,B=2")}},
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Pair.b=2,A=1")}},
         kQRNStatusAlreadyExists},
        {"reference keys with their values swapped",
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Pair.A=1,B=2")}},
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Pair.A=2,B=1")}},
         kQRNStatusOK},
        {"reference with a key more",
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Pair.A=1")}},
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Pair.A=1,B=2")}},
         kQRNStatusOK},
        {"reference keys differing in value",
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Named.Name=\"x\"")}},
         "EX_Link",
         {{"Target", Text(kCIMTypeReference, "EX_Named.Name=\"y\"")}},
         kQRNStatusOK},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        auto ns = KeySchema();
        Instance(ns, c.firstClass, c.first)->Commit({});
        auto second = Instance(ns, c.secondClass, c.second);
        EXPECT_EQ(c.status, StatusOf([&] { second->Commit({}); }));
    }
}

TEST(TMemoryNamespace, EnumInstancesGivesAClassAndItsSubclassesInCommitOrder) {
    auto ns = KeySchema();
    Instance(ns, "EX_Sub", {{"Name", Text(kCIMTypeString, "s1")}})->Commit({});
    Instance(ns, "EX_Keyless", {{"Note", Text(kCIMTypeString, "k1")}})->Commit({});
    Instance(ns, "EX_Named", {{"Name", Text(kCIMTypeString, "n1")}})->Commit({});
    Instance(ns, "EX_Named", {{"Name", Text(kCIMTypeString, "uncommitted")}});

    // Every class of the schema has a Name or a Note; each instance's is unique here.
    const auto labels = [&ns](const std::string& className) {
        std::vector<boost::shared_ptr<ICIMInstance>> instances;
        ns->EnumInstances(className, TAddToVectorCallback<ICIMInstance>(instances), {});
        TNames texts;
        for (const auto& instance : instances) {
            const bool named = instance->GetClass({})->GetName({}) != "EX_Keyless";
            texts.push_back(
                instance->GetProperty(named ? "Name" : "Note", {})->GetValue({}).ToString());
        }
        return texts;
    };
    EXPECT_EQ((TNames{"s1", "k1", "n1"}), labels(""));
    EXPECT_EQ((TNames{"s1", "n1"}), labels("ex_named"));
    EXPECT_EQ((TNames{"s1"}), labels("EX_Sub"));
    EXPECT_EQ(TNames{}, labels("EX_Pair"));
}

} // namespace
} // namespace NQRN20
