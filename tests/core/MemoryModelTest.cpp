// Tests of the in-memory model: namespace, classes, qualifiers and instances, and their rules.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

namespace NQRN20 {
namespace {

using test::All;
using test::MakeClass;
using test::MakeNamespace;
using test::Names;
using test::Qualify;
using test::StatusOf;
using test::Text;
using test::TNames;

TEST(TMemoryNamespace, FindsCommittedClassesByNameInAnyCaseAndListsThemInCommitOrder) {
    auto ns = MakeNamespace();
    EXPECT_EQ("root/cimv2", ns->GetName({}));
    EXPECT_EQ("interop", TMemoryNamespace::Create("interop")->GetName({}));
    auto disk = ns->CreateClass("EX_Disk", nullptr, {});
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { ns->GetClass("EX_Disk", {}); }));
    disk->Commit({});
    ns->CreateClass("EX_Area", nullptr, {})->Commit({});
    EXPECT_EQ(disk, ns->GetClass("ex_DISK", {}));
    EXPECT_EQ("EX_Disk", ns->GetClass("ex_disk", {})->GetName({}));
    EXPECT_FALSE(ns->GetClass("", {}));
    EXPECT_EQ(kQRNStatusAlreadyExists, StatusOf([&] { disk->Commit({}); }));
    auto other = ns->CreateClass("EX_DISK", nullptr, {});
    EXPECT_EQ(kQRNStatusAlreadyExists, StatusOf([&] { other->Commit({}); }));
    EXPECT_EQ(disk, ns->GetClass("EX_Disk", {}));
    EXPECT_EQ((TNames{"EX_Disk", "EX_Area"}),
              Names(All<ICIMClass>(ns, &ICIMNamespace::EnumClasses)));
    EXPECT_EQ((TNames{"Key", "Description", "Abstract"}),
              Names(All<ICIMQualifierDecl>(ns, &ICIMNamespace::EnumQualifierDecls)));
    int calls = 0;
    ns->EnumClasses([&calls](boost::shared_ptr<ICIMClass>) { return ++calls < 1; }, {});
    EXPECT_EQ(1, calls);
}

TEST(TMemoryNamespace, CommitRulesReportTheirStatus) {
    auto ns = MakeNamespace();
    auto base = MakeClass(ns, "EX_Base", "", "Id uint8=0");
    auto open = ns->CreateClass("EX_Open", nullptr, {});
    auto run = open->CreateMethodDecl("Run", kCIMTypeUint32, {});
    auto gone = ns->CreateClass("EX_Gone", nullptr, {})->CreatePropertyDecl("A", {}, {});
    const std::pair<uint32_t, std::function<void()>> cases[] = {
        {kQRNStatusOK, [&] { open->CreatePropertyDecl("Size", {}, {})->Commit({}); }},
        {kQRNStatusAlreadyExists, [&] { open->CreatePropertyDecl("SIZE", {}, {})->Commit({}); }},
        {kQRNStatusOK, [&] { run->CreateParameterDecl("P", kCIMTypeString, {})->Commit({}); }},
        {kQRNStatusAlreadyExists,
         [&] { run->CreateParameterDecl("p", kCIMTypeString, {})->Commit({}); }},
        {kQRNStatusAlreadyExists, [&] { test::Declare(ns, "KEY", {}); }},
        {kQRNStatusNotFound, [&] { gone->Commit({}); }},
        {kQRNStatusNotFound, [&] { ns->EnumInstances("EX_No", [](auto) { return true; }, {}); }},
        {kQRNStatusReadOnly, [&] { base->CreatePropertyDecl("Late", {}, {}); }},
        {kQRNStatusReadOnly, [&] { Qualify(ns, base, "Abstract", {}); }},
        {kQRNStatusNotCommitted, [&] { open->CreateInstance({}); }},
        {kQRNStatusNotCommitted, [&] { ns->CreateClass("EX_Sub", open, {}); }},
        {kQRNStatusInvalidArgument, [&] { MakeNamespace()->CreateClass("EX_Sub", base, {}); }},
        {kQRNStatusTypeMismatch, [&] { MakeClass(ns, "EX_Sub", "EX_Base", "Id string"); }},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.first, StatusOf(c.second)) << &c - cases;
    }
}

