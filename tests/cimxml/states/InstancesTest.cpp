// Tests of the instance, property value, value, instance name, key binding, path and reference
// states, over whole small documents.
#include "support/SchemaCases.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

std::string Instance(const std::string& content, const std::string& className = "T_Base") {
    return "<VALUE.OBJECT><INSTANCE CLASSNAME='" + className + "'>" + content +
           "</INSTANCE></VALUE.OBJECT>";
}

TEST(TStateInstance, StoresEachPropertyValueConvertedToItsDeclaredType) {
    RunSchemaCases({
        {"values of each kind; the last of several stands",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE> a b </VALUE></PROPERTY>"
                  "<PROPERTY NAME='count' TYPE='uint32'><VALUE>1</VALUE><VALUE>\n 42\n</VALUE>"
                  "</PROPERTY>"
                  "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16'>"
                  "<VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE><VALUE>3</VALUE></VALUE.ARRAY>"
                  "</PROPERTY.ARRAY>"),
         "", "instance T_Base Name=' a b ' Count='42' Codes='1, 2, 3'\n"},
        {"a property without a value is null",
         Instance("<PROPERTY NAME='Count' TYPE='uint32'/>"
                  "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16' ARRAYSIZE='2'/>"),
         "", "instance T_Base\n"},
        {"entity references and an empty number",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>a&lt;b&amp;&#x41;</VALUE>"
                  "</PROPERTY><PROPERTY NAME='Count' TYPE='uint32'><VALUE></VALUE></PROPERTY>"),
         "", "instance T_Base Name='a<b&A'\n"},
        {"what a string's text holds",
         Instance("<PROPERTY NAME='Name' TYPE='string' EmbeddedObject='instance'><VALUE>"
                  "&lt;INSTANCE CLASSNAME='T_A'/&gt;</VALUE></PROPERTY>"
                  "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16' EmbeddedObject='object'/>"),
         "",
         "instance T_Base Name='<INSTANCE CLASSNAME='T_A'/>' embedded instance Count='5' "
         "Codes=null embedded object\n"},
        {"qualifiers with values before the properties and inside them are skipped whole",
         Instance("<QUALIFIER NAME='Key' TYPE='boolean'><VALUE>true</VALUE></QUALIFIER>"
                  "<PROPERTY NAME='Count' TYPE='uint32'><QUALIFIER NAME='Key' TYPE='boolean'>"
                  "<VALUE>true</VALUE></QUALIFIER><VALUE>3</VALUE><QUALIFIER NAME='X'/>"
                  "</PROPERTY>"),
         "", "instance T_Base Count='3'\n"},
    });
}

TEST(TStateInstance, ReportsPropertiesThatDoNotMatchTheClassAndGoesOn) {
    RunSchemaCases({
        {"a type other than the declared one, and none at all",
         Instance("<PROPERTY NAME='Count' TYPE='sint32'><VALUE>7</VALUE></PROPERTY>"
                  "<PROPERTY NAME='Index'><VALUE>8</VALUE></PROPERTY>"),
         kLine + "Property type != property declaration type\n" + kLine +
             "Property type != property declaration type\n",
         "instance T_Base Index='8' Count='7'\n"},
        {"a property and a property reference the class lacks, their values refused",
         Instance("<PROPERTY NAME='Size' TYPE='uint32'><VALUE>7</VALUE></PROPERTY>"
                  "<PROPERTY.REFERENCE NAME='Other'/>"
                  "<PROPERTY NAME='Count' TYPE='uint32'><VALUE>8</VALUE></PROPERTY>"),
         "3 TCIMXMLParser: Couldn't find property Size\n" + kLine +
             "Couldn't store property Other: not found\n",
         "instance T_Base Count='8'\n"},
        {"a date-time that is not one",
         Instance("<PROPERTY NAME='When' TYPE='datetime'>\n<VALUE>yesterday</VALUE></PROPERTY>"),
         "3 Invalid datetime found on line 2.  Defaulting the datetime to " +
             TCIMDateTime(1970, 1, 1, 0, 0, 0, 0, 0).ToUIString() + ".\n",
         "instance T_Base Count='5' When='19700101000000.000000+000'\n"},
        {"an unknown class, its properties skipped and the next instance loaded",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>x</VALUE></PROPERTY>", "T_None") +
             Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>y</VALUE></PROPERTY>"),
         "3 TCIMXMLParser: Couldn't find class T_None\n" + kLine +
             "CIM element holds no object: its class or instance was not created\n",
         "instance T_Base Name='y' Count='5'\n"},
        {"a value array holding a reference",
         Instance("<PROPERTY.ARRAY NAME='Codes' TYPE='uint16'><VALUE.ARRAY>"
                  "<VALUE.REFERENCE/></VALUE.ARRAY></PROPERTY.ARRAY>"),
         kLine + "Unexpected element value.reference\n", "instance T_Base Count='5' Codes=''\n"},
        {"a qualifier after the first property",
         Instance("<PROPERTY NAME='Count' TYPE='uint32'/><QUALIFIER NAME='Key'/>"),
         kLine + "Unexpected element qualifier\n", "instance T_Base\n"},
        // The inner property is taken as the instance's; the outer end tag is then out of place.
        {"a property inside a property",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>a</VALUE>"
                  "<PROPERTY NAME='Count' TYPE='uint32'><VALUE>7</VALUE></PROPERTY></PROPERTY>"),
         kLine + "Start and end element names don't match\nstatus 9\n", ""},
    });
}

