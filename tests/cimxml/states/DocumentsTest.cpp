// Tests of the document, declaration group, value object and message states over whole small
// documents: what is logged, collected and committed.
#include "support/SchemaCases.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

const char kKeyDeclaration[] = "<QUALIFIER.DECLARATION NAME='Q' TYPE='boolean'>"
                               "<SCOPE PROPERTY='true'/></QUALIFIER.DECLARATION>";
const char kQualifierQ[] = "qualifier Q boolean null scope 8 flavor 3\n";
const char kInstance[] = "<INSTANCE CLASSNAME='T_A'/>";

std::string Class(const std::string& name) {
    return "<CLASS NAME='" + name + "'/>";
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

std::string Declaration(const std::string& group, const std::string& content) {
    return "<CIM><DECLARATION><" + group + ">" + content + "</" + group + "></DECLARATION></CIM>";
}

TEST(TStateCIM, AcceptsAnyNumberOfDeclarationsAndMessages) {
    RunSchemaCases({
        {"several declarations and messages",
         "<CIM><DECLARATION><DECLGROUP><VALUE.OBJECT>" + Class("A") +
             "</VALUE.OBJECT></DECLGROUP></DECLARATION><MESSAGE>" +
             Request("CreateClass", "NewClass", Class("B")) +
             "</MESSAGE><DECLARATION><DECLGROUP.WITHNAME><VALUE.NAMEDOBJECT>" + Class("C") +
             "</VALUE.NAMEDOBJECT></DECLGROUP.WITHNAME></DECLARATION></CIM>",
         "", "class A\nclass C\ncommitted class B\n"},
        {"something else in CIM", "<CIM><FOO/></CIM>", kLine + "Unexpected element foo\n", ""},
    });
}

TEST(TStateDeclGroup, TakesAPathThenQualifierDeclarationsThenObjects) {
    const std::string path = "<LOCALNAMESPACEPATH><NAMESPACE NAME='elsewhere'/>"
                             "</LOCALNAMESPACEPATH>";
    RunSchemaCases({
        {"the whole content model, the path having no effect",
         path + kKeyDeclaration + "<VALUE.OBJECT>" + Class("A") + "</VALUE.OBJECT><VALUE.OBJECT>" +
             kInstance + "</VALUE.OBJECT>",
         "", kQualifierQ + std::string("class A\ninstance T_A\n")},
        {"a qualifier declaration after an object",
         "<VALUE.OBJECT>" + Class("A") + "</VALUE.OBJECT>" + kKeyDeclaration,
         // Its SCOPE is offered to the group too, and the end of SCOPE then closes the group.
         kLine + "Unexpected element qualifier.declaration\n" + kLine +
             "Unexpected element scope\n" + kLine +
             "Unexpected element outside the document: cim; it and what follows are ignored\n",
         "class A\n"},
        {"objects of a group with paths",
         Declaration("DECLGROUP.WITHPATH",
                     "<VALUE.OBJECTWITHLOCALPATH><LOCALCLASSPATH>" + path +
                         "<CLASSNAME NAME='A'/></LOCALCLASSPATH>" + Class("A") +
                         "</VALUE.OBJECTWITHLOCALPATH><VALUE.OBJECTWITHPATH><CLASSPATH>"
                         "<NAMESPACEPATH><HOST>h</HOST>" +
                         path + "</NAMESPACEPATH><CLASSNAME NAME='B'/></CLASSPATH>" + Class("B") +
                         "</VALUE.OBJECTWITHPATH>"),
         "", "class A\nclass B\n"},
    });
}

TEST(TStateValueObject, CommitsAndCollectsItsObjectOrReportsItsAbsence) {
    RunSchemaCases({
        {"a class defined twice is committed and collected once",
         "<VALUE.OBJECT>" + Class("A") + "</VALUE.OBJECT><VALUE.OBJECT>" + Class("a") +
             "</VALUE.OBJECT>",
         "", "class A\n"},
        {"named objects: a class, an instance missing, an instance",
         Declaration("DECLGROUP.WITHNAME",
                     "<VALUE.NAMEDOBJECT>" + Class("A") +
                         "</VALUE.NAMEDOBJECT><VALUE.NAMEDOBJECT><INSTANCENAME CLASSNAME='T_A'/>"
                         "</VALUE.NAMEDOBJECT><VALUE.NAMEDOBJECT><INSTANCENAME CLASSNAME='T_A'/>" +
                         kInstance + "</VALUE.NAMEDOBJECT>"),
         kLine + "CIM element syntax error\n", "class A\ninstance T_A\n"},
        {"a class path followed by an instance",
         Declaration("DECLGROUP.WITHPATH",
                     "<VALUE.OBJECTWITHPATH><CLASSPATH><NAMESPACEPATH><HOST>h</HOST>"
                     "<LOCALNAMESPACEPATH><NAMESPACE NAME='r'/></LOCALNAMESPACEPATH>"
                     "</NAMESPACEPATH><CLASSNAME NAME='T_A'/></CLASSPATH>" +
                         std::string(kInstance) + "</VALUE.OBJECTWITHPATH>"),
         kLine + "Unexpected element instance\n" + kLine + "CIM element syntax error\n", ""},
    });
}

TEST(TStateMessage, CommitsTheObjectsOfCreateRequestsWithoutCollectingThem) {
    RunSchemaCases({
        {"CreateInstance, under both spellings",
         Message(Request("CreateInstance", "NewInstance", kInstance) +
                 Request("Create Instance", "NewInstance", kInstance)),
         "", "committed instances 2\n"},
        {"an unknown protocol version, an unknown method and parameter",
         "<CIM><MESSAGE PROTOCOLVERSION='1.1'>" + Request("createclass", "Class", Class("A")) +
             "</MESSAGE></CIM>",
         kLine + "Unknown protocol version\n" + kLine +
             "Unexpected IMethodCall method createclass\n" + kLine +
             "Unexpected IParamValue parameter name\n",
         "committed class A\n"},
        {"a parameter before the namespace path",
         Message("<SIMPLEREQ><IMETHODCALL NAME='CreateClass'><IPARAMVALUE NAME='NewClass'/>"
                 "</IMETHODCALL></SIMPLEREQ>"),
         kLine + "Unexpected element iparamvalue\n", ""},
        {"a parameter without an object, and one with two",
         Message(Request("CreateClass", "NewClass", "") +
                 Request("CreateClass", "NewClass", Class("A") + Class("B"))),
         kLine + "CIM element syntax error\n" + kLine + "Unexpected element class\n",
         "committed class A\n"},
        {"multiple requests of one and of two",
         Message("<MULTIREQ>" + Request("CreateClass", "NewClass", Class("A")) +
                 "</MULTIREQ></MESSAGE><MESSAGE ID='2' PROTOCOLVERSION='1.0'><MULTIREQ>" +
                 Request("CreateClass", "NewClass", Class("B")) +
                 Request("CreateClass", "NewClass", Class("C")) + "</MULTIREQ>"),
         kLine + "Invalid MULTIREQ\n", "committed class A\ncommitted class B\ncommitted class C\n"},
    });
}

TEST(TStateSimpleRsp, CollectsAReturnedClassAndCommitsOtherReturnedObjects) {
    RunSchemaCases({
        {"a second class", Response("<IRETURNVALUE>" + Class("A") + Class("B") + "</IRETURNVALUE>"),
         kLine + "Unexpected element class\n", "class A\n"},
        {"a named instance and a qualifier declaration",
         Response("<IRETURNVALUE><VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME='T_A'/>" +
                  std::string(kInstance) + "</VALUE.NAMEDINSTANCE></IRETURNVALUE><IRETURNVALUE>" +
                  kKeyDeclaration + "</IRETURNVALUE>"),
         "", kQualifierQ + std::string("committed instances 1\n")},
        {"an empty return value", Response("<IRETURNVALUE/>"), kLine + "CIM element syntax error\n",
         ""},
        {"an error holding an instance",
         Response("<ERROR CODE='6'>" + std::string(kInstance) + "</ERROR>"),
         kLine + "Unexpected element instance\n", ""},
        {"an extrinsic method response",
         Message("<SIMPLERSP><METHODRESPONSE NAME='M'/></SIMPLERSP>"),
         kLine + "Unexpected element methodresponse\n", ""},
    });
}

} // namespace
} // namespace NQRN20
