// The MOF compiler's speed beside the CIM-XML load of the same schema.
#include "MofSpeed.h"

#include "Counting.h"

#include "core/Core.h"
#include "mof/MofLoader.h"
#include "populator/NamespacePopulator.h"
#include "tools/cimxml/MofWriter.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace NBench {

namespace {

using namespace NQRN20;

const char kMofName[] = "xmlbench-schema.mof";

// The schema as MOF, in a file of the temporary directory that goes with this value.
struct TMofCopy {
    std::string m_path;
    uint64_t m_bytes = 0;
    explicit TMofCopy(const std::string& schemaPath)
        : m_path((std::filesystem::temp_directory_path() / kMofName).string()) {
        const boost::shared_ptr<ICIMNamespace> space = TMemoryNamespace::Create();
        TNamespacePopulator::PopulateFromXMLFile(space, schemaPath);
        std::ofstream out(m_path, std::ios::binary);
        NMof::WriteNamespace(*space, out);
        m_bytes = uint64_t(out.tellp());
    }
    ~TMofCopy() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    TMofCopy(const TMofCopy&) = delete;
    TMofCopy& operator=(const TMofCopy&) = delete;
};

} // namespace

TMofSpeed MeasureMofSpeed(const std::string& schemaPath, const TTiming& timing) {
    TCountingLogger logger;
    TRootObject::SetCoreLogger(&logger);
    const TMofCopy mof(schemaPath);
    TMofSpeed speed;
    speed.m_schema = std::filesystem::path(schemaPath).filename().string();
    speed.m_xmlBytes = std::filesystem::file_size(schemaPath);
    speed.m_mofBytes = mof.m_bytes;
    boost::shared_ptr<ICIMNamespace> space;
    const auto fresh = [&] { space = TMemoryNamespace::Create(); };
    const auto release = [&] { space.reset(); };
    TLoadReport report;
    const TWorkload xml{fresh, [&] { TNamespacePopulator::PopulateFromXMLFile(space, schemaPath); },
                        release};
    const TWorkload compile{
        fresh, [&] { TMofLoader::PopulateFromMOFFile(space, mof.m_path, report); }, release};
    WarmUp(xml);
    WarmUp(compile);
    std::vector<double> xmlRuns, mofRuns;
    for (int run = 0; run < timing.m_runs; ++run) {
        // Both rates come as MB/s of the CIM-XML; the MOF's is scaled to its own size.
        const std::vector<double> rates =
            MeasureRunsTogether({&xml, &compile}, speed.m_xmlBytes, timing.m_minSeconds);
        xmlRuns.push_back(rates[0]);
        mofRuns.push_back(rates[1] * double(speed.m_mofBytes) / double(speed.m_xmlBytes));
    }
    speed.m_xmlMbps = Median(xmlRuns);
    speed.m_mofMbps = Median(mofRuns);
    TRootObject::SetCoreLogger(nullptr);
    return speed;
}

void PrintMofSpeed(const TMofSpeed& speed) {
    const auto milliseconds = [](uint64_t bytes, double mbps) {
        return mbps > 0 ? double(bytes) / 1e6 / mbps * 1e3 : 0;
    };
    std::printf("\n%s as MOF (%.1f MB, from %.1f MB of CIM-XML):\n", speed.m_schema.c_str(),
                double(speed.m_mofBytes) / 1e6, double(speed.m_xmlBytes) / 1e6);
    std::printf("  %-48s %6.0f MB/s, %.1f ms\n", "compile MOF", speed.m_mofMbps,
                milliseconds(speed.m_mofBytes, speed.m_mofMbps));
    std::printf("  %-48s %6.0f MB/s, %.1f ms\n", "load CIM-XML of the same schema", speed.m_xmlMbps,
                milliseconds(speed.m_xmlBytes, speed.m_xmlMbps));
}

} // namespace NBench
