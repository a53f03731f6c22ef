// Tests of the path, instance name, key binding and reference states, through the reference
// property of an association instance.
#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

const char kSchema[] =
    "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'><SCOPE PROPERTY='true'/>"
    "<VALUE>false</VALUE></QUALIFIER.DECLARATION>"
    "<VALUE.OBJECT><CLASS NAME='T_Disk'>"
    "<PROPERTY NAME='DeviceID' TYPE='string'><QUALIFIER NAME='Key' TYPE='boolean'>"
    "<VALUE>true</VALUE></QUALIFIER></PROPERTY>"
    "<PROPERTY NAME='Index' TYPE='uint16'><QUALIFIER NAME='Key' TYPE='boolean'>"
    "<VALUE>true</VALUE></QUALIFIER></PROPERTY>"
    "<PROPERTY NAME='Label' TYPE='string'/>"
    "</CLASS></VALUE.OBJECT>"
    // Overrides its key without repeating the qualifier, as DMTF documents do.
    "<VALUE.OBJECT><CLASS NAME='T_SubDisk' SUPERCLASS='T_Disk'>"
    "<PROPERTY NAME='DeviceID' TYPE='string'/></CLASS></VALUE.OBJECT>"
    "<VALUE.OBJECT><CLASS NAME='T_Unkeyed'><PROPERTY NAME='Label' TYPE='string'/>"
    "</CLASS></VALUE.OBJECT>"
    "<VALUE.OBJECT><CLASS NAME='T_Uses'>"
    "<PROPERTY.REFERENCE NAME='Ref' REFERENCECLASS='T_Disk'/></CLASS></VALUE.OBJECT>";

struct TReferenced {
    std::string m_log;
    std::string m_reference; // the text of the Ref property of the one instance loaded
};

TReferenced LoadReference(const std::string& valueReference) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    EXPECT_EQ("", ParseDocument(cimNamespace, InDeclGroup(kSchema)).m_log);
    const TParseResult parsed = ParseDocument(
        cimNamespace,
        InValueObjects({"<INSTANCE CLASSNAME='T_Uses'><PROPERTY.REFERENCE NAME='Ref'>" +
                        valueReference + "</PROPERTY.REFERENCE></INSTANCE>"}));
    EXPECT_EQ(0u, parsed.m_status);
    if (parsed.m_instances.size() != 1) {
        ADD_FAILURE() << "no instance collected";
        return {parsed.m_log, ""};
    }
    const TCIMValue& value =
        parsed.m_instances[0]->GetProperty("Ref", TCIMOptions())->GetValue(TCIMOptions());
    return {parsed.m_log, value.IsNull() ? "null" : value.ToString()};
}

std::string Named(const std::string& className, const std::string& content) {
    return "<VALUE.REFERENCE><INSTANCENAME CLASSNAME='" + className + "'>" + content +
           "</INSTANCENAME></VALUE.REFERENCE>";
}

std::string Binding(const std::string& name, const std::string& content) {
    return "<KEYBINDING NAME='" + name + "'>" + content + "</KEYBINDING>";
}

struct TCase {
    const char* m_title;
    std::string m_valueReference;
    std::string m_log;
    std::string m_reference;
};

void RunCases(const std::vector<TCase>& cases) {
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.m_title);
        const TReferenced referenced = LoadReference(c.m_valueReference);
        EXPECT_EQ(c.m_log, referenced.m_log);
        EXPECT_EQ(c.m_reference, referenced.m_reference);
    }
}

const std::string kLine = "3 CIM-XML Parser line 1:";

TEST(TStateInstanceName, BindsKeysConvertedWithTheTypesTheClassDeclares) {
    RunCases({
        {"two bindings under the names written",
         Named("T_Disk", Binding("deviceid", "<KEYVALUE>d0</KEYVALUE>") +
                             Binding("Index", "<KEYVALUE VALUETYPE='string'>\n 7 \n</KEYVALUE>")),
         "", "root/cimv2:T_Disk.Index=7,deviceid=\"d0\""},
        {"an unnamed key value goes to the first key property",
         Named("T_Disk", "<KEYVALUE>d1</KEYVALUE>"), "", "root/cimv2:T_Disk.DeviceID=\"d1\""},
        {"a key inherited through an override without the qualifier",
         Named("T_SubDisk", Binding("DeviceID", "<KEYVALUE>d2</KEYVALUE>")), "",
         "root/cimv2:T_SubDisk.DeviceID=\"d2\""},
        {"no children: the class alone", Named("T_Disk", ""), "", "root/cimv2:T_Disk"},
        {"the last of two key values stands",
         Named("T_Disk", Binding("DeviceID", "<KEYVALUE>a</KEYVALUE><KEYVALUE>b</KEYVALUE>")), "",
         "root/cimv2:T_Disk.DeviceID=\"b\""},
        {"a binding without a value binds the empty text", Named("T_Disk", Binding("DeviceID", "")),
         "", "root/cimv2:T_Disk.DeviceID=\"\""},
    });
}

