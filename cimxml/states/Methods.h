// The states of method declarations and their four kinds of parameter.
//
// | element             | content model                        | attributes read                                 | class                    |
// |---------------------|--------------------------------------|-------------------------------------------------|--------------------------|
// | METHOD              | (QUALIFIER | PARAMETER |              | name, type                                      | TStateMethod             |
// |                     |   PARAMETER.REFERENCE |              |                                                 |                          |
// |                     |   PARAMETER.ARRAY |                  |                                                 |                          |
// |                     |   PARAMETER.REFARRAY)*               |                                                 |                          |
// | PARAMETER           | (QUALIFIER | VALUE | VALUE.ARRAY)*    | name, type, embeddedobject                      | TStateParameter          |
// | PARAMETER.REFERENCE | (QUALIFIER | VALUE.ARRAY)*            | name, referenceclass, classorigin, propagated   | TStateParameterReference |
// | PARAMETER.ARRAY     | (QUALIFIER | VALUE | VALUE.ARRAY)*    | name, type, arraysize, classorigin, propagated, | TStateParameterArray     |
// |                     |                                      |   embeddedobject                                |                          |
// | PARAMETER.REFARRAY  | (QUALIFIER | VALUE.ARRAY)*            | name, referenceclass, classorigin, propagated   | TStateParameterRefArray  |
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <boost/weak_ptr.hpp>

#include <cstdint>
#include <string>
#include <utility>

namespace NQRN20 {

// METHOD: its qualifiers and parameters in any order; committed at its end.
class TCIMXMLParser::TStateMethod : public TCIMXMLParser::TParseState {
public:
    explicit TStateMethod(boost::shared_ptr<ICIMClass> cimClass) : m_class(cimClass) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    boost::shared_ptr<ICIMMethodDecl> m_method;
    std::string m_name;
    boost::weak_ptr<ICIMClass> m_class;
    TCIMValue::TCIMType m_returnType;
};

// What the four parameter states share: the method, the declaration they create in it, and the
// attributes and value of their element. The value is parsed for its errors and goes nowhere.
struct TParameterFields {
    TParameterFields(boost::shared_ptr<ICIMMethodDecl> method, boost::weak_ptr<ICIMClass> cimClass)
        : m_method(std::move(method)), m_class(std::move(cimClass)) {}

    boost::shared_ptr<ICIMMethodDecl> m_method;
    // The class the method is declared in, which a reference parameter may name.
    boost::weak_ptr<ICIMClass> m_class;
    boost::shared_ptr<ICIMParameterDecl> m_parameter;
    std::string m_name;
    TCIMValue::TCIMType m_type;
    std::string m_referenceClass;
    std::string m_classOrigin;
    bool m_propagated = false;
    EEmbeddedObject m_embeddedObject = kEmbeddedNone;
    TCIMValue m_value;
    bool m_valueSeen = false;
    uint32_t m_arraySize = 0;
};

// PARAMETER: (QUALIFIER | VALUE | VALUE.ARRAY)*.
class TCIMXMLParser::TStateParameter : public TCIMXMLParser::TParseState {
public:
    TStateParameter(boost::shared_ptr<ICIMMethodDecl> method, boost::weak_ptr<ICIMClass> cimClass)
        : m_fields(std::move(method), std::move(cimClass)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TParameterFields m_fields;
};

// PARAMETER.REFERENCE: (QUALIFIER | VALUE.ARRAY)*; declared as a reference.
class TCIMXMLParser::TStateParameterReference : public TCIMXMLParser::TParseState {
public:
    TStateParameterReference(boost::shared_ptr<ICIMMethodDecl> method,
                             boost::weak_ptr<ICIMClass> cimClass)
        : m_fields(std::move(method), std::move(cimClass)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TParameterFields m_fields;
};

// PARAMETER.ARRAY: (QUALIFIER | VALUE | VALUE.ARRAY)*; declared with its element type.
class TCIMXMLParser::TStateParameterArray : public TCIMXMLParser::TParseState {
public:
    TStateParameterArray(boost::shared_ptr<ICIMMethodDecl> method,
                         boost::weak_ptr<ICIMClass> cimClass)
        : m_fields(std::move(method), std::move(cimClass)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TParameterFields m_fields;
};

// PARAMETER.REFARRAY: (QUALIFIER | VALUE.ARRAY)*; declared as a reference.
class TCIMXMLParser::TStateParameterRefArray : public TCIMXMLParser::TParseState {
public:
    TStateParameterRefArray(boost::shared_ptr<ICIMMethodDecl> method,
                            boost::weak_ptr<ICIMClass> cimClass)
        : m_fields(std::move(method), std::move(cimClass)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TParameterFields m_fields;
};

} // namespace NQRN20
