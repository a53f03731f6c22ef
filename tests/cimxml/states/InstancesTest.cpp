// Tests of the instance, property value and value states, over whole small documents.
#include "support/SchemaCases.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

const char kSchema[] = "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'><SCOPE PROPERTY='true'/>"
                       "<VALUE>false</VALUE></QUALIFIER.DECLARATION>"
                       "<VALUE.OBJECT><CLASS NAME='T_Other'/></VALUE.OBJECT>"
                       "<VALUE.OBJECT><CLASS NAME='T_Base'>"
                       "<PROPERTY NAME='Name' TYPE='string'><QUALIFIER NAME='Key' TYPE='boolean'>"
                       "<VALUE>true</VALUE></QUALIFIER></PROPERTY>"
                       "<PROPERTY NAME='Count' TYPE='uint32'><VALUE>5</VALUE></PROPERTY>"
                       "<PROPERTY NAME='When' TYPE='datetime'/>"
                       "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16'/>"
                       "<PROPERTY.REFERENCE NAME='Peer' REFERENCECLASS='T_Other'/>"
                       "</CLASS></VALUE.OBJECT>"
                       "<VALUE.OBJECT><CLASS NAME='ZKV_ComputerSystem'/></VALUE.OBJECT>";

// The properties of an instance in class order, null values shown as "null".
std::string Describe(const boost::shared_ptr<ICIMInstance>& instance) {
    std::string description = instance->GetClass(TCIMOptions())->GetName(TCIMOptions());
    std::vector<boost::shared_ptr<ICIMProperty>> properties;
    instance->EnumProperties(TAddToVectorCallback<ICIMProperty>(properties), TCIMOptions());
    for (const auto& property : properties) {
        const TCIMValue& value = property->GetValue(TCIMOptions());
        description += " " + property->GetName(TCIMOptions()) + "=" +
                       (value.IsNull() ? "null" : "'" + value.ToString() + "'") +
                       DescribeEmbeddedObject(property->GetEmbeddedObject(TCIMOptions()));
    }
    return description;
}

struct TLoaded {
    std::string m_log;
    uint32_t m_status;
    std::string m_instances; // Describe() of each collected instance, one a line
};

TLoaded LoadInstances(const std::string& instances, EMode mode = kDefaultMode) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    const TParseResult schema = ParseDocument(cimNamespace, InDeclGroup(kSchema));
    EXPECT_EQ("", schema.m_log);
    const TParseResult parsed = ParseDocument(cimNamespace, InDeclGroup(instances), mode);
    std::string described;
    for (const auto& instance : parsed.m_instances) {
        described += Describe(instance) + "\n";
    }
    return {parsed.m_log, parsed.m_status, described};
}

std::string Instance(const std::string& content, const char* className = "T_Base") {
    return std::string("<VALUE.OBJECT><INSTANCE CLASSNAME='") + className + "'>" + content +
           "</INSTANCE></VALUE.OBJECT>";
}

struct TCase {
    const char* m_title;
    std::string m_document;
    std::string m_log;
    std::string m_instances;
};

void RunCases(const std::vector<TCase>& cases, EMode mode = kDefaultMode) {
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.m_title);
        const TLoaded loaded = LoadInstances(c.m_document, mode);
        EXPECT_EQ(c.m_log, loaded.m_log);
        EXPECT_EQ(0u, loaded.m_status);
        EXPECT_EQ(c.m_instances, loaded.m_instances);
    }
}

const char kDefaults[] = " When=null Codes=null Peer=null\n";

