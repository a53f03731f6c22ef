// Tests of the document, declaration group, value object and message states over whole small
// documents: what is logged, collected and committed.
#include "support/Outcome.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

const std::string kLine = "3 CIM-XML Parser line 1:";
const char kKeyDeclaration[] = "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'>"
                               "<SCOPE PROPERTY='true'/></QUALIFIER.DECLARATION>";

std::string Class(const std::string& name) {
    return "<CLASS NAME='" + name + "'/>";
}

std::string Instance(const std::string& className) {
    return "<INSTANCE CLASSNAME='" + className + "'/>";
}

std::string Request(const std::string& method, const std::string& parameter,
                    const std::string& object) {
    return "<SIMPLEREQ><IMETHODCALL NAME='" + method +
           "'><LOCALNAMESPACEPATH><NAMESPACE NAME='root'/></LOCALNAMESPACEPATH>"
           "<IPARAMVALUE NAME='" +
           parameter + "'>" + object + "</IPARAMVALUE></IMETHODCALL></SIMPLEREQ>";
}

std::string Message(const std::string& content) {
    return "<CIM><MESSAGE ID='1' PROTOCOLVERSION='1.0'>" + content + "</MESSAGE></CIM>";
}

std::string Response(const std::string& returnValues) {
    return Message("<SIMPLERSP><IMETHODRESPONSE NAME='GetClass'>" + returnValues +
                   "</IMETHODRESPONSE></SIMPLERSP>");
}

struct TCase {
    const char* m_title;
    std::string m_document;
    std::string m_log;
    std::string m_outcome;
};

// Each document is loaded into a namespace that already holds the class X, so that instances
// can be created.
void RunCases(const std::vector<TCase>& cases) {
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.m_title);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        ASSERT_EQ("", ParseDocument(cimNamespace, InValueObjects({Class("X")})).m_log);
        const TParseResult parsed = ParseDocument(cimNamespace, c.m_document);
        EXPECT_EQ(c.m_log, parsed.m_log);
        EXPECT_EQ(0u, parsed.m_status);
        EXPECT_EQ(c.m_outcome, Outcome(cimNamespace, parsed));
    }
}

TEST(TStateCIM, AcceptsDeclarationsAndMessagesWhateverTheVersions) {
    RunCases({
        {"no versions", "<CIM><DECLARATION><DECLGROUP/></DECLARATION></CIM>", "",
         "collected -, committed X; instances collected 0 of 0"},
        {"unknown versions, upper and lower case names",
         "<cim CIMVERSION='9' DTDVERSION='x'><Declaration><DECLGROUP>"
         "<value.object>" +
             Class("A") + "</value.object></DECLGROUP></Declaration></cim>",
         "", "collected A, committed X A; instances collected 0 of 0"},
        {"several declarations and messages",
         "<CIM><DECLARATION><DECLGROUP><VALUE.OBJECT>" + Class("A") +
             "</VALUE.OBJECT></DECLGROUP></DECLARATION><MESSAGE>" +
             Request("CreateClass", "NewClass", Class("B")) +
             "</MESSAGE><DECLARATION><DECLGROUP.WITHNAME><VALUE.NAMEDOBJECT>" + Class("C") +
             "</VALUE.NAMEDOBJECT></DECLGROUP.WITHNAME></DECLARATION></CIM>",
         "", "collected A C, committed X A B C; instances collected 0 of 0"},
        {"something else in CIM", "<CIM><FOO/></CIM>", kLine + "Unexpected element foo\n",
         "collected -, committed X; instances collected 0 of 0"},
    });
}

