// The states of the document root, its declarations and its declaration groups.
//
// | element            | content model                                 | attributes | class                   |
// |--------------------|-----------------------------------------------|------------|-------------------------|
// | CIM                | (DECLARATION | MESSAGE)*                      | cimversion,| TStateCIM               |
// |                    |                                               | dtdversion |                         |
// | DECLARATION        | (DECLGROUP | DECLGROUP.WITHNAME |             | -          | TStateDeclaration       |
// |                    |  DECLGROUP.WITHPATH)*                         |            |                         |
// | DECLGROUP          | (NAMESPACEPATH | LOCALNAMESPACEPATH)?,        | -          | TStateDeclGroup         |
// |                    |  QUALIFIER.DECLARATION*, VALUE.OBJECT*        |            |                         |
// | DECLGROUP.WITHNAME | as DECLGROUP, with VALUE.NAMEDOBJECT*         | -          | TStateDeclGroupWithName |
// | DECLGROUP.WITHPATH | (VALUE.OBJECTWITHPATH |                       | -          | TStateDeclGroupWithPath |
// |                    |  VALUE.OBJECTWITHLOCALPATH)*                  |            |                         |
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <string>

namespace NQRN20 {

// CIM: (DECLARATION | MESSAGE)* in any order. The versions are read and not checked: documents
// of every version seen in practice load alike.
class TCIMXMLParser::TStateCIM : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;
};

// DECLARATION: (DECLGROUP | DECLGROUP.WITHNAME | DECLGROUP.WITHPATH)* in any order.
class TCIMXMLParser::TStateDeclaration : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
};

// DECLGROUP:
//   phase 0: (NAMESPACEPATH | LOCALNAMESPACEPATH)?
//   phase 1: QUALIFIER.DECLARATION*
//   phase 2: VALUE.OBJECT*
// The path is read into fields nothing uses: every object goes to the parser's namespace.
class TCIMXMLParser::TStateDeclGroup : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;

private:
    std::string m_host;
    std::string m_namespace;
};

// DECLGROUP.WITHNAME: as DECLGROUP, with VALUE.NAMEDOBJECT* in phase 2.
class TCIMXMLParser::TStateDeclGroupWithName : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;

private:
    std::string m_host;
    std::string m_namespace;
};

// DECLGROUP.WITHPATH: (VALUE.OBJECTWITHPATH | VALUE.OBJECTWITHLOCALPATH)* in any order.
class TCIMXMLParser::TStateDeclGroupWithPath : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
};

} // namespace NQRN20
