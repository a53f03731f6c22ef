// Tests of the method and parameter declaration states over whole small documents.
#include "support/SchemaCases.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

const std::string kLine = "3 CIM-XML Parser line 1:";

std::string MethodRun(const std::string& content) {
    return ClassB("<METHOD NAME='Run' TYPE='uint32'>" + content + "</METHOD>");
}

TEST(TStateMethod, DeclaresParametersOfEachKind) {
    RunSchemaCases({
        {"each kind, qualifiers between and after; references whatever their type says",
         MethodRun("<QUALIFIER NAME='Description' TYPE='string'><VALUE>r</VALUE></QUALIFIER>"
                   "<PARAMETER NAME='A' TYPE='string'><QUALIFIER NAME='Description'/>"
                   "</PARAMETER><QUALIFIER NAME='Key'/>"
                   "<PARAMETER.REFERENCE NAME='R' REFERENCECLASS='T_A' TYPE='string'/>"
                   "<PARAMETER.ARRAY NAME='L' TYPE='uint16' ARRAYSIZE='4'/>"
                   "<PARAMETER.REFARRAY NAME='RL' REFERENCECLASS='T_A'/>"
                   "<QUALIFIER NAME='Key' TYPE='boolean'><VALUE>true</VALUE></QUALIFIER>"),
         "",
         "class T_B\n"
         "  method Run uint32 [Description=string 'r' flavor 3, Key=boolean 'true' flavor 3]\n"
         "    parameter A string [Description=string null flavor 3]\n"
         "    parameter R reference\n"
         "    parameter L uint16\n"
         "    parameter RL reference\n"},
        {"values are parsed and go nowhere; with one, the reference class is not looked up",
         MethodRun("<PARAMETER NAME='A' TYPE='uint8'><VALUE>1</VALUE><VALUE.ARRAY/></PARAMETER>"
                   "<PARAMETER.ARRAY NAME='L' TYPE='uint8'><VALUE.ARRAY><VALUE>2</VALUE>"
                   "</VALUE.ARRAY></PARAMETER.ARRAY>"
                   "<PARAMETER.REFERENCE NAME='R' REFERENCECLASS='T_None'><VALUE.ARRAY/>"
                   "</PARAMETER.REFERENCE>"),
         "",
         "class T_B\n  method Run uint32\n    parameter A uint8\n    parameter L uint8\n"
         "    parameter R reference\n"},
        {"what a string parameter's text holds",
         MethodRun("<PARAMETER NAME='A' TYPE='string' EmbeddedObject='object'/>"
                   "<PARAMETER.ARRAY NAME='L' TYPE='string' EmbeddedObject='instance'/>"),
         "",
         "class T_B\n  method Run uint32\n    parameter A string embedded object\n"
         "    parameter L string embedded instance\n"},
        {"no reference class looks up the empty name; an unknown one leaves the parameter out, "
         "the class itself does not",
         MethodRun("<PARAMETER.REFERENCE NAME='R'/>"
                   "<PARAMETER.REFARRAY NAME='RL' REFERENCECLASS='T_None'/>"
                   "<PARAMETER.REFARRAY NAME='Self' REFERENCECLASS='T_B'/>"),
         "3 TCIMXMLParser: Couldn't find class T_None\n",
         "class T_B\n  method Run uint32\n    parameter R reference\n"
         "    parameter Self reference\n"},
    });
}

// A rejected child is not pushed, so its end tag ends the method or parameter: each case's bad
// child comes last.
TEST(TStateMethod, RejectsChildrenItDoesNotTake) {
    RunSchemaCases({
        {"a property in a method, reported without its name",
         MethodRun("<PARAMETER NAME='A' TYPE='string'/><PROPERTY NAME='P' TYPE='string'/>"),
         kLine + "Parser state corrupt\n",
         "class T_B\n  method Run uint32\n    parameter A string\n"},
        {"a reference value in a parameter",
         MethodRun("<PARAMETER NAME='A' TYPE='string'><VALUE.REFERENCE/></PARAMETER>"),
         kLine + "Unexpected element value.reference\n",
         "class T_B\n  method Run uint32\n    parameter A string\n"},
        {"unknown types: a method's parameters are then not reported",
         MethodRun("<PARAMETER NAME='A' TYPE='text'/>") +
             "<VALUE.OBJECT><CLASS NAME='T_C'><METHOD NAME='M' TYPE='text'>"
             "<PARAMETER NAME='X' TYPE='string'/></METHOD></CLASS></VALUE.OBJECT>",
         kLine + "Couldn't declare parameter A\n" + kLine + "Couldn't declare method M\n",
         "class T_B\n  method Run uint32\nclass T_C\n"},
    });
}

} // namespace
} // namespace NQRN20
