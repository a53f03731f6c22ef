// The MOF compiler's speed beside the CIM-XML load of the same schema.
#pragma once

#include "Growth.h"
#include "Harness.h"

#include <cstdint>
#include <string>

namespace NBench {

struct TMofSpeed {
    std::string m_schema;
    uint64_t m_xmlBytes = 0;
    uint64_t m_mofBytes = 0;
    double m_xmlMbps = 0; // MB/s of the CIM-XML file
    double m_mofMbps = 0; // MB/s of the MOF that the writer gives for it
};

// Writes what the schema file loads as MOF, the way cimxml --mof does, into a temporary file,
// and times the two loads together, each into a fresh namespace.
TMofSpeed MeasureMofSpeed(const std::string& schemaPath, const TTiming& timing);
void PrintMofSpeed(const TMofSpeed& speed);

// The compile's time per byte of the MOF of two generated schemas (Generated.h), of about 1 and
// 32 MB, each compiled into a fresh namespace.
TGrowth MeasureMofGrowth(const TTiming& timing);

} // namespace NBench
