// Tests of the qualifier, qualifier declaration and scope states over whole small documents.
#include "support/SchemaCases.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

const std::string kLine = "3 CIM-XML Parser line 1:";
const std::string kIncompatible = kLine + "Incompatible attributes\n";

std::string DeclareQ(const std::string& attributes, const std::string& content) {
    return "<QUALIFIER.DECLARATION NAME='Q' " + attributes + ">" + content +
           "</QUALIFIER.DECLARATION>";
}

TEST(TStateQualifierDeclaration, DeclaresScopeFlavorsArrayShapeAndDefault) {
    RunSchemaCases({
        {"class, property and method scope; the default flavor",
         DeclareQ("TYPE='boolean'", "<SCOPE CLASS='true' PROPERTY='true' METHOD='true'/>"
                                    "<VALUE>true</VALUE>"),
         "", "qualifier Q boolean 'true' scope 41 flavor 3\n"},
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
        {"not overridable", DeclareQ("TYPE='string' OVERRIDABLE='false'", "<SCOPE/>"), "",
         "qualifier Q string null scope 0 flavor 2\n"},
        {"translatable, not to subclass",
         DeclareQ("TYPE='string' TRANSLATABLE='true' TOSUBCLASS='false'", "<SCOPE/>"), "",
         "qualifier Q string null scope 0 flavor 5\n"},
        {"an array without a default is null with its size",
         DeclareQ("TYPE='uint8' ISARRAY='true' ARRAYSIZE='3'", "<SCOPE/>"), "",
         "qualifier Q uint8[] null count 3 scope 0 flavor 3\n"},
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
        {"a size with a single value",
         DeclareQ("TYPE='uint8' ARRAYSIZE='1'", "<SCOPE/><VALUE>1</VALUE>"), kIncompatible, ""},
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
         ClassB("<QUALIFIER NAME='Key' TYPE='uint8'><VALUE>1</VALUE></QUALIFIER>"), "",
         "class T_B\n"},
        {"a propagated qualifier is looked up, not attached",
         ClassB("<QUALIFIER NAME='Key' PROPAGATED='true'/>"
                "<QUALIFIER NAME='Nope' TYPE='string' PROPAGATED='true'/>"),
         "3 TCIMXMLParser: Couldn't find qualifier Nope\n", "class T_B\n"},
        {"an undeclared qualifier; a child that is not a value",
         ClassB("<QUALIFIER NAME='Nope' TYPE='string'><VALUE>x</VALUE></QUALIFIER>"
                "<QUALIFIER NAME='Key'><FOO/></QUALIFIER>"),
         "3 TCIMXMLParser: Couldn't find qualifier Nope\n" + kLine + "Unexpected element foo\n",
         "class T_B [Key=boolean null flavor 3]\n"},
    });
}

} // namespace
} // namespace NQRN20
