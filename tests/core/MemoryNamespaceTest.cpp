// Tests of the in-memory namespace and its classes: lookups, inheritance, qualifiers, commit rules.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

#include <boost/weak_ptr.hpp>

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

TEST(TMemoryNamespace, FindsCommittedClassesByNameInAnyCase) {
    auto ns = MakeNamespace();
    EXPECT_EQ("root/cimv2", ns->GetName({}));
    EXPECT_EQ("interop", TMemoryNamespace::Create("interop")->GetName({}));
    auto disk = ns->CreateClass("EX_Disk", nullptr, {});
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { ns->GetClass("EX_Disk", {}); }));
    disk->Commit({});
    EXPECT_EQ(disk, ns->GetClass("ex_DISK", {}));
    EXPECT_EQ("EX_Disk", ns->GetClass("ex_disk", {})->GetName({}));
    EXPECT_FALSE(ns->GetClass("", {}));
    EXPECT_EQ(kQRNStatusAlreadyExists, StatusOf([&] { disk->Commit({}); }));
    EXPECT_EQ(kQRNStatusAlreadyExists,
              StatusOf([&] { ns->CreateClass("EX_DISK", nullptr, {})->Commit({}); }));
    EXPECT_EQ(disk, ns->GetClass("EX_Disk", {}));
}

// Each case acts on a fresh namespace holding EX_Base with a uint8 property Id.
TEST(TMemoryNamespace, CommitRulesReportTheirStatus) {
    typedef boost::shared_ptr<ICIMNamespace> TNs;
    typedef boost::shared_ptr<ICIMClass> TClass;
    const struct {
        const char* situation;
        std::function<void(const TNs&, const TClass&)> act;
        uint32_t status;
    } cases[] = {
        {"property declared twice",
         [](const TNs& ns, const TClass&) {
             auto c = ns->CreateClass("EX_New", nullptr, {});
             c->CreatePropertyDecl("Size", TCIMValue(), {})->Commit({});
             c->CreatePropertyDecl("SIZE", TCIMValue(), {})->Commit({});
         },
         kQRNStatusAlreadyExists},
        {"parameter declared twice",
         [](const TNs& ns, const TClass&) {
             auto m = ns->CreateClass("EX_New", nullptr, {})->CreateMethodDecl("Run", {}, {});
             m->CreateParameterDecl("P", kCIMTypeString, {})->Commit({});
             m->CreateParameterDecl("p", kCIMTypeString, {})->Commit({});
         },
         kQRNStatusAlreadyExists},
        {"qualifier declared twice",
         [](const TNs& ns, const TClass&) {
             ns->CreateQualifierDecl("KEY", TCIMValue(), 0xFF, {}, {})->Commit({});
         },
         kQRNStatusAlreadyExists},
        {"property of a class that is gone",
         [](const TNs& ns, const TClass&) {
             auto decl = ns->CreateClass("EX_New", nullptr, {})->CreatePropertyDecl("A", {}, {});
             decl->Commit({});
         },
         kQRNStatusNotFound},
        {"unknown property", [](const TNs&, const TClass& b) { b->GetPropertyDecl("No", {}); },
         kQRNStatusNotFound},
        {"absent qualifier",
         [](const TNs&, const TClass& b) { b->GetPropertyDecl("id", {})->GetQualifier("Key", {}); },
         kQRNStatusNotFound},
        {"unknown qualifier", [](const TNs& ns, const TClass&) { ns->GetQualifierDecl("No", {}); },
         kQRNStatusNotFound},
        {"instances of an unknown class",
         [](const TNs& ns, const TClass&) {
             ns->EnumInstances("EX_None", [](auto) { return true; }, {});
         },
         kQRNStatusNotFound},
        {"property added to a committed class",
         [](const TNs&, const TClass& b) { b->CreatePropertyDecl("Late", TCIMValue(), {}); },
         kQRNStatusReadOnly},
        {"qualifier added to a committed class",
         [](const TNs& ns, const TClass& b) { Qualify(ns, b, "Abstract", TCIMValue()); },
         kQRNStatusReadOnly},
        {"instance of an uncommitted class",
         [](const TNs& ns, const TClass&) {
             ns->CreateClass("EX_New", nullptr, {})->CreateInstance({});
         },
         kQRNStatusNotCommitted},
        {"subclass of an uncommitted class",
         [](const TNs& ns, const TClass&) {
             ns->CreateClass("EX_Sub", ns->CreateClass("EX_New", nullptr, {}), {});
         },
         kQRNStatusNotCommitted},
        {"superclass of another namespace",
         [](const TNs&, const TClass& b) { MakeNamespace()->CreateClass("EX_Sub", b, {}); },
         kQRNStatusInvalidArgument},
        {"override of another type",
         [](const TNs& ns, const TClass&) {
             MakeClass(ns, "EX_Sub", "EX_Base", {{"Id", kCIMTypeString, "", false}});
         },
         kQRNStatusTypeMismatch},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        auto ns = MakeNamespace();
        auto base = MakeClass(ns, "EX_Base", "", {{"Id", kCIMTypeUint8, "0", false}});
        EXPECT_EQ(c.status, StatusOf([&] { c.act(ns, base); }));
    }
}

