// Tests of TCIMReference: model paths read and written, key typing, and comparison.
#include "CoreTestSupport.h"

#include <gtest/gtest.h>

namespace NQRN20 {
namespace {

using test::StatusOf;
using test::Text;

TCIMReference
Path(const std::string& text,
     const boost::shared_ptr<ICIMNamespace>& ns = boost::shared_ptr<ICIMNamespace>()) {
    return TCIMReference::FromPath(text, ns);
}

TEST(TCIMReference, ReadsModelPathsWithoutASchema) {
    const struct {
        const char* path;
        const char* host;
        const char* ns;
        const char* className;
        const char* written;
    } cases[] = {
        {"CIM_Foo", "", "", "CIM_Foo", "CIM_Foo"},
        {"CIM_Foo.Name=\"x\",Id=3", "", "", "CIM_Foo", "CIM_Foo.Id=3,Name=\"x\""},
        {"root/cimv2:CIM_Foo.Name=\"x\"", "", "root/cimv2", "CIM_Foo",
         "root/cimv2:CIM_Foo.Name=\"x\""},
        {"//host:5988/root/cimv2:CIM_Foo.Name=\"a\\\"b\"", "host:5988", "root/cimv2", "CIM_Foo",
         "//host:5988/root/cimv2:CIM_Foo.Name=\"a\\\"b\""},
        {"\n  CIM_Foo.Flag=TRUE\n", "", "", "CIM_Foo", "CIM_Foo.Flag=true"},
        {"CIM_Foo.Neg=-5,R=1.5,C='c',T=\"a:b=c,d\"", "", "", "CIM_Foo",
         "CIM_Foo.C='c',Neg=-5,R=1.5,T=\"a:b=c,d\""},
        {"CIM_Foo.Ref=\"CIM_Bar.Id=\\\"7\\\"\"", "", "", "CIM_Foo",
         "CIM_Foo.Ref=\"CIM_Bar.Id=\\\"7\\\"\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const TCIMReference reference = Path(c.path);
        EXPECT_EQ(c.host, reference.GetHost());
        EXPECT_EQ(c.ns, reference.GetNamespaceName());
        EXPECT_EQ(c.className, reference.GetClassName());
        EXPECT_EQ(c.written, reference.ToString());
        EXPECT_EQ(reference, Path(reference.ToString()));
    }
}

TEST(TCIMReference, ConvertsKeysWithTheDeclaredTypesWhenTheNamespaceHoldsTheClass) {
    auto ns = test::MakeNamespace();
    test::MakeClass(ns, "EX_Thing", "",
                    {{"Id", kCIMTypeUint8, "", true}, {"When", kCIMTypeDateTime, "", true}});
    const TCIMReference reference =
        Path("EX_Thing.id=\"7\",When=\"19700101000000.000000+000\"", ns);
    EXPECT_EQ(Text(kCIMTypeUint8, "7"), reference.GetKeys().at("id"));
    EXPECT_EQ(TCIMValue(TCIMDateTime(1970, 1, 1, 0, 0, 0, 0, 0)), reference.GetKeys().at("When"));
    EXPECT_EQ("root/cimv2", reference.GetNamespaceName());
    EXPECT_EQ(ns, reference.GetNamespace());
    EXPECT_EQ(kQRNStatusInvalidValue, StatusOf([&] { Path("EX_Thing.Id=300", ns); }));
    EXPECT_EQ(kQRNStatusInvalidDateTime, StatusOf([&] { Path("EX_Thing.When=\"soon\"", ns); }));
    EXPECT_EQ(kCIMTypeUint64, ECIMType(Path("EX_Other.Id=3", ns).GetKeys().at("Id").GetType()));
    EXPECT_FALSE(Path("other/ns:EX_Thing", ns).GetNamespace());
}

TEST(TCIMReference, ComparesNamesRegardlessOfCaseButValuesExactly) {
    EXPECT_EQ(Path("ROOT/cimv2:cim_foo.NAME=\"x\""), Path("root/cimv2:CIM_Foo.Name=\"x\""));
    EXPECT_NE(Path("CIM_Foo.Name=\"X\""), Path("CIM_Foo.Name=\"x\""));
    EXPECT_NE(Path("CIM_Foo.Name=\"x\""), Path("CIM_Foo.Name=\"x\",Id=1"));
    EXPECT_NE(Path("CIM_Foo.Name=\"x\""), Path("CIM_Bar.Name=\"x\""));
}

TEST(TCIMReference, AddKeyValueReplacesAKeyNamedInAnotherCase) {
    TCIMReference reference(boost::shared_ptr<ICIMNamespace>(), {{"Id", Text(kCIMTypeUint8, "1")}});
    reference.AddKeyValue("ID", Text(kCIMTypeUint8, "2"));
    ASSERT_EQ(1u, reference.GetKeys().size());
    EXPECT_EQ("ID", reference.GetKeys().begin()->first);
    EXPECT_EQ(Text(kCIMTypeUint8, "2"), reference.GetKeys().begin()->second);
    EXPECT_EQ(kQRNStatusInvalidArgument,
              StatusOf([&] { reference.AddKeyValue("", Text(kCIMTypeUint8, "2")); }));
}

} // namespace
} // namespace NQRN20
