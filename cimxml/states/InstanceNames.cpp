// The states of instance paths, instance names, key bindings and reference values.
#include "cimxml/states/InstanceNames.h"

#include "cimxml/Names.h"
#include "cimxml/states/Paths.h"
#include "cimxml/states/Support.h"

#include <utility>
#include <vector>

namespace NQRN20 {

using namespace NCimXml;

namespace {

const char kCouldntFindClassName[] = "Couldn't find class name ";
const char kNamespaceGone[] = ": the namespace no longer exists";
const char kNoClassForKey[] = "No class to match the key against: ";

std::string NoKeyProperties(const std::string& className) {
    return "Class " + className + " doesn't have any key properties";
}

} // namespace

// INSTANCEPATH: NAMESPACEPATH, INSTANCENAME
void TCIMXMLParser::TStateInstancePath::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                     TAttributeMap& attributes) {
    if (AdvancePathPart(parser, m_phase, name, kNamespacePath, kInstanceName) == 0) {
        parser.PushState(new (parser) TStateNamespacePath(m_host, m_namespace), attributes);
    } else {
        parser.PushState(new (parser) TStateInstanceName(m_reference), attributes);
    }
}

// LOCALINSTANCEPATH: LOCALNAMESPACEPATH, INSTANCENAME
void TCIMXMLParser::TStateLocalInstancePath::StartElement(TCIMXMLParser& parser,
                                                          const std::string& name,
                                                          TAttributeMap& attributes) {
    if (AdvancePathPart(parser, m_phase, name, kLocalNamespacePath, kInstanceName) == 0) {
        parser.PushState(new (parser) TStateLocalNamespacePath(m_namespace), attributes);
    } else {
        parser.PushState(new (parser) TStateInstanceName(m_reference), attributes);
    }
}

// INSTANCENAME: KEYBINDING* | KEYVALUE? | VALUE.REFERENCE?
void TCIMXMLParser::TStateInstanceName::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                     TAttributeMap& attributes) {
    if (m_phase == 0 && name == kKeyValue) {
        m_hasKeyValue = true;
        m_phase = 2;
        parser.PushState(new (parser) TStateKeyValue(parser, &m_keyValueText), attributes);
    } else if (m_phase == 0 && name == kValueReference) {
        m_hasReference = true;
        m_phase = 2;
        parser.PushState(new (parser) TStateValueReference(&m_referenceValue), attributes);
    } else if ((m_phase == 0 || m_phase == 1) && name == kKeyBinding) {
        m_phase = 1;
        parser.PushState(new (parser) TStateKeyBinding(m_class, m_reference), attributes);
    } else if (m_phase >= 0 && m_phase <= 2) {
        parser.RejectElement(name);
    } else {
        parser.ReportStateCorrupt();
    }
}

void TCIMXMLParser::TStateInstanceName::ProcessAttributes(TCIMXMLParser& parser,
                                                          TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        if (parser.HandleClassName(it, &m_className)) {
            LookUpClass(parser);
        }
    }
}

void TCIMXMLParser::TStateInstanceName::LookUpClass(TCIMXMLParser& parser) {
    m_reference->SetClassName(m_className);
    const boost::shared_ptr<ICIMNamespace> cimNamespace = parser.LockNamespace();
    if (!cimNamespace) {
        parser.FatalError(kCouldntFindClassName + m_className + kNamespaceGone);
    }
    try {
        m_class = cimNamespace->GetClass(m_className, TCIMOptions());
    } catch (const TQRNException& error) {
        if (error.GetStatus() == kQRNStatusNotFound) {
            parser.FatalError(kCouldntFindClassName + m_className);
        }
        throw;
    }
}

// A reference child replaces the whole name; key bindings have added their keys already; an
// unnamed key value goes to the class's first key property.
void TCIMXMLParser::TStateInstanceName::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (m_hasReference) {
        *m_reference = static_cast<TCIMReference>(m_referenceValue);
    } else if (m_hasKeyValue) {
        AddUnnamedKey(parser);
    }
    parser.PopState();
}

void TCIMXMLParser::TStateInstanceName::AddUnnamedKey(TCIMXMLParser& parser) {
    if (!m_class) {
        parser.FatalError(kNoClassForKey + m_className);
    }
    const std::vector<boost::shared_ptr<ICIMPropertyDecl>> keys = KeyPropertyDecls(*m_class);
    if (keys.empty()) {
        parser.FatalError(NoKeyProperties(m_className));
    }
    m_reference->AddKeyValue(
        keys.front()->GetName(TCIMOptions()),
        parser.ParseValue(keys.front()->GetType(TCIMOptions()), m_keyValueText));
}