TEST(TStateInstance, InQX518ModeDropsValuesOfTheWrongTypeWithoutAWord) {
    RunSchemaCases(
        {
            {"a type attribute is not checked",
             Instance("<PROPERTY NAME='Count' TYPE='string'><VALUE>7</VALUE></PROPERTY>"), "",
             "instance T_Base Count='7'\n"},
            {"a value that did not convert is a null of the declared type",
             Instance("<PROPERTY NAME='Count' TYPE='uint32'><VALUE>many</VALUE></PROPERTY>"),
             kLine + "Invalid value 'many' for type uint32\n", "instance T_Base\n"},
        },
        kQX518Mode);
}

TEST(TStateInstance, SwitchesTheCoreToTheParserConventionsForOneClassName) {
    for (const char* className : {"zkv_computersystem", "ZKV_ComputerSystem"}) {
        TOSSpecific::setQRNParser(false);
        RunSchemaCases({{className, Instance("", className), "", "instance ZKV_ComputerSystem\n"}});
        EXPECT_EQ(std::string(className) == "ZKV_ComputerSystem", TOSSpecific::getQRNParser());
    }
    TOSSpecific::setQRNParser(false);
}

// A case whose one instance, of T_Uses, refers through the value reference to the reference
// expected.
TSchemaCase Ref(const char* title, const std::string& valueReference, const std::string& log,
                const std::string& reference) {
    return {title,
            Instance("<PROPERTY.REFERENCE NAME='Ref'>" + valueReference + "</PROPERTY.REFERENCE>",
                     "T_Uses"),
            log, "instance T_Uses Ref='" + reference + "'\n"};
}

std::string Named(const std::string& className, const std::string& content) {
    return "<VALUE.REFERENCE><INSTANCENAME CLASSNAME='" + className + "'>" + content +
           "</INSTANCENAME></VALUE.REFERENCE>";
}

std::string Binding(const std::string& name, const std::string& content) {
    return "<KEYBINDING NAME='" + name + "'>" + content + "</KEYBINDING>";
}

TEST(TStateInstanceName, BindsKeysConvertedWithTheTypesTheClassDeclares) {
    RunSchemaCases({
        Ref("two bindings under the names written; the last of two key values stands",
            Named("T_Base",
                  Binding("name", "<KEYVALUE>a</KEYVALUE><KEYVALUE>d0</KEYVALUE>") +
                      Binding("Index", "<KEYVALUE VALUETYPE='string'>\n 7 \n</KEYVALUE>")),
            "", "root/cimv2:T_Base.Index=7,name=\"d0\""),
        Ref("a key inherited through an override without the qualifier",
            Named("T_Sub", Binding("Name", "<KEYVALUE>d2</KEYVALUE>")), "",
            "root/cimv2:T_Sub.Name=\"d2\""),
        Ref("a binding without a value binds the empty text", Named("T_Base", Binding("Name", "")),
            "", "root/cimv2:T_Base.Name=\"\""),
    });
}

