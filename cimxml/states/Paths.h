// The states of namespace and class paths.
//
// | element            | content model                 | attributes | class                    |
// |--------------------|-------------------------------|------------|--------------------------|
// | NAMESPACEPATH      | HOST, LOCALNAMESPACEPATH      | -          | TStateNamespacePath      |
// | LOCALNAMESPACEPATH | NAMESPACE+                    | -          | TStateLocalNamespacePath |
// | HOST               | #PCDATA                       | -          | TStateHost               |
// | NAMESPACE          | EMPTY                         | name       | TStateNamespace          |
// | CLASSPATH          | NAMESPACEPATH, CLASSNAME      | -          | TStateClassPath          |
// | LOCALCLASSPATH     | LOCALNAMESPACEPATH, CLASSNAME | -          | TStateLocalClassPath     |
// | CLASSNAME          | EMPTY                         | name       | TStateClassName          |
//
// Each state writes its result into strings its parent owns. Only a class name is used further
// (by VALUE.REFERENCE); hosts and namespaces are kept for completeness, since every lookup goes
// to the parser's namespace.
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <string>

namespace NQRN20 {

// NAMESPACEPATH:
//   phase 0: HOST
//   phase 1: LOCALNAMESPACEPATH
//   phase 2: nothing more
class TCIMXMLParser::TStateNamespacePath : public TCIMXMLParser::TParseState {
public:
    TStateNamespacePath(std::string* host, std::string* cimNamespace)
        : m_host(host), m_namespace(cimNamespace) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;

private:
    std::string* m_host;
    std::string* m_namespace;
};

// LOCALNAMESPACEPATH: NAMESPACE+, the components joined with "/" into the namespace target.
class TCIMXMLParser::TStateLocalNamespacePath : public TCIMXMLParser::TParseState {
public:
    explicit TStateLocalNamespacePath(std::string* cimNamespace) : m_namespace(cimNamespace) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    std::string* m_namespace;
    std::string m_component;
    std::string m_path;
    bool m_seenNamespace = false;
};

// HOST: its text, as written, is the host.
class TCIMXMLParser::TStateHost : public TCIMXMLParser::TParseState {
public:
    TStateHost(TCIMXMLParser& parser, std::string* host);
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    std::string* m_host;
};

// NAMESPACE: one component of a namespace path, from its name attribute.
class TCIMXMLParser::TStateNamespace : public TCIMXMLParser::TParseState {
public:
    explicit TStateNamespace(std::string* component) : m_component(component) {}
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    std::string* m_component;
};

// CLASSPATH:
//   phase 0: NAMESPACEPATH
//   phase 1: CLASSNAME
//   phase 2: nothing more
class TCIMXMLParser::TStateClassPath : public TCIMXMLParser::TParseState {
public:
    TStateClassPath(std::string* host, std::string* cimNamespace, std::string* className)
        : m_host(host), m_namespace(cimNamespace), m_className(className) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;

private:
    std::string* m_host;
    std::string* m_namespace;
    std::string* m_className;
};

// LOCALCLASSPATH:
//   phase 0: LOCALNAMESPACEPATH
//   phase 1: CLASSNAME
//   phase 2: nothing more
class TCIMXMLParser::TStateLocalClassPath : public TCIMXMLParser::TParseState {
public:
    TStateLocalClassPath(std::string* cimNamespace, std::string* className)
        : m_namespace(cimNamespace), m_className(className) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;

private:
    std::string* m_namespace;
    std::string* m_className;
};

// CLASSNAME: EMPTY; the class name from its name attribute.
class TCIMXMLParser::TStateClassName : public TCIMXMLParser::TParseState {
public:
    explicit TStateClassName(std::string* className) : m_className(className) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    std::string* m_className;
};

} // namespace NQRN20