// KEYBINDING: (KEYVALUE | VALUE.REFERENCE)*
void TCIMXMLParser::TStateKeyBinding::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                   TAttributeMap& attributes) {
    if (name == kKeyValue) {
        parser.PushState(new (parser) TStateKeyValue(parser, &m_keyValueText), attributes);
    } else if (name == kValueReference) {
        m_hasReference = true;
        parser.PushState(new (parser) TStateValueReference(&m_referenceValue), attributes);
    } else {
        parser.RejectElement(name);
    }
}

void TCIMXMLParser::TStateKeyBinding::ProcessAttributes(TCIMXMLParser& parser,
                                                        TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_keyName);
    }
}

// A reference is bound as it is; a key value is converted with its property's declared type.
void TCIMXMLParser::TStateKeyBinding::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (m_hasReference) {
        m_reference->AddKeyValue(std::move(m_keyName), std::move(m_referenceValue));
    } else {
        AddConvertedKey(parser);
    }
    parser.PopState();
}

void TCIMXMLParser::TStateKeyBinding::AddConvertedKey(TCIMXMLParser& parser) {
    if (!m_class) {
        parser.FatalError(kNoClassForKey + m_keyName);
    }
    boost::shared_ptr<ICIMPropertyDecl> declaration;
    try {
        declaration = m_class->GetPropertyDecl(m_keyName, TCIMOptions());
    } catch (const TQRNException& error) {
        if (error.GetStatus() == kQRNStatusNotFound) {
            parser.FatalError("Couldn't find property name " + m_keyName + " in class " +
                              m_class->GetName(TCIMOptions()));
        }
        throw;
    }
    if (IsKeyProperty(*declaration)) {
        m_reference->AddKeyValue(
            std::move(m_keyName),
            parser.ParseValue(declaration->GetType(TCIMOptions()), m_keyValueText));
        return;
    }
    parser.FatalError(NoKeyProperties(m_class->GetName(TCIMOptions())));
}

// KEYVALUE: #PCDATA
TCIMXMLParser::TStateKeyValue::TStateKeyValue(TCIMXMLParser& parser, std::string* text)
    : m_text(text) {
    parser.BeginText();
}

void TCIMXMLParser::TStateKeyValue::EndElement(TCIMXMLParser& parser, const std::string&) {
    *m_text = parser.EndText();
    parser.PopState();
}

// VALUE.REFERENCE: CLASSPATH | LOCALCLASSPATH | CLASSNAME | INSTANCEPATH | LOCALINSTANCEPATH
//                  | INSTANCENAME, any of them, any number of times
TCIMXMLParser::TStateValueReference::TStateValueReference(TCIMValue* value)
    : m_value(value),
      m_reference(boost::shared_ptr<ICIMNamespace>(), std::map<std::string, TCIMValue>()) {}

void TCIMXMLParser::TStateValueReference::StartElement(TCIMXMLParser& parser,
                                                       const std::string& name,
                                                       TAttributeMap& attributes) {
    if (name == kClassPath) {
        m_hasClass = true;
        parser.PushState(new (parser) TStateClassPath(&m_host, &m_namespace, &m_className),
                         attributes);
    } else if (name == kLocalClassPath) {
        m_hasClass = true;
        parser.PushState(new (parser) TStateLocalClassPath(&m_namespace, &m_className), attributes);
    } else if (name == kClassName) {
        m_reference.SetNamespace(parser.LockNamespace());
        m_hasClass = true;
        parser.PushState(new (parser) TStateClassName(&m_className), attributes);
    } else if (name == kInstancePath) {
        parser.PushState(new (parser) TStateInstancePath(&m_host, &m_namespace, &m_reference),
                         attributes);
    } else if (name == kLocalInstancePath) {
        parser.PushState(new (parser) TStateLocalInstancePath(&m_namespace, &m_reference),
                         attributes);
    } else if (name == kInstanceName) {
        m_reference.SetNamespace(parser.LockNamespace());
        m_hasInstanceName = true;
        parser.PushState(new (parser) TStateInstanceName(&m_reference), attributes);
    } else {
        parser.RejectElement(name);
    }
}

// A path's host and namespace stay with the reference, though no lookup goes there.
void TCIMXMLParser::TStateValueReference::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (m_hasClass && !m_hasInstanceName) {
        m_reference.SetClassName(m_className);
    }
    if (!m_host.empty()) {
        m_reference.SetHost(m_host);
    }
    if (!m_namespace.empty()) {
        m_reference.SetNamespaceName(m_namespace);
    }
    // The reference is handed over: the state ends here.
    m_value->Set(std::move(m_reference));
    parser.PopState();
}

} // namespace NQRN20
