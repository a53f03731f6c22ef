// Tests of the qualifier declaration, scope, qualifier, class, property, method and parameter
// states over whole small documents.
#include "support/SchemaCases.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

// A class T_B with the given attributes and content, in its VALUE.OBJECT.
std::string ClassB(const std::string& content, const std::string& attributes = "") {
    return "<VALUE.OBJECT><CLASS NAME='T_B'" + attributes + ">" + content +
           "</CLASS></VALUE.OBJECT>";
}

const std::string kIncompatible = kLine + "Incompatible attributes\n";

std::string DeclareQ(const std::string& attributes, const std::string& content) {
    return "<QUALIFIER.DECLARATION NAME='Q' " + attributes + ">" + content +
           "</QUALIFIER.DECLARATION>";
}

TEST(TStateQualifierDeclaration, DeclaresScopeFlavorsArrayShapeAndDefault) {
    RunSchemaCases({
        {"a scope is set by true and not by false, in any letter case; indication is bit 4",
         DeclareQ("TYPE='string'", "<SCOPE CLASS='false' ASSOCIATION='TRUE' REFERENCE='true' "
                                   "PROPERTY='True' METHOD='true' PARAMETER='FALSE' "
                                   "INDICATION='true' OTHER='true'/>"),
         "", "qualifier Q string null scope 62 flavor 3\n"},
        {"any stands for every kind", DeclareQ("TYPE='string'", "<SCOPE ANY='true'/>"), "",
         "qualifier Q string null scope 127 flavor 3\n"},
        {"any other value is reported and sets nothing",
         DeclareQ("TYPE='string'", "<SCOPE CLASS='yes' ANY='' PROPERTY='true'/>"),
         kLine + "Invalid value '' for scope any\n" + kLine +
             "Invalid value 'yes' for scope class\n",
         "qualifier Q string null scope 8 flavor 3\n"},
        {"translatable, not to subclass",
         DeclareQ("TYPE='string' TRANSLATABLE='true' TOSUBCLASS='false'", "<SCOPE/>"), "",
         "qualifier Q string null scope 0 flavor 5\n"},
        {"an array default",
         DeclareQ("ARRAYSIZE='2' ISARRAY='true' TYPE='uint8'",
                  "<SCOPE/><VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE></VALUE.ARRAY>"),
         "", "qualifier Q uint8[] '1, 2' count 2 scope 0 flavor 3\n"},
    });
}

// A rejected child is not pushed, so its end tag ends the declaration: each case's bad child
// comes last.
TEST(TStateQualifierDeclaration, RejectsMisplacedChildrenAndIncompatibleArrayAttributes) {
    RunSchemaCases({
        {"a value before the scope", DeclareQ("TYPE='string'", "<VALUE/>"),
         kLine + "Expected SCOPE element\n", "qualifier Q string null scope 0 flavor 3\n"},
        {"not an array, yet a size",
         DeclareQ("TYPE='uint8' ISARRAY='false' ARRAYSIZE='2'", "<SCOPE/>"), kIncompatible, ""},
        {"an array with a single value",
         DeclareQ("TYPE='uint8' ISARRAY='true' ARRAYSIZE='1'", "<SCOPE/><VALUE>1</VALUE>"),
         kIncompatible, ""},
        {"an array default without a size",
         DeclareQ("TYPE='uint8' ISARRAY='true'",
                  "<SCOPE/><VALUE.ARRAY><VALUE>1</VALUE></VALUE.ARRAY>"),
         kIncompatible, ""},
    });
}

