// The parser's state stack, its dispatch of element starts and ends, the error report and the
// bottom state.
#include "cimxml/CIMXMLParser.h"

#include "cimxml/Names.h"
#include "cimxml/StatePool.h"
#include "cimxml/states/Document.h"
#include "core/Text.h"

#include <cstring>

namespace NQRN20 {

namespace {

const char kUnexpectedElement[] = "Unexpected element ";
const char kStateCorrupt[] = "Parser state corrupt";
const char kOutsideDocument[] = "Unexpected element outside the document: ";
const char kOutsideIgnored[] = "; it and what follows are ignored";
const char kLinePrefix[] = "CIM-XML Parser line ";
// What the lookup failures start with.
const char kSourcePrefix[] = "TCIMXMLParser: ";
const uint32_t kErrorLogLevel = 3;

// Pseudo-attributes that tell the tokenizer a start tag was rejected (status 36) or that its
// value was refused (status 8).
const char kRejectFormatKey[] = "throwExInvalidFormat";
const char kRejectFormatValue[] = "kQRNStatusInvalidFormat";
const char kRejectValueKey[] = "throwExInvalidValue";
const char kRejectValueValue[] = "kQRNStatusInvalidProperty";

// Lowers an element name into a buffer that keeps its capacity from element to element, so that
// the dispatch of a start or end tag allocates nothing. Sizing the buffer and lowering into it
// costs less than the general assignment.
const std::string& Lowercase(const char* name, std::string& buffer) {
    buffer.resize(std::strlen(name));
    LowerAsciiCopy(name, buffer.size(), &buffer[0]);
    return buffer;
}

// Put before every state, so that its delete finds the pool it came from (none: the heap).
struct alignas(std::max_align_t) TStateHeader {
    TStatePool* m_pool;
    size_t m_size; // of the whole block
};

// Writes the header at the start of a block for a state of the size; gives the state's place.
void* StampHeader(void* block, TStatePool* pool, size_t stateSize) {
    TStateHeader* header = static_cast<TStateHeader*>(block);
    *header = TStateHeader{pool, sizeof(TStateHeader) + stateSize};
    return header + 1;
}

} // namespace

// cim: the only root element; everything else is reported and its children offered again.
class TCIMXMLParser::TStateStart : public TCIMXMLParser::TParseState {
public:
    void StartElement(TCIMXMLParser& parser, const std::string& name,
                      TAttributeMap& attributes) override {
        if (name != NCimXml::kCim) {
            parser.RejectElement(name);
        }
        parser.PushState(new (parser) TStateCIM(), attributes);
    }
};

TCIMXMLParser::TParseState::~TParseState() = default;

void TCIMXMLParser::TParseState::StartElement(TCIMXMLParser&, const std::string&, TAttributeMap&) {}

void TCIMXMLParser::TParseState::EndElement(TCIMXMLParser& parser, const std::string&) {
    parser.PopState();
}

void TCIMXMLParser::TParseState::ProcessAttributes(TCIMXMLParser&, TAttributeMap&) {}

void* TCIMXMLParser::TParseState::operator new(size_t size, TCIMXMLParser& parser) {
    TStatePool* pool = parser.m_statePool.Get();
    return StampHeader(pool->Allocate(sizeof(TStateHeader) + size), pool, size);
}

void* TCIMXMLParser::TParseState::operator new(size_t size) {
    return StampHeader(::operator new(sizeof(TStateHeader) + size), nullptr, size);
}

void TCIMXMLParser::TParseState::operator delete(void* state) {
    if (state == nullptr) {
        return;
    }
    TStateHeader* header = static_cast<TStateHeader*>(state) - 1;
    if (header->m_pool != nullptr) {
        header->m_pool->Release(header, header->m_size);
    } else {
        ::operator delete(header);
    }
}

void TCIMXMLParser::TParseState::operator delete(void* state, TCIMXMLParser&) {
    TParseState::operator delete(state);
}

TCIMXMLParser::TCIMXMLParser(boost::shared_ptr<ICIMNamespace> cimNamespace)
    : m_namespace(cimNamespace), m_qx518Mode(false), m_outsideReported(false) {
    PushState(new (*this) TStateStart());
}

TCIMXMLParser::TCIMXMLParser(const TCIMXMLParser& other) = default;

TCIMXMLParser& TCIMXMLParser::operator=(const TCIMXMLParser& other) = default;

TCIMXMLParser::~TCIMXMLParser() = default;

void TCIMXMLParser::SetQX518Mode() {
    m_qx518Mode = true;
}

std::vector<boost::shared_ptr<ICIMClass>> TCIMXMLParser::GetClassesCollected() const {
    return m_classesCollected;
}

std::vector<boost::shared_ptr<ICIMInstance>> TCIMXMLParser::GetInstancesCollected() const {
    return m_instancesCollected;
}

// A state that pops itself (an early end) still runs until the callback returns; PopState keeps
// it in m_poppedStates, which the next callback frees.
void TCIMXMLParser::StartElement(const char* name, TAttributeMap& attributes) {
    m_poppedStates.clear();
    const std::string& lowered = Lowercase(name, m_elementName);
    m_elementNameFrom = name;
    try {
        if (m_stateStack.empty()) {
            ReportOutsideDocument(lowered);
            return;
        }
        m_stateStack.back()->StartElement(*this, lowered, attributes);
    } catch (const TQRNException& error) {
        if (error.GetStatus() == kQRNStatusInvalidFormat) {
            attributes.insert(TAttributeMap::value_type(kRejectFormatKey, kRejectFormatValue));
        } else if (error.GetStatus() == kQRNStatusInvalidProperty) {
            attributes.insert(TAttributeMap::value_type(kRejectValueKey, kRejectValueValue));
        }
    }
}

// An element without children ends right after its start, whose name is still lowered: the
// tokenizer hands out each name at its own place in the buffer.
void TCIMXMLParser::EndElement(const char* name) {
    m_poppedStates.clear();
    if (name != m_elementNameFrom) {
        Lowercase(name, m_elementName);
        m_elementNameFrom = name;
    }
    const std::string& lowered = m_elementName;
    try {
        if (m_stateStack.empty()) {
            ReportOutsideDocument(lowered);
            return;
        }
        m_stateStack.back()->EndElement(*this, lowered);
    } catch (const TQRNException&) {
        if (!m_stateStack.empty()) {
            PopState();
        }
    }
}

// Once rejected elements have closed every open state, whatever follows has no state to go to.
void TCIMXMLParser::ReportOutsideDocument(const std::string& name) {
    if (!m_outsideReported) {
        m_outsideReported = true;
        FatalError(kOutsideDocument + name + kOutsideIgnored);
    }
}

void TCIMXMLParser::processingInstruction(const char*, const char*) {}

void TCIMXMLParser::characters(const char* text, uint32_t length) {
    if (m_collectingText) {
        m_text.append(text, length);
    }
}

void TCIMXMLParser::notationDecl(const char*, const char*, const char*) {}

void TCIMXMLParser::FatalError(const char* message) {
    LogError(message);
    throw TQRNException(kQRNStatusParseError);
}

void TCIMXMLParser::FatalError(const std::string& message) {
    TCIMXMLParser::FatalError(message.c_str());
}

void TCIMXMLParser::LogError(const std::string& message) {
    TRootObject::GetCoreLogger()->Log(kErrorLogLevel,
                                      kLinePrefix + std::to_string(GetCurLine()) + ":" + message);
}

// The only element a line names is the one being dispatched, lowered: the document's spelling
// of it is still in the buffer, the same length.
std::string TCIMXMLParser::DescribeLogLine(const std::string& text) const {
    std::string message = text;
    if (message.compare(0, std::strlen(kLinePrefix), kLinePrefix) == 0) {
        const size_t colon = message.find(':', std::strlen(kLinePrefix));
        message.erase(0, colon == std::string::npos ? 0 : colon + 1);
    } else if (message.compare(0, std::strlen(kSourcePrefix), kSourcePrefix) == 0) {
        message.erase(0, std::strlen(kSourcePrefix));
    }
    if (m_elementNameFrom == nullptr) {
        return message;
    }
    for (const char* prefix : {kOutsideDocument, kUnexpectedElement}) {
        const size_t at = std::strlen(prefix);
        if (message.compare(0, at, prefix) == 0 &&
            message.compare(at, m_elementName.size(), m_elementName) == 0) {
            return message.replace(at, m_elementName.size(), m_elementNameFrom,
                                   m_elementName.size());
        }
    }
    return message;
}

void TCIMXMLParser::PushState(TParseState* state, TAttributeMap& attributes) {
    PushState(state);
    m_stateStack.back()->ProcessAttributes(*this, attributes);
}

void TCIMXMLParser::PushState(TParseState* state) {
    m_stateStack.push_back(boost::shared_ptr<TParseState>(
        state, [](TParseState* popped) { delete popped; },
        TStateAllocator<TParseState>(m_statePool.Get())));
}

void TCIMXMLParser::PopState() {
    m_poppedStates.push_back(std::move(m_stateStack.back()));
    m_stateStack.pop_back();
}

void TCIMXMLParser::BeginText() {
    m_text.clear();
    m_collectingText = true;
}

std::string& TCIMXMLParser::EndText() {
    m_collectingText = false;
    return m_text;
}

void TCIMXMLParser::RejectElement(const std::string& name) {
    FatalError(kUnexpectedElement + name);
}

void TCIMXMLParser::ReportStateCorrupt() {
    FatalError(kStateCorrupt);
}

} // namespace NQRN20