TEST(TStateInstanceName, ReportsKeysItCannotBindAndGoesOn) {
    RunSchemaCases({
        Ref("a property the class lacks",
            Named("T_Base", Binding("Size", "<KEYVALUE>1</KEYVALUE>") +
                                Binding("Index", "<KEYVALUE>2</KEYVALUE>")),
            kLine + "Couldn't find property name Size in class T_Base\n",
            "root/cimv2:T_Base.Index=2"),
        Ref("a property that is not a key",
            Named("T_Base", Binding("Count", "<KEYVALUE>x</KEYVALUE>")),
            kLine + "Class T_Base doesn't have any key properties\n", "root/cimv2:T_Base"),
        Ref("an unnamed key value for a class without keys", Named("T_A", "<KEYVALUE>x</KEYVALUE>"),
            kLine + "Class T_A doesn't have any key properties\n", "root/cimv2:T_A"),
        Ref("a binding after an unnamed key value",
            Named("T_Base", "<KEYVALUE>x</KEYVALUE>" + Binding("Index", "")),
            kLine + "Unexpected element keybinding\n", "root/cimv2:T_Base.Name=\"x\""),
        Ref("a class the namespace does not hold",
            Named("T_None", Binding("Name", "<KEYVALUE>x</KEYVALUE>") + "<KEYVALUE>y</KEYVALUE>"),
            kLine + "Couldn't find class name T_None\n" + kLine +
                "No class to match the key against: Name\n" + kLine +
                "Unexpected element keyvalue\n",
            "root/cimv2:T_None"),
    });
}

TEST(TStateValueReference, BuildsClassAndInstanceReferencesFromEveryPathForm) {
    const std::string name = "<INSTANCENAME CLASSNAME='T_Base'>" +
                             Binding("Name", "<KEYVALUE>d</KEYVALUE>") + "</INSTANCENAME>";
    const std::string local = "<LOCALNAMESPACEPATH><NAMESPACE NAME='interop'/>"
                              "<NAMESPACE NAME='x'/></LOCALNAMESPACEPATH>";
    const std::string full = "<NAMESPACEPATH><HOST>h</HOST>" + local + "</NAMESPACEPATH>";
    RunSchemaCases({
        Ref("a local class path, in the namespace it names",
            "<VALUE.REFERENCE><LOCALCLASSPATH>" + local +
                "<CLASSNAME NAME='T_Base'/></LOCALCLASSPATH></VALUE.REFERENCE>",
            "", "interop/x:T_Base"),
        Ref("an instance path",
            "<VALUE.REFERENCE><INSTANCEPATH>" + full + name + "</INSTANCEPATH></VALUE.REFERENCE>",
            "", "//h/interop/x:T_Base.Name=\"d\""),
        Ref("a local instance path",
            "<VALUE.REFERENCE><LOCALINSTANCEPATH>" + local + name +
                "</LOCALINSTANCEPATH></VALUE.REFERENCE>",
            "", "interop/x:T_Base.Name=\"d\""),
        Ref("an instance name wins over a class name",
            "<VALUE.REFERENCE><CLASSNAME NAME='T_Uses'/>" + name + "</VALUE.REFERENCE>", "",
            "root/cimv2:T_Base.Name=\"d\""),
        Ref("an instance name holding a reference becomes that reference",
            Named("T_Uses", "<VALUE.REFERENCE><CLASSNAME NAME='T_Base'/></VALUE.REFERENCE>"), "",
            "root/cimv2:T_Base"),
        Ref("a key bound to a reference",
            Named("T_Base", Binding("Name", "<KEYVALUE>x</KEYVALUE><VALUE.REFERENCE>"
                                            "<CLASSNAME NAME='T_Base'/></VALUE.REFERENCE>")),
            "", "root/cimv2:T_Base.Name=\"root/cimv2:T_Base\""),
    });
}

TEST(TStateNamespacePath, ReportsPathsWhosePartsAreMissingOrOutOfOrder) {
    RunSchemaCases({
        Ref("a local namespace path without a namespace",
            "<VALUE.REFERENCE><LOCALCLASSPATH><LOCALNAMESPACEPATH/><CLASSNAME NAME='T_Base'/>"
            "</LOCALCLASSPATH></VALUE.REFERENCE>",
            kLine + "Unexpected at least 1 NAMESPACE element\n", "T_Base"),
        Ref("a namespace path that starts without its host",
            "<VALUE.REFERENCE><INSTANCEPATH><NAMESPACEPATH><LOCALNAMESPACEPATH/>"
            "</NAMESPACEPATH></INSTANCEPATH></VALUE.REFERENCE>",
            kLine + "Unexpected element localnamespacepath\n", ""),
        // The host's end closes the namespace path, and CLASSNAME reaches VALUE.REFERENCE, which
        // keeps the host and namespace read before.
        Ref("a third part of a namespace path",
            "<VALUE.REFERENCE><CLASSPATH><NAMESPACEPATH><HOST>h</HOST><LOCALNAMESPACEPATH>"
            "<NAMESPACE NAME='a'/></LOCALNAMESPACEPATH><HOST/></NAMESPACEPATH>"
            "<CLASSNAME NAME='T_Base'/></CLASSPATH></VALUE.REFERENCE>",
            kLine + "Unexpected element host\n", "//h/a:T_Base"),
    });
}

} // namespace
} // namespace NQRN20