TEST(TStateQualifier, AttachesQualifiersWithTheirValueAndFlavor) {
    RunSchemaCases({
        {"a value and the default flavor; without a value, a null of the declared type",
         ClassB("<QUALIFIER NAME='Description' TYPE='string'><VALUE>d</VALUE></QUALIFIER>"
                "<QUALIFIER NAME='Key' TYPE='uint8'/>"),
         "", "class T_B [Description=string 'd' flavor 3, Key=boolean null flavor 3]\n"},
        {"flavors",
         ClassB("<QUALIFIER NAME='Description' TYPE='string' OVERRIDABLE='false'/>"
                "<QUALIFIER NAME='Key' TYPE='boolean' TRANSLATABLE='true'/>"),
         "", "class T_B [Description=string null flavor 2, Key=boolean null flavor 7]\n"},
        {"an array value",
         DeclareQ("TYPE='uint8' ISARRAY='true' ARRAYSIZE='2'", "<SCOPE/>") +
             ClassB("<QUALIFIER NAME='Q' TYPE='uint8'><VALUE.ARRAY><VALUE>4</VALUE>"
                    "</VALUE.ARRAY></QUALIFIER>"),
         "",
         "qualifier Q uint8[] null count 2 scope 0 flavor 3\n"
         "class T_B [Q=uint8[] '4' count 0 flavor 3]\n"},
        {"a value is parsed with the qualifier's own type; the core refuses one of another",
         ClassB("<QUALIFIER NAME='Key' TYPE='uint8'><VALUE>1</VALUE></QUALIFIER>"),
         kLine + "Couldn't attach qualifier Key: type mismatch\n", "class T_B\n"},
        {"a propagated qualifier is looked up, not attached",
         ClassB("<QUALIFIER NAME='Key' PROPAGATED='true'/>"
                "<QUALIFIER NAME='Nope' TYPE='string' PROPAGATED='true'/>"),
         "3 TCIMXMLParser: Couldn't find qualifier Nope\n", "class T_B\n"},
        {"a qualifier not found is asked for again, and found once declared",
         "<CIM CIMVERSION='2.0' DTDVERSION='2.0'><DECLARATION><DECLGROUP>" +
             ClassB("<QUALIFIER NAME='Q' TYPE='string'/>") + "</DECLGROUP><DECLGROUP>" +
             DeclareQ("TYPE='string'", "<SCOPE/>") +
             "<VALUE.OBJECT><CLASS NAME='T_C'><QUALIFIER NAME='Q' TYPE='string'><VALUE>c</VALUE>"
             "</QUALIFIER></CLASS></VALUE.OBJECT></DECLGROUP></DECLARATION></CIM>",
         "3 TCIMXMLParser: Couldn't find qualifier Q\n",
         "qualifier Q string null scope 0 flavor 3\nclass T_B\nclass T_C [Q=string 'c' flavor "
         "3]\n"},
        {"an undeclared qualifier; a child that is not a value",
         ClassB("<QUALIFIER NAME='Nope' TYPE='string'><VALUE>x</VALUE></QUALIFIER>"
                "<QUALIFIER NAME='Key'><FOO/></QUALIFIER>"),
         "3 TCIMXMLParser: Couldn't find qualifier Nope\n" + kLine + "Unexpected element foo\n",
         "class T_B [Key=boolean null flavor 3]\n"},
    });
}

TEST(TStateClass, DeclaresPropertiesOfEachKindWithTheirDefaults) {
    RunSchemaCases({
        {"a subclass with qualifiers; inherited properties come first",
         ClassB("<QUALIFIER NAME='Description' TYPE='string'><VALUE>b</VALUE></QUALIFIER>"
                "<PROPERTY NAME='Name' TYPE='string'><QUALIFIER NAME='Key' TYPE='boolean'>"
                "<VALUE>true</VALUE></QUALIFIER><VALUE>n</VALUE></PROPERTY>",
                " SUPERCLASS='T_A'"),
         "",
         "class T_B : T_A [Description=string 'b' flavor 3]\n"
         "  property Id string null\n"
         "  property Name string 'n' [Key=boolean 'true' flavor 3]\n"},
        {"what a string's text holds, in any letter case of the value; another value is reported",
         ClassB("<PROPERTY NAME='Inst' TYPE='string' EmbeddedObject='instance'/>"
                "<PROPERTY.ARRAY NAME='Objs' TYPE='string' EMBEDDEDOBJECT='Object'/>"
                "<PROPERTY NAME='Odd' TYPE='string' EmbeddedObject='class'/>"),
         kLine + "Invalid value 'class' for embeddedobject\n",
         "class T_B\n"
         "  property Inst string null embedded instance\n"
         "  property Objs string[] null count 0 embedded object\n"
         "  property Odd string null\n"},
        {"given defaults; the last value stands and a qualifier may follow it",
         ClassB("<PROPERTY NAME='Count' TYPE='uint32' CLASSORIGIN='T_X' PROPAGATED='true'>"
                "<VALUE>1</VALUE><VALUE>2</VALUE><QUALIFIER NAME='Key'/></PROPERTY>"
                "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16' ARRAYSIZE='2'>"
                "<VALUE.ARRAY><VALUE>3</VALUE><VALUE>4</VALUE></VALUE.ARRAY></PROPERTY.ARRAY>"
                "<PROPERTY.REFERENCE NAME='Peer' REFERENCECLASS='T_A'>"
                "<VALUE.REFERENCE><CLASSNAME NAME='T_A'/></VALUE.REFERENCE>"
                "</PROPERTY.REFERENCE>"),
         "",
         "class T_B\n"
         "  property Count uint32 '2' [Key=boolean null flavor 3]\n"
         "  property Codes uint16[] '3, 4' count 2\n"
         "  property Peer reference 'root/cimv2:T_A' -> T_A\n"},
    });
}

