// TCIMXMLParser: turns the tokenizer's callbacks into CIM objects through a stack of parse states.
#pragma once

#include "cimxml/QualifierDecls.h"
#include "core/Core.h"
#include "tokenizer/XmlParser.h"

#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace NQRN20 {

class TStatePool;

// The parser's hold on the pool its states come from. A copy of the parser gets a pool of its
// own; the states it shares with the original keep theirs alive.
class TStatePoolHandle {
public:
    TStatePoolHandle();
    TStatePoolHandle(const TStatePoolHandle&);
    TStatePoolHandle& operator=(const TStatePoolHandle&) { return *this; }
    ~TStatePoolHandle();

    TStatePool* Get() const { return m_pool; }

private:
    TStatePool* m_pool;
};

// One parser reads one document into the namespace it was given. Every open element has a parse
// state on the stack; the state on top receives the starts and ends of its children, checks
// them against its content model, and completes its object when its own element ends. Errors
// that a state raises are logged with their line and absorbed, so that one bad element does not
// end the load; syntax errors end the parse with status 9.
class TCIMXMLParser : public TXmlParser {
public:
    // Documents larger than this are read only in part by the loaders.
    static const uint32_t kMaxSpecificationDocumentSize = 524288000;

    // The base of every state: one element kind, its content model, and where its result goes.
    class TParseState {
    public:
        TParseState() : m_phase(0) {}
        virtual ~TParseState();
        // A child element of this state's element starts; the name arrives lowercased.
        virtual void StartElement(TCIMXMLParser& parser, const std::string& name,
                                  TAttributeMap& attributes);
        // This state's element ends (or a child it did not push): by default, pop this state.
        virtual void EndElement(TCIMXMLParser& parser, const std::string& name);
        // The attributes of this state's own start tag, right after the push.
        virtual void ProcessAttributes(TCIMXMLParser& parser, TAttributeMap& attributes);

        // Every element pushes a state and pops it, so states are made in their parser's pool:
        // new (parser) TStateX(...). Plain new takes the memory from the heap.
        static void* operator new(size_t size, TCIMXMLParser& parser);
        static void* operator new(size_t size);
        static void operator delete(void* state);
        static void operator delete(void* state, TCIMXMLParser& parser);

        // How far through its ordered content model the state has come.
        int32_t m_phase;
    };

    // The states, by element group; each group is defined in its header under cimxml/states/.
    class TStateStart;
    // Document.h
    class TStateCIM;
    class TStateDeclaration;
    class TStateDeclGroup;
    class TStateDeclGroupWithName;
    class TStateDeclGroupWithPath;
    // Paths.h
    class TStateNamespacePath;
    class TStateLocalNamespacePath;
    class TStateHost;
    class TStateNamespace;
    class TStateClassPath;
    class TStateLocalClassPath;
    class TStateClassName;
    // InstanceNames.h
    class TStateInstancePath;
    class TStateLocalInstancePath;
    class TStateInstanceName;
    class TStateKeyBinding;
    class TStateKeyValue;
    class TStateValueReference;
    // ValueObjects.h
    struct TWrappedObject;
    class TStateValueObject;
    class TStateValueNamedObject;
    class TStateValueObjectWithPath;
    class TStateValueNamedInstance;
    // Requests.h
    class TStateMessage;
    class TStateSimpleReq;
    class TStateMultiReq;
    class TStateIMethodCall;
    class TStateIParamValue;
    // Responses.h
    class TStateSimpleRsp;
    class TStateMethodResponse;
    class TStateIReturnValue;
    class TStateError;
    // Classes.h
    class TStateClass;
    class TStatePropertyDecl;
    class TStatePropertyArrayDecl;
    class TStatePropertyReferenceDecl;
    // Qualifiers.h
    class TStateQualifier;
    class TStateQualifierDeclaration;
    class TStateScope;
    // Methods.h
    class TStateMethod;
    class TStateParameter;
    class TStateParameterReference;
    class TStateParameterArray;
    class TStateParameterRefArray;
    // Instances.h
    class TStateInstance;
    class TStateProperty;
    class TStatePropertyArray;
    class TStatePropertyReference;
    class TStateValue;
    class TStateValueArray;
    // Consumes an element and everything inside it without effect.
    class TStateSkip;

    explicit TCIMXMLParser(boost::shared_ptr<ICIMNamespace> cimNamespace);
    TCIMXMLParser(const TCIMXMLParser& other);
    TCIMXMLParser& operator=(const TCIMXMLParser& other);
    ~TCIMXMLParser() override;

    // What the document defined: the objects it committed to the namespace, collected or not,
    // and the names of those the namespace held already, which were left as they were.
    struct TTally {
        size_t m_qualifierDecls = 0;
        size_t m_classes = 0;
        size_t m_instances = 0;
        std::vector<std::string> m_duplicateQualifierDecls;
        std::vector<std::string> m_duplicateClasses;
        std::vector<std::string> m_duplicateInstances;
    };

