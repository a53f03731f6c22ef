// Tests of the in-memory namespace: classes, declarations, qualifiers, inheritance, commit rules.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

#include <boost/weak_ptr.hpp>

#include <thread>

namespace NQRN20 {
namespace {

using test::MakeClass;
using test::MakeNamespace;
using test::Names;
using test::PropertyDecls;
using test::Qualifiers;
using test::Qualify;
using test::StatusOf;
using test::Text;

typedef std::vector<std::string> TNames;

TEST(TMemoryNamespace, FindsCommittedClassesByNameInAnyCase) {
    auto ns = MakeNamespace();
    EXPECT_EQ("root/cimv2", ns->GetName({}));
    EXPECT_EQ("interop", TMemoryNamespace::Create("interop")->GetName({}));

    auto disk = ns->CreateClass("EX_Disk", nullptr, {});
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { ns->GetClass("EX_Disk", {}); }));
    disk->Commit({});
    for (const char* name : {"EX_Disk", "ex_disk", "EX_DISK"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(disk, ns->GetClass(name, {}));
    }
    EXPECT_EQ("EX_Disk", ns->GetClass("ex_disk", {})->GetName({}));
    EXPECT_FALSE(ns->GetClass("", {}));
    EXPECT_EQ(kQRNStatusNotFound, StatusOf([&] { ns->GetClass("EX_Tape", {}); }));
}

TEST(TMemoryNamespace, SecondClassOfANameIsRefusedAndTheFirstStays) {
    auto ns = MakeNamespace();
    auto first = MakeClass(ns, "EX_Disk", "", {{"Size", kCIMTypeUint64, "", false}});
    auto second = ns->CreateClass("ex_DISK", nullptr, {});
    second->CreatePropertyDecl("Other", TCIMValue(), {})->Commit({});
    EXPECT_EQ(kQRNStatusAlreadyExists, StatusOf([&] { second->Commit({}); }));
    EXPECT_EQ(first, ns->GetClass("EX_Disk", {}));
    EXPECT_EQ(TNames{"Size"}, Names(PropertyDecls(ns->GetClass("EX_Disk", {}))));
    EXPECT_EQ(kQRNStatusAlreadyExists, StatusOf([&] { first->Commit({}); }));
}

// Each case builds on a fresh namespace holding EX_Base (Id uint8, method Run with parameter P).
TEST(TMemoryNamespace, CommitRulesReportTheirStatus) {
    typedef boost::shared_ptr<ICIMNamespace> TNs;
    const struct {
        const char* situation;
        std::function<void(const TNs&, const boost::shared_ptr<ICIMClass>&)> act;
        uint32_t status;
    } cases[] = {
        {"property declared twice",
         [](const TNs& ns, const auto&) {
             auto c = ns->CreateClass("EX_New", nullptr, {});
             c->CreatePropertyDecl("Size", TCIMValue(), {})->Commit({});
             c->CreatePropertyDecl("SIZE", TCIMValue(), {})->Commit({});
         },
         kQRNStatusAlreadyExists},
        {"property of a class that is gone",
         [](const TNs& ns, const auto&) {
             auto decl =
                 ns->CreateClass("EX_New", nullptr, {})->CreatePropertyDecl("A", TCIMValue(), {});
             decl->Commit({});
         },
         kQRNStatusNotFound},
        {"parameter declared twice",
         [](const TNs& ns, const auto&) {
             auto m = ns->CreateClass("EX_New", nullptr, {})
                          ->CreateMethodDecl("Run", kCIMTypeUint32, {});
             m->CreateParameterDecl("P", kCIMTypeString, {})->Commit({});
             m->CreateParameterDecl("p", kCIMTypeString, {})->Commit({});
         },
         kQRNStatusAlreadyExists},
        {"qualifier declared twice",
         [](const TNs& ns, const auto&) { test::DeclareQualifier(ns, "KEY", TCIMValue()); },
         kQRNStatusAlreadyExists},
        {"unknown property declaration",
         [](const TNs&, const auto& base) { base->GetPropertyDecl("Nothing", {}); },
         kQRNStatusNotFound},
        {"absent qualifier",
         [](const TNs&, const auto& base) {
             base->GetPropertyDecl("Id", {})->GetQualifier("Units", {});
         },
         kQRNStatusNotFound},
        {"unknown qualifier declaration",
         [](const TNs& ns, const auto&) { ns->GetQualifierDecl("Units", {}); }, kQRNStatusNotFound},
        {"unknown class of instances",
         [](const TNs& ns, const auto&) {
             ns->EnumInstances("EX_None", [](auto) { return true; }, {});
         },
         kQRNStatusNotFound},
        {"property added to a committed class",
         [](const TNs&, const auto& base) { base->CreatePropertyDecl("Late", TCIMValue(), {}); },
         kQRNStatusReadOnly},
        {"qualifier added to a committed class",
         [](const TNs& ns, const auto& base) {
             Qualify(ns, base, "Description", Text(kCIMTypeString, "x"));
         },
         kQRNStatusReadOnly},
        {"instance of an uncommitted class",
         [](const TNs& ns, const auto&) {
             ns->CreateClass("EX_New", nullptr, {})->CreateInstance({});
         },
         kQRNStatusNotCommitted},
        {"subclass of an uncommitted class",
         [](const TNs& ns, const auto&) {
             ns->CreateClass("EX_Sub", ns->CreateClass("EX_New", nullptr, {}), {});
         },
         kQRNStatusNotCommitted},
        {"superclass of another namespace",
         [](const TNs&, const auto& base) { MakeNamespace()->CreateClass("EX_Sub", base, {}); },
         kQRNStatusInvalidArgument},
        {"override of another type",
         [](const TNs& ns, const auto&) {
             MakeClass(ns, "EX_Sub", "EX_Base", {{"Id", kCIMTypeString, "", false}});
         },
         kQRNStatusTypeMismatch},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        auto ns = MakeNamespace();
        auto base = ns->CreateClass("EX_Base", nullptr, {});
        base->CreatePropertyDecl("Id", Text(kCIMTypeUint8, "0"), {})->Commit({});
        auto run = base->CreateMethodDecl("Run", kCIMTypeUint32, {});
        run->CreateParameterDecl("P", kCIMTypeString, {})->Commit({});
        run->Commit({});
        base->Commit({});
        EXPECT_EQ(c.status, StatusOf([&] { c.act(ns, base); }));
    }
}

TEST(TMemoryClass, SubclassInheritsAndOverridesPropertiesInDeclarationOrder) {
    auto ns = MakeNamespace();
    auto base = MakeClass(ns, "EX_Base", "",
                          {{"A", kCIMTypeUint8, "1", false}, {"B", kCIMTypeString, "base", false}});
    auto sub = MakeClass(ns, "EX_Sub", "EX_Base",
                         {{"C", kCIMTypeBoolean, "", false}, {"b", kCIMTypeString, "sub", false}});

    EXPECT_EQ(base, sub->GetSuperClass({}));
    EXPECT_FALSE(base->GetSuperClass({}));
    EXPECT_EQ((TNames{"A", "b", "C"}), Names(PropertyDecls(sub)));
    EXPECT_EQ((TNames{"A", "B"}), Names(PropertyDecls(base)));
    EXPECT_EQ(base->GetPropertyDecl("a", {}), sub->GetPropertyDecl("A", {}));
    EXPECT_EQ("sub", sub->GetPropertyDecl("B", {})->GetValue({}).ToString());
    EXPECT_EQ("base", base->GetPropertyDecl("B", {})->GetValue({}).ToString());
    EXPECT_EQ(kCIMTypeBoolean, ECIMType(sub->GetPropertyDecl("c", {})->GetType({})));
}

// Enough members that the name index grows several times, with overrides spelled otherwise.
TEST(TMemoryClass, ManyPropertiesKeepTheirPlacesAndAreFoundInAnyCase) {
    auto ns = MakeNamespace();
    std::vector<test::TPropertyDef> baseDefs;
    for (int i = 0; i < 40; ++i) {
        baseDefs.push_back({"P" + std::to_string(i), kCIMTypeUint32, std::to_string(i), false});
    }
    MakeClass(ns, "EX_Base", "", baseDefs);
    std::vector<test::TPropertyDef> subDefs;
    for (int i = 0; i < 40; i += 7) {
        subDefs.push_back(
            {"p" + std::to_string(i), kCIMTypeUint32, std::to_string(100 + i), false});
    }
    for (int i = 0; i < 20; ++i) {
        subDefs.push_back(
            {"Q" + std::to_string(i), kCIMTypeUint32, std::to_string(200 + i), false});
    }
    auto sub = MakeClass(ns, "EX_Sub", "EX_Base", subDefs);

    TNames names;
    for (int i = 0; i < 40; ++i) {
        names.push_back((i % 7 == 0 ? "p" : "P") + std::to_string(i));
    }
    for (int i = 0; i < 20; ++i) {
        names.push_back("Q" + std::to_string(i));
    }
    EXPECT_EQ(names, Names(PropertyDecls(sub)));
    auto instance = sub->CreateInstance({});
    for (int i = 0; i < 40; ++i) {
        const std::string name = "P" + std::to_string(i);
        SCOPED_TRACE(name);
        EXPECT_EQ(std::to_string(i % 7 == 0 ? 100 + i : i),
                  sub->GetPropertyDecl(name, {})->GetValue({}).ToString());
        instance->SetPropertyValue("p" + std::to_string(i), Text(kCIMTypeUint32, "7"), {});
    }
    EXPECT_EQ("219", instance->GetProperty("q19", {})->GetValue({}).ToString());
    EXPECT_EQ("7", instance->GetProperty("P39", {})->GetValue({}).ToString());
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

    std::vector<boost::shared_ptr<ICIMMethodDecl>> methods;
    sub->EnumMethodDecls(TAddToVectorCallback<ICIMMethodDecl>(methods), {});
    EXPECT_EQ((TNames{"Start", "stop", "Reset"}), Names(methods));
    EXPECT_EQ(override, sub->GetMethodDecl("STOP", {}));
    EXPECT_EQ(start, sub->GetMethodDecl("start", {}));
    EXPECT_EQ((TNames{"Description"}), Names(Qualifiers(override)));

    std::vector<boost::shared_ptr<ICIMParameterDecl>> parameters;
    start->EnumParameterDecls(TAddToVectorCallback<ICIMParameterDecl>(parameters), {});
    EXPECT_EQ((TNames{"Mode", "Delay", "Force"}), Names(parameters));
}

TEST(TMemoryClass, QualifiersInheritOnlyWithTheToSubclassFlavor) {
    auto ns = MakeNamespace();
    test::DeclareQualifier(ns, "Version", TCIMValue(kCIMTypeString, 0));
    auto base = ns->CreateClass("EX_Base", nullptr, {});
    Qualify(ns, base, "Abstract", Text(kCIMTypeBoolean, "true"));
    Qualify(ns, base, "Description", Text(kCIMTypeString, "base"));
    Qualify(ns, base, "Version", Text(kCIMTypeString, "1"));
    base->Commit({});
    auto sub = ns->CreateClass("EX_Sub", base, {});
    Qualify(ns, sub, "VERSION", Text(kCIMTypeString, "2"));
    Qualify(ns, sub, "Key", TCIMValue());
    sub->Commit({});

    const auto qualifiers = Qualifiers(sub);
    EXPECT_EQ((TNames{"Description", "Version", "Key"}), Names(qualifiers));
    EXPECT_EQ("base", qualifiers[0]->GetValue({}).ToString());
    EXPECT_EQ("2", qualifiers[1]->GetValue({}).ToString());
    EXPECT_EQ((TNames{"Abstract", "Description", "Version"}), Names(Qualifiers(base)));
}

TEST(TMemoryClass, CreateQualifierConformsTheValueToTheDeclaredType) {
    auto ns = MakeNamespace();
    test::DeclareQualifier(ns, "ValueMap", TCIMValue(TCIMType(kCIMTypeString).GetArrayType(), 0));
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
        const uint32_t status = StatusOf(
            [&] { qualifier = element->CreateQualifier(decl, c.value, decl->GetFlavor({}), {}); });
        if (*c.type == '\0') {
            EXPECT_EQ(kQRNStatusTypeMismatch, status);
            continue;
        }
        ASSERT_TRUE(qualifier);
        EXPECT_EQ(c.type, qualifier->GetValue({}).GetType().GetName());
        EXPECT_EQ(c.text, qualifier->GetValue({}).ToString());
    }
}

