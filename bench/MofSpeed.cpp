// The MOF compiler's speed beside the CIM-XML load of the same schema.
#include "MofSpeed.h"

#include "Counting.h"
#include "Generated.h"

#include "cimxml/CIMXMLParser.h"
#include "core/Core.h"
#include "mof/MofLoader.h"
#include "populator/NamespacePopulator.h"
#include "tools/cimxml/MofWriter.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace NBench {

namespace {

using namespace NQRN20;

const char kMofName[] = "xmlbench-schema.mof";
// The generated MOF is about two fifths of the size of its CIM-XML: 1 and 32 MB.
const size_t kSmallXml = size_t(5) << 19;
const size_t kLargeXml = size_t(80) << 20;

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

// The MOF the writer gives for a generated schema of the size of CIM-XML.
std::string GeneratedMof(size_t xmlBytes) {
    const boost::shared_ptr<ICIMNamespace> space = TMemoryNamespace::Create();
    std::string xml = GenerateSchema(xmlBytes);
    TCIMXMLParser parser(space);
    parser.Parse(xml.data());
    std::ostringstream out;
    NMof::WriteNamespace(*space, out);
    return out.str();
}

// Compiling the text into a fresh namespace, which is freed outside the timed region.
TWorkload CompileWorkload(const std::string& mof, boost::shared_ptr<ICIMNamespace>& space,
                          TLoadReport& report) {
    const auto run = [&mof, &space, &report] {
        TMofLoader::PopulateFromMOFText(space, mof.c_str(), mof.size(), kMofName, report);
    };
    return {[&space] { space = TMemoryNamespace::Create(); }, run, [&space] { space.reset(); }};
}

std::string Megabytes(size_t bytes) {
    return std::to_string((bytes + (size_t(1) << 19)) >> 20) + " MB";
}

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

TGrowth MeasureMofGrowth(const TTiming& timing) {
    TCountingLogger logger;
    TRootObject::SetCoreLogger(&logger);
    std::fprintf(stderr, "  generated schemas as MOF\n");
    const std::string small = GeneratedMof(kSmallXml);
    const std::string large = GeneratedMof(kLargeXml);
    boost::shared_ptr<ICIMNamespace> smallSpace;
    boost::shared_ptr<ICIMNamespace> largeSpace;
    TLoadReport smallReport;
    TLoadReport largeReport;
    const TWorkload smallCompile = CompileWorkload(small, smallSpace, smallReport);
    const TWorkload largeCompile = CompileWorkload(large, largeSpace, largeReport);
    // The runs are made in child processes: the small one is compiled here once, to see that
    // the generated text compiles whole.
    smallCompile.m_prepare();
    smallCompile.m_run();
    smallCompile.m_finish();
    if (!smallReport.m_log.empty() || smallReport.m_tally.m_classes == 0) {
        std::fprintf(stderr, "xmlbench: the generated MOF did not compile whole\n");
    }
    const std::pair<double, double> costs = CostsOf(
        smallCompile, double(small.size()), largeCompile, double(large.size()), false, timing);
    TRootObject::SetCoreLogger(nullptr);
    return {"compile MOF, ns per byte", Megabytes(small.size()), Megabytes(large.size()),
            costs.first, costs.second};
}

} // namespace NBench
