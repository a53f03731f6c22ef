// The states of value objects: where a finished class or instance is committed and collected.
//
// | element                   | content model                    | attributes | class                          |
// |---------------------------|----------------------------------|------------|--------------------------------|
// | VALUE.OBJECT              | CLASS | INSTANCE                 | -          | TStateValueObject              |
// | VALUE.NAMEDOBJECT         | CLASS | (INSTANCENAME, INSTANCE) | -          | TStateValueNamedObject         |
// | VALUE.OBJECTWITHPATH      | (CLASSPATH, CLASS) |             | -          | TStateValueObjectWithPath      |
// |                           |  (INSTANCEPATH, INSTANCE)        |            |                                |
// | VALUE.OBJECTWITHLOCALPATH | (LOCALCLASSPATH, CLASS) |        | -          | TStateValueObjectWithPath      |
// |                           |  (LOCALINSTANCEPATH, INSTANCE)   |            |                                |
// | VALUE.NAMEDINSTANCE       | INSTANCENAME, INSTANCE           | -          | TStateValueNamedInstance       |
//
// The paths and names are parsed (so their errors are reported) and then not used: the object
// goes to the parser's namespace. The first four commit their object and collect it in document
// order; VALUE.NAMEDINSTANCE, a server's answer, only commits.
#pragma once

#include "cimxml/CIMXMLParser.h"

#include <string>

namespace NQRN20 {

// The class or instance an element wraps; its CLASS or INSTANCE child creates it through the
// slots. Shared with the parameter and return value states of messages.
struct TCIMXMLParser::TWrappedObject {
    enum ECollect { kCommitOnly, kCommitAndCollect };

    // Whether the element is one of the two objects an element can wrap, CLASS or INSTANCE.
    static bool IsObject(const std::string& name);
    // Pushes the state of a CLASS or INSTANCE child, which creates the object into its slot.
    void Push(TCIMXMLParser& parser, const std::string& name, TAttributeMap& attributes);
    // The content of an element that wraps exactly one object and nothing else, as VALUE.OBJECT
    // and IPARAMVALUE do; the phase is the wrapping state's.
    void StartSoleObject(TCIMXMLParser& parser, int32_t& phase, const std::string& name,
                         TAttributeMap& attributes);
    // Commits the object and collects it when asked. A class defined twice (status 16) stays
    // as first defined and is not collected; an instance's commit errors are passed on.
    void Commit(TCIMXMLParser& parser, ECollect collect);
    // The end of the wrapping element: an element that ended before its object is a syntax
    // error; otherwise the object is committed. Pops the wrapping state either way.
    void End(TCIMXMLParser& parser, bool complete, ECollect collect);

    bool m_isClass = false;
    boost::shared_ptr<ICIMClass> m_class;
    boost::shared_ptr<ICIMInstance> m_instance;
};

// VALUE.OBJECT:
//   phase 0: CLASS | INSTANCE
//   phase 1: nothing more; the end commits and collects
class TCIMXMLParser::TStateValueObject : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TWrappedObject m_object;
};

// VALUE.NAMEDOBJECT:
//   phase 0: CLASS (to phase 2) | INSTANCENAME (to phase 1)
//   phase 1: INSTANCE
//   phase 2: nothing more; the end commits and collects
class TCIMXMLParser::TStateValueNamedObject : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TWrappedObject m_object;
    TCIMReference m_instanceName;
};

// VALUE.OBJECTWITHPATH, and VALUE.OBJECTWITHLOCALPATH with the local paths:
//   phase 0: CLASSPATH (to phase 1) | INSTANCEPATH (to phase 2)
//   phase 1: CLASS
//   phase 2: INSTANCE
//   phase 3: nothing more; the end commits and collects
class TCIMXMLParser::TStateValueObjectWithPath : public TCIMXMLParser::TParseState {
public:
    explicit TStateValueObjectWithPath(bool local) : m_local(local) {}
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TParseState* NewPathState(TCIMXMLParser& parser, bool instance);

    const bool m_local;
    TWrappedObject m_object;
    std::string m_host;
    std::string m_namespace;
    std::string m_className;
    TCIMReference m_instancePath;
};

// VALUE.NAMEDINSTANCE:
//   phase 0: INSTANCENAME
//   phase 1: INSTANCE
//   phase 2: nothing more; the end commits without collecting
class TCIMXMLParser::TStateValueNamedInstance : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override;
    void EndElement(TCIMXMLParser& parser, const std::string& name) override;

private:
    TCIMReference m_instanceName;
    TWrappedObject m_object;
};

} // namespace NQRN20
