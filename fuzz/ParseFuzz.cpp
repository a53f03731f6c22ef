// Fuzzes a whole parse into one in-memory namespace. The input holds one to three documents
// separated by zero bytes, loaded one after another, so that later documents meet the classes
// and qualifier declarations of earlier ones. A last byte of 0x01 turns the QX518 mode on.
#include "cimxml/CIMXMLParser.h"
#include "fuzz/FuzzSupport.h"

#include <algorithm>

namespace {

using namespace NQRN20;

const int kMaxDocuments = 3;

void ParseOne(const boost::shared_ptr<ICIMNamespace>& cimNamespace, const uint8_t* data,
              size_t size, bool qx518) {
    const std::unique_ptr<char[]> buffer = ExactCopy(data, size);
    TCIMXMLParser parser(cimNamespace);
    if (qx518) {
        parser.SetQX518Mode();
    }
    try {
        parser.Parse(buffer.get(), size);
    } catch (const TQRNException&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TQuietLogger logger;
    const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
    const bool qx518 = size > 0 && data[size - 1] == 0x01;
    const uint8_t* const end = data + size - (qx518 ? 1 : 0);
    for (int document = 0; document < kMaxDocuments && data < end; ++document) {
        const uint8_t* separator =
            document + 1 < kMaxDocuments ? std::find(data, end, uint8_t(0)) : end;
        ParseOne(cimNamespace, data, size_t(separator - data), qx518);
        data = separator == end ? end : separator + 1;
    }
    return 0;
}
