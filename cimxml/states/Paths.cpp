// The states of namespace and class paths.
#include "cimxml/states/Paths.h"

#include "cimxml/Names.h"
#include "cimxml/states/Support.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

const char kNoNamespace[] = "Unexpected at least 1 NAMESPACE element";
const char kNamespaceSeparator = '/';

} // namespace

// NAMESPACEPATH: HOST, LOCALNAMESPACEPATH
void TCIMXMLParser::TStateNamespacePath::StartElement(TCIMXMLParser& parser,
                                                      const std::string& name,
                                                      TAttributeMap& attributes) {
    if (AdvancePathPart(parser, m_phase, name, kHost, kLocalNamespacePath) == 0) {
        parser.PushState(new (parser) TStateHost(parser, m_host), attributes);
    } else {
        parser.PushState(new (parser) TStateLocalNamespacePath(m_namespace), attributes);
    }
}

// LOCALNAMESPACEPATH: NAMESPACE+
void TCIMXMLParser::TStateLocalNamespacePath::StartElement(TCIMXMLParser& parser,
                                                           const std::string& name,
                                                           TAttributeMap& attributes) {
    if (name != kNamespace) {
        parser.RejectElement(name);
    }
    m_seenNamespace = true;
    m_component.clear();
    parser.PushState(new (parser) TStateNamespace(&m_component), attributes);
    if (!m_component.empty()) {
        if (!m_path.empty()) {
            m_path += kNamespaceSeparator;
        }
        m_path += m_component;
    }
}

void TCIMXMLParser::TStateLocalNamespacePath::EndElement(TCIMXMLParser& parser,
                                                         const std::string&) {
    if (!m_seenNamespace) {
        parser.FatalError(kNoNamespace);
    }
    *m_namespace = m_path;
    parser.PopState();
}

// HOST: #PCDATA
TCIMXMLParser::TStateHost::TStateHost(TCIMXMLParser& parser, std::string* host) : m_host(host) {
    parser.BeginText();
}

void TCIMXMLParser::TStateHost::EndElement(TCIMXMLParser& parser, const std::string&) {
    *m_host = parser.EndText();
    parser.PopState();
}

// NAMESPACE: EMPTY
void TCIMXMLParser::TStateNamespace::ProcessAttributes(TCIMXMLParser& parser,
                                                       TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, m_component);
    }
}

// CLASSPATH: NAMESPACEPATH, CLASSNAME
void TCIMXMLParser::TStateClassPath::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                  TAttributeMap& attributes) {
    if (AdvancePathPart(parser, m_phase, name, kNamespacePath, kClassName) == 0) {
        parser.PushState(new (parser) TStateNamespacePath(m_host, m_namespace), attributes);
    } else {
        parser.PushState(new (parser) TStateClassName(m_className), attributes);
    }
}

// LOCALCLASSPATH: LOCALNAMESPACEPATH, CLASSNAME
void TCIMXMLParser::TStateLocalClassPath::StartElement(TCIMXMLParser& parser,
                                                       const std::string& name,
                                                       TAttributeMap& attributes) {
    if (AdvancePathPart(parser, m_phase, name, kLocalNamespacePath, kClassName) == 0) {
        parser.PushState(new (parser) TStateLocalNamespacePath(m_namespace), attributes);
    } else {
        parser.PushState(new (parser) TStateClassName(m_className), attributes);
    }
}

// CLASSNAME: EMPTY
void TCIMXMLParser::TStateClassName::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                  TAttributeMap&) {
    parser.RejectElement(name);
}

void TCIMXMLParser::TStateClassName::ProcessAttributes(TCIMXMLParser& parser,
                                                       TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, m_className);
    }
}

} // namespace NQRN20