TEST(TMemoryClass, AddQualifierReplacesOneOfTheSameNameWhereItStands) {
    auto ns = MakeNamespace();
    auto cimClass = ns->CreateClass("EX_Class", nullptr, {});
    Qualify(ns, cimClass, "Description", Text(kCIMTypeString, "old"));
    Qualify(ns, cimClass, "Abstract", Text(kCIMTypeBoolean, "true"));
    Qualify(ns, cimClass, "description", Text(kCIMTypeString, "new"));
    const auto qualifiers = Qualifiers(cimClass);
    EXPECT_EQ((TNames{"Description", "Abstract"}), Names(qualifiers));
    EXPECT_EQ("new", qualifiers[0]->GetValue({}).ToString());
    EXPECT_EQ(ICIMQualifierDecl::kFlavorToSubclass, qualifiers[0]->GetFlavor({}));
}

TEST(TMemoryClass, OverridingPropertyInheritsTheKeyQualifier) {
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_Base", "", {{"Name", kCIMTypeString, "", true}});
    auto sub = MakeClass(ns, "EX_Sub", "EX_Base", {{"NAME", kCIMTypeString, "", false}});
    auto key = sub->GetPropertyDecl("name", {})->GetQualifier("KEY", {});
    EXPECT_TRUE(static_cast<bool>(key->GetValue({})));
    EXPECT_EQ("Key", key->GetName({}));
    EXPECT_EQ((TNames{"Key"}), Names(Qualifiers(sub->GetPropertyDecl("Name", {}))));
}

