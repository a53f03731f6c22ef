// The states of the document root, its declarations and its declaration groups.
#include "cimxml/states/Document.h"

#include "cimxml/Names.h"
#include "cimxml/states/Paths.h"
#include "cimxml/states/Qualifiers.h"
#include "cimxml/states/Requests.h"
#include "cimxml/states/ValueObjects.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

enum EDeclGroupPhase { kPhasePath = 0, kPhaseQualifierDeclarations = 1, kPhaseObjects = 2 };

} // namespace

// CIM: (DECLARATION | MESSAGE)*
void TCIMXMLParser::TStateCIM::StartElement(TCIMXMLParser& parser, const std::string& name,
                                            TAttributeMap& attributes) {
    if (name == kDeclaration) {
        parser.PushState(new (parser) TStateDeclaration(), attributes);
    } else if (name == kMessage) {
        parser.PushState(new (parser) TStateMessage(), attributes);
    } else {
        parser.RejectElement(name);
    }
}

void TCIMXMLParser::TStateCIM::ProcessAttributes(TCIMXMLParser&, TAttributeMap&) {}

// DECLARATION: (DECLGROUP | DECLGROUP.WITHNAME | DECLGROUP.WITHPATH)*
void TCIMXMLParser::TStateDeclaration::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                    TAttributeMap& attributes) {
    if (name == kDeclGroup) {
        parser.PushState(new (parser) TStateDeclGroup(), attributes);
    } else if (name == kDeclGroupWithName) {
        parser.PushState(new (parser) TStateDeclGroupWithName(), attributes);
    } else if (name == kDeclGroupWithPath) {
        parser.PushState(new (parser) TStateDeclGroupWithPath(), attributes);
    } else {
        parser.RejectElement(name);
    }
}

namespace {

// The content model both named and unnamed groups share; they differ only in the element that
// wraps their objects. Each phase passes a child it does not take on to the next, so the phase
// has advanced when a child is finally rejected.
template <class TObjectState>
void StartDeclGroupChild(TCIMXMLParser& parser, int32_t& phase, std::string& host,
                         std::string& cimNamespace, const std::string& name,
                         TAttributeMap& attributes, const char* objectElement) {
    switch (phase) {
    case kPhasePath:
        phase = kPhaseQualifierDeclarations;
        if (name == kNamespacePath) {
            parser.PushState(new (parser) TCIMXMLParser::TStateNamespacePath(&host, &cimNamespace),
                             attributes);
            return;
        }
        if (name == kLocalNamespacePath) {
            parser.PushState(new (parser) TCIMXMLParser::TStateLocalNamespacePath(&cimNamespace),
                             attributes);
            return;
        }
        [[fallthrough]];
    case kPhaseQualifierDeclarations:
        if (name == kQualifierDeclaration) {
            phase = kPhaseQualifierDeclarations;
            parser.PushState(new (parser) TCIMXMLParser::TStateQualifierDeclaration(), attributes);
            return;
        }
        phase = kPhaseObjects;
        [[fallthrough]];
    case kPhaseObjects:
        if (name != objectElement) {
            parser.RejectElement(name);
        }
        parser.PushState(new (parser) TObjectState(), attributes);
        return;
    default:
        parser.ReportStateCorrupt();
    }
}

} // namespace

// DECLGROUP: (NAMESPACEPATH | LOCALNAMESPACEPATH)?, QUALIFIER.DECLARATION*, VALUE.OBJECT*
void TCIMXMLParser::TStateDeclGroup::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                  TAttributeMap& attributes) {
    StartDeclGroupChild<TStateValueObject>(parser, m_phase, m_host, m_namespace, name, attributes,
                                           kValueObject);
}

// DECLGROUP.WITHNAME: (NAMESPACEPATH | LOCALNAMESPACEPATH)?, QUALIFIER.DECLARATION*,
//                     VALUE.NAMEDOBJECT*
void TCIMXMLParser::TStateDeclGroupWithName::StartElement(TCIMXMLParser& parser,
                                                          const std::string& name,
                                                          TAttributeMap& attributes) {
    StartDeclGroupChild<TStateValueNamedObject>(parser, m_phase, m_host, m_namespace, name,
                                                attributes, kValueNamedObject);
}

// DECLGROUP.WITHPATH: (VALUE.OBJECTWITHPATH | VALUE.OBJECTWITHLOCALPATH)*
void TCIMXMLParser::TStateDeclGroupWithPath::StartElement(TCIMXMLParser& parser,
                                                          const std::string& name,
                                                          TAttributeMap& attributes) {
    if (name == kValueObjectWithPath || name == kValueObjectWithLocalPath) {
        const bool local = name == kValueObjectWithLocalPath;
        parser.PushState(new (parser) TStateValueObjectWithPath(local), attributes);
    } else {
        parser.RejectElement(name);
    }
}

} // namespace NQRN20