TEST(TStateInstanceName, ReportsKeysItCannotBindAndGoesOn) {
    RunCases({
        {"a property the class lacks",
         Named("T_Disk", Binding("Size", "<KEYVALUE>1</KEYVALUE>") +
                             Binding("Index", "<KEYVALUE>2</KEYVALUE>")),
         kLine + "Couldn't find property name Size in class T_Disk\n", "root/cimv2:T_Disk.Index=2"},
        {"a property that is not a key",
         Named("T_Disk", Binding("Label", "<KEYVALUE>x</KEYVALUE>")),
         kLine + "Class T_Disk doesn't have any key properties\n", "root/cimv2:T_Disk"},
        {"an unnamed key value for a class without keys",
         Named("T_Unkeyed", "<KEYVALUE>x</KEYVALUE>"),
         kLine + "Class T_Unkeyed doesn't have any key properties\n", "root/cimv2:T_Unkeyed"},
        {"a binding after an unnamed key value",
         Named("T_Disk", "<KEYVALUE>x</KEYVALUE>" + Binding("Index", "")),
         kLine + "Unexpected element keybinding\n", "root/cimv2:T_Disk.DeviceID=\"x\""},
        {"a class the namespace does not hold",
         Named("T_None", Binding("DeviceID", "<KEYVALUE>x</KEYVALUE>") + "<KEYVALUE>y</KEYVALUE>"),
         kLine + "Couldn't find class name T_None\n" + kLine +
             "No class to match the key against: DeviceID\n" + kLine +
             "Unexpected element keyvalue\n",
         "root/cimv2:T_None"},
    });
}

TEST(TStateValueReference, BuildsClassAndInstanceReferencesFromEveryPathForm) {
    const std::string name = "<INSTANCENAME CLASSNAME='T_Disk'>" +
                             Binding("DeviceID", "<KEYVALUE>d</KEYVALUE>") + "</INSTANCENAME>";
    const std::string local = "<LOCALNAMESPACEPATH><NAMESPACE NAME='interop'/>"
                              "<NAMESPACE NAME='x'/></LOCALNAMESPACEPATH>";
    const std::string full = "<NAMESPACEPATH><HOST>h</HOST>" + local + "</NAMESPACEPATH>";
    RunCases({
        {"a class name, in the parser's namespace",
         "<VALUE.REFERENCE><CLASSNAME NAME='T_Disk'/></VALUE.REFERENCE>", "", "root/cimv2:T_Disk"},
        {"a local class path, in the namespace it names",
         "<VALUE.REFERENCE><LOCALCLASSPATH>" + local +
             "<CLASSNAME NAME='T_Disk'/></LOCALCLASSPATH></VALUE.REFERENCE>",
         "", "interop/x:T_Disk"},
        {"a class path, with its host",
         "<VALUE.REFERENCE><CLASSPATH>" + full +
             "<CLASSNAME NAME='T_Disk'/></CLASSPATH></VALUE.REFERENCE>",
         "", "//h/interop/x:T_Disk"},
        {"an instance path",
         "<VALUE.REFERENCE><INSTANCEPATH>" + full + name + "</INSTANCEPATH></VALUE.REFERENCE>", "",
         "//h/interop/x:T_Disk.DeviceID=\"d\""},
        {"a local instance path",
         "<VALUE.REFERENCE><LOCALINSTANCEPATH>" + local + name +
             "</LOCALINSTANCEPATH></VALUE.REFERENCE>",
         "", "interop/x:T_Disk.DeviceID=\"d\""},
        {"an instance name wins over a class name",
         "<VALUE.REFERENCE><CLASSNAME NAME='T_Uses'/>" + name + "</VALUE.REFERENCE>", "",
         "root/cimv2:T_Disk.DeviceID=\"d\""},
        {"an instance name holding a reference becomes that reference",
         Named("T_Uses", "<VALUE.REFERENCE><CLASSNAME NAME='T_Disk'/></VALUE.REFERENCE>"), "",
         "root/cimv2:T_Disk"},
        {"a key bound to a reference",
         Named("T_Disk", Binding("DeviceID", "<KEYVALUE>x</KEYVALUE>"
                                             "<VALUE.REFERENCE><CLASSNAME NAME='T_Disk'/>"
                                             "</VALUE.REFERENCE>")),
         "", "root/cimv2:T_Disk.DeviceID=\"root/cimv2:T_Disk\""},
    });
}

TEST(TStateNamespacePath, ReportsPathsWhosePartsAreMissingOrOutOfOrder) {
    RunCases({
        {"a local namespace path without a namespace",
         "<VALUE.REFERENCE><LOCALCLASSPATH><LOCALNAMESPACEPATH/><CLASSNAME NAME='T_Disk'/>"
         "</LOCALCLASSPATH></VALUE.REFERENCE>",
         kLine + "Unexpected at least 1 NAMESPACE element\n", "T_Disk"},
        {"a class name before the namespace path",
         "<VALUE.REFERENCE><CLASSPATH><CLASSNAME NAME='T_Disk'/></CLASSPATH></VALUE.REFERENCE>",
         kLine + "Unexpected element classname\n", ""},
        {"a namespace path that starts without its host",
         "<VALUE.REFERENCE><INSTANCEPATH><NAMESPACEPATH><LOCALNAMESPACEPATH/>"
         "</NAMESPACEPATH></INSTANCEPATH></VALUE.REFERENCE>",
         kLine + "Unexpected element localnamespacepath\n", ""},
        {"a third part of a namespace path",
         "<VALUE.REFERENCE><CLASSPATH><NAMESPACEPATH><HOST>h</HOST><LOCALNAMESPACEPATH>"
         "<NAMESPACE NAME='a'/></LOCALNAMESPACEPATH><HOST/></NAMESPACEPATH>"
         "<CLASSNAME NAME='T_Disk'/></CLASSPATH></VALUE.REFERENCE>",
         // The host's end closes the namespace path, and CLASSNAME reaches VALUE.REFERENCE,
         // which keeps the host and namespace read before.
         kLine + "Unexpected element host\n", "//h/a:T_Disk"},
    });
}

} // namespace
} // namespace NQRN20
