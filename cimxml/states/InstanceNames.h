// The states of instance paths, instance names, key bindings and reference values.
//
// | element           | content model                        | attributes | class                   |
// |-------------------|--------------------------------------|------------|-------------------------|
// | INSTANCEPATH      | NAMESPACEPATH, INSTANCENAME          | -          | TStateInstancePath      |
// | LOCALINSTANCEPATH | LOCALNAMESPACEPATH, INSTANCENAME     | -          | TStateLocalInstancePath |
// | INSTANCENAME      | KEYBINDING* | KEYVALUE? |            | classname  | TStateInstanceName      |
// |                   |  VALUE.REFERENCE?                    |            |                         |
// | KEYBINDING        | (KEYVALUE | VALUE.REFERENCE)*        | name       | TStateKeyBinding        |
// | KEYVALUE          | #PCDATA                              | -          | TStateKeyValue          |
// | VALUE.REFERENCE   | (CLASSPATH | LOCALCLASSPATH |         | -          | TStateValueReference    |
// |                   |  CLASSNAME | INSTANCEPATH |           |            |                         |
// |                   |  LOCALINSTANCEPATH | INSTANCENAME)*  |            |                         |
//
// Key values are converted with the type the class declares for the key property, never with
// a type written in the document.
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <string>

namespace NQRN20 {

// INSTANCEPATH:
//   phase 0: NAMESPACEPATH
//   phase 1: INSTANCENAME
//   phase 2: nothing more
class TCIMXMLParser::TStateInstancePath : public TCIMXMLParser::TParseState {
public:
    TStateInstancePath(std::string* host, std::string* cimNamespace, TCIMReference* reference)
        : m_host(host), m_namespace(cimNamespace), m_reference(reference) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;

private:
    std::string* m_host;
    std::string* m_namespace;
    TCIMReference* m_reference;
};

// LOCALINSTANCEPATH:
//   phase 0: LOCALNAMESPACEPATH
//   phase 1: INSTANCENAME
//   phase 2: nothing more
class TCIMXMLParser::TStateLocalInstancePath : public TCIMXMLParser::TParseState {
public:
    TStateLocalInstancePath(std::string* cimNamespace, TCIMReference* reference)
        : m_namespace(cimNamespace), m_reference(reference) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;

private:
    std::string* m_namespace;
    TCIMReference* m_reference;
};

// INSTANCENAME:
//   phase 0: KEYBINDING (to phase 1) | KEYVALUE (to phase 2) | VALUE.REFERENCE (to phase 2)
//   phase 1: KEYBINDING*
//   phase 2: nothing more
// The class named by the classname attribute is looked up at once; an unnamed KEYVALUE goes to
// the class's first key property when the element ends.
class TCIMXMLParser::TStateInstanceName : public TCIMXMLParser::TParseState {
public:
    explicit TStateInstanceName(TCIMReference* reference) : m_reference(reference) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    void LookUpClass(TCIMXMLParser& parser);
    void AddUnnamedKey(TCIMXMLParser& parser);

    TCIMReference* m_reference;
    std::string m_className;
    std::string m_keyValueText;
    TCIMValue m_referenceValue;
    bool m_hasKeyValue = false;
    bool m_hasReference = false;
    boost::shared_ptr<ICIMClass> m_class;
};

// KEYBINDING: (KEYVALUE | VALUE.REFERENCE)*; the last KEYVALUE's text, or a reference, becomes
// the key named by the name attribute.
class TCIMXMLParser::TStateKeyBinding : public TCIMXMLParser::TParseState {
public:
    TStateKeyBinding(boost::shared_ptr<ICIMClass> cimClass, TCIMReference* reference)
        : m_class(cimClass), m_reference(reference) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    void AddConvertedKey(TCIMXMLParser& parser);

    boost::shared_ptr<ICIMClass> m_class;
    TCIMReference* m_reference;
    std::string m_keyName;
    bool m_hasReference = false;
    TCIMValue m_referenceValue;
    std::string m_keyValueText;
};

// KEYVALUE: its text, untrimmed; any type attribute is ignored.
class TCIMXMLParser::TStateKeyValue : public TCIMXMLParser::TParseState {
public:
    TStateKeyValue(TCIMXMLParser& parser, std::string* text);
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    std::string* m_text;
};

// VALUE.REFERENCE: one class path or instance path in any of its six forms. Only CLASSNAME and
// INSTANCENAME place the reference in the parser's namespace.
class TCIMXMLParser::TStateValueReference : public TCIMXMLParser::TParseState {
public:
    explicit TStateValueReference(TCIMValue* value);
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TCIMValue* m_value;
    bool m_hasInstanceName = false;
    bool m_hasClass = false;
    std::string m_host;
    std::string m_namespace;
    TCIMReference m_reference;
    std::string m_className;
};

} // namespace NQRN20
