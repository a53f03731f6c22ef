// Tests of in-memory instances: property values, type checks, key uniqueness and enumeration.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

namespace NQRN20 {
namespace {

using test::All;
using test::MakeClass;
using test::MakeNamespace;
using test::Names;
using test::StatusOf;
using test::Text;
using test::TNames;

// Property values as text, each converted to its declared type; nullptr for null.
typedef std::vector<std::pair<std::string, const char*>> TTexts;

boost::shared_ptr<ICIMInstance> Instance(const boost::shared_ptr<ICIMNamespace>& ns,
                                         const std::string& className, const TTexts& values) {
    auto cimClass = ns->GetClass(className, {});
    auto instance = cimClass->CreateInstance({});
    for (const auto& value : values) {
        const TCIMType type = cimClass->GetPropertyDecl(value.first, {})->GetType({});
        instance->SetPropertyValue(value.first,
                                   value.second ? Text(type, value.second) : TCIMValue(), {});
    }
    return instance;
}

TEST(TMemoryInstance, EachPropertyReadsTheValueSetLastOrItsDefaultInClassOrder) {
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_Base", "",
              {{"A", kCIMTypeUint8, "", true}, {"B", kCIMTypeString, "b", false}});
    MakeClass(ns, "EX_Sub", "EX_Base",
              {{"C", kCIMTypeBoolean, "true", false}, {"D", kCIMTypeUint8, "", false}});
    const struct {
        const char* situation;
        TTexts values;
        TNames texts; // A to D; "" for null
    } cases[] = {
        {"none set", {}, {"", "b", "true", ""}},
        {"default replaced", {{"B", "x"}}, {"", "x", "true", ""}},
        {"default nulled", {{"c", nullptr}}, {"", "b", "", ""}},
        {"set against class order, one twice",
         {{"D", "5"}, {"A", "1"}, {"d", "6"}},
         {"1", "b", "true", "6"}},
    };
    const ECIMType types[] = {kCIMTypeUint8, kCIMTypeString, kCIMTypeBoolean, kCIMTypeUint8};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        auto instance = Instance(ns, "EX_Sub", c.values);
        EXPECT_EQ(ns->GetClass("EX_Sub", {}), instance->GetClass({}));
        const auto properties = All<ICIMProperty>(instance, &ICIMInstance::EnumProperties);
        EXPECT_EQ((TNames{"A", "B", "C", "D"}), Names(properties));
        for (size_t i = 0; i < properties.size(); ++i) {
            EXPECT_EQ(c.texts[i], properties[i]->GetValue({}).ToString()) << i;
            EXPECT_EQ(types[i], ECIMType(properties[i]->GetType({}))) << i;
            EXPECT_EQ(types[i], ECIMType(properties[i]->GetValue({}).GetType())) << i;
        }
        EXPECT_EQ(c.texts[2], instance->GetProperty("c", {})->GetValue({}).ToString());
    }
}