// Enough members that the name index grows several times.
TEST(TMemoryClass, SubclassInheritsAndOverridesPropertiesInDeclarationOrder) {
    auto ns = MakeNamespace();
    std::string many;
    TNames names = {"A", "b"};
    for (int i = 0; i < 40; ++i) {
        many += ", P" + std::to_string(i) + " uint32=" + std::to_string(i);
        names.push_back("P" + std::to_string(i));
    }
    names.push_back("C");
    auto base = MakeClass(ns, "EX_Base", "", "A uint8=1, B string=base" + many);
    auto sub = MakeClass(ns, "EX_Sub", "EX_Base", "C boolean, b string=sub");
    EXPECT_EQ(base, sub->GetSuperClass({}));
    EXPECT_EQ(names, Names(All<ICIMPropertyDecl>(sub, &ICIMClass::EnumPropertyDecls)));
    EXPECT_EQ("B", All<ICIMPropertyDecl>(base, &ICIMClass::EnumPropertyDecls)[1]->GetName({}));
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(std::to_string(i),
                  sub->GetPropertyDecl("p" + std::to_string(i), {})->GetValue({}).ToString());
    }
    EXPECT_EQ(base->GetPropertyDecl("a", {}), sub->GetPropertyDecl("A", {}));
    EXPECT_EQ("sub", sub->GetPropertyDecl("B", {})->GetValue({}).ToString());
    EXPECT_EQ("base", base->GetPropertyDecl("B", {})->GetValue({}).ToString());
    EXPECT_EQ(kCIMTypeBoolean, ECIMType(sub->GetPropertyDecl("c", {})->GetType({})));
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { sub->GetPropertyDecl("P40", {}); }));
}

// Inherited qualifiers and methods come first, an own one of the same name in its place.
TEST(TMemoryClass, SubclassInheritsMethodsAndOnlyTheToSubclassQualifiers) {
    auto ns = MakeNamespace();
    auto base = ns->CreateClass("EX_Base", nullptr, {});
    Qualify(ns, base, "Description", Text(kCIMTypeString, "old"));
    Qualify(ns, base, "Abstract", Text(kCIMTypeBoolean, "true"));
    Qualify(ns, base, "Key", Text(kCIMTypeBoolean, "true"));
    Qualify(ns, base, "description", Text(kCIMTypeString, "base"));
    auto start = base->CreateMethodDecl("Start", kCIMTypeUint32, {});
    start->Commit({});
    auto stop = base->CreateMethodDecl("Stop", kCIMTypeUint32, {});
    Qualify(ns, stop, "Description", Text(kCIMTypeString, "stops"));
    stop->Commit({});
    base->Commit({});
    auto sub = ns->CreateClass("EX_Sub", base, {});
    Qualify(ns, sub, "Abstract", Text(kCIMTypeBoolean, "false"));
    Qualify(ns, sub, "KEY", Text(kCIMTypeBoolean, "false"));
    auto override = sub->CreateMethodDecl("stop", kCIMTypeUint32, {});
    override->Commit({});
    sub->CreateMethodDecl("Reset", kCIMTypeBoolean, {})->Commit({});
    sub->Commit({});

    const auto qualifiers = All<ICIMQualifier>(sub, &ICIMClass::EnumQualifiers);
    EXPECT_EQ((TNames{"Description", "Key", "Abstract"}), Names(qualifiers));
    EXPECT_EQ("base", qualifiers[0]->GetValue({}).ToString());
    EXPECT_EQ("false", qualifiers[1]->GetValue({}).ToString());
    EXPECT_EQ((TNames{"Description", "Abstract", "Key"}),
              Names(All<ICIMQualifier>(base, &ICIMClass::EnumQualifiers)));
    EXPECT_EQ((TNames{"Start", "stop", "Reset"}),
              Names(All<ICIMMethodDecl>(sub, &ICIMClass::EnumMethodDecls)));
    EXPECT_EQ(override, sub->GetMethodDecl("STOP", {}));
    EXPECT_EQ(start, sub->GetMethodDecl("start", {}));
    EXPECT_EQ((TNames{"Description"}),
              Names(All<ICIMQualifier>(override, &ICIMMethodDecl::EnumQualifiers)));
}

TEST(TMemoryClass, CreateQualifierConformsTheValueToTheDeclaredType) {
    auto ns = MakeNamespace();
    test::Declare(ns, "ValueMap", TCIMValue(TCIMType(kCIMTypeString).GetArrayType(), 0));
    auto element = ns->CreateClass("EX_Class", nullptr, {});
    const auto stored = [&](const char* name, const TCIMValue& value) {
        auto decl = ns->GetQualifierDecl(name, {});
        auto qualifier = element->CreateQualifier(decl, value, decl->GetFlavor({}), {});
        return qualifier->GetValue({}).GetType().GetName() + " " +
               qualifier->GetValue({}).ToString();
    };
    EXPECT_EQ("boolean ", stored("Key", TCIMValue()));
    EXPECT_EQ("string[] 2", stored("ValueMap", Text(kCIMTypeString, "2")));
    EXPECT_EQ(kQRNStatusTypeMismatch,
              StatusOf([&] { stored("Key", Text(kCIMTypeString, "true")); }));
    EXPECT_EQ(kQRNStatusTypeMismatch,
              StatusOf([&] { stored("ValueMap", Text(kCIMTypeUint8, "2")); }));
}

