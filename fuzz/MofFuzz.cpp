// Fuzzes the MOF compiler on real files. The input is written as a.mof and as inc.mof beside
// it, so that an input that includes "inc.mof" includes itself, down to the cycle check.
#include "fuzz/FuzzSupport.h"
#include "mof/MofLoader.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

using namespace NQRN20;

const char kIncluded[] = "inc.mof";
const char kLoaded[] = "a.mof";

void WriteFile(const std::string& path, const uint8_t* data, size_t size) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), std::streamsize(size));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    char dir[] = "/tmp/xmlparser-moffuzz-XXXXXX";
    if (mkdtemp(dir) == nullptr) {
        std::abort();
    }
    const std::string loaded = std::string(dir) + "/" + kLoaded;
    const std::string included = std::string(dir) + "/" + kIncluded;
    WriteFile(loaded, data, size);
    WriteFile(included, data, size);
    TQuietLogger logger;
    TLoadReport report;
    try {
        TMofLoader::PopulateFromMOFFile(TMemoryNamespace::Create(), loaded, report);
    } catch (const TQRNException&) {
    }
    TMofLoader::IsMof(reinterpret_cast<const char*>(data), size);
    unlink(loaded.c_str());
    unlink(included.c_str());
    rmdir(dir);
    return 0;
}
