// Text forms of qualifier declarations and classes, and a runner that loads schema documents and
// compares what they leave in a namespace, for tests of the schema states.
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

// Every schema case starts from these: Key (property scope) and Description (translatable) to
// qualify with, and the class T_A to derive from and refer to.
const char kBaseSchema[] =
    "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'><SCOPE PROPERTY='true'/>"
    "<VALUE>false</VALUE></QUALIFIER.DECLARATION>"
    "<QUALIFIER.DECLARATION NAME='Description' TYPE='string' TRANSLATABLE='true'>"
    "<SCOPE CLASS='true' PROPERTY='true' METHOD='true' PARAMETER='true'/>"
    "</QUALIFIER.DECLARATION>"
    "<VALUE.OBJECT><CLASS NAME='T_A'><PROPERTY NAME='Id' TYPE='string'/></CLASS></VALUE.OBJECT>";

struct TSchemaCase {
    const char* m_title;
    std::string m_objects; // the content of one DECLGROUP
    std::string m_log;
    // Each qualifier declaration the objects added ("qualifier Q ..."), then each class they
    // collected (DescribeClass).
    std::string m_schema;
};

inline void RunSchemaCases(const std::vector<TSchemaCase>& cases) {
    for (const TSchemaCase& c : cases) {
        SCOPED_TRACE(c.m_title);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        ASSERT_EQ("", ParseDocument(cimNamespace, InDeclGroup(kBaseSchema)).m_log);
        std::vector<boost::shared_ptr<ICIMQualifierDecl>> baseDecls;
        cimNamespace->EnumQualifierDecls(TAddToVectorCallback<ICIMQualifierDecl>(baseDecls),
                                         TCIMOptions());

        const TParseResult parsed = ParseDocument(cimNamespace, InDeclGroup(c.m_objects));
        std::vector<boost::shared_ptr<ICIMQualifierDecl>> decls;
        cimNamespace->EnumQualifierDecls(TAddToVectorCallback<ICIMQualifierDecl>(decls),
                                         TCIMOptions());
        std::string schema;
        for (size_t i = baseDecls.size(); i < decls.size(); ++i) {
            ICIMQualifierDecl& decl = *decls[i];
            schema += "qualifier " + decl.GetName(TCIMOptions()) + " " +
                      DescribeValue(decl.GetValue(TCIMOptions())) + " scope " +
                      std::to_string(decl.GetScope(TCIMOptions())) + " flavor " +
                      std::to_string(decl.GetFlavor(TCIMOptions())) + "\n";
        }
        for (const auto& cimClass : parsed.m_classes) {
            schema += DescribeClass(*cimClass);
        }
        EXPECT_EQ(c.m_log, parsed.m_log);
        EXPECT_EQ(0u, parsed.m_status);
        EXPECT_EQ(c.m_schema, schema);
    }
}

// A class T_B with the given attributes and content, in its VALUE.OBJECT.
inline std::string ClassB(const std::string& content, const std::string& attributes = "") {
    return "<VALUE.OBJECT><CLASS NAME='T_B'" + attributes + ">" + content +
           "</CLASS></VALUE.OBJECT>";
}

} // namespace NQRN20