TEST(TMemoryNamespace, EnumerationsFollowCommitOrderAndStopWhenAsked) {
    auto ns = MakeNamespace();
    for (const char* name : {"EX_C", "EX_A", "EX_B"}) {
        ns->CreateClass(name, nullptr, {})->Commit({});
    }
    std::vector<boost::shared_ptr<ICIMClass>> classes;
    ns->EnumClasses(TAddToVectorCallback<ICIMClass>(classes), {});
    EXPECT_EQ((TNames{"EX_C", "EX_A", "EX_B"}), Names(classes));

    std::vector<boost::shared_ptr<ICIMQualifierDecl>> decls;
    ns->EnumQualifierDecls(TAddToVectorCallback<ICIMQualifierDecl>(decls), {});
    EXPECT_EQ((TNames{"Key", "Description", "Abstract"}), Names(decls));

    int calls = 0;
    ns->EnumClasses([&calls](boost::shared_ptr<ICIMClass>) { return ++calls < 2; }, {});
    EXPECT_EQ(2, calls);
}

TEST(TMemoryNamespace, ChainOf100000ClassesLoadsEnumeratesAndFreesWithoutDeepRecursion) {
    const int kDepth = 100000;
    auto ns = MakeNamespace();
    MakeClass(ns, "EX_0", "", {{"Id", kCIMTypeUint32, "", true}});
    boost::shared_ptr<ICIMClass> leaf = ns->GetClass("EX_0", {});
    for (int i = 1; i < kDepth; ++i) {
        leaf = ns->CreateClass("EX_" + std::to_string(i), leaf, {});
        leaf->Commit({});
    }
    EXPECT_EQ(TNames{"Id"}, Names(PropertyDecls(leaf)));
    EXPECT_TRUE(
        static_cast<bool>(leaf->GetPropertyDecl("id", {})->GetQualifier("Key", {})->GetValue({})));
    auto instance = leaf->CreateInstance({});
    instance->SetPropertyValue("Id", Text(kCIMTypeUint32, "1"), {});
    instance->Commit({});
    std::vector<boost::shared_ptr<ICIMInstance>> found;
    ns->EnumInstances("ex_0", TAddToVectorCallback<ICIMInstance>(found), {});
    EXPECT_EQ(1u, found.size());

    const boost::weak_ptr<ICIMClass> watch = leaf;
    found.clear();
    instance.reset();
    leaf.reset();
    ns.reset();
    EXPECT_TRUE(watch.expired());
}

