// Text forms of qualifier declarations, classes and instances, and a runner that loads small
// documents over a base schema and compares what they leave in a namespace, for the state tests.
#pragma once

#include "support/ParseDocument.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace NQRN20 {

// "uint16[] null count 5", "string 'a'", "reference null -> T_A"; "none" is kCIMTypeNone.
inline std::string DescribeValue(const TCIMValue& value) {
    const std::string type = value.GetType().GetName();
    std::string text =
        (type.empty() ? "none" : type) + (value.IsNull() ? " null" : " '" + value.ToString() + "'");
    if (value.IsArray()) {
        text += " count " + std::to_string(value.GetCount());
    }
    if (const boost::shared_ptr<ICIMClass> referenced = value.GetReferencedClass()) {
        text += " -> " + referenced->GetName(TCIMOptions());
    }
    return text;
}

// " embedded object", " embedded instance", or nothing.
inline std::string DescribeEmbeddedObject(EEmbeddedObject kind) {
    return kind == kEmbeddedNone     ? ""
           : kind == kEmbeddedObject ? " embedded object"
                                     : " embedded instance";
}

// " [Key=boolean 'true' flavor 3, ...]", or nothing without qualifiers.
inline std::string DescribeQualifiers(ICIMNamedElement& element) {
    std::vector<boost::shared_ptr<ICIMQualifier>> qualifiers;
    element.EnumQualifiers(TAddToVectorCallback<ICIMQualifier>(qualifiers), TCIMOptions());
    std::string text;
    for (const auto& qualifier : qualifiers) {
        text += (text.empty() ? " [" : ", ") + qualifier->GetName(TCIMOptions()) + "=" +
                DescribeValue(qualifier->GetValue(TCIMOptions())) + " flavor " +
                std::to_string(qualifier->GetFlavor(TCIMOptions()));
    }
    return text.empty() ? text : text + "]";
}

// One line for the class, then one for each property, method and parameter, indented.
inline std::string DescribeClass(ICIMClass& cimClass) {
    const boost::shared_ptr<ICIMClass> superClass = cimClass.GetSuperClass(TCIMOptions());
    std::string text = "class " + cimClass.GetName(TCIMOptions()) +
                       (superClass ? " : " + superClass->GetName(TCIMOptions()) : "") +
                       DescribeQualifiers(cimClass) + "\n";
    std::vector<boost::shared_ptr<ICIMPropertyDecl>> properties;
    cimClass.EnumPropertyDecls(TAddToVectorCallback<ICIMPropertyDecl>(properties), TCIMOptions());
    for (const auto& property : properties) {
        text += "  property " + property->GetName(TCIMOptions()) + " " +
                DescribeValue(property->GetValue(TCIMOptions())) +
                DescribeEmbeddedObject(property->GetEmbeddedObject(TCIMOptions())) +
                DescribeQualifiers(*property) + "\n";
    }
    std::vector<boost::shared_ptr<ICIMMethodDecl>> methods;
    cimClass.EnumMethodDecls(TAddToVectorCallback<ICIMMethodDecl>(methods), TCIMOptions());
    for (const auto& method : methods) {
        text += "  method " + method->GetName(TCIMOptions()) + " " +
                method->GetType(TCIMOptions()).GetName() + DescribeQualifiers(*method) + "\n";
        std::vector<boost::shared_ptr<ICIMParameterDecl>> parameters;
        method->EnumParameterDecls(TAddToVectorCallback<ICIMParameterDecl>(parameters),
                                   TCIMOptions());
        for (const auto& parameter : parameters) {
            text += "    parameter " + parameter->GetName(TCIMOptions()) + " " +
                    parameter->GetType(TCIMOptions()).GetName() +
                    DescribeEmbeddedObject(parameter->GetEmbeddedObject(TCIMOptions())) +
                    DescribeQualifiers(*parameter) + "\n";
        }
    }
    return text;
}

// " Name='a' Codes=null embedded object" for each property that holds a value or says what its
// text holds.
inline std::string DescribeProperties(ICIMInstance& instance) {
    std::vector<boost::shared_ptr<ICIMProperty>> properties;
    instance.EnumProperties(TAddToVectorCallback<ICIMProperty>(properties), TCIMOptions());
    std::string text;
    for (const auto& property : properties) {
        const TCIMValue& value = property->GetValue(TCIMOptions());
        const EEmbeddedObject embedded = property->GetEmbeddedObject(TCIMOptions());
        if (!value.IsNull() || embedded != kEmbeddedNone) {
            text += " " + property->GetName(TCIMOptions()) + "=" +
                    (value.IsNull() ? "null" : "'" + value.ToString() + "'") +
                    DescribeEmbeddedObject(embedded);
        }
    }
    return text;
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
    std::string m_objects; // the content of one DECLGROUP
    std::string m_log;     // then "status N" when the parse ended with an exception
    // Each qualifier declaration the objects added ("qualifier Q ..."), then each class
    // (DescribeClass) and each instance ("instance C" and DescribeProperties) they collected.
    std::string m_schema;
};

inline void RunSchemaCases(const std::vector<TSchemaCase>& cases, EMode mode = kDefaultMode) {
    for (const TSchemaCase& c : cases) {
        SCOPED_TRACE(c.m_title);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        ASSERT_EQ("", ParseDocument(cimNamespace, InDeclGroup(kBaseSchema)).m_log);
        std::vector<boost::shared_ptr<ICIMQualifierDecl>> decls;
        cimNamespace->EnumQualifierDecls(TAddToVectorCallback<ICIMQualifierDecl>(decls),
                                         TCIMOptions());
        const size_t baseDecls = decls.size();
        const TParseResult parsed = ParseDocument(cimNamespace, InDeclGroup(c.m_objects), mode);
        decls.clear();
        cimNamespace->EnumQualifierDecls(TAddToVectorCallback<ICIMQualifierDecl>(decls),
                                         TCIMOptions());
        std::string schema;
        for (size_t i = baseDecls; i < decls.size(); ++i) {
            ICIMQualifierDecl& decl = *decls[i];
            schema += "qualifier " + decl.GetName(TCIMOptions()) + " " +
                      DescribeValue(decl.GetValue(TCIMOptions())) + " scope " +
                      std::to_string(decl.GetScope(TCIMOptions())) + " flavor " +
                      std::to_string(decl.GetFlavor(TCIMOptions())) + "\n";
        }
        for (const auto& cimClass : parsed.m_classes) {
            schema += DescribeClass(*cimClass);
        }
        for (const auto& instance : parsed.m_instances) {
            schema += "instance " + instance->GetClass(TCIMOptions())->GetName(TCIMOptions()) +
                      DescribeProperties(*instance) + "\n";
        }
        EXPECT_EQ(c.m_log,
                  parsed.m_log + (parsed.m_status == 0
                                      ? ""
                                      : "status " + std::to_string(parsed.m_status) + "\n"));
        EXPECT_EQ(c.m_schema, schema);
    }
}

// A class T_B with the given attributes and content, in its VALUE.OBJECT.
inline std::string ClassB(const std::string& content, const std::string& attributes = "") {
    return "<VALUE.OBJECT><CLASS NAME='T_B'" + attributes + ">" + content +
           "</CLASS></VALUE.OBJECT>";
}

} // namespace NQRN20
