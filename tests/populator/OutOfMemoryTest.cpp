// Tests that a load which runs out of memory at any allocation unwinds with std::bad_alloc and
// leaves the namespace usable. A program of its own, since it replaces the global operator new.
#include "populator/NamespacePopulator.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// While it is not negative, counts allocations down; the one that finds it at zero fails.
std::atomic<long> g_allocationsLeft{-1};

} // namespace

void* operator new(std::size_t size) {
    if (g_allocationsLeft.load() >= 0 && g_allocationsLeft.fetch_sub(1) == 0) {
        throw std::bad_alloc();
    }
    if (void* block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}

// Out of line, so that the compiler does not see a free of what a new expression returned.
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace NQRN20 {
namespace {

const char kSchema[] =
    "<CIM><DECLARATION><DECLGROUP>"
    "<QUALIFIER.DECLARATION NAME='Key' TYPE='boolean'><SCOPE PROPERTY='true' REFERENCE='true'/>"
    "<VALUE>false</VALUE></QUALIFIER.DECLARATION>"
    "<QUALIFIER.DECLARATION NAME='Description' TYPE='string' TOSUBCLASS='false'>"
    "<SCOPE ANY='true'/></QUALIFIER.DECLARATION>"
    "<VALUE.OBJECT><CLASS NAME='T_A'><QUALIFIER NAME='Description' TYPE='string'>"
    "<VALUE>a long enough description to need memory of its own</VALUE></QUALIFIER>"
    "<PROPERTY NAME='Id' TYPE='string'><QUALIFIER NAME='Key' TYPE='boolean'><VALUE>true</VALUE>"
    "</QUALIFIER></PROPERTY><PROPERTY.ARRAY NAME='Codes' TYPE='uint16'><VALUE.ARRAY>"
    "<VALUE>1</VALUE><VALUE>2</VALUE></VALUE.ARRAY></PROPERTY.ARRAY>"
    "<PROPERTY.REFERENCE NAME='Next' REFERENCECLASS='T_A'/>"
    "<METHOD NAME='Run' TYPE='uint32'><PARAMETER NAME='Mode' TYPE='string'/></METHOD></CLASS>"
    "</VALUE.OBJECT>"
    "<VALUE.OBJECT><CLASS NAME='T_B' SUPERCLASS='T_A'><PROPERTY NAME='Name' TYPE='string'>"
    "<VALUE>a default that is long enough to be on the heap</VALUE></PROPERTY></CLASS>"
    "</VALUE.OBJECT>"
    "<VALUE.OBJECT><INSTANCE CLASSNAME='T_B'><PROPERTY NAME='Id' TYPE='string'>"
    "<VALUE>the first instance's rather long key value</VALUE></PROPERTY></INSTANCE>"
    "</VALUE.OBJECT>"
    "<VALUE.OBJECT><INSTANCE CLASSNAME='T_A'><PROPERTY NAME='Id' TYPE='string'><VALUE>second"
    "</VALUE></PROPERTY><PROPERTY.REFERENCE NAME='Next'><VALUE.REFERENCE><INSTANCENAME "
    "CLASSNAME='T_B'><KEYBINDING NAME='Id'><KEYVALUE>the first instance's rather long key value"
    "</KEYVALUE></KEYBINDING></INSTANCENAME></VALUE.REFERENCE></PROPERTY.REFERENCE></INSTANCE>"
    "</VALUE.OBJECT></DECLGROUP></DECLARATION></CIM>";

template <class TObject>
size_t Count(void (ICIMNamespace::*enumerate)(TEnumCallback<TObject>, TCIMOptions),
             ICIMNamespace& cimNamespace) {
    std::vector<boost::shared_ptr<TObject>> objects;
    (cimNamespace.*enumerate)(TAddToVectorCallback<TObject>(objects), TCIMOptions());
    return objects.size();
}

size_t CountInstances(ICIMNamespace& cimNamespace) {
    std::vector<boost::shared_ptr<ICIMInstance>> instances;
    cimNamespace.EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), TCIMOptions());
    return instances.size();
}

// Fails the first, second, third... allocation of a load, each into a fresh namespace. Each load
// either unwinds or, where the failed allocation was one it could do without, loads whole; the
// same load then runs whole into that namespace.
TEST(OutOfMemory, EveryAllocationThatFailsDuringALoadUnwindsAndLeavesTheNamespaceUsable) {
    TTempDir dir;
    const std::string path = dir.Write("schema.xml", kSchema);
    const long kUnlimited = 1L << 40;
    g_allocationsLeft = kUnlimited;
    TNamespacePopulator::PopulateFromXMLFile(TMemoryNamespace::Create(), path);
    const long allocations = kUnlimited - g_allocationsLeft.exchange(-1);
    ASSERT_GT(allocations, 100);
    for (long allocation = 0; allocation < allocations && !HasFailure(); ++allocation) {
        SCOPED_TRACE(allocation);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        TLoadReport report;
        g_allocationsLeft = allocation;
        try {
            TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path, report);
            EXPECT_TRUE(report.Complete() && report.CountErrors() == 0) << report.m_log.size();
        } catch (const std::bad_alloc&) {
        } catch (const TQRNException& error) {
            EXPECT_EQ(uint32_t(kQRNStatusNoMemory), error.GetStatus()); // the document's buffer
        }
        g_allocationsLeft = -1;
        EXPECT_EQ(nullptr, TRootObject::SetThreadLogger(nullptr));
        TNamespacePopulator::PopulateFromXMLFile(cimNamespace, path);
        EXPECT_EQ(2u, Count(&ICIMNamespace::EnumQualifierDecls, *cimNamespace));
        EXPECT_EQ(2u, Count(&ICIMNamespace::EnumClasses, *cimNamespace));
        EXPECT_EQ(2u, CountInstances(*cimNamespace));
    }
}

} // namespace
} // namespace NQRN20
