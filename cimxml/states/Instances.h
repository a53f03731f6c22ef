// The states of instances and their property values.
//
// | element            | content model                 | attributes          | class                   |
// |--------------------|-------------------------------|---------------------|-------------------------|
// | INSTANCE           | QUALIFIER*, (PROPERTY |       | classname           | TStateInstance          |
// |                    |  PROPERTY.ARRAY |             |                     |                         |
// |                    |  PROPERTY.REFERENCE)*         |                     |                         |
// | PROPERTY           | (QUALIFIER | VALUE)*          | name, type,         | TStateProperty          |
// |                    |                               | classorigin,        |                         |
// |                    |                               | propagated,         |                         |
// |                    |                               | embeddedobject      |                         |
// | PROPERTY.ARRAY     | (QUALIFIER | VALUE.ARRAY)*    | as PROPERTY,        | TStatePropertyArray     |
// |                    |                               | arraysize           |                         |
// | PROPERTY.REFERENCE | (QUALIFIER |                  | name, classorigin,  | TStatePropertyReference |
// |                    |  VALUE.REFERENCE)*            | propagated,         |                         |
// |                    |                               | referenceclass      |                         |
//
// The instance is created from its class as soon as the INSTANCE start tag is read; each
// property stores its value when its element ends. Qualifiers of instances and their properties
// carry nothing the model keeps, so they are skipped whole.
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace NQRN20 {

// INSTANCE:
//   phase 0: QUALIFIER* (skipped)
//   phase 1: (PROPERTY | PROPERTY.ARRAY | PROPERTY.REFERENCE)*
class TCIMXMLParser::TStateInstance : public TCIMXMLParser::TParseState {
public:
    explicit TStateInstance(boost::shared_ptr<ICIMInstance>* slot) : m_slot(slot) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    std::string m_className;
    boost::shared_ptr<ICIMInstance>* m_slot;
};

// What the three property value states share: the instance, the property's name and the value
// that its element carries.
struct TPropertyValue {
    explicit TPropertyValue(boost::shared_ptr<ICIMInstance> instance)
        : m_instance(std::move(instance)) {}

    boost::shared_ptr<ICIMInstance> m_instance;
    std::string m_name;
    std::string m_classOrigin;
    bool m_propagated = false;
    EEmbeddedObject m_embeddedObject = kEmbeddedNone;
    TCIMValue m_value;
    bool m_valueSeen = false;
};

// PROPERTY in an instance: (QUALIFIER | VALUE)*. Any other child ends the property early and is
// handed to the INSTANCE state, since a missing end tag is the likeliest cause.
class TCIMXMLParser::TStateProperty : public TCIMXMLParser::TParseState {
public:
    explicit TStateProperty(boost::shared_ptr<ICIMInstance> instance)
        : m_property(std::move(instance)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    // The type the instance's class declares; looked up once, as every step of the element
    // needs it.
    TCIMValue::TCIMType DeclaredType();
    void CheckDeclaredType(TCIMXMLParser& parser, TCIMValue::TCIMType type);

    TPropertyValue m_property;
    TCIMValue::TCIMType m_declaredType;
    bool m_declaredTypeKnown = false;
};

// PROPERTY.ARRAY in an instance: (QUALIFIER | VALUE.ARRAY)*.
class TCIMXMLParser::TStatePropertyArray : public TCIMXMLParser::TParseState {
public:
    explicit TStatePropertyArray(boost::shared_ptr<ICIMInstance> instance)
        : m_property(std::move(instance)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TPropertyValue m_property;
    TCIMValue::TCIMType m_type;
    uint32_t m_arraySize = 0;
};

// PROPERTY.REFERENCE in an instance: (QUALIFIER | VALUE.REFERENCE)*.
class TCIMXMLParser::TStatePropertyReference : public TCIMXMLParser::TParseState {
public:
    explicit TStatePropertyReference(boost::shared_ptr<ICIMInstance> instance)
        : m_property(std::move(instance)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TPropertyValue m_property;
    std::string m_referenceClass;
};

} // namespace NQRN20
