// The states of request messages: CreateClass and CreateInstance calls.
#include "cimxml/states/Requests.h"

#include "cimxml/Names.h"
#include "cimxml/states/Paths.h"
#include "cimxml/states/Responses.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

const char kProtocolVersion[] = "1.0";
const char* const kMethodNames[] = {"CreateClass", "CreateInstance", "Create Instance"};
const char* const kParameterNames[] = {"NewClass", "NewInstance"};

const char kUnknownProtocolVersion[] = "Unknown protocol version";
const char kInvalidMultiReq[] = "Invalid MULTIREQ";
const char kUnexpectedMethod[] = "Unexpected IMethodCall method ";
const char kUnexpectedParameter[] = "Unexpected IParamValue parameter name";

template <size_t kCount>
bool IsOneOf(const std::string& name, const char* const (&names)[kCount]) {
    for (const char* candidate : names) {
        if (name == candidate) {
            return true;
        }
    }
    return false;
}

} // namespace

// MESSAGE: (SIMPLEREQ | MULTIREQ | SIMPLERSP)*
void TCIMXMLParser::TStateMessage::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                TAttributeMap& attributes) {
    if (name == kSimpleReq) {
        parser.PushState(new (parser) TStateSimpleReq(), attributes);
    } else if (name == kMultiReq) {
        parser.PushState(new (parser) TStateMultiReq(), attributes);
    } else if (name == kSimpleRsp) {
        parser.PushState(new (parser) TStateSimpleRsp(), attributes);
    } else {
        parser.RejectElement(name);
    }
}

void TCIMXMLParser::TStateMessage::ProcessAttributes(TCIMXMLParser& parser,
                                                     TAttributeMap& attributes) {
    const auto version = attributes.find(std::string(kAttrProtocolVersion));
    if (version != attributes.end() && version->second != kProtocolVersion) {
        parser.FatalError(kUnknownProtocolVersion);
    }
}

// SIMPLEREQ: IMETHODCALL*
void TCIMXMLParser::TStateSimpleReq::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                  TAttributeMap& attributes) {
    if (name != kIMethodCall) {
        parser.RejectElement(name);
    }
    parser.PushState(new (parser) TStateIMethodCall(), attributes);
}

// MULTIREQ: SIMPLEREQ, SIMPLEREQ+
void TCIMXMLParser::TStateMultiReq::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                 TAttributeMap& attributes) {
    if (m_phase < 0 || m_phase > 2) {
        parser.ReportStateCorrupt();
    }
    if (name != kSimpleReq) {
        parser.RejectElement(name);
    }
    if (m_phase < 2) {
        ++m_phase;
    }
    parser.PushState(new (parser) TStateSimpleReq(), attributes);
}

void TCIMXMLParser::TStateMultiReq::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (m_phase != 2) {
        parser.FatalError(kInvalidMultiReq);
    }
    parser.PopState();
}

// IMETHODCALL: LOCALNAMESPACEPATH, IPARAMVALUE*
void TCIMXMLParser::TStateIMethodCall::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                    TAttributeMap& attributes) {
    if (m_phase == 0 && name == kLocalNamespacePath) {
        m_phase = 1;
        parser.PushState(new (parser) TStateLocalNamespacePath(&m_namespace), attributes);
    } else if (m_phase == 1 && name == kIParamValue) {
        parser.PushState(new (parser) TStateIParamValue(), attributes);
    } else if (m_phase >= 0 && m_phase <= 1) {
        parser.RejectElement(name);
    } else {
        parser.ReportStateCorrupt();
    }
}

void TCIMXMLParser::TStateIMethodCall::ProcessAttributes(TCIMXMLParser& parser,
                                                         TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_methodName);
    }
    if (!IsOneOf(m_methodName, kMethodNames)) {
        parser.FatalError(kUnexpectedMethod + m_methodName);
    }
}

// IPARAMVALUE: CLASS | INSTANCE
void TCIMXMLParser::TStateIParamValue::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                    TAttributeMap& attributes) {
    m_object.StartSoleObject(parser, m_phase, name, attributes);
}

void TCIMXMLParser::TStateIParamValue::EndElement(TCIMXMLParser& parser, const std::string&) {
    m_object.End(parser, m_phase == 1, TWrappedObject::kCommitOnly);
}

void TCIMXMLParser::TStateIParamValue::ProcessAttributes(TCIMXMLParser& parser,
                                                         TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_parameterName);
    }
    if (!IsOneOf(m_parameterName, kParameterNames)) {
        parser.FatalError(kUnexpectedParameter);
    }
}

} // namespace NQRN20
