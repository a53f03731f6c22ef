// TLoadReport: what one load of a document file did, for a caller that shows or checks it.
#pragma once

#include "cimxml/CIMXMLParser.h"
#include "core/Status.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace NQRN20 {

// One line the core logger was given during the load.
struct TLoadLogEntry {
    // 3 for errors in the document, 0 for the line that names the file of a failed parse.
    uint32_t m_level;
    // The document's line being read when the entry was logged; 0 outside the parse.
    uint32_t m_line;
    // As logged.
    std::string m_text;
    // What happened: the text without its line prefix, and an element it names spelled as the
    // document spells it.
    std::string m_message;
    // The column of the line where the entry's text begins; 0 where only the line is known.
    uint32_t m_column = 0;
    // The file the entry belongs to where it is not the one loaded (one it includes); else empty.
    std::string m_file;
};

struct TLoadReport {
    static const uint32_t kErrorLevel = 3;

    std::string m_path;
    // Bytes read from the file, and those of the document they hold (more when gzip).
    uint64_t m_fileBytes = 0;
    uint64_t m_documentBytes = 0;
    double m_seconds = 0;
    // What the document committed, and what it defined again that the namespace already held.
    TCIMXMLParser::TTally m_tally;
    std::vector<TLoadLogEntry> m_log;
    // Why the load stopped before the document's end, or why only a part of the document was
    // read: the system's words for a file that cannot be read. Empty for a whole load.
    std::string m_failure;
    // The status of the exception the load ended with; kQRNStatusOK when it returned.
    uint32_t m_status = kQRNStatusOK;

    // The whole document was read and parsed to its end; it may still hold errors.
    bool Complete() const { return m_failure.empty(); }
    size_t CountErrors() const {
        size_t errors = 0;
        for (const TLoadLogEntry& entry : m_log) {
            errors += entry.m_level >= kErrorLevel;
        }
        return errors;
    }
};

// Times a load into its report from its construction to its end, however the load ends.
class TLoadTimer {
public:
    explicit TLoadTimer(double& seconds) : m_seconds(seconds) {}
    ~TLoadTimer() {
        m_seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }
    TLoadTimer(const TLoadTimer&) = delete;
    TLoadTimer& operator=(const TLoadTimer&) = delete;

private:
    double& m_seconds;
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace NQRN20