TEST(TStateDeclGroup, TakesAPathThenQualifierDeclarationsThenObjects) {
    const std::string path = "<LOCALNAMESPACEPATH><NAMESPACE NAME='elsewhere'/>"
                             "</LOCALNAMESPACEPATH>";
    RunCases({
        {"the whole content model, the path having no effect",
         InDeclGroup(path + kKeyDeclaration + "<VALUE.OBJECT>" + Class("A") +
                     "</VALUE.OBJECT><VALUE.OBJECT>" + Instance("X") + "</VALUE.OBJECT>"),
         "", "collected A, committed X A; instances collected 1 of 1"},
        {"objects first", InValueObjects({Class("A"), Class("B"), Class("C")}), "",
         "collected A B C, committed X A B C; instances collected 0 of 0"},
        {"a qualifier declaration after an object",
         InDeclGroup("<VALUE.OBJECT>" + Class("A") + "</VALUE.OBJECT>" + kKeyDeclaration),
         // Its SCOPE is offered to the group too, and the end of SCOPE then closes the group.
         kLine + "Unexpected element qualifier.declaration\n" + kLine +
             "Unexpected element scope\n" + kLine +
             "Unexpected element outside the document: cim; it and what follows are ignored\n",
         "collected A, committed X A; instances collected 0 of 0"},
        {"a named object in an unnamed group", InDeclGroup("<VALUE.NAMEDOBJECT/>"),
         kLine + "Unexpected element value.namedobject\n",
         "collected -, committed X; instances collected 0 of 0"},
        {"objects of a group with paths",
         "<CIM><DECLARATION><DECLGROUP.WITHPATH><VALUE.OBJECTWITHLOCALPATH><LOCALCLASSPATH>" +
             path + "<CLASSNAME NAME='A'/></LOCALCLASSPATH>" + Class("A") +
             "</VALUE.OBJECTWITHLOCALPATH><VALUE.OBJECTWITHPATH><CLASSPATH><NAMESPACEPATH>"
             "<HOST>h</HOST>" +
             path + "</NAMESPACEPATH><CLASSNAME NAME='B'/></CLASSPATH>" + Class("B") +
             "</VALUE.OBJECTWITHPATH></DECLGROUP.WITHPATH></DECLARATION></CIM>",
         "", "collected A B, committed X A B; instances collected 0 of 0"},
    });
}

TEST(TStateValueObject, CommitsAndCollectsItsObjectOrReportsItsAbsence) {
    RunCases({
        {"a class and an instance", InValueObjects({Class("A"), Instance("X")}), "",
         "collected A, committed X A; instances collected 1 of 1"},
        {"an empty value object", InDeclGroup("<VALUE.OBJECT/>"),
         kLine + "CIM element syntax error\n",
         "collected -, committed X; instances collected 0 of 0"},
        {"a second object", InValueObjects({Class("A") + Instance("X")}),
         kLine + "Unexpected element instance\n",
         "collected A, committed X A; instances collected 0 of 0"},
        {"a class defined twice is committed and collected once",
         InValueObjects({Class("A"), Class("a")}), "",
         "collected A, committed X A; instances collected 0 of 0"},
        {"a class whose superclass is unknown",
         InValueObjects({"<CLASS NAME='A' SUPERCLASS='Nope'/>", Class("B")}),
         "3 TCIMXMLParser: Couldn't find class Nope\n" + kLine +
             "CIM element holds no object: its class or instance was not created\n",
         "collected B, committed X B; instances collected 0 of 0"},
        {"a named object holding a class",
         "<CIM><DECLARATION><DECLGROUP.WITHNAME><VALUE.NAMEDOBJECT>" + Class("A") +
             "</VALUE.NAMEDOBJECT></DECLGROUP.WITHNAME></DECLARATION></CIM>",
         "", "collected A, committed X A; instances collected 0 of 0"},
        {"a named object whose instance is missing",
         "<CIM><DECLARATION><DECLGROUP.WITHNAME><VALUE.NAMEDOBJECT>"
         "<INSTANCENAME CLASSNAME='X'/></VALUE.NAMEDOBJECT></DECLGROUP.WITHNAME>"
         "</DECLARATION></CIM>",
         kLine + "CIM element syntax error\n",
         "collected -, committed X; instances collected 0 of 0"},
        {"a named object with its instance",
         "<CIM><DECLARATION><DECLGROUP.WITHNAME><VALUE.NAMEDOBJECT>"
         "<INSTANCENAME CLASSNAME='X'/>" +
             Instance("X") + "</VALUE.NAMEDOBJECT></DECLGROUP.WITHNAME></DECLARATION></CIM>",
         "", "collected -, committed X; instances collected 1 of 1"},
        {"a class path followed by an instance",
         "<CIM><DECLARATION><DECLGROUP.WITHPATH><VALUE.OBJECTWITHPATH><CLASSPATH>"
         "<NAMESPACEPATH><HOST>h</HOST><LOCALNAMESPACEPATH><NAMESPACE NAME='r'/>"
         "</LOCALNAMESPACEPATH></NAMESPACEPATH><CLASSNAME NAME='X'/></CLASSPATH>" +
             Instance("X") + "</VALUE.OBJECTWITHPATH></DECLGROUP.WITHPATH></DECLARATION></CIM>",
         kLine + "Unexpected element instance\n" + kLine + "CIM element syntax error\n",
         "collected -, committed X; instances collected 0 of 0"},
    });
}

