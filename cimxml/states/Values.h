// The states of values, wherever a value is expected, and of elements skipped whole.
//
// | element     | content model | attributes | class            |
// |-------------|---------------|------------|------------------|
// | VALUE       | #PCDATA       | -          | TStateValue      |
// | VALUE.ARRAY | VALUE*        | -          | TStateValueArray |
// | (any)       | anything      | -          | TStateSkip       |
//
// Instances, classes, qualifiers and parameters all hold their values through these.
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NQRN20 {

// VALUE: its text, converted to the type its parent gives, goes to the parent's target.
class TCIMXMLParser::TStateValue : public TCIMXMLParser::TParseState {
public:
    TStateValue(TCIMXMLParser& parser, TCIMValue* target, TCIMValue::TCIMType type);
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TCIMValue* m_target;
    TCIMValue::TCIMType m_type;
};

// VALUE.ARRAY: VALUE*; the values, each converted to the element type, become one array value.
class TCIMXMLParser::TStateValueArray : public TCIMXMLParser::TParseState {
public:
    TStateValueArray(TCIMValue* target, TCIMValue::TCIMType type, uint32_t arraySize)
        : m_target(target), m_type(type), m_arraySize(arraySize) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TCIMValue* m_target;
    TCIMValue::TCIMType m_type;
    uint32_t m_arraySize;
    std::vector<TCIMValue> m_elements;
};

// Any element whose content has no effect: counts the elements nested in it and pops itself at
// its own end, so that nothing inside reaches the state below.
class TCIMXMLParser::TStateSkip : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    uint32_t m_depth = 0;
};

} // namespace NQRN20
