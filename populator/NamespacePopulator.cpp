// The loading entry points: read the file, parse it, return what was collected, and, where asked,
// report what the load did.
#include "populator/NamespacePopulator.h"

#include "cimxml/CIMXMLParser.h"
#include "populator/DocumentReader.h"

namespace NQRN20 {

namespace {

const uint32_t kFileLogLevel = 0;

void LogFailedParse(const std::string& path) {
    TRootObject::GetCoreLogger()->Log(kFileLogLevel,
                                      "Previous error was while parsing file '" + path + "'");
}

// Parses the whole buffer; a failed parse is logged with the file's path before it goes on.
void ParseDocument(TCIMXMLParser& parser, const TDocumentBuffer& document,
                   const std::string& path) {
    try {
        parser.Parse(document.m_bytes.get(), document.m_length);
    } catch (const TQRNException&) {
        LogFailedParse(path);
        throw;
    }
}

// A parser that hears every line logged on its thread while it lives: it records each in the
// report, with the line being read while the parse runs, and passes it on to the logger it
// stands in front of.
class TReportingParser : public TCIMXMLParser, public ILogger {
public:
    TReportingParser(const boost::shared_ptr<ICIMNamespace>& ns, TLoadReport& report)
        : TCIMXMLParser(ns), m_report(report), m_passOn(TRootObject::SetThreadLogger(this)) {}
    TReportingParser(const TReportingParser&) = delete;
    TReportingParser& operator=(const TReportingParser&) = delete;
    ~TReportingParser() override { TRootObject::SetThreadLogger(m_passOn); }

    void Log(uint32_t level, const std::string& text) override {
        m_report.m_log.push_back({level,
                                  m_parsing ? GetCurLine() : 0,
                                  text,
                                  m_parsing ? DescribeLogLine(text) : text,
                                  0,
                                  {}});
        TRootObject::SetThreadLogger(m_passOn);
        const struct TReinstate {
            ILogger* m_logger;
            ~TReinstate() { TRootObject::SetThreadLogger(m_logger); }
        } reinstate{this};
        TRootObject::GetCoreLogger()->Log(level, text);
    }

    void ParseWhole(const TDocumentBuffer& document) {
        m_parsing = true;
        const struct TDone {
            bool& m_parsing;
            ~TDone() { m_parsing = false; }
        } done{m_parsing};
        Parse(document.m_bytes.get(), document.m_length);
    }

private:
    TLoadReport& m_report;
    ILogger* const m_passOn;
    bool m_parsing = false;
};

template <class TObject>
std::vector<boost::shared_ptr<TObject>>
Load(const boost::shared_ptr<ICIMNamespace>& ns, const std::string& path, TLoadReport& report,
     std::vector<boost::shared_ptr<TObject>> (TCIMXMLParser::*collected)() const) {
    report = TLoadReport();
    report.m_path = path;
    const TLoadTimer timer(report.m_seconds);
    const TDocumentBuffer document = ReadReportedDocument(path, report);
    TReportingParser parser(ns, report);
    try {
        parser.ParseWhole(document);
    } catch (const TQRNException& error) {
        report.m_tally = parser.GetTally();
        report.m_status = error.GetStatus();
        // A cut document nearly always stops at its cut; the cut is what the user must learn.
        const std::string stopped =
            "parsing stopped at line " + std::to_string(parser.GetCurLine());
        report.m_failure = document.m_partial ? report.m_failure + "; " + stopped : stopped;
        LogFailedParse(path);
        throw;
    }
    report.m_tally = parser.GetTally();
    return (parser.*collected)();
}

} // namespace

std::vector<boost::shared_ptr<ICIMClass>>
TNamespacePopulator::PopulateFromXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path) {
    const uint64_t size = TOSSpecific::GetFileSize(path);
    const TDocumentBuffer document = ReadDocument(path, size);
    TCIMXMLParser parser(ns);
    ParseDocument(parser, document, path);
    return parser.GetClassesCollected();
}

std::vector<boost::shared_ptr<ICIMInstance>>
TNamespacePopulator::PopulateFromRegXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path) {
    uint64_t size = 0;
    try {
        size = TOSSpecific::GetFileSize(path);
    } catch (const TQRNException&) {
        return {};
    }
    const TDocumentBuffer document = ReadDocument(path, size);
    TCIMXMLParser parser(ns);
    ParseDocument(parser, document, path);
    return parser.GetInstancesCollected();
}

std::vector<boost::shared_ptr<ICIMClass>>
TNamespacePopulator::PopulateFromXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path,
                                         TLoadReport& report) {
    return Load(ns, path, report, &TCIMXMLParser::GetClassesCollected);
}

std::vector<boost::shared_ptr<ICIMInstance>>
TNamespacePopulator::PopulateFromRegXMLFile(boost::shared_ptr<ICIMNamespace> ns, std::string path,
                                            TLoadReport& report) {
    return Load(ns, path, report, &TCIMXMLParser::GetInstancesCollected);
}

} // namespace NQRN20
