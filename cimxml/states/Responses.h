// The states of response messages: one returned class, named instance or qualifier declaration.
//
// | element         | content model                        | attributes | class                |
// |-----------------|--------------------------------------|------------|----------------------|
// | SIMPLERSP       | IMETHODRESPONSE*                     | -          | TStateSimpleRsp      |
// | IMETHODRESPONSE | (IRETURNVALUE | ERROR)*              | -          | TStateMethodResponse |
// | IRETURNVALUE    | CLASS | VALUE.NAMEDINSTANCE |          | -          | TStateIReturnValue   |
// |                 |  QUALIFIER.DECLARATION               |            |                      |
// | ERROR           | EMPTY                                | -          | TStateError          |
#pragma once

#include "cimxml/CIMXMLParser.h"
#include "cimxml/states/ValueObjects.h"

#include <string>

namespace NQRN20 {

// SIMPLERSP: IMETHODRESPONSE* in any number.
class TCIMXMLParser::TStateSimpleRsp : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
};

// IMETHODRESPONSE: (IRETURNVALUE | ERROR)* in any order.
class TCIMXMLParser::TStateMethodResponse : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
};

// IRETURNVALUE:
//   phase 0: CLASS | VALUE.NAMEDINSTANCE | QUALIFIER.DECLARATION
//   phase 1: nothing more; the end commits and collects a class
class TCIMXMLParser::TStateIReturnValue : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TWrappedObject m_object;
};

// ERROR: EMPTY; its code and description are not read.
class TCIMXMLParser::TStateError : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
};

} // namespace NQRN20
