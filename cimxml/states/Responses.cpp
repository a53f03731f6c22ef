// The states of response messages: one returned class, named instance or qualifier declaration.
#include "cimxml/states/Responses.h"

#include "cimxml/Names.h"
#include "cimxml/states/Qualifiers.h"
#include "cimxml/states/Support.h"

namespace NQRN20 {

using namespace NCimXml;

// SIMPLERSP: IMETHODRESPONSE*
void TCIMXMLParser::TStateSimpleRsp::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                  TAttributeMap& attributes) {
    if (name != kIMethodResponse) {
        parser.RejectElement(name);
    }
    parser.PushState(new (parser) TStateMethodResponse(), attributes);
}

// IMETHODRESPONSE: (IRETURNVALUE | ERROR)*
void TCIMXMLParser::TStateMethodResponse::StartElement(TCIMXMLParser& parser,
                                                       const std::string& name,
                                                       TAttributeMap& attributes) {
    if (name == kIReturnValue) {
        parser.PushState(new (parser) TStateIReturnValue(), attributes);
    } else if (name == kError) {
        parser.PushState(new (parser) TStateError(), attributes);
    } else {
        parser.RejectElement(name);
    }
}

// IRETURNVALUE: CLASS | VALUE.NAMEDINSTANCE | QUALIFIER.DECLARATION
void TCIMXMLParser::TStateIReturnValue::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                     TAttributeMap& attributes) {
    if (m_phase == 0 && name == kClass) {
        m_phase = 1;
        m_object.Push(parser, name, attributes);
    } else if (m_phase == 0 && name == kValueNamedInstance) {
        m_phase = 1;
        parser.PushState(new (parser) TStateValueNamedInstance(), attributes);
    } else if (m_phase == 0 && name == kQualifierDeclaration) {
        m_phase = 1;
        parser.PushState(new (parser) TStateQualifierDeclaration(), attributes);
    } else if (m_phase >= 0 && m_phase <= 1) {
        parser.RejectElement(name);
    } else {
        parser.ReportStateCorrupt();
    }
}

// A named instance or qualifier declaration has finished its own work by now; only a class is
// committed and collected here.
void TCIMXMLParser::TStateIReturnValue::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (m_phase != 1) {
        parser.FatalError(kSyntaxError);
    }
    if (m_object.m_isClass) {
        m_object.Commit(parser, TWrappedObject::kCommitAndCollect);
    }
    parser.PopState();
}

// ERROR: EMPTY
void TCIMXMLParser::TStateError::StartElement(TCIMXMLParser& parser, const std::string& name,
                                              TAttributeMap&) {
    parser.RejectElement(name);
}

} // namespace NQRN20