    void SetQX518Mode();
    std::vector<boost::shared_ptr<ICIMClass>> GetClassesCollected() const;
    std::vector<boost::shared_ptr<ICIMInstance>> GetInstancesCollected() const;
    const TTally& GetTally() const { return m_tally; }

    void StartElement(const char* name, TAttributeMap& attributes) override;
    void EndElement(const char* name) override;
    void processingInstruction(const char* target, const char* data) override;
    void characters(const char* text, uint32_t length) override;
    void notationDecl(const char* name, const char* publicId, const char* systemId) override;
    // Logs "CIM-XML Parser line N:message" at level 3 and throws status 9; final, since every
    // state relies on it not returning.
    [[noreturn]] void FatalError(const char* message) final;
    [[noreturn]] void FatalError(const std::string& message);
    // Logs the line as FatalError does, for an error that costs a value but not the element.
    void LogError(const std::string& message);

    // Converts element text to a value of the type. Never throws TQRNException: a bad date-time
    // becomes midnight 1 January 1970 with a log line, any other text that does not fit the type
    // a null value of the type with a log line, and text for no type an empty value.
    TCIMValue ParseValue(TCIMValue::TCIMType type, std::string& text);
    // "true" or "false" after optional white space; anything else is false.
    static bool ConvertBool(std::string& text);
    // A decimal number after optional white space and sign, as stream input reads it; a minus
    // negates modulo 2^32; no number, or one above 4294967295, gives 0.
    uint32_t ConvertUnsignedInt(std::string& text);

    // Each helper claims the attribute it is named for: it stores the converted value and
    // returns true, or returns false and leaves the output alone.
    bool HandleCIMName(TAttributeMap::iterator& attribute, std::string* out);
    bool HandleCIMType(TAttributeMap::iterator& attribute, TCIMValue::TCIMType* out);
    bool HandleQualifierFlavor(TAttributeMap::iterator& attribute, ICIMQualifierDecl::EFlavor* out);
    bool HandleClassOrigin(TAttributeMap::iterator& attribute, std::string* out);
    bool HandlePropagated(TAttributeMap::iterator& attribute, bool& out);
    bool HandleArraySize(TAttributeMap::iterator& attribute, uint32_t& out);
    bool HandleSuperClass(TAttributeMap::iterator& attribute, std::string* out);
    bool HandleClassName(TAttributeMap::iterator& attribute, std::string* out);
    bool HandleReferenceClass(TAttributeMap::iterator& attribute, std::string* out);
    // "object" or "instance" in any letter case; another value is logged and leaves out alone.
    bool HandleEmbeddedObject(TAttributeMap::iterator& attribute, EEmbeddedObject* out);

    // Operations for parse states, including those of derived parsers: pushing a child state,
    // which the parser then owns and which reads the attributes of its own start tag at once;
    // popping the top state; the text of a #PCDATA element, from its start to its end; the
    // namespace for lookups (empty once it is gone); and the reports every content model makes.
    void PushState(TParseState* state, TAttributeMap& attributes);
    void PopState();
    void BeginText();
    std::string& EndText();
    boost::shared_ptr<ICIMNamespace> LockNamespace() const { return m_namespace.lock(); }
    [[noreturn]] void RejectElement(const std::string& name);
    [[noreturn]] void ReportStateCorrupt();

protected:
    // A line this parser logged while Parse runs, as a reader wants it: without the prefix that
    // says where it came from, and with the element it names spelled as the document does.
    std::string DescribeLogLine(const std::string& text) const;

private:
    void ReportOutsideDocument(const std::string& name);
    void PushState(TParseState* state);

    // Memory for the states and their handles' counts.
    TStatePoolHandle m_statePool;
    std::deque<boost::shared_ptr<TParseState>> m_stateStack;
    // States popped during the current callback: one may still be running, so they are freed
    // only when the callback returns.
    std::vector<boost::shared_ptr<TParseState>> m_poppedStates;
    boost::weak_ptr<ICIMNamespace> m_namespace;
    std::vector<boost::shared_ptr<ICIMClass>> m_classesCollected;
    std::vector<boost::shared_ptr<ICIMInstance>> m_instancesCollected;
    TTally m_tally;
    // Character data is collected only between BeginText and EndText: elsewhere it is the
    // indentation between elements, which nothing reads.
    std::string m_text;
    bool m_collectingText = false;
    TQualifierDecls m_qualifierDecls;
    // The lowered name of the element being dispatched; callbacks never nest.
    std::string m_elementName;
    const char* m_elementNameFrom = nullptr;
    bool m_qx518Mode;
    // Elements after the stack ran empty are reported once; the rest of them say nothing new.
    bool m_outsideReported;
};

} // namespace NQRN20