TEST(TStateInstance, StoresEachPropertyValueConvertedToItsDeclaredType) {
    RunCases({
        {"values of each kind",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE> a b </VALUE></PROPERTY>"
                  "<PROPERTY NAME='count' TYPE='uint32'><VALUE>\n 42\n</VALUE></PROPERTY>"
                  "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16'>"
                  "<VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE><VALUE>3</VALUE></VALUE.ARRAY>"
                  "</PROPERTY.ARRAY>"),
         "", "T_Base Name=' a b ' Count='42' When=null Codes='1, 2, 3' Peer=null\n"},
        {"a class default stays where no property is given",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>a</VALUE></PROPERTY>"), "",
         std::string("T_Base Name='a' Count='5'") + kDefaults},
        {"a property without a value is null",
         Instance("<PROPERTY NAME='Count' TYPE='uint32'/>"
                  "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16' ARRAYSIZE='2'/>"),
         "", "T_Base Name=null Count=null" + std::string(kDefaults)},
        {"entity references and an empty string",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>a&lt;b&amp;&#x41;</VALUE>"
                  "</PROPERTY><PROPERTY NAME='Count' TYPE='uint32'><VALUE></VALUE></PROPERTY>"),
         "", "T_Base Name='a<b&A' Count=null" + std::string(kDefaults)},
        {"what a string's text holds",
         Instance("<PROPERTY NAME='Name' TYPE='string' EmbeddedObject='instance'><VALUE>"
                  "&lt;INSTANCE CLASSNAME='T_Other'/&gt;</VALUE></PROPERTY>"
                  "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16' EmbeddedObject='object'/>"),
         "",
         "T_Base Name='<INSTANCE CLASSNAME='T_Other'/>' embedded instance Count='5' When=null "
         "Codes=null embedded object Peer=null\n"},
        {"the last of several values stands",
         Instance("<PROPERTY NAME='Count' TYPE='uint32'><VALUE>1</VALUE><VALUE>2</VALUE>"
                  "</PROPERTY>"),
         "", "T_Base Name=null Count='2'" + std::string(kDefaults)},
    });
}

TEST(TStateInstance, ReportsPropertiesThatDoNotMatchTheClassAndGoesOn) {
    RunCases({
        {"a type other than the declared one",
         Instance("<PROPERTY NAME='Count' TYPE='sint32'><VALUE>7</VALUE></PROPERTY>"),
         "3 CIM-XML Parser line 1:Property type != property declaration type\n",
         "T_Base Name=null Count='7'" + std::string(kDefaults)},
        {"no type at all", Instance("<PROPERTY NAME='Count'><VALUE>7</VALUE></PROPERTY>"),
         "3 CIM-XML Parser line 1:Property type != property declaration type\n",
         "T_Base Name=null Count='7'" + std::string(kDefaults)},
        {"a property the class lacks, and its value refused",
         Instance("<PROPERTY NAME='Size' TYPE='uint32'><VALUE>7</VALUE></PROPERTY>"
                  "<PROPERTY NAME='Count' TYPE='uint32'><VALUE>8</VALUE></PROPERTY>"),
         "3 TCIMXMLParser: Couldn't find property Size\n",
         "T_Base Name=null Count='8'" + std::string(kDefaults)},
        {"text that is not a number",
         Instance("<PROPERTY NAME='Count' TYPE='uint32'><VALUE>many</VALUE></PROPERTY>"),
         "3 CIM-XML Parser line 1:Invalid value 'many' for type uint32\n",
         "T_Base Name=null Count=null" + std::string(kDefaults)},
        {"a date-time that is not one",
         Instance("<PROPERTY NAME='When' TYPE='datetime'>\n<VALUE>yesterday</VALUE></PROPERTY>"),
         "3 Invalid datetime found on line 2.  Defaulting the datetime to " +
             TCIMDateTime(1970, 1, 1, 0, 0, 0, 0, 0).ToUIString() + ".\n",
         "T_Base Name=null Count='5' When='19700101000000.000000+000' Codes=null Peer=null\n"},
        {"an unknown class, its properties skipped and the next instance loaded",
         Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>x</VALUE></PROPERTY>", "T_None") +
             Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>y</VALUE></PROPERTY>"),
         "3 TCIMXMLParser: Couldn't find class T_None\n"
         "3 CIM-XML Parser line 1:CIM element holds no object: its class or instance was not "
         "created\n",
         "T_Base Name='y' Count='5'" + std::string(kDefaults)},
        {"a value array holding a reference",
         Instance("<PROPERTY.ARRAY NAME='Codes' TYPE='uint16'><VALUE.ARRAY>"
                  "<VALUE.REFERENCE/></VALUE.ARRAY></PROPERTY.ARRAY>"),
         "3 CIM-XML Parser line 1:Unexpected element value.reference\n",
         "T_Base Name=null Count='5' When=null Codes='' Peer=null\n"},
    });
}

