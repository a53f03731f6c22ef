// The states of value objects: where a finished class or instance is committed and collected.
#include "cimxml/states/ValueObjects.h"

#include "cimxml/Names.h"
#include "cimxml/states/Classes.h"
#include "cimxml/states/InstanceNames.h"
#include "cimxml/states/Instances.h"
#include "cimxml/states/Paths.h"
#include "cimxml/states/Support.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

const char kObjectNotCreated[] =
    "CIM element holds no object: its class or instance was not created";

} // namespace

bool TCIMXMLParser::TWrappedObject::IsObject(const std::string& name) {
    return name == kClass || name == kInstance;
}

void TCIMXMLParser::TWrappedObject::Push(TCIMXMLParser& parser, const std::string& name,
                                         TAttributeMap& attributes) {
    m_isClass = name == kClass;
    if (m_isClass) {
        parser.PushState(new (parser) TStateClass(&m_class), attributes);
    } else {
        parser.PushState(new (parser) TStateInstance(&m_instance), attributes);
    }
}

// CLASS | INSTANCE, then nothing more: phase 1 once the object has started.
void TCIMXMLParser::TWrappedObject::StartSoleObject(TCIMXMLParser& parser, int32_t& phase,
                                                    const std::string& name,
                                                    TAttributeMap& attributes) {
    if (phase == 0 && IsObject(name)) {
        phase = 1;
        Push(parser, name, attributes);
    } else if (phase >= 0 && phase <= 1) {
        parser.RejectElement(name);
    } else {
        parser.ReportStateCorrupt();
    }
}

void TCIMXMLParser::TWrappedObject::Commit(TCIMXMLParser& parser, ECollect collect) {
    if (m_isClass ? !m_class : !m_instance) {
        parser.FatalError(kObjectNotCreated);
    }
    if (m_isClass) {
        if (!CommitAllowingDuplicate(m_class)) {
            parser.m_tally.m_duplicateClasses.push_back(m_class->GetName(TCIMOptions()));
            return;
        }
        ++parser.m_tally.m_classes;
        if (collect == kCommitAndCollect) {
            parser.m_classesCollected.push_back(m_class);
        }
        return;
    }
    try {
        m_instance->Commit(TCIMOptions());
    } catch (const TQRNException& error) {
        if (error.GetStatus() == kQRNStatusAlreadyExists) {
            parser.m_tally.m_duplicateInstances.push_back(InstancePathText(*m_instance));
        }
        throw;
    }
    ++parser.m_tally.m_instances;
    if (collect == kCommitAndCollect) {
        parser.m_instancesCollected.push_back(m_instance);
    }
}

void TCIMXMLParser::TWrappedObject::End(TCIMXMLParser& parser, bool complete, ECollect collect) {
    if (!complete) {
        parser.FatalError(kSyntaxError);
    }
    Commit(parser, collect);
    parser.PopState();
}

// VALUE.OBJECT: CLASS | INSTANCE
void TCIMXMLParser::TStateValueObject::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                    TAttributeMap& attributes) {
    m_object.StartSoleObject(parser, m_phase, name, attributes);
}

void TCIMXMLParser::TStateValueObject::EndElement(TCIMXMLParser& parser, const std::string&) {
    m_object.End(parser, m_phase == 1, TWrappedObject::kCommitAndCollect);
}

// VALUE.NAMEDOBJECT: CLASS | (INSTANCENAME, INSTANCE)
void TCIMXMLParser::TStateValueNamedObject::StartElement(TCIMXMLParser& parser,
                                                         const std::string& name,
                                                         TAttributeMap& attributes) {
    if ((m_phase == 0 && name == kClass) || (m_phase == 1 && name == kInstance)) {
        m_phase = 2;
        m_object.Push(parser, name, attributes);
    } else if (m_phase == 0 && name == kInstanceName) {
        m_phase = 1;
        parser.PushState(new (parser) TStateInstanceName(&m_instanceName), attributes);
    } else if (m_phase >= 0 && m_phase <= 2) {
        parser.RejectElement(name);
    } else {
        parser.ReportStateCorrupt();
    }
}

void TCIMXMLParser::TStateValueNamedObject::EndElement(TCIMXMLParser& parser, const std::string&) {
    m_object.End(parser, m_phase == 2, TWrappedObject::kCommitAndCollect);
}

// VALUE.OBJECTWITHPATH: (CLASSPATH, CLASS) | (INSTANCEPATH, INSTANCE)
// VALUE.OBJECTWITHLOCALPATH: (LOCALCLASSPATH, CLASS) | (LOCALINSTANCEPATH, INSTANCE)
void TCIMXMLParser::TStateValueObjectWithPath::StartElement(TCIMXMLParser& parser,
                                                            const std::string& name,
                                                            TAttributeMap& attributes) {
    const TName classPath = m_local ? TName(kLocalClassPath) : kClassPath;
    const TName instancePath = m_local ? TName(kLocalInstancePath) : kInstancePath;
    if (m_phase == 0 && (name == classPath || name == instancePath)) {
        m_phase = name == classPath ? 1 : 2;
        parser.PushState(NewPathState(parser, m_phase == 2), attributes);
    } else if ((m_phase == 1 && name == kClass) || (m_phase == 2 && name == kInstance)) {
        m_phase = 3;
        m_object.Push(parser, name, attributes);
    } else if (m_phase >= 0 && m_phase <= 3) {
        parser.RejectElement(name);
    } else {
        parser.ReportStateCorrupt();
    }
}

void TCIMXMLParser::TStateValueObjectWithPath::EndElement(TCIMXMLParser& parser,
                                                          const std::string&) {
    m_object.End(parser, m_phase == 3, TWrappedObject::kCommitAndCollect);
}

// The four path states fill the same fields; a local path has no host.
TCIMXMLParser::TParseState*
TCIMXMLParser::TStateValueObjectWithPath::NewPathState(TCIMXMLParser& parser, bool instance) {
    if (instance) {
        if (m_local) {
            return new (parser) TStateLocalInstancePath(&m_namespace, &m_instancePath);
        }
        return new (parser) TStateInstancePath(&m_host, &m_namespace, &m_instancePath);
    }
    if (m_local) {
        return new (parser) TStateLocalClassPath(&m_namespace, &m_className);
    }
    return new (parser) TStateClassPath(&m_host, &m_namespace, &m_className);
}

// VALUE.NAMEDINSTANCE: INSTANCENAME, INSTANCE
void TCIMXMLParser::TStateValueNamedInstance::StartElement(TCIMXMLParser& parser,
                                                           const std::string& name,
                                                           TAttributeMap& attributes) {
    if (m_phase == 0 && name == kInstanceName) {
        m_phase = 1;
        parser.PushState(new (parser) TStateInstanceName(&m_instanceName), attributes);
    } else if (m_phase == 1 && name == kInstance) {
        m_phase = 2;
        m_object.Push(parser, name, attributes);
    } else if (m_phase >= 0 && m_phase <= 2) {
        parser.RejectElement(name);
    } else {
        parser.ReportStateCorrupt();
    }
}

void TCIMXMLParser::TStateValueNamedInstance::EndElement(TCIMXMLParser& parser,
                                                         const std::string&) {
    m_object.End(parser, m_phase == 2, TWrappedObject::kCommitOnly);
}

} // namespace NQRN20
