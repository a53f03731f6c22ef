// Tests of the class and property declaration states over whole small documents.
#include "support/SchemaCases.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

const std::string kLine = "3 CIM-XML Parser line 1:";

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
        {"null defaults of each kind",
         ClassB("<PROPERTY NAME='Count' TYPE='uint32'/>"
                "<PROPERTY.ARRAY NAME='Codes' TYPE='uint16' ARRAYSIZE='5'/>"
                "<PROPERTY.ARRAY NAME='Flags' TYPE='boolean'/>"
                "<PROPERTY.REFERENCE NAME='Peer' REFERENCECLASS='T_A'/>"
                "<PROPERTY.REFERENCE NAME='Any'/>"),
         "",
         "class T_B\n"
         "  property Count uint32 null\n"
         "  property Codes uint16[] null count 5\n"
         "  property Flags boolean[] null count 0\n"
         "  property Peer reference null -> T_A\n"
         "  property Any reference null\n"},
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
        {"a method first", ClassB("<METHOD NAME='Run' TYPE='uint32'/>"), "",
         "class T_B\n  method Run uint32\n"},
    });
}

// A rejected child is not pushed, so its end tag ends the class: each case's bad child comes
// last, and the class keeps what came before it.
TEST(TStateClass, RejectsChildrenOutOfOrder) {
    RunSchemaCases({
        {"a qualifier after the properties",
         ClassB("<PROPERTY.ARRAY NAME='Codes' TYPE='uint16'/><QUALIFIER NAME='Key'/>"),
         kLine + "Unexpected element qualifier\n",
         "class T_B\n  property Codes uint16[] null count 0\n"},
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
        {"a reference class the namespace does not hold yet, but for the class itself",
         ClassB("<PROPERTY.REFERENCE NAME='R' REFERENCECLASS='T_None'/>"
                "<PROPERTY.REFERENCE NAME='S' REFERENCECLASS='t_b'/>"
                "<PROPERTY NAME='Q' TYPE='string'/>"),
         "3 TCIMXMLParser: Couldn't find class T_None\n",
         "class T_B\n  property S reference null -> T_B\n  property Q string null\n"},
    });
}

} // namespace
} // namespace NQRN20