TEST(TMemoryNamespace, NamespaceIsFreedWhileItsInstancesReferToIt) {
    auto ns = MakeNamespace();
    auto instance = MakeClass(ns, "EX_Link", "", "Target reference")->CreateInstance({});
    instance->SetPropertyValue("Target", TCIMValue(kCIMTypeReference, "EX_Link", ns), {});
    instance->Commit({});
    const boost::weak_ptr<ICIMNamespace> watch = ns;
    instance.reset();
    ns.reset();
    EXPECT_TRUE(watch.expired());
}

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
    MakeClass(ns, "EX_Base", "", "A uint8 key, B string=b");
    MakeClass(ns, "EX_Sub", "EX_Base", "C boolean=true, D uint8");
    const struct {
        TTexts values;
        TNames texts; // A to D; "" for null
    } cases[] = {
        {{}, {"", "b", "true", ""}},
        {{{"c", nullptr}}, {"", "b", "", ""}},
        {{{"D", "5"}, {"A", "1"}, {"d", "6"}}, {"1", "b", "true", "6"}},
    };
    const ECIMType types[] = {kCIMTypeUint8, kCIMTypeString, kCIMTypeBoolean, kCIMTypeUint8};
    for (const auto& c : cases) {
        auto instance = Instance(ns, "EX_Sub", c.values);
        const auto properties = All<ICIMProperty>(instance, &ICIMInstance::EnumProperties);
        EXPECT_EQ((TNames{"A", "B", "C", "D"}), Names(properties));
        for (size_t i = 0; i < properties.size(); ++i) {
            EXPECT_EQ(c.texts[i], properties[i]->GetValue({}).ToString()) << i;
            EXPECT_EQ(types[i], ECIMType(properties[i]->GetType({}))) << i;
            EXPECT_EQ(types[i], ECIMType(properties[i]->GetValue({}).GetType())) << i;
        }
    }
}

// A property also says what its text holds, as the instance or else its declaration says.
TEST(TMemoryInstance, PropertiesTakeValuesOfTheirTypeAndEmbeddedObjectKindsUntilCommitted) {
    auto ns = MakeNamespace();
    auto cimClass = MakeClass(ns, "EX_Thing", "",
                              "Size uint32, List uint16[], Inst string instance, Note string");
    auto instance = cimClass->CreateInstance({});
    instance->SetPropertyValue("SIZE", Text(kCIMTypeUint32, "9"), {});
    instance->SetPropertyEmbeddedObject("note", kEmbeddedObject, {});
    EXPECT_EQ("9", instance->GetProperty("size", {})->GetValue({}).ToString());
    EXPECT_EQ("Size", instance->GetProperty("size", {})->GetName({}));
    EXPECT_EQ(kEmbeddedObject, instance->GetProperty("Note", {})->GetEmbeddedObject({}));
    EXPECT_EQ(kEmbeddedInstance, instance->GetProperty("Inst", {})->GetEmbeddedObject({}));
    const auto set = [&](const char* name, ECIMType type) {
        return StatusOf([&] { instance->SetPropertyValue(name, Text(type, "1"), {}); });
    };
    EXPECT_EQ(kQRNStatusNotFound, set("Color", kCIMTypeUint32));
    EXPECT_EQ(kQRNStatusTypeMismatch, set("Size", kCIMTypeUint16));
    EXPECT_EQ(kQRNStatusTypeMismatch, set("List", kCIMTypeUint16));
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { instance->GetProperty("Color", {}); }));
    instance->Commit({});
    EXPECT_EQ(kQRNStatusReadOnly, set("Size", kCIMTypeUint32));
    EXPECT_EQ(kQRNStatusReadOnly,
              StatusOf([&] { instance->SetPropertyEmbeddedObject("Inst", kEmbeddedNone, {}); }));
    EXPECT_EQ(kQRNStatusAlreadyExists, StatusOf([&] { instance->Commit({}); }));
}