TEST(TMemoryNamespace, NamespaceIsFreedWhileItsInstancesReferToIt) {
    auto ns = MakeNamespace();
    auto cimClass = ns->CreateClass("EX_Link", nullptr, {});
    cimClass->CreatePropertyDecl("Target", TCIMValue(kCIMTypeReference, 0), {})->Commit({});
    cimClass->Commit({});
    auto instance = cimClass->CreateInstance({});
    instance->SetPropertyValue("Target", TCIMValue(kCIMTypeReference, "EX_Link", ns), {});
    instance->Commit({});
    const boost::weak_ptr<ICIMNamespace> watch = ns;
    instance.reset();
    cimClass.reset();
    ns.reset();
    EXPECT_TRUE(watch.expired());
}

TEST(TMemoryNamespace, SeveralLoadersFillOneNamespaceAtOnce) {
    const int kLoaders = 4;
    const int kClassesEach = 200;
    auto ns = MakeNamespace();
    std::vector<std::thread> loaders;
    for (int t = 0; t < kLoaders; ++t) {
        loaders.emplace_back([ns, t] {
            for (int i = 0; i < kClassesEach; ++i) {
                const std::string name = "EX_" + std::to_string(t) + "_" + std::to_string(i);
                auto cimClass = MakeClass(ns, name, i == 0 ? "" : "EX_" + std::to_string(t) + "_0",
                                          {{"Id", kCIMTypeUint32, "", true}});
                auto instance = cimClass->CreateInstance({});
                instance->SetPropertyValue("Id", Text(kCIMTypeUint32, std::to_string(i)), {});
                instance->Commit({});
                // A name every loader tries: exactly one commit wins.
                StatusOf([&] { ns->CreateClass("EX_Shared", nullptr, {})->Commit({}); });
            }
        });
    }
    for (std::thread& loader : loaders) {
        loader.join();
    }
    std::vector<boost::shared_ptr<ICIMClass>> classes;
    ns->EnumClasses(TAddToVectorCallback<ICIMClass>(classes), {});
    EXPECT_EQ(static_cast<size_t>(kLoaders * kClassesEach + 1), classes.size());
    std::vector<boost::shared_ptr<ICIMInstance>> instances;
    ns->EnumInstances("EX_1_0", TAddToVectorCallback<ICIMInstance>(instances), {});
    EXPECT_EQ(static_cast<size_t>(kClassesEach), instances.size());
}

} // namespace
} // namespace NQRN20