// A rejected child is not pushed, so its end tag ends the class: each case's bad child comes
// last, and the class keeps what came before it.
TEST(TStateClass, RejectsChildrenOutOfOrder) {
    RunSchemaCases({
        {"a property after the methods",
         ClassB("<METHOD NAME='Run' TYPE='uint32'/><PROPERTY NAME='Count' TYPE='uint32'/>"),
         kLine + "Unexpected element property\n", "class T_B\n  method Run uint32\n"},
        {"a property child that is not one of its own",
         ClassB("<PROPERTY NAME='Count' TYPE='uint32'><VALUE.ARRAY/></PROPERTY>"),
         kLine + "Unexpected element value.array\n", "class T_B\n  property Count uint32 null\n"},
    });
}

TEST(TStateClass, LeavesOutWhatItCannotDeclareAndGoesOn) {
    RunSchemaCases({
        {"an unknown superclass: reported once for all its children; the next class loaded",
         ClassB("<QUALIFIER NAME='Description' TYPE='string'><VALUE>b</VALUE></QUALIFIER>"
                "<PROPERTY NAME='P' TYPE='string'><QUALIFIER NAME='Key'/><VALUE>p</VALUE>"
                "</PROPERTY><PROPERTY.ARRAY NAME='A' TYPE='uint8'><VALUE.ARRAY/>"
                "</PROPERTY.ARRAY><PROPERTY.REFERENCE NAME='R' REFERENCECLASS='T_A'/>"
                "<METHOD NAME='M'><QUALIFIER NAME='Description'/>"
                "<PARAMETER NAME='X' TYPE='string'><QUALIFIER NAME='Description'/></PARAMETER>"
                "</METHOD>",
                " SUPERCLASS='T_None'") +
             "<VALUE.OBJECT><CLASS NAME='T_C'/></VALUE.OBJECT>",
         "3 TCIMXMLParser: Couldn't find class T_None\n" + kLine +
             "CIM element holds no object: its class or instance was not created\n",
         "class T_C\n"},
        {"an unknown type",
         ClassB("<PROPERTY NAME='P' TYPE='text'><QUALIFIER NAME='Key'/><VALUE>p</VALUE>"
                "</PROPERTY><PROPERTY NAME='Q' TYPE='string'/>"),
         kLine + "Couldn't declare property P\n", "class T_B\n  property Q string null\n"},
        {"a property of another type, or array shape, than the one it inherits",
         ClassB("<PROPERTY NAME='Id' TYPE='uint8'/><PROPERTY.ARRAY NAME='ID' TYPE='string'/>",
                " SUPERCLASS='T_A'"),
         kLine + "Couldn't declare property Id: type mismatch\n" + kLine +
             "Couldn't declare property ID: type mismatch\n",
         "class T_B : T_A\n  property Id string null\n"},
        {"a reference class the namespace does not hold yet, but for the class itself",
         ClassB("<PROPERTY.REFERENCE NAME='R' REFERENCECLASS='T_None'/>"
                "<PROPERTY.REFERENCE NAME='S' REFERENCECLASS='t_b'/>"
                "<PROPERTY NAME='Q' TYPE='string'/>"),
         "3 TCIMXMLParser: Couldn't find class T_None\n",
         "class T_B\n  property S reference null -> T_B\n  property Q string null\n"},
    });
}

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