// Enough members that the name index grows several times; every seventh is overridden with a
// name spelled otherwise and a default of its number plus 100.
TEST(TMemoryClass, SubclassInheritsAndOverridesPropertiesInDeclarationOrder) {
    auto ns = MakeNamespace();
    std::vector<test::TPropertyDef> baseDefs;
    std::vector<test::TPropertyDef> subDefs;
    TNames names;
    for (int i = 0; i < 40; ++i) {
        const std::string n = std::to_string(i);
        baseDefs.push_back({"P" + n, kCIMTypeUint32, n, false});
        if (i % 7 == 0) {
            subDefs.push_back({"p" + n, kCIMTypeUint32, std::to_string(100 + i), false});
        }
        names.push_back((i % 7 == 0 ? "p" : "P") + n);
    }
    subDefs.push_back({"Q", kCIMTypeBoolean, "", false});
    names.push_back("Q");
    auto base = MakeClass(ns, "EX_Base", "", baseDefs);
    auto sub = MakeClass(ns, "EX_Sub", "EX_Base", subDefs);

    EXPECT_EQ(base, sub->GetSuperClass({}));
    EXPECT_FALSE(base->GetSuperClass({}));
    EXPECT_EQ(names, Names(All<ICIMPropertyDecl>(sub, &ICIMClass::EnumPropertyDecls)));
    EXPECT_EQ(40u, All<ICIMPropertyDecl>(base, &ICIMClass::EnumPropertyDecls).size());
    for (int i = 0; i < 40; ++i) {
        const std::string name = "P" + std::to_string(i);
        SCOPED_TRACE(name);
        EXPECT_EQ(std::to_string(i % 7 == 0 ? 100 + i : i),
                  sub->GetPropertyDecl(name, {})->GetValue({}).ToString());
        EXPECT_EQ(std::to_string(i), base->GetPropertyDecl(name, {})->GetValue({}).ToString());
    }
    EXPECT_EQ(base->GetPropertyDecl("p1", {}), sub->GetPropertyDecl("P1", {}));
    EXPECT_EQ(kCIMTypeBoolean, ECIMType(sub->GetPropertyDecl("q", {})->GetType({})));
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { sub->GetPropertyDecl("P40", {}); }));
}

TEST(TMemoryClass, MethodsAndParametersKeepTheirOrderAndInherit) {
    auto ns = MakeNamespace();
    auto base = ns->CreateClass("EX_Base", nullptr, {});
    auto start = base->CreateMethodDecl("Start", kCIMTypeUint32, {});
    for (const char* name : {"Mode", "Delay", "Force"}) {
        start->CreateParameterDecl(name, kCIMTypeUint16, {})->Commit({});
    }
    start->Commit({});
    auto stop = base->CreateMethodDecl("Stop", kCIMTypeUint32, {});
    Qualify(ns, stop, "Description", Text(kCIMTypeString, "stops"));
    stop->Commit({});
    base->Commit({});
    auto sub = ns->CreateClass("EX_Sub", base, {});
    auto override = sub->CreateMethodDecl("stop", kCIMTypeUint32, {});
    override->Commit({});
    sub->CreateMethodDecl("Reset", kCIMTypeBoolean, {})->Commit({});
    sub->Commit({});

    EXPECT_EQ((TNames{"Start", "stop", "Reset"}),
              Names(All<ICIMMethodDecl>(sub, &ICIMClass::EnumMethodDecls)));
    EXPECT_EQ(override, sub->GetMethodDecl("STOP", {}));
    EXPECT_EQ(start, sub->GetMethodDecl("start", {}));
    EXPECT_EQ((TNames{"Description"}),
              Names(All<ICIMQualifier>(override, &ICIMMethodDecl::EnumQualifiers)));
    EXPECT_EQ((TNames{"Mode", "Delay", "Force"}),
              Names(All<ICIMParameterDecl>(start, &ICIMMethodDecl::EnumParameterDecls)));
}