TEST(TMemoryInstance, PropertyHandlesShowLaterValuesAndKeepTheInstance) {
    auto ns = MakeNamespace();
    auto instance = MakeClass(ns, "EX_Pair", "", "A string=a, B string")->CreateInstance({});
    auto a = instance->GetProperty("A", {});
    instance->SetPropertyValue("B", Text(kCIMTypeString, "b"), {});
    instance->SetPropertyValue("A", Text(kCIMTypeString, "a2"), {});
    EXPECT_EQ("a2", a->GetValue({}).ToString());
    EXPECT_EQ(kQRNStatusInvalidArgument,
              StatusOf([&] { instance->EnumProperties(TEnumCallback<ICIMProperty>(), {}); }));
    instance.reset();
    ns.reset();
    EXPECT_EQ("A", a->GetName({}));
    EXPECT_EQ("a2", a->GetValue({}).ToString());
}

// Sub overrides Named's key without saying Key; Link's key is a reference.
boost::shared_ptr<ICIMNamespace> KeySchema() {
    auto ns = MakeNamespace();
    MakeClass(ns, "Named", "", "Name string key, Note string");
    MakeClass(ns, "Pair", "", "A uint8 key, B uint8 key");
    MakeClass(ns, "Sub", "Named", "NAME string");
    MakeClass(ns, "Free", "", "Note string");
    MakeClass(ns, "Link", "", "Target reference key");
    return ns;
}

TEST(TMemoryInstance, CommitRefusesASecondInstanceWithTheSameKeys) {
    const struct {
        const char* className;
        TTexts first;
        TTexts second;
        bool refused;
        const char* secondClass = nullptr; // when not the first's
    } cases[] = {
        {"Named", {{"Name", "x"}}, {{"Name", "x"}}, true},
        {"Named", {{"Name", "x"}, {"Note", "x"}}, {{"Name", "x"}}, true},
        {"Named", {{"Name", "x"}}, {{"Name", "y"}, {"Name", "x"}}, true},
        {"Named", {{"Name", "x"}}, {{"Name", "X"}}, false},
        {"Pair", {{"A", "1"}, {"B", "2"}}, {{"b", "2"}, {"a", "1"}}, true},
        {"Pair", {{"A", "1"}, {"B", "2"}}, {{"A", "1"}, {"B", "1"}}, false},
        {"Sub", {{"Name", "x"}}, {{"Name", "x"}}, true},
        {"Named", {{"Name", "x"}}, {{"Name", "x"}}, false, "Sub"},
        {"Named", {}, {}, true},
        {"Named", {}, {{"Name", "null"}}, false},
        {"Free", {{"Note", "x"}}, {{"Note", "x"}}, false},
        {"Link", {{"Target", "Named.Name=\"x\""}}, {{"Target", "named.NAME=\"x\""}}, true},
        {"Link", {{"Target", "Pair.a=1,B=2"}}, {{"Target", "Pair.b=2,A=1"}}, true},
        {"Link", {{"Target", "Pair.A=1,B=2"}}, {{"Target", "Pair.A=2,B=1"}}, false},
        {"Link", {{"Target", "Pair.A=1"}}, {{"Target", "Pair.A=1,B=2"}}, false},
    };
    for (const auto& c : cases) {
        auto ns = KeySchema();
        Instance(ns, c.className, c.first)->Commit({});
        auto second = Instance(ns, c.secondClass ? c.secondClass : c.className, c.second);
        EXPECT_EQ(c.refused ? kQRNStatusAlreadyExists : kQRNStatusOK,
                  StatusOf([&] { second->Commit({}); }))
            << &c - cases;
    }
}

TEST(TMemoryNamespace, EnumInstancesGivesAClassAndItsSubclassesInCommitOrder) {
    auto ns = KeySchema();
    Instance(ns, "Sub", {{"Note", "s1"}})->Commit({});
    Instance(ns, "Free", {{"Note", "f1"}})->Commit({});
    Instance(ns, "Named", {{"Note", "n1"}, {"Name", "n"}})->Commit({});
    Instance(ns, "Named", {{"Note", "uncommitted"}});
    const auto notes = [&ns](const std::string& className) {
        TNames texts;
        for (const auto& instance :
             All<ICIMInstance>(ns, &ICIMNamespace::EnumInstances, className)) {
            texts.push_back(instance->GetProperty("Note", {})->GetValue({}).ToString());
        }
        return texts;
    };
    EXPECT_EQ((TNames{"s1", "f1", "n1"}), notes(""));
    EXPECT_EQ((TNames{"s1", "n1"}), notes("named"));
    EXPECT_EQ((TNames{"s1"}), notes("Sub"));
}

} // namespace
} // namespace NQRN20
