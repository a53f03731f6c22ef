// Tests of the core services: loggers on many threads, status texts, case-blind name helpers.
#include "CoreTestSupport.h"
#include "core/Text.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace NQRN20 {
namespace {

// Counts calls and those that overlap another; each call lasts long enough for others to try.
class TCountingLogger : public ILogger {
public:
    void Log(uint32_t, const std::string&) override {
        m_overlaps += m_inside.exchange(true);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        ++m_calls;
        m_inside = false;
    }
    std::atomic<bool> m_inside{false};
    std::atomic<int> m_overlaps{0};
    std::atomic<int> m_calls{0};
};

TEST(TRootObject, ThreadLoggerHidesTheProcessWideOneOnItsOwnThreadOnly) {
    TCountingLogger process;
    TCountingLogger thread;
    TRootObject::SetCoreLogger(&process);
    EXPECT_EQ(nullptr, TRootObject::SetThreadLogger(&thread));
    TRootObject::GetCoreLogger()->Log(3, "here");
    std::thread([] { TRootObject::GetCoreLogger()->Log(3, "elsewhere"); }).join();
    EXPECT_EQ(&thread, TRootObject::SetThreadLogger(nullptr));
    TRootObject::GetCoreLogger()->Log(3, "after");
    TRootObject::SetCoreLogger(nullptr);
    EXPECT_EQ(1, thread.m_calls);
    EXPECT_EQ(2, process.m_calls);
}

TEST(TRootObject, PassesLinesToTheLoggerOneAtATimeAndReplacesItBetweenCalls) {
    TCountingLogger logger;
    TRootObject::SetCoreLogger(&logger);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 10; ++i) {
                TRootObject::GetCoreLogger()->Log(3, "line");
            }
        });
    }
    while (logger.m_calls == 0) {
        std::this_thread::yield();
    }
    TCountingLogger next;
    TRootObject::SetCoreLogger(&next);
    EXPECT_FALSE(logger.m_inside); // no call was still running
    const int calls = logger.m_calls;
    for (std::thread& thread : threads) {
        thread.join();
    }
    TRootObject::SetCoreLogger(nullptr);
    EXPECT_EQ(0, logger.m_overlaps);
    EXPECT_EQ(calls, logger.m_calls); // none after the replacement returned
    EXPECT_EQ(40 - calls, next.m_calls);
}

TEST(TQRNException, CarriesItsStatusAndTellsItInWords) {
    const std::pair<uint32_t, std::string> cases[] = {
        {kQRNStatusNotFound, "not found"},
        {kQRNStatusNotCommitted, "object is not committed"},
        {1000, "unknown status"}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.first, TQRNException(c.first).GetStatus());
        EXPECT_EQ(c.second, TQRNException(c.first).what());
    }
}

TEST(EqualNoCase, FoldsOnlyAsciiLettersAndHashesAlike) {
    const struct {
        const char* a;
        const char* b;
        bool equal;
    } cases[] = {
        {"", "", true},           {"Name", "nAME", true},  {"EX_Element", "ex_element", true},
        {"Name", "Names", false}, {"Name", "Nama", false}, {"Nam", "Name", false},
        {"a@", "a`", false},      {"[x]", "{x}", false},   {"\xC4", "\xE4", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.a) + " / " + c.b);
        EXPECT_EQ(c.equal, EqualNoCase(std::string(c.a), std::string(c.b)));
        EXPECT_EQ(c.equal, EqualNoCase(std::string(c.b), c.a));
        if (c.equal) {
            EXPECT_EQ(THashNoCase()(c.a), THashNoCase()(c.b));
        }
    }
}

// The word-wise lowering against the byte-wise one, in place and into another buffer, at every
// length and offset, with every byte next to the capitals' range.
TEST(LowerAscii, LowersOnlyAsciiCapitalsAtEveryLength) {
    const std::string kBytes = "@AZ[`az{\x80\xC4\xFF\x01 .QUALIFIER.ARRAY";
    for (size_t length = 0; length <= kBytes.size(); ++length) {
        for (size_t start = 0; start + length <= kBytes.size(); start += 3) {
            std::string text = kBytes.substr(start, length);
            const std::string expected = LowerAscii(text);
            std::string copy(length + 2, '#');
            LowerAsciiCopy(text.data(), length, &copy[0]);
            EXPECT_EQ(expected + "##", copy) << length << " from " << start;
            LowerAscii(&text[0], text.size());
            EXPECT_EQ(expected, text) << length << " from " << start;
        }
    }
}

} // namespace
} // namespace NQRN20
