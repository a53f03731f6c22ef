// The states of qualifiers, qualifier declarations and their scopes.
//
// | element               | content model                 | attributes read                                         | class                      |
// |-----------------------|-------------------------------|---------------------------------------------------------|----------------------------|
// | QUALIFIER             | (VALUE | VALUE.ARRAY)*        | name, type, propagated, overridable, tosubclass,        | TStateQualifier            |
// |                       |                               |   translatable                                          |                            |
// | QUALIFIER.DECLARATION | SCOPE, (VALUE | VALUE.ARRAY)* | name, type, isarray, arraysize, overridable,            | TStateQualifierDeclaration |
// |                       |                               |   tosubclass, translatable                              |                            |
// | SCOPE                 | EMPTY                         | class, association, reference, property, method,        | TStateScope                |
// |                       |                               |   parameter, indication, any                            |                            |
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <cstdint>
#include <string>
#include <utility>

namespace NQRN20 {

// QUALIFIER: (VALUE | VALUE.ARRAY)*, the last value standing. At the end the declaration is
// looked up and the qualifier attached to its owner, unless it is propagated.
class TCIMXMLParser::TStateQualifier : public TCIMXMLParser::TParseState {
public:
    explicit TStateQualifier(boost::shared_ptr<ICIMNamedElement> owner)
        : m_owner(std::move(owner)) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    boost::shared_ptr<ICIMNamedElement> m_owner;
    std::string m_name;
    TCIMValue::TCIMType m_type;
    bool m_propagated = false;
    ICIMQualifierDecl::EFlavor m_flavor = static_cast<ICIMQualifierDecl::EFlavor>(
        ICIMQualifierDecl::kFlavorOverridable | ICIMQualifierDecl::kFlavorToSubclass);
    TCIMValue m_value;
    bool m_valueSeen = false;
};

// QUALIFIER.DECLARATION:
//   phase 0: SCOPE
//   phase 1: (VALUE | VALUE.ARRAY)*, the last value standing
// The end checks the array attributes against each other and the value, then creates and
// commits the declaration.
class TCIMXMLParser::TStateQualifierDeclaration : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

    // Written by the SCOPE child.
    uint32_t m_scope = 0;

private:
    bool HasCompatibleArrayAttributes() const;

    std::string m_name;
    TCIMValue::TCIMType m_type;
    bool m_isArray = false;
    bool m_isArrayGiven = false;
    uint32_t m_arraySize = 0;
    ICIMQualifierDecl::EFlavor m_flavor = static_cast<ICIMQualifierDecl::EFlavor>(
        ICIMQualifierDecl::kFlavorOverridable | ICIMQualifierDecl::kFlavorToSubclass);
    TCIMValue m_value;
    bool m_valueSeen = false;
};

// SCOPE: EMPTY; each attribute that is "true" adds its element kind's bit to the declaration's
// scope.
class TCIMXMLParser::TStateScope : public TCIMXMLParser::TParseState {
public:
    explicit TStateScope(TStateQualifierDeclaration* declaration) : m_declaration(declaration) {}
    void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes) override;

private:
    TStateQualifierDeclaration* m_declaration;
};

} // namespace NQRN20