TEST(TStateMessage, CommitsTheObjectsOfCreateRequestsWithoutCollectingThem) {
    RunCases({
        {"CreateClass", Message(Request("CreateClass", "NewClass", Class("A"))), "",
         "collected -, committed X A; instances collected 0 of 0"},
        {"CreateInstance, under both spellings",
         Message(Request("CreateInstance", "NewInstance", Instance("X")) +
                 Request("Create Instance", "NewInstance", Instance("X"))),
         "", "collected -, committed X; instances collected 0 of 2"},
        {"method and parameter names are not compared with each other or the object",
         Message(Request("CreateClass", "NewInstance", Instance("X")) +
                 Request("CreateInstance", "NewClass", Class("A"))),
         "", "collected -, committed X A; instances collected 0 of 1"},
        {"an unknown protocol version, an unknown method and parameter",
         "<CIM><MESSAGE PROTOCOLVERSION='1.1'>" + Request("createclass", "Class", Class("A")) +
             "</MESSAGE></CIM>",
         kLine + "Unknown protocol version\n" + kLine +
             "Unexpected IMethodCall method createclass\n" + kLine +
             "Unexpected IParamValue parameter name\n",
         "collected -, committed X A; instances collected 0 of 0"},
        {"a method without a name",
         Message("<SIMPLEREQ><IMETHODCALL><LOCALNAMESPACEPATH><NAMESPACE NAME='r'/>"
                 "</LOCALNAMESPACEPATH></IMETHODCALL></SIMPLEREQ>"),
         kLine + "Unexpected IMethodCall method \n",
         "collected -, committed X; instances collected 0 of 0"},
        {"a parameter before the namespace path",
         Message("<SIMPLEREQ><IMETHODCALL NAME='CreateClass'><IPARAMVALUE NAME='NewClass'/>"
                 "</IMETHODCALL></SIMPLEREQ>"),
         kLine + "Unexpected element iparamvalue\n",
         "collected -, committed X; instances collected 0 of 0"},
        {"a parameter without an object, and one with two",
         Message(Request("CreateClass", "NewClass", "") +
                 Request("CreateClass", "NewClass", Class("A") + Class("B"))),
         kLine + "CIM element syntax error\n" + kLine + "Unexpected element class\n",
         "collected -, committed X A; instances collected 0 of 0"},
        {"a multiple request of one request",
         Message("<MULTIREQ>" + Request("CreateClass", "NewClass", Class("A")) + "</MULTIREQ>"),
         kLine + "Invalid MULTIREQ\n", "collected -, committed X A; instances collected 0 of 0"},
        {"a multiple request of two",
         Message("<MULTIREQ>" + Request("CreateClass", "NewClass", Class("A")) +
                 Request("CreateClass", "NewClass", Class("B")) + "</MULTIREQ>"),
         "", "collected -, committed X A B; instances collected 0 of 0"},
    });
}

TEST(TStateSimpleRsp, CollectsAReturnedClassAndCommitsOtherReturnedObjects) {
    RunCases({
        {"a class", Response("<IRETURNVALUE>" + Class("A") + "</IRETURNVALUE>"), "",
         "collected A, committed X A; instances collected 0 of 0"},
        {"a second class", Response("<IRETURNVALUE>" + Class("A") + Class("B") + "</IRETURNVALUE>"),
         kLine + "Unexpected element class\n",
         "collected A, committed X A; instances collected 0 of 0"},
        {"a named instance and a qualifier declaration",
         Response("<IRETURNVALUE><VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME='X'/>" +
                  Instance("X") + "</VALUE.NAMEDINSTANCE></IRETURNVALUE><IRETURNVALUE>" +
                  kKeyDeclaration + "</IRETURNVALUE>"),
         "", "collected -, committed X; instances collected 0 of 1"},
        {"an error, then a return value",
         Response("<ERROR CODE='6' DESCRIPTION='x'/><IRETURNVALUE>" + Class("A") +
                  "</IRETURNVALUE>"),
         "", "collected A, committed X A; instances collected 0 of 0"},
        {"an empty return value", Response("<IRETURNVALUE/>"), kLine + "CIM element syntax error\n",
         "collected -, committed X; instances collected 0 of 0"},
        {"an error holding an instance", Response("<ERROR CODE='6'>" + Instance("X") + "</ERROR>"),
         kLine + "Unexpected element instance\n",
         "collected -, committed X; instances collected 0 of 0"},
        {"an extrinsic method response",
         Message("<SIMPLERSP><METHODRESPONSE NAME='M'/></SIMPLERSP>"),
         kLine + "Unexpected element methodresponse\n",
         "collected -, committed X; instances collected 0 of 0"},
    });
}

} // namespace
} // namespace NQRN20