TEST(TStateInstance, SkipsQualifiersOfInstancesAndTheirPropertiesWhole) {
    RunCases({
        {"qualifiers with values before the properties and inside them",
         Instance("<QUALIFIER NAME='Key' TYPE='boolean'><VALUE>true</VALUE></QUALIFIER>"
                  "<PROPERTY NAME='Count' TYPE='uint32'><QUALIFIER NAME='Key' TYPE='boolean'>"
                  "<VALUE>true</VALUE></QUALIFIER><VALUE>3</VALUE><QUALIFIER NAME='X'/>"
                  "</PROPERTY>"),
         "", "T_Base Name=null Count='3'" + std::string(kDefaults)},
        {"a qualifier after the first property",
         Instance("<PROPERTY NAME='Count' TYPE='uint32'/><QUALIFIER NAME='Key'/>"),
         "3 CIM-XML Parser line 1:Unexpected element qualifier\n",
         "T_Base Name=null Count=null" + std::string(kDefaults)},
    });
}

TEST(TStateInstance, InQX518ModeDropsValuesOfTheWrongTypeWithoutAWord) {
    RunCases(
        {
            {"a type attribute is not checked",
             Instance("<PROPERTY NAME='Count' TYPE='string'><VALUE>7</VALUE></PROPERTY>"), "",
             "T_Base Name=null Count='7'" + std::string(kDefaults)},
            {"a value that did not convert is a null of the declared type",
             Instance("<PROPERTY NAME='Count' TYPE='uint32'><VALUE>many</VALUE></PROPERTY>"),
             "3 CIM-XML Parser line 1:Invalid value 'many' for type uint32\n",
             "T_Base Name=null Count=null" + std::string(kDefaults)},
        },
        kQX518Mode);
}

TEST(TStateInstance, EndsAPropertyEarlyWhenAnotherPropertyStartsInsideIt) {
    const TLoaded loaded = LoadInstances(
        Instance("<PROPERTY NAME='Name' TYPE='string'><VALUE>a</VALUE>"
                 "<PROPERTY NAME='Count' TYPE='uint32'><VALUE>7</VALUE></PROPERTY></PROPERTY>"));
    // The inner property is taken as the instance's; the outer end tag is then out of place.
    EXPECT_EQ("3 CIM-XML Parser line 1:Start and end element names don't match\n", loaded.m_log);
    EXPECT_EQ(uint32_t(kQRNStatusParseError), loaded.m_status);
}

TEST(TStateInstance, SwitchesTheCoreToTheParserConventionsForOneClassName) {
    for (const char* className : {"zkv_computersystem", "ZKV_ComputerSystem"}) {
        SCOPED_TRACE(className);
        TOSSpecific::setQRNParser(false);
        LoadInstances(Instance("", className));
        EXPECT_EQ(std::string(className) == "ZKV_ComputerSystem", TOSSpecific::getQRNParser());
    }
    TOSSpecific::setQRNParser(false);
}

TEST(TStateInstance, StoresReferencesByInstanceNameWithKeysOfTheDeclaredType) {
    RunCases({
        {"a reference to an instance name",
         Instance("<PROPERTY.REFERENCE NAME='Peer'><VALUE.REFERENCE>"
                  "<INSTANCENAME CLASSNAME='T_Base'><KEYBINDING NAME='name'>"
                  "<KEYVALUE VALUETYPE='numeric' TYPE='uint8'>\n 7 \n</KEYVALUE></KEYBINDING>"
                  "</INSTANCENAME></VALUE.REFERENCE></PROPERTY.REFERENCE>"),
         "",
         "T_Base Name=null Count='5' When=null Codes=null Peer='"
         "root/cimv2:T_Base.name=\"\n 7 \n\"'\n"},
        {"a property reference the class lacks", Instance("<PROPERTY.REFERENCE NAME='Other'/>"),
         "3 CIM-XML Parser line 1:Couldn't store property Other: not found\n",
         "T_Base Name=null Count='5'" + std::string(kDefaults)},
    });
}

} // namespace
} // namespace NQRN20
