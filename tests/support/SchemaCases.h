// Text forms of qualifier declarations, classes and instances, and a runner that loads small
// documents over a base schema and compares what they leave in a namespace, for the state tests.
#pragma once

#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <strings.h>

#include <string>
#include <vector>

namespace NQRN20 {

// What one of the Enum functions of an object gives, as a vector.
template <class TElement, class TObject, class... TArgs>
std::vector<boost::shared_ptr<TElement>> All(TObject& object,
                                             void (TObject::*enumerate)(TArgs...)) {
    std::vector<boost::shared_ptr<TElement>> all;
    (object.*enumerate)(TAddToVectorCallback<TElement>(all), TCIMOptions());
    return all;
}

template <class TObject>
std::string Name(TObject& object) {
    return object.GetName(TCIMOptions());
}

// "uint16[] null count 5", "string 'a'", "reference null -> T_A"; "none" is kCIMTypeNone.
inline std::string DescribeValue(const TCIMValue& value) {
    const std::string type = value.GetType().GetName();
    const boost::shared_ptr<ICIMClass> referenced = value.GetReferencedClass();
    return (type.empty() ? "none" : type) +
           (value.IsNull() ? " null" : " '" + value.ToString() + "'") +
           (value.IsArray() ? " count " + std::to_string(value.GetCount()) : "") +
           (referenced ? " -> " + Name(*referenced) : "");
}

// " embedded object", " embedded instance", or nothing.
inline std::string DescribeEmbedded(EEmbeddedObject kind) {
    static const char* const kKinds[] = {"", " embedded object", " embedded instance"};
    return kKinds[kind];
}

// " [Key=boolean 'true' flavor 3, ...]", or nothing without qualifiers.
inline std::string DescribeQualifiers(ICIMNamedElement& element) {
    std::string text;
    for (const auto& qualifier : All<ICIMQualifier>(element, &ICIMNamedElement::EnumQualifiers)) {
        text += (text.empty() ? " [" : ", ") + Name(*qualifier) + "=" +
                DescribeValue(qualifier->GetValue(TCIMOptions())) + " flavor " +
                std::to_string(qualifier->GetFlavor(TCIMOptions()));
    }
    return text.empty() ? text : text + "]";
}

// One line for the class, then one for each property, method and parameter, indented.
inline std::string DescribeClass(ICIMClass& cimClass) {
    const boost::shared_ptr<ICIMClass> superClass = cimClass.GetSuperClass(TCIMOptions());
    std::string text = "class " + Name(cimClass) + (superClass ? " : " + Name(*superClass) : "") +
                       DescribeQualifiers(cimClass) + "\n";
    for (const auto& property : All<ICIMPropertyDecl>(cimClass, &ICIMClass::EnumPropertyDecls)) {
        text += "  property " + Name(*property) + " " +
                DescribeValue(property->GetValue(TCIMOptions())) +
                DescribeEmbedded(property->GetEmbeddedObject(TCIMOptions())) +
                DescribeQualifiers(*property) + "\n";
    }
    for (const auto& method : All<ICIMMethodDecl>(cimClass, &ICIMClass::EnumMethodDecls)) {
        text += "  method " + Name(*method) + " " + method->GetType(TCIMOptions()).GetName() +
                DescribeQualifiers(*method) + "\n";
        for (const auto& parameter :
             All<ICIMParameterDecl>(*method, &ICIMMethodDecl::EnumParameterDecls)) {
            text += "    parameter " + Name(*parameter) + " " +
                    parameter->GetType(TCIMOptions()).GetName() +
                    DescribeEmbedded(parameter->GetEmbeddedObject(TCIMOptions())) +
                    DescribeQualifiers(*parameter) + "\n";
        }
    }
    return text;
}

// "instance T_Base Name='a' Codes=null embedded object": the properties that hold a value or say
// what their text holds.
inline std::string DescribeInstance(ICIMInstance& instance) {
    std::string text = "instance " + Name(*instance.GetClass(TCIMOptions()));
    for (const auto& property : All<ICIMProperty>(instance, &ICIMInstance::EnumProperties)) {
        const TCIMValue& value = property->GetValue(TCIMOptions());
        const EEmbeddedObject embedded = property->GetEmbeddedObject(TCIMOptions());
        if (!value.IsNull() || embedded != kEmbeddedNone) {
            text += " " + Name(*property) + "=" +
                    (value.IsNull() ? "null" : "'" + value.ToString() + "'") +
                    DescribeEmbedded(embedded);
        }
    }
    return text + "\n";
}

// Every case starts from these: Key (property scope) and Description (translatable) to qualify
// with; T_A to derive from and refer to; T_Base keyed by Name and Index, with a default Count;
// T_Sub, which overrides the key Name without the qualifier; and T_Uses, to refer to them.
const char kBaseSchema[] =
    "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'><SCOPE PROPERTY='true'/>"
    "<VALUE>false</VALUE></QUALIFIER.DECLARATION>"
    "<QUALIFIER.DECLARATION NAME='Description' TYPE='string' TRANSLATABLE='true'>"
    "<SCOPE CLASS='true' PROPERTY='true' METHOD='true' PARAMETER='true'/>"
    "</QUALIFIER.DECLARATION>"
    "<VALUE.OBJECT><CLASS NAME='T_A'><PROPERTY NAME='Id' TYPE='string'/></CLASS></VALUE.OBJECT>"
    "<VALUE.OBJECT><CLASS NAME='T_Base'><PROPERTY NAME='Name' TYPE='string'>"
    "<QUALIFIER NAME='Key' TYPE='boolean'><VALUE>true</VALUE></QUALIFIER></PROPERTY>"
    "<PROPERTY NAME='Index' TYPE='uint16'><QUALIFIER NAME='Key' TYPE='boolean'>"
    "<VALUE>true</VALUE></QUALIFIER></PROPERTY>"
    "<PROPERTY NAME='Count' TYPE='uint32'><VALUE>5</VALUE></PROPERTY>"
    "<PROPERTY NAME='When' TYPE='datetime'/><PROPERTY.ARRAY NAME='Codes' TYPE='uint16'/>"
    "<PROPERTY.REFERENCE NAME='Peer' REFERENCECLASS='T_A'/></CLASS></VALUE.OBJECT>"
    "<VALUE.OBJECT><CLASS NAME='T_Sub' SUPERCLASS='T_Base'>"
    "<PROPERTY NAME='Name' TYPE='string'/></CLASS></VALUE.OBJECT>"
    "<VALUE.OBJECT><CLASS NAME='T_Uses'><PROPERTY.REFERENCE NAME='Ref' REFERENCECLASS='T_Base'/>"
    "</CLASS></VALUE.OBJECT><VALUE.OBJECT><CLASS NAME='ZKV_ComputerSystem'/></VALUE.OBJECT>";

struct TSchemaCase {
    const char* m_title;
    std::string m_objects; // the content of one DECLGROUP, or a whole document from <CIM on
    std::string m_log;     // then "status N" when the parse ended with an exception
    // Qualifier declarations added, classes and instances collected, then classes and the
    // number of instances committed but not collected.
    std::string m_schema;
};

inline void RunSchemaCases(const std::vector<TSchemaCase>& cases, EMode mode = kDefaultMode) {
    for (const TSchemaCase& c : cases) {
        SCOPED_TRACE(c.m_title);
        const boost::shared_ptr<ICIMNamespace> space = TMemoryNamespace::Create();
        ASSERT_EQ("", ParseDocument(space, InDeclGroup(kBaseSchema)).m_log);
        const auto baseDecls = All<ICIMQualifierDecl>(*space, &ICIMNamespace::EnumQualifierDecls);
        const auto baseClasses = All<ICIMClass>(*space, &ICIMNamespace::EnumClasses);
        const bool whole = strncasecmp(c.m_objects.c_str(), "<CIM", 4) == 0;
        const TParseResult parsed =
            ParseDocument(space, whole ? c.m_objects : InDeclGroup(c.m_objects), mode);
        std::string schema;
        const auto decls = All<ICIMQualifierDecl>(*space, &ICIMNamespace::EnumQualifierDecls);
        for (size_t i = baseDecls.size(); i < decls.size(); ++i) {
            schema += "qualifier " + Name(*decls[i]) + " " +
                      DescribeValue(decls[i]->GetValue(TCIMOptions())) + " scope " +
                      std::to_string(decls[i]->GetScope(TCIMOptions())) + " flavor " +
                      std::to_string(decls[i]->GetFlavor(TCIMOptions())) + "\n";
        }
        std::string collected;
        for (const auto& cimClass : parsed.m_classes) {
            schema += DescribeClass(*cimClass);
            collected += " " + Name(*cimClass) + " ";
        }
        for (const auto& instance : parsed.m_instances) {
            schema += DescribeInstance(*instance);
        }
        const auto classes = All<ICIMClass>(*space, &ICIMNamespace::EnumClasses);
        for (size_t i = baseClasses.size(); i < classes.size(); ++i) {
            if (collected.find(" " + Name(*classes[i]) + " ") == std::string::npos) {
                schema += "committed class " + Name(*classes[i]) + "\n";
            }
        }
        std::vector<boost::shared_ptr<ICIMInstance>> all;
        space->EnumInstances("", TAddToVectorCallback<ICIMInstance>(all), TCIMOptions());
        if (const size_t extra = all.size() - parsed.m_instances.size()) {
            schema += "committed instances " + std::to_string(extra) + "\n";
        }
        const std::string status = "status " + std::to_string(parsed.m_status) + "\n";
        EXPECT_EQ(c.m_log, parsed.m_log + (parsed.m_status == 0 ? "" : status));
        EXPECT_EQ(c.m_schema, schema);
    }
}

} // namespace NQRN20
