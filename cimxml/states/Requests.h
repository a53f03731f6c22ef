// The states of request messages: CreateClass and CreateInstance calls.
//
// | element     | content model                      | attributes          | class             |
// |-------------|------------------------------------|---------------------|-------------------|
// | MESSAGE     | (SIMPLEREQ | MULTIREQ | SIMPLERSP)* | id, protocolversion | TStateMessage     |
// | SIMPLEREQ   | IMETHODCALL*                       | -                   | TStateSimpleReq   |
// | MULTIREQ    | SIMPLEREQ, SIMPLEREQ+              | -                   | TStateMultiReq    |
// | IMETHODCALL | LOCALNAMESPACEPATH, IPARAMVALUE*   | name                | TStateIMethodCall |
// | IPARAMVALUE | CLASS | INSTANCE                   | name                | TStateIParamValue |
//
// The objects of a request are committed but not collected: a caller of the loaders sees only
// the objects of declarations and returned classes.
#pragma once

#include "cimxml/CIMXMLParser.h"
#include "cimxml/states/ValueObjects.h"

#include <string>

namespace NQRN20 {

// MESSAGE: (SIMPLEREQ | MULTIREQ | SIMPLERSP)* in any order; protocol version 1.0 only.
class TCIMXMLParser::TStateMessage : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;
};

// SIMPLEREQ: IMETHODCALL* in any number.
class TCIMXMLParser::TStateSimpleReq : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
};

// MULTIREQ: SIMPLEREQ, SIMPLEREQ+; the phase counts the requests up to two.
class TCIMXMLParser::TStateMultiReq : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
};

// IMETHODCALL, named CreateClass or CreateInstance:
//   phase 0: LOCALNAMESPACEPATH
//   phase 1: IPARAMVALUE*
class TCIMXMLParser::TStateIMethodCall : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    std::string m_methodName;
    std::string m_namespace;
};

// IPARAMVALUE, named NewClass or NewInstance:
//   phase 0: CLASS | INSTANCE
//   phase 1: nothing more; the end commits the object without collecting it
class TCIMXMLParser::TStateIParamValue : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    std::string m_parameterName;
    TWrappedObject m_object;
};

} // namespace NQRN20
