// The states of classes and their property declarations.
//
// | element            | content model                                   | attributes read                                 | class                       |
// |--------------------|-------------------------------------------------|-------------------------------------------------|-----------------------------|
// | CLASS              | QUALIFIER*, (PROPERTY | PROPERTY.ARRAY |       | name, superclass                                | TStateClass                 |
// |                    |   PROPERTY.REFERENCE)*, METHOD*                 |                                                 |                             |
// | PROPERTY           | (QUALIFIER | VALUE)*                            | name, type, classorigin, propagated,            | TStatePropertyDecl          |
// |                    |                                                 |   embeddedobject                                |                             |
// | PROPERTY.ARRAY     | (QUALIFIER | VALUE.ARRAY)*                      | name, type, arraysize, classorigin, propagated, | TStatePropertyArrayDecl     |
// |                    |                                                 |   embeddedobject                                |                             |
// | PROPERTY.REFERENCE | (QUALIFIER | VALUE.REFERENCE)*                  | name, referenceclass, classorigin, propagated   | TStatePropertyReferenceDecl |
//
// The class is created as soon as the CLASS start tag is read and handed to the parent, which
// commits it; each property declaration is created, given its default and committed by its own
// state.
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <boost/weak_ptr.hpp>

#include <cstdint>
#include <string>
#include <utility>

namespace NQRN20 {

// CLASS:
//   phase 0: QUALIFIER*
//   phase 1: (PROPERTY | PROPERTY.ARRAY | PROPERTY.REFERENCE)*
//   phase 2: METHOD*
class TCIMXMLParser::TStateClass : public TCIMXMLParser::TParseState {
public:
    explicit TStateClass(boost::shared_ptr<ICIMClass>* slot) : m_slot(slot) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    std::string m_className;
    std::string m_superClassName;
    boost::shared_ptr<ICIMClass>* m_slot;
    boost::shared_ptr<ICIMClass> m_class;
};

// What the three property declaration states share: the class, the declaration they create in
// it, and the attributes and default value of their element.
struct TPropertyDeclFields {
    explicit TPropertyDeclFields(boost::shared_ptr<ICIMClass> cimClass) : m_class(cimClass) {}

    // The class state below on the stack keeps the class alive; empty when it was not created.
    boost::weak_ptr<ICIMClass> m_class;
    std::string m_name;
    // References have no TYPE attribute; theirs stays kCIMTypeNone.
    TCIMValue::TCIMType m_type;
    std::string m_classOrigin;
    bool m_propagated = false;
    EEmbeddedObject m_embeddedObject = kEmbeddedNone;
    boost::shared_ptr<ICIMPropertyDecl> m_declaration;
    TCIMValue m_value;
    bool m_valueSeen = false;
};

// PROPERTY in a class: (QUALIFIER | VALUE)*, the last value standing as the default.
class TCIMXMLParser::TStatePropertyDecl : public TCIMXMLParser::TParseState {
public:
    explicit TStatePropertyDecl(boost::shared_ptr<ICIMClass> cimClass)
        : m_fields(std::move(cimClass)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TPropertyDeclFields m_fields;
};

// PROPERTY.ARRAY in a class: (QUALIFIER | VALUE.ARRAY)*.
class TCIMXMLParser::TStatePropertyArrayDecl : public TCIMXMLParser::TParseState {
public:
    explicit TStatePropertyArrayDecl(boost::shared_ptr<ICIMClass> cimClass)
        : m_fields(std::move(cimClass)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TPropertyDeclFields m_fields;
    uint32_t m_arraySize = 0;
};

// PROPERTY.REFERENCE in a class: (QUALIFIER | VALUE.REFERENCE)*; its type is always reference.
class TCIMXMLParser::TStatePropertyReferenceDecl : public TCIMXMLParser::TParseState {
public:
    explicit TStatePropertyReferenceDecl(boost::shared_ptr<ICIMClass> cimClass)
        : m_fields(std::move(cimClass)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TPropertyDeclFields m_fields;
    std::string m_referenceClass;
};

} // namespace NQRN20
