// The states of values, wherever a value is expected, and of elements skipped whole.
#include "cimxml/states/Values.h"

#include "cimxml/Names.h"

#include <utility>

namespace NQRN20 {

using namespace NCimXml;

// VALUE: #PCDATA
TCIMXMLParser::TStateValue::TStateValue(TCIMXMLParser& parser, TCIMValue* target,
                                        TCIMValue::TCIMType type)
    : m_target(target), m_type(type) {
    parser.BeginText();
}

void TCIMXMLParser::TStateValue::EndElement(TCIMXMLParser& parser, const std::string&) {
    *m_target = parser.ParseValue(m_type, parser.EndText());
    parser.PopState();
}

// VALUE.ARRAY: VALUE*
// The vector grows only when the next VALUE starts, after the previous one's state has been
// popped, so each value state's target stays valid for its whole life.
void TCIMXMLParser::TStateValueArray::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                   TAttributeMap& attributes) {
    if (name != kValue) {
        parser.RejectElement(name);
    }
    // Arrays mostly hold a few values: one block then, rather than one per growth step.
    if (m_elements.empty()) {
        m_elements.reserve(8);
    }
    m_elements.emplace_back(m_type, 0);
    parser.PushState(new (parser) TStateValue(parser, &m_elements.back(), m_type), attributes);
}

// The elements are handed over: the state ends here.
void TCIMXMLParser::TStateValueArray::EndElement(TCIMXMLParser& parser, const std::string&) {
    m_target->Set(m_type, m_arraySize, std::move(m_elements));
    parser.PopState();
}

// (any): anything; only nesting is counted
void TCIMXMLParser::TStateSkip::StartElement(TCIMXMLParser&, const std::string&, TAttributeMap&) {
    ++m_depth;
}

void TCIMXMLParser::TStateSkip::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (m_depth == 0) {
        parser.PopState();
    } else {
        --m_depth;
    }
}

} // namespace NQRN20