TEST(TMemoryClass, QualifiersInheritOnlyWithTheToSubclassFlavor) {
    auto ns = MakeNamespace();
    auto base = ns->CreateClass("EX_Base", nullptr, {});
    Qualify(ns, base, "Abstract", Text(kCIMTypeBoolean, "true"));
    Qualify(ns, base, "Description", Text(kCIMTypeString, "base"));
    Qualify(ns, base, "Key", Text(kCIMTypeBoolean, "true"));
    base->Commit({});
    auto sub = ns->CreateClass("EX_Sub", base, {});
    Qualify(ns, sub, "Abstract", Text(kCIMTypeBoolean, "false"));
    Qualify(ns, sub, "KEY", Text(kCIMTypeBoolean, "false"));
    sub->Commit({});

    const auto qualifiers = All<ICIMQualifier>(sub, &ICIMClass::EnumQualifiers);
    EXPECT_EQ((TNames{"Description", "Key", "Abstract"}), Names(qualifiers));
    EXPECT_EQ("base", qualifiers[0]->GetValue({}).ToString());
    EXPECT_EQ("false", qualifiers[1]->GetValue({}).ToString());
    EXPECT_EQ((TNames{"Abstract", "Description", "Key"}),
              Names(All<ICIMQualifier>(base, &ICIMClass::EnumQualifiers)));

    // A property that overrides a key without saying so is a key too.
    MakeClass(ns, "EX_Named", "", {{"Name", kCIMTypeString, "", true}});
    auto named = MakeClass(ns, "EX_Sub2", "EX_Named", {{"NAME", kCIMTypeString, "", false}});
    auto key = named->GetPropertyDecl("name", {})->GetQualifier("KEY", {});
    EXPECT_TRUE(static_cast<bool>(key->GetValue({})));
    EXPECT_EQ("Key", key->GetName({}));
}

TEST(TMemoryClass, AddQualifierReplacesOneOfTheSameNameWhereItStands) {
    auto ns = MakeNamespace();
    auto cimClass = ns->CreateClass("EX_Class", nullptr, {});
    Qualify(ns, cimClass, "Description", Text(kCIMTypeString, "old"));
    Qualify(ns, cimClass, "Abstract", Text(kCIMTypeBoolean, "true"));
    Qualify(ns, cimClass, "description", Text(kCIMTypeString, "new"));
    const auto qualifiers = All<ICIMQualifier>(cimClass, &ICIMClass::EnumQualifiers);
    EXPECT_EQ((TNames{"Description", "Abstract"}), Names(qualifiers));
    EXPECT_EQ("new", qualifiers[0]->GetValue({}).ToString());
}

TEST(TMemoryClass, CreateQualifierConformsTheValueToTheDeclaredType) {
    auto ns = MakeNamespace();
    ns->CreateQualifierDecl("ValueMap", TCIMValue(TCIMType(kCIMTypeString).GetArrayType(), 0), 0xFF,
                            {}, {})
        ->Commit({});
    auto element = ns->CreateClass("EX_Class", nullptr, {});
    const struct {
        const char* qualifier;
        TCIMValue value;
        const char* type; // of the stored value; empty when refused
        const char* text;
    } cases[] = {
        {"Key", TCIMValue(), "boolean", ""},
        {"Key", Text(kCIMTypeBoolean, "true"), "boolean", "true"},
        {"Key", Text(kCIMTypeString, "true"), "", ""},
        {"ValueMap", Text(kCIMTypeString, "2"), "string[]", "2"},
        {"ValueMap", Text(kCIMTypeUint8, "2"), "", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.qualifier) + " " + c.value.GetType().GetName());
        auto decl = ns->GetQualifierDecl(c.qualifier, {});
        boost::shared_ptr<ICIMQualifier> qualifier;
        EXPECT_EQ(*c.type ? kQRNStatusOK : kQRNStatusTypeMismatch, StatusOf([&] {
            qualifier = element->CreateQualifier(decl, c.value, decl->GetFlavor({}), {});
        }));
        if (qualifier) {
            EXPECT_EQ(c.type, qualifier->GetValue({}).GetType().GetName());
            EXPECT_EQ(c.text, qualifier->GetValue({}).ToString());
        }
    }
}

TEST(TMemoryNamespace, EnumerationsFollowCommitOrderAndStopWhenAsked) {
    auto ns = MakeNamespace();
    for (const char* name : {"EX_C", "EX_A", "EX_B"}) {
        ns->CreateClass(name, nullptr, {})->Commit({});
    }
    EXPECT_EQ((TNames{"EX_C", "EX_A", "EX_B"}),
              Names(All<ICIMClass>(ns, &ICIMNamespace::EnumClasses)));
    EXPECT_EQ((TNames{"Key", "Description", "Abstract"}),
              Names(All<ICIMQualifierDecl>(ns, &ICIMNamespace::EnumQualifierDecls)));
    int calls = 0;
    ns->EnumClasses([&calls](boost::shared_ptr<ICIMClass>) { return ++calls < 2; }, {});
    EXPECT_EQ(2, calls);
}

TEST(TMemoryNamespace, NamespaceIsFreedWhileItsInstancesReferToIt) {
    auto ns = MakeNamespace();
    auto cimClass = MakeClass(ns, "EX_Link", "", {{"Target", kCIMTypeReference, "", false}});
    auto instance = cimClass->CreateInstance({});
    instance->SetPropertyValue("Target", TCIMValue(kCIMTypeReference, "EX_Link", ns), {});
    instance->Commit({});
    const boost::weak_ptr<ICIMNamespace> watch = ns;
    instance.reset();
    cimClass.reset();
    ns.reset();
    EXPECT_TRUE(watch.expired());
}

} // namespace
} // namespace NQRN20