TEST(TMemoryInstance, SetPropertyValueChecksNameAndTypeUntilCommitted) {
    auto ns = MakeNamespace();
    const ECIMType uint16s = ECIMType(kCIMTypeUint16 | kCIMTypeArray);
    auto cimClass = MakeClass(ns, "EX_Thing", "",
                              {{"Size", kCIMTypeUint32, "7", false}, {"List", uint16s, "", false}});
    auto instance = cimClass->CreateInstance({});
    instance->SetPropertyValue("SIZE", Text(kCIMTypeUint32, "9"), {});
    EXPECT_EQ("9", instance->GetProperty("size", {})->GetValue({}).ToString());
    EXPECT_EQ("Size", instance->GetProperty("size", {})->GetName({}));
    const struct {
        const char* name;
        TCIMValue value;
        uint32_t status;
    } refusals[] = {
        {"Color", Text(kCIMTypeString, "red"), kQRNStatusNotFound},
        {"Size", Text(kCIMTypeUint16, "1"), kQRNStatusTypeMismatch},
        {"List", Text(kCIMTypeUint16, "1"), kQRNStatusTypeMismatch},
    };
    for (const auto& c : refusals) {
        SCOPED_TRACE(c.name + std::string(" ") + c.value.GetType().GetName());
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

TEST(TMemoryInstance, PropertyHandlesShowLaterValuesAndKeepTheInstance) {
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_Pair", "",
              {{"A", kCIMTypeString, "a", false}, {"B", kCIMTypeString, "", false}});
    auto instance = ns->GetClass("EX_Pair", {})->CreateInstance({});
    auto a = instance->GetProperty("A", {});
    const auto enumerated = All<ICIMProperty>(instance, &ICIMInstance::EnumProperties);
    instance->SetPropertyValue("B", Text(kCIMTypeString, "b"), {});
    instance->SetPropertyValue("A", Text(kCIMTypeString, "a2"), {});
    EXPECT_EQ("a2", a->GetValue({}).ToString());
    EXPECT_EQ("b", enumerated[1]->GetValue({}).ToString());
    int calls = 0;
    instance->EnumProperties([&calls](boost::shared_ptr<ICIMProperty>) { return ++calls < 1; }, {});
    EXPECT_EQ(1, calls);
    EXPECT_EQ(kQRNStatusInvalidArgument,
              StatusOf([&] { instance->EnumProperties(TEnumCallback<ICIMProperty>(), {}); }));
    instance.reset();
    ns.reset();
    EXPECT_EQ("A", a->GetName({}));
    EXPECT_EQ("a2", a->GetValue({}).ToString());
}

// Named (Name key), Pair (A and B keys, Note), Sub of Named overriding Name without saying Key,
// Free (no key), Link (a reference key).
boost::shared_ptr<ICIMNamespace> KeySchema() {
    auto ns = MakeNamespace();
    MakeClass(ns, "Named", "",
              {{"Name", kCIMTypeString, "", true}, {"Note", kCIMTypeString, "", false}});
    MakeClass(ns, "Pair", "", {{"A", kCIMTypeUint8, "", true}, {"B", kCIMTypeUint8, "", true}});
    MakeClass(ns, "Sub", "Named", {{"NAME", kCIMTypeString, "", false}});
    MakeClass(ns, "Free", "", {{"Note", kCIMTypeString, "", false}});
    MakeClass(ns, "Link", "", {{"Target", kCIMTypeReference, "", true}});
    return ns;
}

TEST(TMemoryInstance, CommitRefusesASecondInstanceWithTheSameKeys) {
    const struct {
        const char* situation;
        const char* className;
        TTexts first;
        TTexts second;
        bool refused;
        const char* secondClass = nullptr; // when not the first's
    } cases[] = {
        {"same key", "Named", {{"Name", "x"}}, {{"Name", "x"}}, true},
        {"other non-key", "Named", {{"Name", "x"}, {"Note", "x"}}, {{"Name", "x"}}, true},
        {"key set twice", "Named", {{"Name", "x"}}, {{"Name", "y"}, {"Name", "x"}}, true},
        {"key in another case", "Named", {{"Name", "x"}}, {{"Name", "X"}}, false},
        {"both keys", "Pair", {{"A", "1"}, {"B", "2"}}, {{"b", "2"}, {"a", "1"}}, true},
        {"one of two keys", "Pair", {{"A", "1"}, {"B", "2"}}, {{"A", "1"}, {"B", "1"}}, false},
        {"key by override", "Sub", {{"Name", "x"}}, {{"Name", "x"}}, true},
        {"key in a subclass", "Named", {{"Name", "x"}}, {{"Name", "x"}}, false, "Sub"},
        {"null keys", "Named", {}, {}, true},
        {"null key and the text null", "Named", {}, {{"Name", "null"}}, false},
        {"no keys", "Free", {{"Note", "x"}}, {{"Note", "x"}}, false},
        {"ref names' case",
         "Link",
         {{"Target", "Named.Name=\"x\""}},
         {{"Target", "named.NAME=\"x\""}},
         true},
        {"ref names' case reorders",
         "Link",
         {{"Target", "Pair.a=1,B=2"}},
         {{"Target", "Pair.b=2,A=1"}},
         true},
        {"ref values swapped",
         "Link",
         {{"Target", "Pair.A=1,B=2"}},
         {{"Target", "Pair.A=2,B=1"}},
         false},
        {"ref with a key more",
         "Link",
         {{"Target", "Pair.A=1"}},
         {{"Target", "Pair.A=1,B=2"}},
         false},
        {"ref values",
         "Link",
         {{"Target", "Named.Name=\"x\""}},
         {{"Target", "Named.Name=\"y\""}},
         false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        auto ns = KeySchema();
        Instance(ns, c.className, c.first)->Commit({});
        auto second = Instance(ns, c.secondClass ? c.secondClass : c.className, c.second);
        EXPECT_EQ(c.refused ? kQRNStatusAlreadyExists : kQRNStatusOK,
                  StatusOf([&] { second->Commit({}); }));
    }
}

TEST(TMemoryNamespace, EnumInstancesGivesAClassAndItsSubclassesInCommitOrder) {
    auto ns = KeySchema();
    Instance(ns, "Sub", {{"Note", "s1"}})->Commit({});
    Instance(ns, "Free", {{"Note", "f1"}})->Commit({});
    Instance(ns, "Named", {{"Note", "n1"}, {"Name", "n"}})->Commit({});
    Instance(ns, "Named", {{"Note", "uncommitted"}});
    const auto notes = [&ns](const std::string& className) {
        std::vector<boost::shared_ptr<ICIMInstance>> instances;
        ns->EnumInstances(className, TAddToVectorCallback<ICIMInstance>(instances), {});
        TNames texts;
        for (const auto& instance : instances) {
            texts.push_back(instance->GetProperty("Note", {})->GetValue({}).ToString());
        }
        return texts;
    };
    EXPECT_EQ((TNames{"s1", "f1", "n1"}), notes(""));
    EXPECT_EQ((TNames{"s1", "n1"}), notes("named"));
    EXPECT_EQ((TNames{"s1"}), notes("Sub"));
    EXPECT_EQ(TNames{}, notes("Pair"));
}

} // namespace
} // namespace NQRN20
