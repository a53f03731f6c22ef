// Tests that a load which runs out of memory at any allocation unwinds with std::bad_alloc and
// leaves the namespace usable. A program of its own, since it replaces the global operator new.
#include "populator/NamespacePopulator.h"
#include "support/ParseDocument.h"

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

const std::string kSchema = XMLPARSER_EXAMPLES_DIR "/schema.xml";
const std::string kInstances = XMLPARSER_EXAMPLES_DIR "/instances.xml";

// Loads the bundled examples, the schema and then its instances, each with a report.
void LoadExamples(const boost::shared_ptr<ICIMNamespace>& cimNamespace) {
    TLoadReport report;
    TNamespacePopulator::PopulateFromXMLFile(cimNamespace, kSchema, report);
    EXPECT_TRUE(report.Complete() && report.CountErrors() == 0) << report.m_log.size();
    TNamespacePopulator::PopulateFromRegXMLFile(cimNamespace, kInstances, report);
    EXPECT_TRUE(report.Complete() && report.CountErrors() == 0) << report.m_log.size();
}

// Fails each allocation of the loads in turn, into a fresh namespace: they unwind, or load whole
// where they could do without it; the same loads then run whole into that namespace.
TEST(OutOfMemory, EveryAllocationThatFailsDuringALoadUnwindsAndLeavesTheNamespaceUsable) {
    const long kUnlimited = 1L << 40;
    g_allocationsLeft = kUnlimited;
    LoadExamples(TMemoryNamespace::Create());
    const long allocations = kUnlimited - g_allocationsLeft.exchange(-1);
    ASSERT_GT(allocations, 100);
    for (long allocation = 0; allocation < allocations && !HasFailure(); ++allocation) {
        SCOPED_TRACE(allocation);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = TMemoryNamespace::Create();
        g_allocationsLeft = allocation;
        try {
            LoadExamples(cimNamespace);
        } catch (const std::bad_alloc&) {
        } catch (const TQRNException& error) {
            EXPECT_EQ(uint32_t(kQRNStatusNoMemory), error.GetStatus()); // the document's buffer
        }
        g_allocationsLeft = -1;
        EXPECT_EQ(nullptr, TRootObject::SetThreadLogger(nullptr));
        LoadExamples(cimNamespace);
        EXPECT_EQ((std::array<size_t, 3>{11, 5, 5}), CountObjects(*cimNamespace));
    }
}

} // namespace
} // namespace NQRN20
